// What is left of strings, lists and buffers when the memory for an operation cannot be had: every operation is run
// with its first, second, third ... request for memory refused, until it comes through.

#include "TextTesting.h"

#include <BexListValBexUnicodeString.h>
#include <BexSequenceOctet.h>
#include <BexUnicodeString.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <functional>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

// Requests of this thread that are still granted; negative: all of them.
thread_local long requestsGranted = -1;

void* Request(std::size_t iSize) noexcept {
    if (requestsGranted == 0) {
        return nullptr;
    }
    if (requestsGranted > 0) {
        --requestsGranted;
    }
    return std::malloc(iSize == 0 ? 1 : iSize);
}

}  // namespace

// Not inlined: the compiler would take the halves of a pair for strangers where it sees only one of them.
[[gnu::noinline]] void* operator new(std::size_t iSize) {
    if (void* const memory = Request(iSize)) {
        return memory;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new[](std::size_t iSize) {
    return operator new(iSize);
}
[[gnu::noinline]] void* operator new(std::size_t iSize, const std::nothrow_t&) noexcept {
    return Request(iSize);
}
[[gnu::noinline]] void* operator new[](std::size_t iSize, const std::nothrow_t&) noexcept {
    return Request(iSize);
}
[[gnu::noinline]] void operator delete(void* iMemory) noexcept {
    std::free(iMemory);
}
[[gnu::noinline]] void operator delete[](void* iMemory) noexcept {
    std::free(iMemory);
}
[[gnu::noinline]] void operator delete(void* iMemory, std::size_t) noexcept {
    std::free(iMemory);
}
[[gnu::noinline]] void operator delete[](void* iMemory, std::size_t) noexcept {
    std::free(iMemory);
}
[[gnu::noinline]] void operator delete(void* iMemory, const std::nothrow_t&) noexcept {
    std::free(iMemory);
}
[[gnu::noinline]] void operator delete[](void* iMemory, const std::nothrow_t&) noexcept {
    std::free(iMemory);
}

namespace {

enum class Outcome { kDone, kRefused, kOtherException };

/** Runs an operation that is granted so many requests for memory. */
template <typename Operation>
Outcome RunGranted(long iRequests, const Operation& iOperation) {
    requestsGranted = iRequests;
    try {
        iOperation();
        requestsGranted = -1;
        return Outcome::kDone;
    } catch (const std::bad_alloc&) {
        requestsGranted = -1;
        return Outcome::kRefused;
    } catch (...) {
        requestsGranted = -1;
        return Outcome::kOtherException;
    }
}

struct StringOperation {
    const char* name;
    std::function<void(BexUnicodeString&)> run;
};

const BexUnicodeString& LongNarrow() {
    static const BexUnicodeString text("narrow text that is longer than fifteen characters");
    return text;
}

const BexUnicodeString& LongWide() {
    static const BexUnicodeString text = Units(u"wide \u0161 text that is longer than fifteen characters");
    return text;
}

std::vector<StringOperation> StringOperations() {
    return {
        {"assign narrow", [](BexUnicodeString& ioText) { ioText = LongNarrow(); }},
        {"assign wide", [](BexUnicodeString& ioText) { ioText = LongWide(); }},
        {"append narrow", [](BexUnicodeString& ioText) { ioText.Append(LongNarrow()); }},
        {"append wide", [](BexUnicodeString& ioText) { ioText.Append(LongWide()); }},
        {"append itself", [](BexUnicodeString& ioText) { ioText.Append(ioText); }},
        {"append narrow characters", [](BexUnicodeString& ioText) { ioText += LongNarrow().NarrowView().data(); }},
        {"append wide unit", [](BexUnicodeString& ioText) { ioText += char16_t{0x0161}; }},
        {"replace by narrow", [](BexUnicodeString& ioText) { ioText.ReplaceSubString("e", LongNarrow()); }},
        {"replace by wide", [](BexUnicodeString& ioText) { ioText.ReplaceSubString("e", LongWide()); }},
        {"replace wide by narrow",
         [](BexUnicodeString& ioText) { ioText.ReplaceSubString(Units(u"\u0161"), LongNarrow()); }},
        {"replace by itself", [](BexUnicodeString& ioText) { ioText.ReplaceSubString("e", ioText); }},
        {"narrow text", [](BexUnicodeString& ioText) { (void)ioText.ConvertToChar(); }},
        {"part", [](BexUnicodeString& ioText) { ioText = ioText.SubString(1, 30); }},
        {"strip", [](BexUnicodeString& ioText) { ioText = ioText.Strip(4, 'e'); }},
        {"sum", [](BexUnicodeString& ioText) { ioText = ioText + LongWide() + LongNarrow(); }},
        {"number", [](BexUnicodeString& ioText) { ioText.BuildFromNum(LONG_MIN, "%ld"); }},
    };
}

TEST(BexTextMemory, RefusedMemoryLeavesTheStringUnchanged) {
    const std::vector<BexUnicodeString> kinds = {BexUnicodeString(), BexUnicodeString(""), BexUnicodeString("short e"),
                                                 LongNarrow(),       Units(u"\u0161 e"),   LongWide()};
    for (const StringOperation& operation : StringOperations()) {
        for (const BexUnicodeString& kind : kinds) {
            BexUnicodeString expected(kind);
            operation.run(expected);
            Outcome outcome = Outcome::kRefused;
            for (long granted = 0; outcome == Outcome::kRefused; ++granted) {
                ASSERT_LT(granted, 100) << operation.name;
                BexUnicodeString text(kind);
                outcome = RunGranted(granted, [&] { operation.run(text); });
                ASSERT_NE(outcome, Outcome::kOtherException) << operation.name;
                const BexUnicodeString& wanted = outcome == Outcome::kDone ? expected : kind;
                EXPECT_EQ(UnitsOf(text), UnitsOf(wanted)) << operation.name << " after " << granted;
                EXPECT_EQ(text.IsNull(), wanted.IsNull()) << operation.name << " after " << granted;
                EXPECT_STREQ(text.ConvertToChar(), wanted.ConvertToChar()) << operation.name << " after " << granted;
            }
        }
    }
}

TEST(BexTextMemory, WritingToAStreamGetsThroughOrFailsTheStream) {
    std::ostringstream stream;
    const BexUnicodeString wide(Units(u"\u0161 wide text that is longer than what a string keeps inside itself"));
    EXPECT_EQ(RunGranted(0, [&] { stream << wide; }), Outcome::kDone);
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(stream.str(), "");
    stream.clear();
    EXPECT_EQ(RunGranted(-1, [&] { stream << wide; }), Outcome::kDone);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.str(), wide.ConvertToChar());
}

TEST(BexTextMemory, ReadingALineGetsThroughOrIsRefused) {
    const std::string bytes(5000, 'x');
    Outcome outcome = Outcome::kRefused;
    long granted = 0;
    for (; outcome == Outcome::kRefused; ++granted) {
        ASSERT_LT(granted, 100);
        std::istringstream stream(bytes);
        BexUnicodeString text("former");
        int status = 99;
        outcome = RunGranted(granted, [&] { status = text.BuildFromStream(stream, 1); });
        ASSERT_NE(outcome, Outcome::kOtherException);
        if (outcome == Outcome::kDone) {
            EXPECT_EQ(status, 0) << "after " << granted;
            EXPECT_TRUE(text.ConvertToChar() == bytes) << "after " << granted;
        } else {
            EXPECT_STREQ(text.ConvertToChar(), "former");
        }
    }
    EXPECT_GT(granted, 1);
}

struct ListOperation {
    const char* name;
    std::function<void(BexListValBexUnicodeString&)> run;
};

std::vector<BexUnicodeString> ValuesOf(const BexListValBexUnicodeString& iList) {
    std::vector<BexUnicodeString> values;
    for (int pos = 1; pos <= iList.Size(); ++pos) {
        values.push_back(iList[pos]);
    }
    return values;
}

/** Asks a list for each of its values: the answers must fit what it holds, whatever index stands behind them. */
void ExpectLocationsFit(const BexListValBexUnicodeString& iList, const char* iName) {
    const std::vector<BexUnicodeString> values = ValuesOf(iList);
    for (std::size_t first = 0; first < values.size(); ++first) {
        int expected = 0;
        for (std::size_t pos = values.size(); pos > 0; --pos) {
            expected = values[pos - 1] == values[first] ? static_cast<int>(pos) : expected;
        }
        ASSERT_EQ(iList.Locate(values[first]), expected) << iName;
    }
    ASSERT_EQ(iList.Locate("not there"), 0) << iName;
}

TEST(BexTextMemory, RefusedMemoryLeavesTheListUnchanged) {
    const std::vector<ListOperation> operations = {
        {"append", [](BexListValBexUnicodeString& ioList) { ioList.Append(LongWide()); }},
        {"append an own value", [](BexListValBexUnicodeString& ioList) { ioList.Append(ioList[1]); }},
        {"set", [](BexListValBexUnicodeString& ioList) { ioList.Set(3, LongWide()); }},
        {"set to an own value", [](BexListValBexUnicodeString& ioList) { ioList.Set(3, ioList[1]); }},
        {"locate", [](BexListValBexUnicodeString& ioList) { (void)ioList.Locate(LongNarrow()); }},
        {"remove duplicates", [](BexListValBexUnicodeString& ioList) { ioList.RemoveDuplicates(); }},
        {"assign",
         [](BexListValBexUnicodeString& ioList) {
             BexListValBexUnicodeString other;
             other.Append(LongNarrow());
             ioList = other;
         }},
    };
    for (const ListOperation& operation : operations) {
        for (const int size : {0, 5, 16, 64, 100, 128}) {
            for (const bool located : {false, true}) {
                BexListValBexUnicodeString model;
                for (int pos = 1; pos <= size; ++pos) {
                    BexUnicodeString value;
                    value.BuildFromNum(pos % 40, "%d");
                    model.Append(pos % 2 == 0 ? value + LongNarrow() : value);
                }
                const std::vector<BexUnicodeString> former = ValuesOf(model);
                BexListValBexUnicodeString done(model);
                operation.run(done);
                const std::vector<BexUnicodeString> expected = ValuesOf(done);
                Outcome outcome = Outcome::kRefused;
                for (long granted = 0; outcome == Outcome::kRefused; ++granted) {
                    ASSERT_LT(granted, 1000) << operation.name;
                    BexListValBexUnicodeString list(model);
                    if (located) {
                        ASSERT_EQ(list.Locate("not there"), 0);
                    }
                    outcome = RunGranted(granted, [&] { operation.run(list); });
                    ASSERT_NE(outcome, Outcome::kOtherException) << operation.name;
                    EXPECT_EQ(ValuesOf(list), outcome == Outcome::kDone ? expected : former)
                        << operation.name << " of " << size << " after " << granted;
                    ASSERT_NO_FATAL_FAILURE(ExpectLocationsFit(list, operation.name));
                    list.Append("one more");
                    EXPECT_EQ(list.Locate("one more"), list.Size()) << operation.name;
                }
            }
        }
    }
}

TEST(BexTextMemory, MovingAndRemovingNeedNoMemory) {
    for (const BexUnicodeString& kind : {BexUnicodeString("short"), LongNarrow(), LongWide()}) {
        BexUnicodeString source(kind);
        BexUnicodeString target;
        EXPECT_EQ(RunGranted(0,
                             [&] {
                                 BexUnicodeString moved(std::move(source));
                                 target = std::move(moved);
                             }),
                  Outcome::kDone);
        EXPECT_EQ(target, kind);
        EXPECT_EQ(RunGranted(0, [&] { target.Reset(); }), Outcome::kDone);
    }
    BexListValBexUnicodeString list;
    list.Append(LongNarrow());
    BexListValBexUnicodeString target;
    EXPECT_EQ(RunGranted(0,
                         [&] {
                             BexListValBexUnicodeString moved(std::move(list));
                             target = std::move(moved);
                         }),
              Outcome::kDone);
    EXPECT_EQ(target.Size(), 1);
    EXPECT_EQ(RunGranted(0, [&] { target.RemoveAll(); }), Outcome::kDone);
    EXPECT_EQ(target.Size(), 0);
}

TEST(BexTextMemory, RefusedMemoryLeavesTheBufferUnchanged) {
    const _SEQUENCE_octet source("abc", 3);
    _SEQUENCE_octet octets("xy", 2);
    EXPECT_EQ(RunGranted(0, [&] { octets = source; }), Outcome::kRefused);
    EXPECT_EQ(RunGranted(0, [&] { octets.length(100'000); }), Outcome::kRefused);
    std::optional<_SEQUENCE_octet> copy;  // used below, so that no compiler leaves it out
    EXPECT_EQ(RunGranted(0, [&] { copy.emplace(source); }), Outcome::kRefused);
    EXPECT_FALSE(copy.has_value());
    ASSERT_EQ(octets.length(), 2U);
    EXPECT_EQ(octets[0], 'x');
    EXPECT_EQ(octets[1], 'y');
}

}  // namespace
