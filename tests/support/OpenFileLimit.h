#ifndef OpenFileLimit_H
#define OpenFileLimit_H

#include <sys/resource.h>

/**
 * Bounds the number of files that the process may have open while it lives. With a bound of 0 no file can be opened, by
 * no user, though every file can still be looked at.
 */
class OpenFileLimit {
public:
    explicit OpenFileLimit(rlim_t iLimit) {
        ::getrlimit(RLIMIT_NOFILE, &former);
        rlimit limit = former;
        limit.rlim_cur = iLimit;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~OpenFileLimit() { ::setrlimit(RLIMIT_NOFILE, &former); }
    OpenFileLimit(const OpenFileLimit&) = delete;
    OpenFileLimit& operator=(const OpenFileLimit&) = delete;

private:
    rlimit former{};
};

#endif
