// Names that all have the same hash in Xerces-C's tables, which would take seconds to read: more than 512 in one chain
// of a document's table or 1,024 in one of the scanner's are refused.

#include <BexDom.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

/** Distinct names of one hash, whatever the size of a table: "ah" and "bB" add the same to it. */
Names Colliding(int iCount, const std::string& iPrefix = "") {
    Names names;
    for (int number = 0; number < iCount; ++number) {
        std::string name = iPrefix;
        for (int bit = 0; bit < 14; ++bit) {
            name += (number >> bit & 1) != 0 ? "ah" : "bB";
        }
        names.push_back(name);
    }
    return names;
}

/** The hash of Xerces-C, without the reduction to the size of a table. */
std::uint64_t HashOf(const std::string& iName) {
    std::size_t hash = 0;
    for (const char character : iName) {
        hash = hash * 38 + (hash >> 24U) + static_cast<unsigned char>(character);
    }
    return hash;
}

/** Distinct names that come to the first place of tables of one size. */
Names InOnePlaceOf(std::uint64_t iPlaces, std::size_t iCount) {
    Names names;
    for (int number = 0; names.size() < iCount; ++number) {
        const std::string name = "n" + std::to_string(number);
        if (HashOf(name) % iPlaces == 0) {
            names.push_back(name);
        }
    }
    return names;
}

std::string Elements(const Names& iNames) {
    std::string text = "<r>";
    for (const std::string& name : iNames) {
        text += "<" + name + "/>";
    }
    return text + "</r>";
}

std::string Attributes(const Names& iNames) {
    std::string text = "<r>";
    for (const std::string& name : iNames) {
        text += "<e " + name + "=''/>";
    }
    return text + "</r>";
}

TEST(DomParserNameHash, MoreThanTheAllowedNamesOfOneHashAreRefused) {
    EXPECT_EQ(ErrorOf(Elements(Colliding(512))), "");
    EXPECT_EQ(ErrorOf(Attributes(Colliding(512))), "");
    // behind "<r>", 512 tags of 31 characters and "<"; behind "<r>", 512 tags of 36 characters and "<e "
    EXPECT_EQ(ErrorOf(Elements(Colliding(513))), "1:15877: too many names have the same hash");
    EXPECT_EQ(ErrorOf(Attributes(Colliding(513))), "1:18439: too many names have the same hash");
    EXPECT_NE(ErrorOf(Elements(Colliding(16000))), "");
}

TEST(DomParserNameHash, NamesOfElementsAndAttributesShareATable) {
    const Names names = Colliding(600);
    const Names half(names.begin(), names.begin() + 300);
    const Names otherHalf(names.begin() + 300, names.end());
    EXPECT_NE(ErrorOf("<a>" + Elements(half) + Attributes(otherHalf) + "</a>"), "");
    EXPECT_EQ(ErrorOf("<a>" + Elements(half) + Attributes(half) + "</a>"), "") << "names of both stand there once";
}

TEST(DomParserNameHash, PlacesOfTablesOfEverySizeAreWatched) {
    EXPECT_EQ(ErrorOf(Elements(InOnePlaceOf(257, 512))), "");
    EXPECT_NE(ErrorOf(Elements(InOnePlaceOf(257, 513))), "");
    EXPECT_NE(ErrorOf(Attributes(InOnePlaceOf(257, 513))), "");
    // the table of element names grows: 109, 219, 439, 879, 1759 places and so on, and is three quarters full at most
    EXPECT_NE(ErrorOf(Elements(InOnePlaceOf(1759, 1100))), "");
    EXPECT_EQ(ErrorOf(Elements(InOnePlaceOf(1759, 1024))), "");
    EXPECT_EQ(ErrorOf(Attributes(InOnePlaceOf(1759, 1100))), "");  // attributes are not in that table
    EXPECT_EQ(ErrorOf(Elements(InOnePlaceOf(3519, 1024))), "");
    EXPECT_NE(ErrorOf(Elements(InOnePlaceOf(3519, 1400))), "");
    EXPECT_NE(ErrorOf(Elements(InOnePlaceOf(7039, 3000))), "");
}

TEST(DomParserNameHash, IsTheSameInEveryEncoding) {
    const Names names = Colliding(600, "\xC3\xA4");
    EXPECT_NE(ErrorOf(Elements(names)), "");
    std::string latin = Elements(Colliding(600, "\xE4"));
    for (const char* encoding : {"ISO-8859-1", "windows-1252", "KOI8-R"}) {
        EXPECT_NE(ErrorOf(std::string("<?xml version='1.0' encoding='") + encoding + "'?>" + latin), "") << encoding;
    }
    const std::string narrow = Elements(Colliding(600));
    const std::u16string wide = u"\uFEFF" + std::u16string(narrow.begin(), narrow.end());
    EXPECT_NE(ErrorOf(std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(char16_t))), "");
}

TEST(DomParserNameHash, UsualNamesAreFarFromIt) {
    const std::pair<const char*, std::function<std::string(int)>> kinds[] = {
        {"numbers", [](int iNumber) { return "n" + std::to_string(iNumber); }},
        {"hundreds", [](int iNumber) { return "n" + std::to_string(iNumber * 100); }},
        {"millions", [](int iNumber) { return "n" + std::to_string(1'000'000 + iNumber * 100); }},
        {"numbers with an end", [](int iNumber) { return "n" + std::to_string(iNumber) + "_x"; }},
        {"five digits with an end", [](int iNumber) { return "n" + std::to_string(10'000 + iNumber) + "_x"; }},
        {"rows", [](int iNumber) { return "row" + std::to_string(10'000 + iNumber) + "ID"; }},
        {"two letters",
         [](int iNumber) {
             std::string name;
             for (int bit = 0; bit < 14; ++bit) {
                 name += (iNumber >> bit & 1) != 0 ? 'a' : 'b';
             }
             return name;
         }},
        {"words",
         [](int iNumber) { return "item-" + std::to_string(iNumber / 128) + "." + std::to_string(iNumber % 128); }},
    };
    for (const auto& [kind, nameOf] : kinds) {
        Names names(16383);
        std::generate(names.begin(), names.end(),
                      [&nameOf = nameOf, number = 0]() mutable { return nameOf(number++); });
        EXPECT_EQ(ErrorOf(Attributes(names)), "") << kind;
        EXPECT_EQ(ErrorOf(Elements(names)), "") << kind;
        names.resize(10'560);  // the most that a table of 14,079 places holds
        EXPECT_EQ(ErrorOf(Elements(names)), "") << kind;
    }
}

}  // namespace
