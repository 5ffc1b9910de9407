#ifndef OutsideWorld_H
#define OutsideWorld_H

#include <string>
#include <vector>

/**
 * What this program asks of the world outside: it takes the place of the functions of the C library that open files and
 * directories, reach for the network, look names up or start programs. The functions still do their work.
 */
class OutsideWorld {
public:
    /** Notes what is asked for while it lives, by any thread. One at a time. */
    OutsideWorld();
    ~OutsideWorld();
    OutsideWorld(const OutsideWorld&) = delete;
    OutsideWorld& operator=(const OutsideWorld&) = delete;

    /** The calls so far, the name of what was asked for behind that of the function. */
    std::vector<std::string> Calls() const;
};

#endif
