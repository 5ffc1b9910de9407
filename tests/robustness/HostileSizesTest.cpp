// Documents that are large or that want to be: what is beyond a limit is refused before it costs anything, and what is
// read costs memory in proportion. Memory is counted, because time depends on what else the machine does.

#include "RefusedMemory.h"

#include <BexDom.h>
#include <QorWflXmlToActivity.h>

#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <XmlText.h>
#include <XpdlReply.h>
#include <functional>
#include <iostream>
#include <regex>
#include <set>
#include <string>
#include <utility>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kHuge = 10'000'000;
#else
constexpr std::size_t kHuge = 100'000'000;
#endif

std::string Repeated(const std::string& iText, std::size_t iCount) {
    std::string text;
    text.reserve(iText.size() * iCount);
    for (std::size_t count = 0; count < iCount; ++count) {
        text += iText;
    }
    return text;
}

std::string Numbered(const std::string& iStart, const std::string& iEnd, int iCount) {
    std::string text;
    for (int number = 0; number < iCount; ++number) {
        text += iStart + std::to_string(number) + iEnd;
    }
    return text;
}

/** What goes into a reply in front of its first element, where the reader ignores it. */
struct Ballast {
    const char* name;
    int limit;
    std::function<std::string(int)> text;  ///< so much of it that the whole reply is of that size
};

const Ballast kBallasts[] = {
    {"nesting", 1024,
     [](int iSize) {
         const auto depth = static_cast<std::size_t>(iSize - 1);  // below the root
         return Repeated("<a>", depth) + Repeated("</a>", depth);
     }},
    {"attributes", 1024, [](int iSize) { return "<a " + Numbered("n", "='' ", iSize) + "/>"; }},
    {"element names", 16384, [](int iSize) { return Numbered("<n", "/>", iSize); }},
    {"attribute names", 16384, [](int iSize) { return Numbered("<a n", "=''/>", iSize); }},
};

std::string ReplyWith(const std::string& iBallast) {
    std::string reply = XpdlReply();
    return reply.insert(reply.find("<PackageHeader>"), iBallast);
}

/** The distinct names of a kind that the reply has itself. */
int OwnNames(const std::string& iKind) {
    std::set<std::string> names;
    const std::string reply = XpdlReply();
    const std::regex name(iKind == "element names" ? "<([A-Z]\\w*)" : " ([A-Z]\\w*)=");
    for (std::sregex_iterator found(reply.begin(), reply.end(), name); found != std::sregex_iterator(); ++found) {
        names.insert((*found)[1]);
    }
    return iKind == "element names" || iKind == "attribute names" ? static_cast<int>(names.size()) : 0;
}

/** Whether a reply with so much ballast is read; if not, the record is untouched. */
bool IsRead(const Ballast& iBallast, int iSize) {
    const CapturedStream errors(std::cerr);
    const ActivityFields fields = FieldsAfterReading(ReplyWith(iBallast.text(iSize)));
    const bool isRead = errors.Text().empty();
    EXPECT_EQ(fields, isRead ? NewFields() : OldFields()) << iBallast.name << " " << iSize;
    return isRead;
}

TEST(HostileSizes, ReaderTakesWhatIsWithinTheLimitsAndRefusesTheRest) {
    for (const Ballast& ballast : kBallasts) {
        const int limit = ballast.limit - OwnNames(ballast.name);
        EXPECT_TRUE(IsRead(ballast, limit - 1)) << ballast.name;
        EXPECT_TRUE(IsRead(ballast, limit)) << ballast.name;
        EXPECT_FALSE(IsRead(ballast, limit + 1)) << ballast.name;
        EXPECT_FALSE(IsRead(ballast, limit * 2)) << ballast.name;
    }
}

/** The bytes that are asked for while a text is parsed. */
std::size_t BytesFor(const std::string& iText, bool iIsDocument) {
    const TextSource source(iText);
    DOMParser parser;
    const std::size_t before = RefusedMemory::RequestedBytes();
    parser.parse(source.Get());
    const std::size_t bytes = RefusedMemory::RequestedBytes() - before;
    EXPECT_EQ(!parser.getDocument().isNull(), iIsDocument);
    return bytes;
}

TEST(HostileSizes, WhatIsFarBeyondALimitCostsNoMoreThanTheLimit) {
    Parsed("<first-use/>");
    for (const Ballast& ballast : kBallasts) {
        const std::size_t little = BytesFor("<r>" + ballast.text(2 * ballast.limit), false);
        const std::size_t much = BytesFor("<r>" + ballast.text(60 * ballast.limit), false);
        EXPECT_LE(much, little + 4096) << ballast.name;
        EXPECT_LT(much, std::size_t{4} << 20) << ballast.name;
    }
}

