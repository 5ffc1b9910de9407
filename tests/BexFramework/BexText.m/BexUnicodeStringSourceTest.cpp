// What a string takes from a source or gives to a target that does not serve: streams that throw, null pointers.

#include <BexUnicodeString.h>

#include <gtest/gtest.h>

#include <istream>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace {

/** Gives a text and throws behind it. */
class ThrowingBehind : public std::streambuf {
public:
    explicit ThrowingBehind(std::string iText) : text(std::move(iText)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("source"); }

private:
    std::string text;
};

TEST(BexUnicodeStringSource, LineThatBreaksOffIsWhatCameBefore) {
    ThrowingBehind buffer("first\nsec");
    std::istream stream(&buffer);
    BexUnicodeString text;
    EXPECT_EQ(text.BuildFromStream(stream, 0), 0);
    EXPECT_EQ(text, BexUnicodeString("first"));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(text.BuildFromStream(stream, 0), 0);
    EXPECT_EQ(text, BexUnicodeString("sec"));
    EXPECT_TRUE(stream.bad());
}

TEST(BexUnicodeStringSource, SourceThatThrowsAtOnceGivesNoLine) {
    ThrowingBehind buffer("");
    std::istream stream(&buffer);
    BexUnicodeString text("before");
    EXPECT_NE(text.BuildFromStream(stream, 0), 0);
    EXPECT_TRUE(stream.bad());
}

TEST(BexUnicodeStringSource, NumberThatGoesNowhereIsNotConverted) {
    const BexUnicodeString text("42");
    EXPECT_EQ(text.ConvertToNum(static_cast<int*>(nullptr), "%d"), -1);
    EXPECT_EQ(text.ConvertToNum(static_cast<long*>(nullptr), "%ld"), -1);
}

}  // namespace
