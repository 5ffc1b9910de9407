#ifndef BexQorTraceStep_H
#define BexQorTraceStep_H

#include "BexQorTrace.h"

#include <BexUnicodeString.h>

#include <ostream>
#include <string_view>

/** A traced scope that leaves no code behind. */
class BexQorTraceStep {
public:
    constexpr BexQorTraceStep(BexQorTrace& /*iTrace*/, const char* /*iName*/) {}
    BexQorTraceStep(const BexQorTraceStep&) = delete;  // as the real one
    BexQorTraceStep& operator=(const BexQorTraceStep&) = delete;

    /** @return 0, which the compiler sees. */
    static constexpr int IsOn() noexcept { return 0; }

    template <typename Value>
    BexQorTraceStep& operator<<(const Value& /*iValue*/) {
        return *this;
    }
    BexQorTraceStep& operator<<(std::ostream& (* /*iManipulator*/)(std::ostream&)) { return *this; }
};

#endif
