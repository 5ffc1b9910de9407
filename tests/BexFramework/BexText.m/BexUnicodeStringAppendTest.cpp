// Growing a text: Append, += and +, null and empty, narrow and wide, itself.

#include "TextTesting.h"

#include <BexUnicodeString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

const std::vector<std::u16string>& KindsOfText() {
    static const std::vector<std::u16string> kinds = {u"",
                                                      u"a",
                                                      u"\u00FF",
                                                      std::u16string(u"n\0l", 3),
                                                      u"exactly15 chars",
                                                      u"narrow and longer than fifteen characters",
                                                      u"\u0161",
                                                      u"wide \u0161 and longer than fifteen characters"};
    return kinds;
}

TEST(BexUnicodeStringAppend, EveryKindBehindEveryKind) {
    for (const std::u16string& left : KindsOfText()) {
        for (const std::u16string& right : KindsOfText()) {
            const std::u16string both = left + right;
            BexUnicodeString appended = Units(left);
            EXPECT_EQ(&appended.Append(Units(right)), &appended);
            EXPECT_EQ(UnitsOf(appended), both);
            EXPECT_EQ(appended.IsWide(), HasWideUnit(both));
            BexUnicodeString added = Units(left);
            EXPECT_EQ(&(added += Units(right)), &added);
            EXPECT_EQ(UnitsOf(added), both);
            const BexUnicodeString first = Units(left);
            const BexUnicodeString second = Units(right);
            EXPECT_EQ(UnitsOf(first + second), both);
            EXPECT_EQ(UnitsOf(Units(left) + second), both);
            EXPECT_EQ(UnitsOf(first + Units(right)), both);
            EXPECT_EQ(UnitsOf(first), left);
            EXPECT_EQ(UnitsOf(second), right);
        }
    }
}

TEST(BexUnicodeStringAppend, NarrowTextEndsAtItsNul) {
    for (const std::u16string& units : KindsOfText()) {
        const std::u16string both = units + u"x\u00E9";
        BexUnicodeString appended = Units(units);
        EXPECT_EQ(&appended.Append("x\xE9\0y"), &appended);
        EXPECT_EQ(UnitsOf(appended), both);
        BexUnicodeString added = Units(units);
        EXPECT_EQ(&(added += "x\xE9\0y"), &added);
        EXPECT_EQ(UnitsOf(added), both);
        const BexUnicodeString text = Units(units);
        EXPECT_EQ(UnitsOf(text + "x\xE9\0y"), both);
        EXPECT_EQ(UnitsOf(Units(units) + "x\xE9\0y"), both);
        EXPECT_EQ(UnitsOf("x\xE9\0y" + text), u"x\u00E9" + units);
    }
}

TEST(BexUnicodeStringAppend, EveryByteAsACharacter) {
    for (const std::u16string_view units : {u"a", u"\u0161"}) {
        BexUnicodeString text = Units(units);
        BexUnicodeString added = Units(units);
        std::u16string expected(units);
        for (unsigned byte = 0; byte <= 0xFF; ++byte) {
            text.Append(BexUnicodeChar(static_cast<char>(byte)));
            added += static_cast<char>(byte);
            expected += static_cast<char16_t>(byte);
        }
        EXPECT_EQ(UnitsOf(text), expected);
        EXPECT_EQ(UnitsOf(added), expected);
    }
}

TEST(BexUnicodeStringAppend, CodeUnitInEveryForm) {
    for (const char16_t unit : {char16_t{0}, u'a', u'\u00FF', u'\u0100', u'\uFFFF'}) {
        for (const std::u16string& units : KindsOfText()) {
            const std::u16string behind = units + unit;
            const BexUnicodeString text = Units(units);
            BexUnicodeString appended(text);
            EXPECT_EQ(&appended.Append(BexUnicodeChar(unit)), &appended);
            EXPECT_EQ(UnitsOf(appended), behind);
            BexUnicodeString added(text);
            EXPECT_EQ(&(added += BexUnicodeChar(unit)), &added);
            EXPECT_EQ(UnitsOf(added), behind);
            BexUnicodeString addedUnit(text);
            EXPECT_EQ(&(addedUnit += unit), &addedUnit);
            EXPECT_EQ(UnitsOf(addedUnit), behind);
            EXPECT_EQ(UnitsOf(text + BexUnicodeChar(unit)), behind);
            EXPECT_EQ(UnitsOf(BexUnicodeChar(unit) + text), unit + units);
        }
    }
}

