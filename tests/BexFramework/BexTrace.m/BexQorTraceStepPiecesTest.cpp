// Pieces of a message that are no plain text: floating-point numbers, manipulators that throw, null pointers.

#include "RecordingSink.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <charconv>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace {

using testing::ElementsAre;

class TraceStepPieces : public testing::Test {
protected:
    TraceStepPieces() { BexQorTrace::SetOn("Pieces", 1); }

    /** What a step writes for one piece, without the indentation and the line end. */
    template <typename Piece>
    std::string Written(Piece iPiece) {
        const std::size_t before = sink.Calls().size();
        BexQorTraceStep step(channel, "step");
        step << iPiece << std::endl;
        const std::string line = sink.Texts().at(before + 1);
        return line.substr(2, line.size() - 3);
    }

    BexQorTrace channel{"Pieces", "", "STDOUT", 1024};
    RecordingSink sink;
};

TEST_F(TraceStepPieces, NumbersWithAFractionAreAsShortAsTheyCanBe) {
    EXPECT_EQ(Written(0.0), "0");
    EXPECT_EQ(Written(1.5), "1.5");
    EXPECT_EQ(Written(-0.1), "-0.1");
    EXPECT_EQ(Written(1e300), "1e+300");
    EXPECT_EQ(Written(2.5F), "2.5");
}

/** The number that a text is whole, in any locale; else none. */
double NumberOf(const std::string& iText) {
    double number = 0;
    const auto [end, error] = std::from_chars(iText.data(), iText.data() + iText.size(), number);
    const bool isWhole = error == std::errc() && end == iText.data() + iText.size();
    return isWhole ? number : std::numeric_limits<double>::quiet_NaN();
}

TEST_F(TraceStepPieces, NumbersWithAFractionAreReadBackAsTheSame) {
    for (const double number : {1.0 / 3, 0.1 + 0.2, 123456789.123456789, std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::min(), std::numeric_limits<double>::denorm_min()}) {
        EXPECT_EQ(NumberOf(Written(number)), number);
        EXPECT_EQ(NumberOf(Written(-number)), -number);
    }
}

std::ostream& ThrowingManipulator(std::ostream& /*ioStream*/) {
    throw std::runtime_error("manipulator");
}

TEST_F(TraceStepPieces, ManipulatorThatThrowsCostsItsLineAndNoMore) {
    {
        BexQorTraceStep step(channel, "step");
        step << "lost" << ThrowingManipulator << "too" << std::endl;
        step << "kept" << std::endl;
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  kept\n", "<< step\n"));
}

TEST_F(TraceStepPieces, NullPointersAddNothing) {
    {
        BexQorTraceStep step(channel, "step");
        step << "a" << static_cast<const char*>(nullptr) << static_cast<std::ostream& (*)(std::ostream&)>(nullptr)
             << "b" << std::endl;
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  ab\n", "<< step\n"));
}

}  // namespace
