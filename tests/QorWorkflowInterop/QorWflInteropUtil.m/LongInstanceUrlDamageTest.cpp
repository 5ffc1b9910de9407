#include "NaiveUrl.h"
#include "UrlTesting.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Long instance URLs with one or two changes, all of them, against the naive version.

namespace {

using UrlTesting::UrlToUuid;

const std::string kUrl =
    "LumenUID://Legacy+QOR1/E.1/D.B+++++#E.1+++++#T?B+++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T?B?c=1";

void ExpectAsNaively(const std::string& iUrl) {
    ASSERT_EQ(UrlToUuid(iUrl), NaiveUrl::UrlToUuid(iUrl)) << iUrl;
}

const std::string kOthers("#./?+% 4x\0\xFF", 11);

TEST(LongInstanceUrlDamage, UrlItselfIsAnInstance) {
    EXPECT_TRUE(UrlToUuid(kUrl).has_value());
}

TEST(LongInstanceUrlDamage, UrlMayEndAnywhere) {
    for (std::size_t length = 0; length <= kUrl.size(); ++length) {
        ExpectAsNaively(kUrl.substr(0, length));
        ExpectAsNaively(kUrl.substr(0, length) + "?");
    }
}

TEST(LongInstanceUrlDamage, AnyCharacterMayBeMissingOrDoubled) {
    for (std::size_t first = 0; first < kUrl.size(); ++first) {
        std::string missing = kUrl;
        missing.erase(first, 1);
        ExpectAsNaively(missing);
        for (std::size_t second = 0; second <= missing.size(); ++second) {
            for (const char other : kOthers) {
                std::string moved = missing;
                ExpectAsNaively(moved.insert(second, 1, other));
            }
        }
        std::string doubled = kUrl;
        ExpectAsNaively(doubled.insert(first, 1, kUrl[first]));
    }
}

TEST(LongInstanceUrlDamage, AnyTwoCharactersMayBeOthers) {
    for (std::size_t first = 0; first < kUrl.size(); ++first) {
        for (const char one : kOthers) {
            std::string url = kUrl;
            url[first] = one;
            for (std::size_t second = first + 1; second < kUrl.size(); ++second) {
                const char before = url[second];
                for (const char other : kOthers) {
                    url[second] = other;
                    ASSERT_EQ(UrlToUuid(url), NaiveUrl::UrlToUuid(url)) << url;
                }
                url[second] = before;
            }
        }
    }
}

TEST(LongInstanceUrlDamage, ShortTextsBehindThePrefixAreNoInstances) {
    UrlTesting::ForEachText({"/", "?", "#", ".", "+", "E"}, 5, [](const std::string& iText) {
        ASSERT_FALSE(UrlToUuid("LumenUID://Legacy+QOR1/" + iText).has_value()) << iText;
    });
}

}  // namespace
