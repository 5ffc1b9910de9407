#include "QorWflUrlUtil.h"

#include "QorWflUuidLayout.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>

namespace {

BexQorTrace trace("WFInteropUrl", "WFInteropUrl", "STDOUT", 1024);

// ---------------------------------------------------------------------------------------------------- codecs

constexpr char kHexDigits[] = "0123456789ABCDEF";
constexpr int kNoDigit = -1;

constexpr bool IsAlphanumeric(unsigned char iCode) {
    return (iCode >= '0' && iCode <= '9') || (iCode >= 'A' && iCode <= 'Z') || (iCode >= 'a' && iCode <= 'z');
}

/** For each byte whether it stands for itself in a URL; the C locale's letters and digits, whatever the locale. */
constexpr std::array<bool, 256> MakePlainTable() {
    std::array<bool, 256> plain{};
    for (unsigned int code = 0; code < plain.size(); ++code) {
        plain[code] = IsAlphanumeric(static_cast<unsigned char>(code));
    }
    for (const char mark : {'.', '-', '*', '_'}) {
        plain[static_cast<unsigned char>(mark)] = true;
    }
    return plain;
}

constexpr std::array<bool, 256> kPlain = MakePlainTable();

/** For each byte its value as a hexadecimal digit, or kNoDigit. */
constexpr std::array<signed char, 256> MakeDigitTable() {
    std::array<signed char, 256> values{};
    for (signed char& value : values) {
        value = kNoDigit;
    }
    for (int value = 0; value < 16; ++value) {
        const char digit = kHexDigits[value];
        values[static_cast<unsigned char>(digit)] = static_cast<signed char>(value);
        if (value >= 10) {
            values[static_cast<unsigned char>(digit - 'A' + 'a')] = static_cast<signed char>(value);
        }
    }
    return values;
}

constexpr std::array<signed char, 256> kDigitValues = MakeDigitTable();

int DigitValue(char iCharacter) {
    return kDigitValues[static_cast<unsigned char>(iCharacter)];
}

/** What a scan for a hexadecimal byte yields. */
struct ScannedByte {
    bool found;
    unsigned char value;
};

/**
 * Reads a byte as the C library's `%2X` does in the C locale: white space first, however much, then two characters at
 * the most, of which the first may be a sign, or "0x" with no digit behind it, which counts as 0.
 */
ScannedByte ScanHexByte(std::string_view iText) {
    if (iText.size() >= 2 && DigitValue(iText[0]) >= 0 && DigitValue(iText[1]) >= 0) {
        return {true, static_cast<unsigned char>(DigitValue(iText[0]) * 16 + DigitValue(iText[1]))};
    }
    constexpr std::string_view kWhiteSpace(" \t\n\v\f\r");
    iText.remove_prefix(std::min(iText.find_first_not_of(kWhiteSpace), iText.size()));
    if (iText.empty()) {
        return {false, 0};
    }
    const char first = iText[0];
    const int second = iText.size() < 2 ? kNoDigit : DigitValue(iText[1]);
    if (first == '+' || first == '-') {
        return {second >= 0, static_cast<unsigned char>(first == '-' ? -second : second)};
    }
    if (DigitValue(first) < 0) {
        return {false, 0};
    }
    return {true, static_cast<unsigned char>(second < 0 ? DigitValue(first) : DigitValue(first) * 16 + second)};
}

/** The narrow form of a text, NUL characters included; valid as long as the text. */
std::string_view NarrowForm(const BexUnicodeString& iText) {
    return std::string_view(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

void AppendEncoded(std::string& ioText, char iCharacter) {
    const auto code = static_cast<unsigned char>(iCharacter);
    if (kPlain[code]) {
        ioText += iCharacter;
    } else if (iCharacter == ' ') {
        ioText += '+';
    } else {
        ioText += '%';
        ioText += kHexDigits[code / 16];
        ioText += kHexDigits[code % 16];
    }
}

BexUnicodeString Encode(const BexUnicodeString& iText) {
    std::string encoded;
    encoded.reserve(static_cast<std::size_t>(iText.GetLengthInChar()) * 2);
    for (const char character : iText.NarrowView()) {
        AppendEncoded(encoded, character);
    }
    for (const char16_t unit : iText.WideView()) {
        AppendEncoded(encoded, BexUnicodeChar(unit).ConvertToChar());
    }
    return BexUnicodeString::FromNarrow(std::move(encoded));
}

/** The narrow character of a code unit that may stand in an escape; those that have none never scan. */
char EscapeCharacter(char iCharacter) {
    return iCharacter;
}

char EscapeCharacter(char16_t iUnit) {
    return iUnit > 0xFF ? '?' : static_cast<char>(iUnit);
}

/** Undoes the encoding; an escape that is none disappears with the two characters behind the percent sign. */
template <typename Unit>
std::basic_string<Unit> DecodeUnits(std::basic_string_view<Unit> iText) {
    constexpr std::size_t kEscapeLength = 2;  // behind the percent sign
    std::basic_string<Unit> decoded;
    decoded.reserve(iText.size());
    for (std::size_t at = 0; at < iText.size(); ++at) {
        const Unit unit = iText[at];
        if (unit == Unit{'+'}) {
            decoded += Unit{' '};
        } else if (unit != Unit{'%'}) {
            decoded += unit;
        } else {
            char escape[kEscapeLength];
            std::size_t length = 0;
            for (const Unit digit : iText.substr(at + 1, kEscapeLength)) {
                const char character = EscapeCharacter(digit);
                escape[length++] = character == '+' ? ' ' : character;  // blanks come first, also in an escape
            }
            const ScannedByte scanned = ScanHexByte(std::string_view(escape, length));
            if (scanned.found) {
                decoded += static_cast<Unit>(scanned.value);
            }
            at += kEscapeLength;
        }
    }
    return decoded;
}

BexUnicodeString Decode(const BexUnicodeString& iText) {
    if (!iText.IsWide()) {
        return BexUnicodeString::FromNarrow(DecodeUnits(iText.NarrowView()));
    }
    const std::u16string decoded = DecodeUnits(iText.WideView());
    return BexUnicodeString(decoded.data(), static_cast<int>(decoded.size()));
}

/** Writes a text into a field of fixed width, cut or padded; nothing terminates it. */
void ToChar(char* oField, int iSize, const BexUnicodeString& iText, char iPad) {
    const std::string_view text = NarrowForm(iText).substr(0, static_cast<std::size_t>(iSize));
    std::memset(oField, iPad, static_cast<std::size_t>(iSize));
    std::memcpy(oField, text.data(), text.size());
}

/** The text of a field of fixed width, without the pads at its end. */
BexUnicodeString FromChar(const char* iField, int iSize, char iPad) {
    while (iSize > 0 && iField[iSize - 1] == iPad) {
        --iSize;
    }
    return BexUnicodeString(iField, iSize);
}

/**
 * The bytes that pairs of digits name. Each pair is scanned from its place on in the whole text, so white space in a
 * pair takes from the next; what names no byte, and the rest of the field, is 0.
 */
void HexToBin(char* oBytes, int iSize, const BexUnicodeString& iHex) {
    const std::string_view hex = NarrowForm(iHex);
    for (int i = 0; i < iSize; ++i) {
        const bool isPair = i < iHex.GetLengthInChar() / 2;
        const ScannedByte scanned =
            isPair ? ScanHexByte(hex.substr(static_cast<std::size_t>(i) * 2)) : ScannedByte{false, 0};
        oBytes[i] = static_cast<char>(scanned.found ? scanned.value : 0);
    }
}

BexUnicodeString BinToHex(const char* iBytes, int iSize) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::BinToHex");
    std::string hex;
    for (int i = 0; i < iSize; ++i) {
        const auto byte = static_cast<unsigned char>(iBytes[i]);
        hex += kHexDigits[byte / 16];
        hex += kHexDigits[byte % 16];
    }
    BexUnicodeString result = BexUnicodeString::FromNarrow(std::move(hex));
    step << "res=[" << result << "]" << std::endl;
    return result;
}

// ---------------------------------------------------------------------------------------------------- URL forms

constexpr const char* kShortScheme = "qor://";
constexpr const char* kShortActionPrefix = "qor://ACTION/";
constexpr const char* kLongScheme = "LumenUID://Legacy+QOR1";
constexpr const char* kLongPrefix = "LumenUID://Legacy+QOR1/";
constexpr const char* kDefaultEnvironment = "default";
constexpr const char* kActionSuffix = "ACTION";
constexpr const char* kContextParm = "context";
constexpr int kFirst = 1;  // modes of SearchSubString
constexpr int kLast = 2;
constexpr char kPad = ' ';

/** Whether a part stands at a position of a text. */
bool StandsAt(const BexUnicodeString& iText, int iPos, const BexUnicodeString& iPart) {
    if (iText.IsWide() || iPart.IsWide()) {
        return iText.SubString(iPos, iPart.GetLengthInChar()) == iPart;
    }
    const std::string_view part = iPart.NarrowView();
    return iText.NarrowView().compare(static_cast<std::size_t>(iPos), part.size(), part) == 0;
}

bool StartsWith(const BexUnicodeString& iText, const char* iBeginning) {
    return StandsAt(iText, 0, iBeginning);
}

/** The part of a text between two positions, empty when the end does not lie behind the start. */
BexUnicodeString Between(const BexUnicodeString& iText, int iStart, int iEnd) {
    return iText.SubString(iStart, iEnd - iStart);
}

/** Where a query begins, or the end of the URL. */
int EndOfPath(const BexUnicodeString& iUrl, int iFrom, int iMode) {
    const int query = iUrl.SearchSubString("?", iFrom, iMode);
    return query < 0 ? iUrl.GetLengthInChar() : query;
}

// The instance key of a long URL: full-width fields with a mark between any two, and the table once more.
constexpr char kFieldMark = '#';
constexpr char kTableMark = '.';
constexpr char kKeyPad = '+';  // a pad blank, as it looks in a URL

/** Where a part of the instance key stands. */
struct KeyPart {
    int start;
    int width;
    constexpr int End() const { return start + width; }
    /** The part behind this one and a mark. */
    constexpr KeyPart Next(int iWidth) const { return {End() + 1, iWidth}; }
};

constexpr KeyPart kKeyDbName{0, QorWflUuidLayout::kDbName.width};
constexpr KeyPart kKeyKienv = kKeyDbName.Next(QorWflUuidLayout::kKienv.width);
constexpr KeyPart kKeyKitab = kKeyKienv.Next(QorWflUuidLayout::kKitab.width);
constexpr KeyPart kKeyXCoid = kKeyKitab.Next(QorWflUuidLayout::kXCoid.width * 2);
constexpr KeyPart kKeyXCompid = kKeyXCoid.Next(QorWflUuidLayout::kXCompid.width * 2);

bool HasMarksInPlace(const BexUnicodeString& iKey) {
    return iKey[kKeyDbName.End()] == kFieldMark && iKey[kKeyKienv.End()] == kFieldMark &&
           iKey[kKeyKitab.End()] == kFieldMark && iKey[kKeyXCoid.End()] == kFieldMark &&
           iKey[kKeyXCompid.End()] == kTableMark;
}

/** A text field of the instance key, without the pads at its end. */
BexUnicodeString TextOfKey(const BexUnicodeString& iKey, KeyPart iPart) {
    return FromChar(iKey.SubString(iPart.start, iPart.width).ConvertToChar(), iPart.width, kKeyPad);
}

/** The fields of a UUID block as a URL tells them: three texts, two identifiers in hexadecimal digits. */
struct InstanceFields {
    BexUnicodeString dbName;
    BexUnicodeString kienv;
    BexUnicodeString kitab;
    BexUnicodeString xCoid;
    BexUnicodeString xCompid;

    /** A new block, the caller's to release. */
    [[nodiscard]] char* BuildUuid() const {
        using namespace QorWflUuidLayout;
        auto* uuid = static_cast<char*>(::operator new(kBlockSize));
        const auto put = [uuid](Field iField, const BexUnicodeString& iText) {
            ToChar(uuid + iField.offset, iField.width, iText, kPad);
        };
        put(kDbName, dbName);
        put(kKienv, kienv);
        put(kKitab, kitab);
        HexToBin(uuid + kXCoid.offset, kXCoid.width, xCoid);
        HexToBin(uuid + kXCompid.offset, kXCompid.width, xCompid);
        return uuid;
    }
};

/** The instance of a long URL, whose environment segment has to agree with the key. */
char* LongUrlToUuid(const BexUnicodeString& iUrl, BexQorTraceStep& ioStep) {
    const int environmentStart = static_cast<int>(std::strlen(kLongPrefix));
    const int environmentEnd = iUrl.SearchSubString("/", environmentStart, kFirst);
    if (environmentEnd < 0) {
        ioStep << "No / found after environment" << std::endl;
        return nullptr;
    }
    const BexUnicodeString key = Between(iUrl, environmentEnd + 1, EndOfPath(iUrl, 0, kLast));
    ioStep << "LumenUID=[" << key << "]" << std::endl;
    if (!HasMarksInPlace(key)) {
        ioStep << "Delimiters not placed correctly" << std::endl;
        return nullptr;
    }
    const InstanceFields fields{TextOfKey(key, kKeyDbName), TextOfKey(key, kKeyKienv), TextOfKey(key, kKeyKitab),
                                key.SubString(kKeyXCoid.start, kKeyXCoid.width),
                                key.SubString(kKeyXCompid.start, kKeyXCompid.width)};
    ioStep << "DbName=[" << fields.dbName << "]" << std::endl;
    ioStep << "Kienv=[" << fields.kienv << "]" << std::endl;
    ioStep << "Kitab=[" << fields.kitab << "]" << std::endl;
    ioStep << "XCoid=[" << fields.xCoid << "]" << std::endl;
    ioStep << "XCompid=[" << fields.xCompid << "]" << std::endl;
    if (Between(iUrl, environmentStart, environmentEnd) != fields.kienv) {
        ioStep << "Environment does not match Kienv" << std::endl;
        return nullptr;
    }
    char* uuid = fields.BuildUuid();
    ioStep << "UUID successfully built" << std::endl;
    return uuid;
}

/** Takes the text up to a mark out of the body of a short URL, and traces it; false when the mark is missing. */
bool TakeUpTo(const BexUnicodeString& iBody, const char* iMark, int& ioPos, BexUnicodeString& oText,
              BexQorTraceStep& ioStep) {
    const int end = iBody.SearchSubString(iMark, ioPos, kFirst);
    if (end < 0) {
        return false;
    }
    oText = Between(iBody, ioPos, end);
    ioPos = end + 1;
    ioStep << "Found [" << oText << "]" << std::endl;
    return true;
}

/** The instance of a short URL. */
char* ShortUrlToUuid(const BexUnicodeString& iUrl, BexQorTraceStep& ioStep) {
    if (!StartsWith(iUrl, kShortScheme)) {
        // The text says the contrary of what happened; those who read traces look for it, so it stays.
        ioStep << "Found [" << kShortScheme << "]" << std::endl;
        return nullptr;
    }
    const int start = static_cast<int>(std::strlen(kShortScheme));
    const BexUnicodeString body = Decode(Between(iUrl, start, EndOfPath(iUrl, start, kFirst)));
    InstanceFields fields;
    int pos = 0;
    if (body[0] == '/' || !TakeUpTo(body, "/", pos, fields.dbName, ioStep) ||
        !TakeUpTo(body, ".", pos, fields.kienv, ioStep) || !TakeUpTo(body, "/", pos, fields.kitab, ioStep)) {
        return nullptr;
    }
    ioStep << "nPos=" << pos << std::endl;
    if (body.GetLengthInChar() - pos != kKeyXCoid.width + kKeyXCompid.width) {
        return nullptr;
    }
    fields.xCoid = body.SubString(pos, kKeyXCoid.width);
    ioStep << "Found [" << fields.xCoid << "]" << std::endl;
    fields.xCompid = body.SubString(pos + kKeyXCoid.width, kKeyXCompid.width);
    ioStep << "Found [" << fields.xCompid << "]" << std::endl;
    return fields.BuildUuid();
}

/** The identifier of a long action URL, encoded as it stands there; empty when the URL is none. */
BexUnicodeString EncodedIdOfLongUrl(const BexUnicodeString& iUrl) {
    const int environmentEnd = iUrl.SearchSubString("/", static_cast<int>(std::strlen(kLongPrefix)), kFirst);
    if (environmentEnd < 0) {
        return BexUnicodeString("");
    }
    const int end = EndOfPath(iUrl, 0, kLast);
    const int dot = iUrl.SubString(0, end).SearchSubString(".", 0, kLast);
    if (dot < 0 || Between(iUrl, dot + 1, end) != kActionSuffix) {
        return BexUnicodeString("");
    }
    return Between(iUrl, environmentEnd + 1, dot);
}

}  // namespace

void QorWflUuidDeleter::operator()(char* iUuid) const noexcept {
    ::operator delete(iUuid);
}

BexUnicodeString QorWflUrlUtil::UrlToActionId(const BexUnicodeString& iUrl) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::UrlToActionId");
    step << "Input url=[" << iUrl << "]" << std::endl;
    if (StartsWith(iUrl, kShortActionPrefix)) {
        return Decode(iUrl.SubString(static_cast<int>(std::strlen(kShortActionPrefix)), INT_MAX));
    }
    if (StartsWith(iUrl, kLongPrefix)) {
        return Decode(EncodedIdOfLongUrl(iUrl));
    }
    return BexUnicodeString("");
}

