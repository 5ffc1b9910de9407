#include <BexNarrowText.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

/** Lengths around those at which the place of a text changes. */
constexpr std::size_t kLengths[] = {0, 1, 30, 31, 32, 33, 62, 63, 64, 1000};

std::string TextOfLength(std::size_t iLength) {
    std::string text;
    for (std::size_t i = 0; i < iLength; ++i) {
        text += static_cast<char>('a' + i % 26);
    }
    return text;
}

void ExpectText(const BexNarrowText& iText, std::string_view iExpected) {
    EXPECT_EQ(iText.View(), iExpected);
    EXPECT_EQ(iText.Length(), iExpected.size());
    EXPECT_EQ(iText.CString()[iExpected.size()], '\0');
    EXPECT_EQ(std::memcmp(iText.CString(), iExpected.data(), iExpected.size()), 0);
}

TEST(BexNarrowText, IsEmptyAtFirst) {
    ExpectText(BexNarrowText(), "");
}

TEST(BexNarrowText, KeepsATextOfAnyLength) {
    for (const std::size_t length : kLengths) {
        ExpectText(BexNarrowText(TextOfLength(length)), TextOfLength(length));
    }
}

TEST(BexNarrowText, KeepsNulAndEveryOtherByte) {
    std::string all;
    for (int byte = 0; byte <= UCHAR_MAX; ++byte) {
        all += static_cast<char>(byte);
    }
    ExpectText(BexNarrowText(all), all);
    ExpectText(BexNarrowText(std::string_view("a\0b", 3)), std::string_view("a\0b", 3));
}

TEST(BexNarrowText, CopyIsATextOfItsOwn) {
    for (const std::size_t length : kLengths) {
        BexNarrowText original(TextOfLength(length));
        const BexNarrowText copy(original);
        original.Append('!');
        ExpectText(copy, TextOfLength(length));
        ExpectText(original, TextOfLength(length) + "!");
    }
}

TEST(BexNarrowText, MovedFromIsEmpty) {
    for (const std::size_t length : kLengths) {
        BexNarrowText source(TextOfLength(length));
        BexNarrowText target(std::move(source));
        ExpectText(target, TextOfLength(length));
        ExpectText(source, "");  // NOLINT(bugprone-use-after-move): that is what is promised
        source.Append("again");
        ExpectText(source, "again");
    }
}

TEST(BexNarrowText, MoveOfALongTextTakesItsMemory) {
    BexNarrowText source(TextOfLength(100));
    const char* memory = source.CString();
    const BexNarrowText target(std::move(source));
    EXPECT_EQ(target.CString(), memory);
}

TEST(BexNarrowText, AssignmentOfEveryLengthToEveryOther) {
    for (const std::size_t from : kLengths) {
        for (const std::size_t to : kLengths) {
            BexNarrowText source(TextOfLength(from));
            BexNarrowText copied(TextOfLength(to));
            copied = source;
            ExpectText(copied, TextOfLength(from));
            BexNarrowText moved(TextOfLength(to));
            moved = std::move(source);
            ExpectText(moved, TextOfLength(from));
            ExpectText(source, "");  // NOLINT(bugprone-use-after-move): that is what is promised
        }
    }
}

TEST(BexNarrowText, AssignmentToItselfChangesNothing) {
    for (const std::size_t length : kLengths) {
        BexNarrowText text(TextOfLength(length));
        const BexNarrowText& same = text;
        text = same;
        ExpectText(text, TextOfLength(length));
        BexNarrowText& alias = text;
        text = std::move(alias);
        ExpectText(text, TextOfLength(length));
    }
}

TEST(BexNarrowText, TakesAndAddsPartsOfItself) {
    for (const std::size_t length : kLengths) {
        const std::string whole = TextOfLength(length);
        BexNarrowText doubled(whole);
        doubled.Append(doubled.View());
        ExpectText(doubled, whole + whole);
        const std::string part = whole.substr(length / 3, length / 2);
        BexNarrowText cut(whole);
        cut.Assign(cut.View().substr(length / 3, length / 2));
        ExpectText(cut, part);
        BexNarrowText behind(whole);
        behind.Append(behind.View().substr(length / 3, length / 2));
        ExpectText(behind, whole + part);
    }
}

TEST(BexNarrowText, ExtensionIsWrittenByTheCaller) {
    for (const std::size_t length : kLengths) {
        BexNarrowText text("begin");
        std::memset(text.Extend(length), 'x', length);
        ExpectText(text, "begin" + std::string(length, 'x'));
    }
}

TEST(BexNarrowText, ShortenKeepsTheBeginning) {
    for (const std::size_t length : kLengths) {
        BexNarrowText text(TextOfLength(length));
        text.Shorten(length + 1);
        ExpectText(text, TextOfLength(length));
        text.Shorten(length / 2);
        ExpectText(text, TextOfLength(length / 2));
        text.Append("end");
        ExpectText(text, TextOfLength(length / 2) + "end");
    }
}

TEST(BexNarrowText, ClearedTextCanBeFilledAgain) {
    for (const std::size_t length : kLengths) {
        BexNarrowText text(TextOfLength(length));
        text.Clear();
        ExpectText(text, "");
        text.Append(TextOfLength(length));
        ExpectText(text, TextOfLength(length));
    }
}

TEST(BexNarrowText, ReservedMemoryIsWhereTheTextGrows) {
    BexNarrowText text("a");
    text.Reserve(500);
    const char* memory = text.CString();
    text.Append(std::string(499, 'b'));
    EXPECT_EQ(text.CString(), memory);
    ExpectText(text, "a" + std::string(499, 'b'));
}

TEST(BexNarrowText, ReservingWhatIsThereMovesNothing) {
    BexNarrowText text("a");
    text.Reserve(500);
    const char* memory = text.CString();
    for (const std::size_t length : {0UL, 1UL, 499UL, 500UL}) {
        text.Reserve(length);
        EXPECT_EQ(text.CString(), memory) << length;
    }
    text.Reserve(501);
    EXPECT_NE(text.CString(), memory);
    ExpectText(text, "a");
}

TEST(BexNarrowText, RefusesMoreThanCanBeCounted) {
    BexNarrowText text("kept");
    const std::string_view tooMuch("", static_cast<std::size_t>(INT_MAX) - 3);  // never read
    EXPECT_THROW(text.Append(tooMuch), std::length_error);
    EXPECT_THROW(text.Extend(tooMuch.size()), std::length_error);
    EXPECT_THROW(text.Reserve(static_cast<std::size_t>(INT_MAX) + 1), std::length_error);
    EXPECT_THROW(text.Assign(std::string_view("", static_cast<std::size_t>(INT_MAX) + 1)), std::length_error);
    EXPECT_THROW(BexNarrowText(std::string_view("", static_cast<std::size_t>(INT_MAX) + 1)), std::length_error);
    ExpectText(text, "kept");
}

TEST(BexNarrowText, AppendingAsStdStringDoes) {
    std::mt19937 random(5);
    BexNarrowText text;
    std::string expected;
    for (int step = 0; step < 5000; ++step) {
        const std::string piece = TextOfLength(random() % 40);
        text.Append(piece);
        expected += piece;
        if (random() % 50 == 0) {
            text.Shorten(expected.size() / 8);
            expected.resize(expected.size() / 8);
        }
        ASSERT_EQ(text.View(), expected);
    }
}

}  // namespace