TEST(BexUnicodeStringAppend, NothingMakesANullStringEmpty) {
    const BexUnicodeString null;
    const BexUnicodeString empty("");
    const char* const noText = nullptr;
    for (const BexUnicodeString& nothing : {null, empty}) {
        for (const BexUnicodeString& kind : {null, empty}) {
            BexUnicodeString appended(kind);
            appended.Append(nothing);
            EXPECT_EQ(appended.IsNull(), 0);
            BexUnicodeString added(kind);
            added += nothing;
            EXPECT_EQ(added.IsNull(), 0);
            const BexUnicodeString sum = kind + nothing;
            EXPECT_EQ(sum.IsNull(), 0);
            EXPECT_EQ(sum.IsEmpty(), 1);
            EXPECT_EQ((BexUnicodeString(kind) + nothing).IsNull(), 0);
        }
    }
    for (const char* const narrow : {noText, ""}) {
        BexUnicodeString appended;
        appended.Append(narrow);
        EXPECT_EQ(appended.IsNull(), 0);
        EXPECT_EQ(appended.IsEmpty(), 1);
        BexUnicodeString added;
        added += narrow;
        EXPECT_EQ(added.IsNull(), 0);
        EXPECT_EQ((null + narrow).IsNull(), 0);
        EXPECT_EQ((BexUnicodeString() + narrow).IsNull(), 0);
        EXPECT_EQ((narrow + null).IsNull(), 0);
    }
}

TEST(BexUnicodeStringAppend, NullPointerCountsAsNoText) {
    const char* const noText = nullptr;
    for (const std::u16string& units : KindsOfText()) {
        BexUnicodeString text = Units(units);
        text.Append(noText);
        text += noText;
        EXPECT_EQ(UnitsOf(text), units);
        EXPECT_EQ(UnitsOf(text + noText), units);
        EXPECT_EQ(UnitsOf(noText + text), units);
    }
}

TEST(BexUnicodeStringAppend, StringMayBeItsOwnArgument) {
    for (const std::u16string& units : KindsOfText()) {
        BexUnicodeString appended = Units(units);
        appended.Append(appended);
        EXPECT_EQ(UnitsOf(appended), units + units);
        BexUnicodeString added = Units(units);
        added += added;
        EXPECT_EQ(UnitsOf(added), units + units);
        BexUnicodeString sum = Units(units);
        sum = sum + sum;
        EXPECT_EQ(UnitsOf(sum), units + units);
        BexUnicodeString reused = Units(units);
        EXPECT_EQ(UnitsOf(std::move(reused) + reused), units + units);  // NOLINT(bugprone-use-after-move)
    }
    BexUnicodeString null;
    null.Append(null);
    EXPECT_EQ(null.IsNull(), 0);
    EXPECT_EQ(null.IsEmpty(), 1);
}

TEST(BexUnicodeStringAppend, OwnNarrowTextMayBeAppended) {
    for (const std::string narrow : {"", "a", "exactly15 chars", "narrow and longer than fifteen characters"}) {
        BexUnicodeString text(narrow.c_str());
        text.Append(text.ConvertToChar());
        EXPECT_EQ(text.ConvertToChar(), narrow + narrow);
        text += text.ConvertToChar() + narrow.size();
        EXPECT_EQ(text.ConvertToChar(), narrow + narrow + narrow);
        text = text + text.ConvertToChar();
        EXPECT_EQ(text.GetLengthInChar(), static_cast<int>(6 * narrow.size()));
    }
    BexUnicodeString wide = Units(u"\u0161a");
    wide.Append(wide.ConvertToChar());
    EXPECT_EQ(UnitsOf(wide), u"\u0161a?a");
    wide += wide.ConvertToChar();
    EXPECT_EQ(UnitsOf(wide), u"\u0161a?a?a?a");
}

TEST(BexUnicodeStringAppend, OwnCharacterMayBeAppended) {
    BexUnicodeString text = Units(u"a\u0161");
    text.Append(text[1]);
    text += text[0];
    EXPECT_EQ(UnitsOf(text), u"a\u0161\u0161a");
}