BexUnicodeString QorWflUrlUtil::ActionUrl(const BexUnicodeString& iActionId) {
    const BexQorTraceStep step(trace, "QorWflUrlUtil::ActionUrl");
    BexUnicodeString url(kLongPrefix);
    url.Append(kDefaultEnvironment).Append("/").Append(Encode(iActionId)).Append(".").Append(kActionSuffix);
    return url;
}

char* QorWflUrlUtil::UrlToContext(const BexUnicodeString& iUrl, BexUnicodeString& oContext) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::UrlToContext");
    const BexUnicodeString url(iUrl);  // the caller may have given one string for both
    oContext = "";
    step << "Input url is [" << url << "]" << std::endl;
    std::unique_ptr<char, QorWflUuidDeleter> uuid(UrlToUuid(url));
    if (uuid != nullptr) {
        oContext = GetUrlParm(url, kContextParm);
    }
    return uuid.release();
}

BexUnicodeString QorWflUrlUtil::ContextUrl(const char* iUuid, const BexUnicodeString& iContext) {
    const BexQorTraceStep step(trace, "QorWflUrlUtil::ContextUrl");
    BexUnicodeString url = InstanceUrl(iUuid);
    if (iContext.IsEmpty() == 0) {
        AddUrlParm(url, kContextParm, iContext);
    }
    return url;
}

