#ifndef Failure_H
#define Failure_H

#include <stdexcept>

/**
 * Something outside the command is not as it should be: an input, a configuration, the standard output. The text is
 * for the user: which file, where in it, what was expected. It ends the command with exit status 1.
 */
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

#endif
