// What happens to the stream when a line can be written but not ended: no room for the line feed, or a flush that
// fails.

#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>

namespace {

/** Keeps what is written, gives up at a line feed of choice, and fails a flush of choice; both counted from 1. */
class FailingLineEnd : public std::streambuf {
public:
    FailingLineEnd(int iLineFeed, int iFlush) : lineFeedsLeft(iLineFeed), flushesLeft(iFlush) {}
    std::string text;

protected:
    int_type overflow(int_type iCharacter) override {
        const char character = traits_type::to_char_type(iCharacter);
        if (character == '\n' && --lineFeedsLeft == 0) {
            return traits_type::eof();
        }
        text += character;
        return iCharacter;
    }
    int sync() override { return --flushesLeft == 0 ? -1 : 0; }

private:
    int lineFeedsLeft;
    int flushesLeft;
};

constexpr int kNever = 0;

/** The lines of the sample record up to one of them, with or without its line feed. */
std::string LinesUpTo(int iLine, bool iWithLineFeed) {
    std::size_t end = 0;
    for (int line = 1; line < iLine; ++line) {
        end = RecordTesting::kSampleText.find('\n', end) + 1;
    }
    return RecordTesting::kSampleText.substr(0, RecordTesting::kSampleText.find('\n', end) + (iWithLineFeed ? 1 : 0));
}

int NumberOfLines() {
    return static_cast<int>(RecordTesting::SampleLines().size());
}

/** Writes the sample record there and expects this text. @return whether the stream is still good */
bool WritesSample(FailingLineEnd&& ioBuffer, const std::string& iExpected) {
    ActivityInfo activity;
    RecordTesting::FillSample(activity);
    std::ostream stream(&ioBuffer);
    stream << activity;
    EXPECT_EQ(ioBuffer.text, iExpected);
    EXPECT_EQ(stream.bad(), !stream.good());
    return stream.good();
}

TEST(RecordTextLineEnd, LineFeedThatHasNoRoomIsTheLastThingTried) {
    for (int line = 1; line < NumberOfLines(); ++line) {
        EXPECT_FALSE(WritesSample(FailingLineEnd(line, kNever), LinesUpTo(line, false))) << line;
    }
}

TEST(RecordTextLineEnd, FlushThatFailsIsTheLastThingTried) {
    for (int line = 1; line < NumberOfLines(); ++line) {
        EXPECT_FALSE(WritesSample(FailingLineEnd(kNever, line), LinesUpTo(line, true))) << line;
    }
}

TEST(RecordTextLineEnd, LastLineHasNeitherLineFeedNorFlush) {
    EXPECT_TRUE(WritesSample(FailingLineEnd(NumberOfLines(), NumberOfLines()), RecordTesting::kSampleText));
}

}  // namespace