BexUnicodeString QorWflUrlUtil::GetUrlParm(const BexUnicodeString& iUrl, const BexUnicodeString& iName) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::GetUrlParm");
    step << "Input url is [" << iUrl << "]" << std::endl;
    step << "Search for [" << iName << "]" << std::endl;
    const BexUnicodeString wanted = iName + "=";
    int at = iUrl.SearchSubString("?", 0, kFirst) + 1;
    while (at > 0 && at < iUrl.GetLengthInChar()) {
        if (StandsAt(iUrl, at, wanted)) {
            const int start = at + wanted.GetLengthInChar();
            const int end = iUrl.SearchSubString("&", start, kFirst);
            BexUnicodeString value = Decode(Between(iUrl, start, end < 0 ? iUrl.GetLengthInChar() : end));
            step << "Found [" << value << "]" << std::endl;
            return value;
        }
        at = iUrl.SearchSubString("&", at, kFirst) + 1;
    }
    return BexUnicodeString("");
}

void QorWflUrlUtil::AddUrlParm(BexUnicodeString& ioUrl, const BexUnicodeString& iName, const BexUnicodeString& iValue) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::AddUrlParm");
    const BexUnicodeString parm = iName + "=" + Encode(iValue);
    ioUrl.Append(ioUrl.SearchSubString("?") < 0 ? "?" : "&").Append(parm);
    step << "url set to [" << ioUrl << "]" << std::endl;
}

