#ifndef MemoryThatEnds_H
#define MemoryThatEnds_H

#include "RefusedMemory.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>

/** Runs operations with the first, second, third ... request for memory refused, until one comes through unrefused. */
namespace MemoryThatEnds {

/** What comes out of an operation. */
enum class Outcome { kDone, kBadAlloc, kOtherException };

enum class Contract {
    kMayThrow,   ///< std::bad_alloc may leave the operation
    kNeverThrow  ///< nothing leaves it
};

template <typename Run>
Outcome OutcomeOf(const Run& iRun) {
    try {
        iRun();
        return Outcome::kDone;
    } catch (const std::bad_alloc&) {
        return Outcome::kBadAlloc;
    } catch (...) {
        return Outcome::kOtherException;
    }
}

/**
 * @param iPrepare gives a new state in a pointer
 * @param iRun runs the operation on the state
 * @param iCheck looks at the state; told whether the operation was left to do its work undisturbed
 *
 * After each run the operation is run again, undisturbed, on the same state. No memory may be left over in the end.
 */
template <typename Prepare, typename Run, typename Check>
void ForEveryRefusal(const std::string& iName, Contract iContract, const Prepare& iPrepare, const Run& iRun,
                     const Check& iCheck) {
    const auto undisturbed = [&] {
        const auto state = iPrepare();
        EXPECT_EQ(OutcomeOf([&] { iRun(*state); }), Outcome::kDone) << iName;
        iCheck(*state, true);
    };
    undisturbed();  // fills what is kept from the first use on
    for (const RefusedMemory::Mode mode : {RefusedMemory::Mode::kOnce, RefusedMemory::Mode::kFromThenOn}) {
        bool refused = true;
        for (long granted = 0; refused && !testing::Test::HasFailure(); ++granted) {
            SCOPED_TRACE(iName + (mode == RefusedMemory::Mode::kOnce ? ", one refused after " : ", refused after ") +
                         std::to_string(granted));
            const long before = RefusedMemory::LiveBlocks();
            {
                const auto state = iPrepare();
                Outcome outcome = Outcome::kDone;
                {
                    const RefusedMemory::Refusal refusal(granted, mode);
                    outcome = OutcomeOf([&] { iRun(*state); });
                    refused = refusal.Happened();
                }
                EXPECT_NE(outcome, Outcome::kOtherException);
                if (iContract == Contract::kNeverThrow || !refused) {
                    EXPECT_EQ(outcome, Outcome::kDone);
                }
                iCheck(*state, outcome == Outcome::kDone && !refused);
                EXPECT_EQ(OutcomeOf([&] { iRun(*state); }), Outcome::kDone) << "the next call";
                iCheck(*state, true);
            }
            if (!testing::Test::HasFailure()) {  // a message would be left over itself
                EXPECT_EQ(RefusedMemory::LiveBlocks(), before) << "blocks left over";
            }
        }
    }
}

/** The same for operations that only give a result: built anew each time, kept nowhere. */
template <typename Run>
void ForEveryRefusal(const std::string& iName, const Run& iRun) {
    using Result = decltype(iRun());
    struct State {
        Result result;
        bool isSet = false;
    };
    const Result expected = iRun();
    ForEveryRefusal(
        iName, Contract::kMayThrow, [] { return std::make_unique<State>(); },
        [&](State& ioState) {
            ioState.isSet = false;
            ioState.result = iRun();
            ioState.isSet = true;
        },
        [&](State& ioState, bool) {
            if (ioState.isSet) {
                EXPECT_TRUE(ioState.result == expected) << "what comes back is right, or nothing does";
            }
        });
}

}  // namespace MemoryThatEnds

#endif