TEST(BexUnicodeStringAppend, GrowsCharacterByCharacterToAMillion) {
    constexpr int kCount = 1'000'000;
    BexUnicodeString narrow;
    BexUnicodeString wide = Units(u"\u0161");
    for (int count = 0; count < kCount; ++count) {
        narrow += static_cast<char>('a' + count % 26);
        wide += static_cast<char>('a' + count % 26);
    }
    ASSERT_EQ(narrow.GetLengthInChar(), kCount);
    ASSERT_EQ(wide.GetLengthInChar(), kCount + 1);
    for (const int pos : {0, 1, 25, 26, kCount / 2, kCount - 1}) {
        EXPECT_EQ(narrow[pos].ConvertToChar(), static_cast<char>('a' + pos % 26));
        EXPECT_EQ(wide[pos + 1].ConvertToChar(), static_cast<char>('a' + pos % 26));
    }
}

/** A string as the simplest thing that could be right: code units and a flag. */
struct Model {
    std::u16string units;
    bool null = true;
};

void ExpectSame(const BexUnicodeString& iText, const Model& iModel) {
    std::string narrow;
    for (const char16_t unit : iModel.units) {
        narrow += unit > 0xFF ? '?' : static_cast<char>(unit);
    }
    const std::size_t length = static_cast<std::size_t>(iText.GetLengthInChar());
    ASSERT_EQ(UnitsOf(iText), iModel.units);
    ASSERT_EQ(iText.IsNull(), iModel.null ? 1 : 0);
    ASSERT_EQ(iText.IsEmpty(), iModel.units.empty() ? 1 : 0);
    ASSERT_EQ(std::string(iText.ConvertToChar(), length + 1), narrow + '\0');
    ASSERT_EQ(iText.IsWide(), HasWideUnit(iModel.units));
}

TEST(BexUnicodeStringAppend, AgreesWithTheModelOverRandomChanges) {
    constexpr int kChanges = 60'000;
    constexpr std::size_t kPool = 4;
    const std::u16string alphabet = {0, u'a', u'b', 0x00FF, 0x0161, 0xFFFF};
    std::mt19937 random(20040229);
    const auto below = [&random](std::size_t iEnd) { return static_cast<std::size_t>(random()) % iEnd; };
    std::vector<BexUnicodeString> texts(kPool);
    std::vector<Model> models(kPool);
    for (int change = 0; change < kChanges; ++change) {
        const std::size_t target = below(kPool);
        const std::size_t source = below(kPool);
        BexUnicodeString& text = texts[target];
        Model& model = models[target];
        const char16_t unit = alphabet[below(alphabet.size())];
        switch (below(9)) {
            case 0:
                text.Append(BexUnicodeChar(unit));
                model = {model.units + unit, false};
                break;
            case 1:
                text.Append(texts[source]);
                model = {model.units + models[source].units, false};
                break;
            case 2:
                text = texts[source];
                model = Model(models[source]);
                break;
            case 3:
                text = std::move(texts[source]);
                if (source != target) {
                    model = std::exchange(models[source], Model{});
                } else {
                    text = BexUnicodeString();  // what a move to itself leaves is left open
                    model = Model{};
                }
                break;
            case 4: {
                const std::size_t begin = below(model.units.size() + 1);
                const std::size_t length = below(model.units.size() + 2);
                text = text.SubString(static_cast<int>(begin), static_cast<int>(length));
                model = {model.units.substr(begin, length), false};
                break;
            }
            case 5: {
                const std::u16string old(1, unit);
                const std::size_t found = model.units.find(old);
                ASSERT_EQ(text.ReplaceSubString(Units(old), texts[source]),
                          found == std::u16string::npos ? -1 : static_cast<int>(found));
                if (found != std::u16string::npos) {
                    model.units.replace(found, 1, std::u16string(models[source].units));
                }
                break;
            }
            case 6:
                text = text.Strip(4, unit);
                model.units.erase(std::remove(model.units.begin(), model.units.end(), unit), model.units.end());
                model.null = false;
                break;
            case 7:
                text = texts[source] + text;
                model = {models[source].units + model.units, false};
                break;
            default:
                if (below(4) == 0) {
                    text.Reset();
                    model = Model{};
                }
                break;
        }
        if (model.units.size() > 60) {
            text = text.SubString(0, 5);
            model = {model.units.substr(0, 5), false};
        }
        ASSERT_NO_FATAL_FAILURE(ExpectSame(text, model)) << "change " << change;
        ASSERT_NO_FATAL_FAILURE(ExpectSame(texts[source], models[source])) << "change " << change;
    }
}

}  // namespace