BexUnicodeString QorWflUrlUtil::InstanceUrl(const char* iUuid) {
    using namespace QorWflUuidLayout;
    BexQorTraceStep step(trace, "QorWflUrlUtil::InstanceUrl");
    if (iUuid == nullptr) {
        return BexUnicodeString("");
    }
    const auto unpadded = [iUuid](Field iField) { return FromChar(iUuid + iField.offset, iField.width, kPad); };
    const auto padded = [iUuid](Field iField) { return Encode(FromChar(iUuid + iField.offset, iField.width, '\0')); };
    const auto digits = [iUuid](Field iField) { return Encode(BinToHex(iUuid + iField.offset, iField.width)); };
    BexUnicodeString url(kLongScheme);
    url.Append("/").Append(unpadded(kKienv)).Append("/").Append(padded(kDbName));
    url.Append(kFieldMark).Append(padded(kKienv)).Append(kFieldMark).Append(padded(kKitab));
    url.Append(kFieldMark).Append(digits(kXCoid)).Append(kFieldMark).Append(digits(kXCompid));
    url.Append(kTableMark).Append(unpadded(kKitab));
    step << "url is [" << url << "]" << std::endl;
    return url;
}

char* QorWflUrlUtil::UrlToUuid(const BexUnicodeString& iUrl) {
    // Traced under a name of its own, which those who read traces look for.
    BexQorTraceStep step(trace, "QorWflUrlUtil::UrlToInstance");
    step << "Input url is [" << iUrl << "]" << std::endl;
    if (StartsWith(iUrl, kLongPrefix)) {
        step << "Url looks like a LumenUID" << std::endl;
        return LongUrlToUuid(iUrl, step);
    }
    return iUrl.IsEmpty() != 0 ? nullptr : ShortUrlToUuid(iUrl, step);
}
