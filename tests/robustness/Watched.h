#ifndef Watched_H
#define Watched_H

#include <string>
#include <vector>

/**
 * What the process is asked for by the code that runs in it: environment variables, threads, signal handlers and
 * locales. This program takes the place of the functions for that, which still do their work.
 */
namespace Watched {

/** A call, and the library that made it. */
struct Call {
    std::string what;     ///< the function, and the name that was asked for
    std::string library;  ///< the file name of the caller's library, without folders
};

/** The calls since the last time. */
std::vector<Call> TakeCalls();

}  // namespace Watched

#endif
