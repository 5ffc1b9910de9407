// Records read from a source that itself has no memory: the stream fails, and what was read before stays.

#include <QorWflInteropInfo.h>

#include <gtest/gtest.h>

#include <istream>
#include <new>
#include <streambuf>
#include <string>
#include <utility>

namespace {

/** Gives a text and then finds no memory for more. */
class SourceWithoutMemory : public std::streambuf {
public:
    explicit SourceWithoutMemory(std::string iText) : text(std::move(iText)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type underflow() override { throw std::bad_alloc(); }

private:
    std::string text;
};

TEST(RecordTextSourceMemory, FailsTheStreamAndKeepsWhatWasRead) {
    const struct {
        const char* text;
        const char* name;
        const char* type;
    } cases[] = {
        {"", "n", "t"},
        {"name=\"N", "n", "t"},
        {"name=\"N\";\n", "N", "t"},
        {"name=\"N\";\ntype=\"T\";\n", "N", "T"},
    };
    for (const auto& each : cases) {
        SourceWithoutMemory buffer(each.text);
        std::istream stream(&buffer);
        DataInfo data;
        data.name = "n";
        data.type = "t";
        EXPECT_NO_THROW(stream >> data) << each.text;
        EXPECT_TRUE(stream.fail()) << each.text;
        EXPECT_FALSE(stream.bad()) << each.text << ": that is for sources that cannot be read";
        EXPECT_EQ(data.name, BexUnicodeString(each.name)) << each.text;
        EXPECT_EQ(data.type, BexUnicodeString(each.type)) << each.text;
    }
}

}  // namespace
