#include "NaiveUrl.h"
#include "UrlTesting.h"

#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedTrace.h>
#include <optional>
#include <random>
#include <string>

// Every byte at every place of a block, there and back.

namespace {

using testing::Eq;
using testing::Optional;
using UrlTesting::Block;
using UrlTesting::InstanceUrl;
using UrlTesting::UrlToUuid;

const std::string kFull =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ01234567\x01\x23\x45\x67\x89\xAB\xCD\xEF\x10\x32\x54\x76\x98\xBA\xDC\xFE";
const int kTextEnd = QorWflUuidLayout::kKitab.End();

bool IsLastOfItsField(int iPlace) {
    return iPlace == QorWflUuidLayout::kDbName.End() - 1 || iPlace == QorWflUuidLayout::kKienv.End() - 1 ||
           iPlace == QorWflUuidLayout::kKitab.End() - 1;
}

bool IsInEnvironment(int iPlace) {
    return iPlace >= QorWflUuidLayout::kKienv.offset && iPlace < QorWflUuidLayout::kKienv.End();
}

/** The last message of reading a URL. */
std::string LastMessage(const std::string& iUrl) {
    const CapturedTrace trace("WFInteropUrl");
    static_cast<void>(UrlToUuid(iUrl));
    return trace.Messages().back();
}

TEST(InstanceUrlField, EveryByteAtEveryPlaceOfATextComesBackOrShiftsTheSeparators) {
    ASSERT_THAT(UrlToUuid(InstanceUrl(kFull)), Optional(kFull));
    for (int place = 0; place < kTextEnd; ++place) {
        for (int code = 0; code < 256; ++code) {
            std::string block = kFull;
            char& byte = block[static_cast<std::size_t>(place)];
            byte = static_cast<char>(code);
            const std::string url = InstanceUrl(block);
            if (NaiveUrl::CopiedUnchanged(byte) || (byte == ' ' && IsLastOfItsField(place))) {
                ASSERT_THAT(UrlToUuid(url), Optional(block)) << place << " " << code;
            } else if (byte == ' ' && !IsInEnvironment(place)) {
                byte = '+';
                ASSERT_THAT(UrlToUuid(url), Optional(block)) << place;
            } else {
                ASSERT_THAT(UrlToUuid(url), Eq(std::nullopt)) << place << " " << code;
                ASSERT_EQ(LastMessage(url),
                          byte == ' ' ? "Environment does not match Kienv" : "Delimiters not placed correctly")
                    << place << " " << code;
            }
        }
    }
}

TEST(InstanceUrlField, EveryByteAtEveryPlaceOfAnIdentifierComesBack) {
    for (int place = kTextEnd; place < QorWflUuidLayout::kBlockSize; ++place) {
        for (int code = 0; code < 256; ++code) {
            std::string block = kFull;
            block[static_cast<std::size_t>(place)] = static_cast<char>(code);
            ASSERT_THAT(UrlToUuid(InstanceUrl(block)), Optional(block)) << place << " " << code;
        }
    }
}

TEST(InstanceUrlField, RandomBlocksAreReadAsTheNaiveVersionReadsThem) {
    std::mt19937 random(34);
    int read = 0;
    for (int round = 0; round < 20000; ++round) {
        // bytes of all kinds, few of which are escaped, so that many URLs can be read
        std::string block;
        while (block.size() < 50) {
            const auto any = static_cast<char>(static_cast<unsigned char>(random() % 256));
            const bool isText = block.size() < static_cast<std::size_t>(kTextEnd);
            block += isText && random() % 64 != 0 ? "AZaz09.-*_   "[random() % 13] : any;
        }
        const std::string url = InstanceUrl(block);
        const std::optional<std::string> uuid = UrlToUuid(url);
        ASSERT_EQ(uuid, NaiveUrl::UrlToUuid(url)) << url;
        read += uuid.has_value() ? 1 : 0;
    }
    EXPECT_GT(read, 100) << "the blocks were chosen so that some can be read";
}

TEST(InstanceUrlField, EscapeThatMakesUpForNulBytesBehindItsTextIsReadAsItStands) {
    // two NUL bytes are not written, an escape takes two characters more than its byte, and the key is not decoded
    std::string block = Block("a/bcde", "env", "table");
    block.replace(6, 2, 2, '\0');
    EXPECT_THAT(UrlToUuid(InstanceUrl(block)), Optional(Block("a%2Fbcde", "env", "table")));
    block = Block("db", "env", "t~");
    block.replace(16 + 16, 2, 2, '\0');
    EXPECT_THAT(UrlToUuid(InstanceUrl(block)), Optional(Block("db", "env", "t%7E")));
}

TEST(InstanceUrlField, NulBytesAtTheEndOfATextShiftTheSeparators) {
    for (const int end : {QorWflUuidLayout::kDbName.End(), QorWflUuidLayout::kKienv.End(), kTextEnd}) {
        for (int count = 1; count <= 8; ++count) {
            std::string block = Block("db", "env", "table");
            const auto length = static_cast<std::size_t>(count);
            block.replace(static_cast<std::size_t>(end) - length, length, length, '\0');
            EXPECT_EQ(LastMessage(InstanceUrl(block)), "Delimiters not placed correctly") << end << " " << count;
        }
    }
}

TEST(InstanceUrlField, TextsThatHoldTheDelimitersOfAKeyComeBackFromALongUrl) {
    // what only a URL made elsewhere can hold: delimiters unescaped within the texts
    const struct {
        std::string dbName;  ///< these at their full width
        std::string kienv;
        std::string kitab;
        std::string environment;
        std::string block;
    } cases[] = {
        {"########", "#.#+++++", ".#.#.#.#.#.#.#.#.#", "#.#", Block("########", "#.#", ".#.#.#.#.#.#.#.#.#")},
        {"a/b/c/d/", "E+++++++", "//////////////////", "E", Block("a/b/c/d/", "E", "//////////////////")},
        {"a=b&c=d ", "E+++++++", " + + + + + + + + +", "E", Block("a=b&c=d ", "E", " + + + + + + + + ")},
    };
    for (const auto& entry : cases) {
        const std::string url = "LumenUID://Legacy+QOR1/" + entry.environment + "/" + entry.dbName + "#" + entry.kienv +
                                "#" + entry.kitab + "#0123456789ABCDEF#FEDCBA9876543210.";
        EXPECT_THAT(UrlToUuid(url), Optional(entry.block)) << url;
    }
}

}  // namespace
