#ifndef FreshProcess_H
#define FreshProcess_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <string>

/** Runs @p iPrint in a process of its own, in which nothing of the library has been used yet, and compares what it
 * prints on std::cerr. */
#define EXPECT_PRINTED_IN_A_FRESH_PROCESS(iPrint, iText)                                       \
    do {                                                                                       \
        GTEST_FLAG_SET(death_test_style, "threadsafe");                                        \
        EXPECT_EXIT(                                                                           \
            {                                                                                  \
                std::cerr << "[[";                                                             \
                iPrint;                                                                        \
                std::cerr << "]]";                                                             \
                std::_Exit(0);                                                                 \
            },                                                                                 \
            testing::ExitedWithCode(0), testing::HasSubstr("[[" + std::string(iText) + "]]")); \
    } while (false)

#endif
