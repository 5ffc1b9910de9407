#include "JsonUuid.h"

#include "UrlText.h"

#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace {

using namespace QorWflUuidLayout;

constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
constexpr std::string_view kLongPrefix = "LumenUID://Legacy+QOR1/";
constexpr std::string_view kShortPrefix = "qor://";

bool IsHex(std::string_view iText) {
    return iText.find_first_not_of(kHexDigits) == std::string_view::npos;
}

/** The value of one hexadecimal digit. */
int DigitValue(char iDigit) {
    const auto position = static_cast<int>(kHexDigits.find(iDigit));
    return position < 16 ? position : position - 6;
}

/** Refuses a text that is too long for its field. */
void RequireWidth(const JsonPlace& iPlace, std::size_t iLength, Field iField) {
    if (iLength > static_cast<std::size_t>(iField.width)) {
        iPlace.Refuse("expected at most " + std::to_string(iField.width) + " characters, found " +
                      std::to_string(iLength));
    }
}

/** Puts a text into its field of a blank block. */
void PutText(const JsonPlace& iPlace, Field iField, std::string& ioBlock) {
    const std::string text = iPlace.RequiredText();
    RequireWidth(iPlace, text.size(), iField);
    std::copy(text.begin(), text.end(), ioBlock.begin() + iField.offset);
}

/** Puts the bytes that hexadecimal digits name into their field. */
void PutIdentifier(const JsonPlace& iPlace, Field iField, std::string& ioBlock) {
    const std::string digits = iPlace.RequiredText();
    const std::size_t expected = 2 * static_cast<std::size_t>(iField.width);
    if (digits.size() != expected || !IsHex(digits)) {
        iPlace.RefuseOther("exactly " + std::to_string(expected) + " hexadecimal digits");
    }
    for (std::size_t i = 0; i < expected; i += 2) {
        ioBlock[static_cast<std::size_t>(iField.offset) + i / 2] =
            static_cast<char>(DigitValue(digits[i]) * 16 + DigitValue(digits[i + 1]));
    }
}

UuidPlaces PlacesOf(const JsonPlace& iPlace) {
    iPlace.RequireObject({"dbName", "environment", "table", "coid", "compid"});
    return {iPlace.Member("dbName"), iPlace.Member("environment"), iPlace.Member("table"), iPlace.Member("coid"),
            iPlace.Member("compid")};
}

/** The digits of both identifiers in a long instance URL that the library has parsed. */
std::string LongUrlDigits(const std::string& iUrl) {
    // behind prefix and environment: DbName#Kienv#Kitab#XCoid#XCompid.
    const std::size_t key = iUrl.find('/', kLongPrefix.size()) + 1;
    const std::size_t coid = key + static_cast<std::size_t>(kXCoid.offset) + 3;
    const std::size_t count = 2 * static_cast<std::size_t>(kXCoid.width);
    return iUrl.substr(coid, count) + iUrl.substr(coid + count + 1, count);
}

/** The digits of both identifiers in a short instance URL that the library has parsed; refuses texts it has cut. */
std::string ShortUrlDigits(const std::string& iUrl, const JsonPlace& iPlace) {
    // behind the prefix: DbName/Kienv.Kitab/XCoidXCompid
    const std::size_t start = kShortPrefix.size();
    const BexUnicodeString decoded =
        DecodeUrlText(BexUnicodeString::FromNarrow(iUrl.substr(start, iUrl.find('?', start) - start)));
    const std::string body(decoded.NarrowView());
    const std::size_t kienv = body.find('/') + 1;
    const std::size_t kitab = body.find('.', kienv) + 1;
    const std::size_t digits = body.find('/', kitab) + 1;
    RequireWidth(iPlace, kienv - 1, kDbName);
    RequireWidth(iPlace, kitab - kienv - 1, kKienv);
    RequireWidth(iPlace, digits - kitab - 1, kKitab);
    return body.substr(digits);
}

std::string ReadUrl(const JsonPlace& iPlace) {
    const std::string url = iPlace.RequiredText();
    const std::unique_ptr<char, QorWflUuidDeleter> block(QorWflUrlUtil::UrlToUuid(BexUnicodeString::FromNarrow(url)));
    if (!block) {
        iPlace.RefuseOther("an instance URL (LumenUID://Legacy+QOR1/... or qor://...)");
    }
    // The library makes bytes of whatever stands in the place of the digits.
    if (!IsHex(url.starts_with(kLongPrefix) ? LongUrlDigits(url) : ShortUrlDigits(url, iPlace))) {
        iPlace.RefuseOther("an instance URL with hexadecimal identifiers");
    }
    return std::string(block.get(), kBlockSize);
}

}  // namespace

std::string ReadUuidPlaces(const UuidPlaces& iPlaces) {
    std::string block(kBlockSize, ' ');
    PutText(iPlaces.dbName, kDbName, block);
    PutText(iPlaces.environment, kKienv, block);
    PutText(iPlaces.table, kKitab, block);
    PutIdentifier(iPlaces.coid, kXCoid, block);
    PutIdentifier(iPlaces.compid, kXCompid, block);
    return block;
}

std::string ReadJsonUuid(const JsonPlace& iPlace) {
    if (iPlace.IsObject()) {
        return ReadUuidPlaces(PlacesOf(iPlace));
    }
    if (iPlace.IsText()) {
        return ReadUrl(iPlace);
    }
    iPlace.RefuseOther("a UUID (an object with dbName, environment, table, coid and compid, or an instance URL)");
}