TEST(HostileSizes, EntityBombsAreRefusedBeforeTheyCostAnything) {
    Parsed("<first-use/>");
    std::string laughs = "<!DOCTYPE a [<!ENTITY e0 'lol'>";
    for (int level = 1; level <= 60; ++level) {
        const std::string below = "&e" + std::to_string(level - 1) + ";";
        laughs += "<!ENTITY e" + std::to_string(level) + " '" + Repeated(below, 10) + "'>";
    }
    const std::string bombs[] = {
        laughs + "]><a>&e60;</a>",
        "<!DOCTYPE a [<!ENTITY e '" + std::string(1'000'000, 'x') + "'>]><a>" + Repeated("&e;", 100'000) + "</a>",
        "<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"&#38;e;\">'> %p;]><a>&e;</a>",
        "<!DOCTYPE a [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><a>&a;</a>",
        "<!DOCTYPE a [<!ATTLIST a b CDATA '" + std::string(1'000'000, 'x') + "'>]><a>" + Repeated("<a/>", 100'000) +
            "</a>",
    };
    for (const std::string& bomb : bombs) {
        EXPECT_LT(BytesFor(bomb, false), 100'000U) << bomb.substr(0, 60);
    }
}

TEST(HostileSizes, MemoryGrowsInProportion) {
    Parsed("<first-use/>");
    const std::pair<const char*, std::function<std::string(std::size_t)>> shapes[] = {
        {"text", [](std::size_t iSize) { return "<a>" + std::string(iSize, 'x') + "</a>"; }},
        {"name", [](std::size_t iSize) { return "<" + std::string(iSize, 'x') + "/>"; }},
        {"attribute name", [](std::size_t iSize) { return "<a " + std::string(iSize, 'x') + "=''/>"; }},
        {"attribute value", [](std::size_t iSize) { return "<a b='" + std::string(iSize, 'x') + "'/>"; }},
        {"comment", [](std::size_t iSize) { return "<a><!--" + std::string(iSize, 'x') + "--></a>"; }},
        {"instruction", [](std::size_t iSize) { return "<a><?t " + std::string(iSize, 'x') + "?></a>"; }},
        {"CDATA section", [](std::size_t iSize) { return "<a><![CDATA[" + std::string(iSize, 'x') + "]]></a>"; }},
        {"blanks", [](std::size_t iSize) { return "<a" + std::string(iSize, ' ') + "/>"; }},
        {"elements", [](std::size_t iSize) { return "<a>" + Repeated("<b/>", iSize / 4) + "</a>"; }},
        {"references", [](std::size_t iSize) { return "<a>" + Repeated("&lt;", iSize / 4) + "</a>"; }},
    };
    for (const auto& [name, shape] : shapes) {
        const std::size_t small = BytesFor(shape(1'000'000), true);
        const std::size_t large = BytesFor(shape(8'000'000), true);
        EXPECT_LT(large, small * 17) << name << ": eight times the text, " << small << " and " << large << " bytes";
        EXPECT_LT(large, 8'000'000U * 60) << name;
    }
}

TEST(HostileSizes, HugeTextsAndNamesAreReadOrRefused) {
    EXPECT_LT(BytesFor("<a>" + std::string(kHuge, 'x') + "</a>", true), kHuge * 20);
    EXPECT_LT(BytesFor("<a b='" + std::string(kHuge, 'x') + "'/>", true), kHuge * 20);
    EXPECT_LT(BytesFor("<" + std::string(kHuge, 'x') + "/>", true), kHuge * 20);
    EXPECT_LT(BytesFor("<" + std::string(kHuge, 'x'), false), kHuge * 20);
    EXPECT_LT(BytesFor(std::string(kHuge, 'x'), false), kHuge * 20);
    EXPECT_LT(BytesFor(std::string(kHuge, '<'), false), kHuge * 20);
}

TEST(HostileSizes, HugeFieldIsReadIntoTheRecord) {
    const std::string text(kHuge / 4, 'x');
    const std::string reply = WithPart(XpdlReply(), "new documentation", text);
    ActivityInfo activity;
    QorWflXmlToActivity(BexUnicodeString(reply.data(), static_cast<int>(reply.size())), activity);
    EXPECT_EQ(activity.documentation.GetLengthInChar(), static_cast<int>(text.size()));
    EXPECT_EQ(activity.extid, "new extid");
}

}  // namespace
