#include "QorWflUrlUtil.h"

#include "QorWflUuidLayout.h"
#include "UrlCodec.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace {

BexQorTrace trace("WFInteropUrl", "WFInteropUrl", "STDOUT", 1024);

using UrlCodec::AppendEncoded;
using UrlCodec::Decode;
using UrlCodec::kHexDigits;
using UrlCodec::LongestEncoding;
using UrlCodec::NarrowCharacter;
using UrlCodec::ScanHexByte;
using UrlCodec::ScannedByte;
using UrlCodec::View;

// ---------------------------------------------------------------------------------------------------- texts and fields

/** Calls a function with the view of a text that suits it. */
template <typename Function>
auto WithView(const BexUnicodeString& iText, Function iFunction) {
    return iText.IsWide() ? iFunction(iText.WideView()) : iFunction(iText.NarrowView());
}

/** The narrow form of a text, without a copy where it is narrow already. */
template <typename Unit>
class NarrowForm;

template <>
class NarrowForm<char> {
public:
    explicit NarrowForm(std::string_view iText) : text(iText) {}
    std::string_view Text() const { return text; }

private:
    std::string_view text;
};

template <>
class NarrowForm<char16_t> {
public:
    explicit NarrowForm(std::u16string_view iText) : text(iText.size(), '\0') {
        std::transform(iText.begin(), iText.end(), text.begin(), [](char16_t iUnit) { return NarrowCharacter(iUnit); });
    }
    std::string_view Text() const { return text; }

private:
    std::string text;
};

/** Writes a text into a field of fixed width, cut or padded; nothing terminates it. */
void ToChar(char* oField, int iSize, std::string_view iText, char iPad) {
    const std::string_view text = iText.substr(0, static_cast<std::size_t>(iSize));
    std::memset(oField, iPad, static_cast<std::size_t>(iSize));
    std::memcpy(oField, text.data(), text.size());
}

/** The text of a field of fixed width, without the pads at its end. */
std::string_view FromChar(std::string_view iField, char iPad) {
    return iField.substr(0, iField.find_last_not_of(iPad) + 1);
}

/**
 * The bytes that pairs of digits name. Each pair is scanned from its place on in the whole text, so white space in a
 * pair takes from the next; what names no byte, and the rest of the field, is 0.
 */
void HexToBin(char* oBytes, int iSize, std::string_view iHex) {
    for (int i = 0; i < iSize; ++i) {
        const auto pos = static_cast<std::size_t>(i) * 2;
        const ScannedByte scanned = pos + 1 < iHex.size() ? ScanHexByte(iHex.substr(pos)) : ScannedByte{false, 0};
        oBytes[i] = static_cast<char>(scanned.found ? scanned.value : 0);
    }
}

/** Appends two digits for each byte. */
void BinToHex(BexNarrowText& ioText, std::string_view iBytes) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::BinToHex");
    char* const digits = ioText.Extend(iBytes.size() * 2);
    char* end = digits;
    for (const char character : iBytes) {
        const auto byte = static_cast<unsigned char>(character);
        *end++ = kHexDigits[byte / 16];
        *end++ = kHexDigits[byte % 16];
    }
    step << "res=[" << std::string_view(digits, iBytes.size() * 2) << "]" << std::endl;
}

// ---------------------------------------------------------------------------------------------------- URL forms

constexpr std::string_view kShortScheme("qor://");
constexpr std::string_view kShortActionPrefix("qor://ACTION/");
constexpr std::string_view kLongPrefix("LumenUID://Legacy+QOR1/");
constexpr std::string_view kDefaultEnvironment("default");
constexpr std::string_view kActionSuffix("ACTION");
constexpr const char* kContextParm = "context";
constexpr char kPad = ' ';

/** Whether two texts are the same, code unit by code unit. */
template <typename Unit>
bool AreSame(View<Unit> iText, std::string_view iOther) {
    return std::equal(iText.begin(), iText.end(), iOther.begin(), iOther.end(),
                      [](Unit iUnit, char iCharacter) { return BexUnicodeChar(iUnit) == BexUnicodeChar(iCharacter); });
}

template <typename Unit>
bool StartsWith(View<Unit> iText, std::string_view iBeginning) {
    return AreSame(iText.substr(0, iBeginning.size()), iBeginning);
}

/** The part of a text between two positions, empty when the end does not lie behind the start. */
template <typename Unit>
View<Unit> Between(View<Unit> iText, std::size_t iStart, std::size_t iEnd) {
    return iEnd > iStart ? iText.substr(iStart, iEnd - iStart) : View<Unit>();
}

/** The position of a query's question mark, or the end of the URL. */
std::size_t OrEnd(std::size_t iPosition, std::size_t iEnd) {
    return std::min(iPosition, iEnd);
}

// The instance key of a long URL: full-width fields with a mark between any two, and the table once more.
constexpr char kFieldMark = '#';
constexpr char kTableMark = '.';
constexpr char kKeyPad = '+';  // a pad blank, as it looks in a URL

/** Where a part of the instance key stands. */
struct KeyPart {
    std::size_t start;
    std::size_t width;
    constexpr std::size_t End() const { return start + width; }
    /** The part behind this one and a mark. */
    constexpr KeyPart Next(int iWidth) const { return {End() + 1, static_cast<std::size_t>(iWidth)}; }
    std::string_view Of(std::string_view iKey) const { return iKey.substr(start, width); }
};

constexpr KeyPart kKeyDbName{0, QorWflUuidLayout::kDbName.width};
constexpr KeyPart kKeyKienv = kKeyDbName.Next(QorWflUuidLayout::kKienv.width);
constexpr KeyPart kKeyKitab = kKeyKienv.Next(QorWflUuidLayout::kKitab.width);
constexpr KeyPart kKeyXCoid = kKeyKitab.Next(QorWflUuidLayout::kXCoid.width * 2);
constexpr KeyPart kKeyXCompid = kKeyXCoid.Next(QorWflUuidLayout::kXCompid.width * 2);
/** Room for any instance URL, every character of its texts an escape. */
constexpr std::size_t kLongestUrl =
    kLongPrefix.size() + (kKeyXCompid.End() + QorWflUuidLayout::kKienv.width + QorWflUuidLayout::kKitab.width) * 2;

bool HasMarksInPlace(std::string_view iKey) {
    return iKey.size() > kKeyXCompid.End() && iKey[kKeyDbName.End()] == kFieldMark &&
           iKey[kKeyKienv.End()] == kFieldMark && iKey[kKeyKitab.End()] == kFieldMark &&
           iKey[kKeyXCoid.End()] == kFieldMark && iKey[kKeyXCompid.End()] == kTableMark;
}

/** The fields of a UUID block as a URL tells them: three texts, two identifiers in hexadecimal digits. */
struct InstanceFields {
    std::string_view dbName;
    std::string_view kienv;
    std::string_view kitab;
    std::string_view xCoid;
    std::string_view xCompid;

    /** A new block, the caller's to release. */
    [[nodiscard]] char* BuildUuid() const {
        using namespace QorWflUuidLayout;
        auto* uuid = static_cast<char*>(::operator new(kBlockSize));
        ToChar(uuid + kDbName.offset, kDbName.width, dbName, kPad);
        ToChar(uuid + kKienv.offset, kKienv.width, kienv, kPad);
        ToChar(uuid + kKitab.offset, kKitab.width, kitab, kPad);
        HexToBin(uuid + kXCoid.offset, kXCoid.width, xCoid);
        HexToBin(uuid + kXCompid.offset, kXCompid.width, xCompid);
        return uuid;
    }
};

/** The instance of a long URL, whose environment segment has to agree with the key. */
template <typename Unit>
char* LongUrlToUuid(View<Unit> iUrl, BexQorTraceStep& ioStep) {
    const std::size_t environmentEnd = iUrl.find(Unit{'/'}, kLongPrefix.size());
    if (environmentEnd == iUrl.npos) {
        ioStep << "No / found after environment" << std::endl;
        return nullptr;
    }
    const View<Unit> keyText = Between(iUrl, environmentEnd + 1, OrEnd(iUrl.rfind(Unit{'?'}), iUrl.size()));
    ioStep << "LumenUID=[" << keyText << "]" << std::endl;
    const NarrowForm<Unit> narrow(keyText);
    const std::string_view key = narrow.Text();
    if (!HasMarksInPlace(key)) {
        ioStep << "Delimiters not placed correctly" << std::endl;
        return nullptr;
    }
    const InstanceFields fields{FromChar(kKeyDbName.Of(key), kKeyPad), FromChar(kKeyKienv.Of(key), kKeyPad),
                                FromChar(kKeyKitab.Of(key), kKeyPad), kKeyXCoid.Of(key), kKeyXCompid.Of(key)};
    ioStep << "DbName=[" << fields.dbName << "]" << std::endl;
    ioStep << "Kienv=[" << fields.kienv << "]" << std::endl;
    ioStep << "Kitab=[" << fields.kitab << "]" << std::endl;
    ioStep << "XCoid=[" << fields.xCoid << "]" << std::endl;
    ioStep << "XCompid=[" << fields.xCompid << "]" << std::endl;
    if (!AreSame(Between(iUrl, kLongPrefix.size(), environmentEnd), fields.kienv)) {
        ioStep << "Environment does not match Kienv" << std::endl;
        return nullptr;
    }
    char* uuid = fields.BuildUuid();
    ioStep << "UUID successfully built" << std::endl;
    return uuid;
}

/** Takes the text up to a mark off a body, and traces it; false when the mark is missing. */
bool TakeUpTo(std::string_view& ioBody, char iMark, std::string_view& oText, BexQorTraceStep& ioStep) {
    const std::size_t end = ioBody.find(iMark);
    if (end == std::string_view::npos) {
        return false;
    }
    oText = ioBody.substr(0, end);
    ioBody.remove_prefix(end + 1);
    ioStep << "Found [" << oText << "]" << std::endl;
    return true;
}

/** The instance that the decoded body of a short URL names. */
char* ShortBodyToUuid(std::string_view iBody, BexQorTraceStep& ioStep) {
    InstanceFields fields;
    std::string_view rest = iBody;
    if (iBody.substr(0, 1) == "/" || !TakeUpTo(rest, '/', fields.dbName, ioStep) ||
        !TakeUpTo(rest, '.', fields.kienv, ioStep) || !TakeUpTo(rest, '/', fields.kitab, ioStep)) {
        return nullptr;
    }
    ioStep << "nPos=" << iBody.size() - rest.size() << std::endl;
    if (rest.size() != kKeyXCoid.width + kKeyXCompid.width) {
        return nullptr;
    }
    fields.xCoid = rest.substr(0, kKeyXCoid.width);
    ioStep << "Found [" << fields.xCoid << "]" << std::endl;
    fields.xCompid = rest.substr(kKeyXCoid.width);
    ioStep << "Found [" << fields.xCompid << "]" << std::endl;
    return fields.BuildUuid();
}

/** The instance of a short URL. */
template <typename Unit>
char* ShortUrlToUuid(View<Unit> iUrl, BexQorTraceStep& ioStep) {
    if (!StartsWith(iUrl, kShortScheme)) {
        // The text says the contrary of what happened; those who read traces look for it, so it stays.
        ioStep << "Found [" << kShortScheme << "]" << std::endl;
        return nullptr;
    }
    const std::size_t end = OrEnd(iUrl.find(Unit{'?'}, kShortScheme.size()), iUrl.size());
    return WithView(Decode(Between(iUrl, kShortScheme.size(), end)), [&ioStep](auto iBody) {
        return ShortBodyToUuid(NarrowForm<typename decltype(iBody)::value_type>(iBody).Text(), ioStep);
    });
}

/** The identifier of a long action URL, encoded as it stands there; empty when the URL is none. */
template <typename Unit>
View<Unit> EncodedIdOfLongUrl(View<Unit> iUrl) {
    const std::size_t environmentEnd = iUrl.find(Unit{'/'}, kLongPrefix.size());
    const View<Unit> path = iUrl.substr(0, OrEnd(iUrl.rfind(Unit{'?'}), iUrl.size()));
    const std::size_t dot = path.rfind(Unit{'.'});
    if (environmentEnd == iUrl.npos || dot == path.npos || !AreSame(path.substr(dot + 1), kActionSuffix)) {
        return View<Unit>();
    }
    return Between(path, environmentEnd + 1, dot);
}

template <typename Unit>
BexUnicodeString ActionIdOf(View<Unit> iUrl) {
    if (StartsWith(iUrl, kShortActionPrefix)) {
        return Decode(iUrl.substr(kShortActionPrefix.size()));
    }
    return Decode(StartsWith(iUrl, kLongPrefix) ? EncodedIdOfLongUrl(iUrl) : View<Unit>());
}

/** The encoded value of the first parameter of a name; false when there is none. */
template <typename Unit>
bool FindParm(View<Unit> iUrl, View<Unit> iName, View<Unit>& oValue) {
    std::size_t at = iUrl.find(Unit{'?'});
    while (at != iUrl.npos && at + 1 < iUrl.size()) {
        const View<Unit> parm = iUrl.substr(at + 1);
        if (parm.size() > iName.size() && parm[iName.size()] == Unit{'='} &&
            parm.compare(0, iName.size(), iName) == 0) {
            const View<Unit> value = parm.substr(iName.size() + 1);
            oValue = value.substr(0, OrEnd(value.find(Unit{'&'}), value.size()));
            return true;
        }
        at = iUrl.find(Unit{'&'}, at + 1);
    }
    return false;
}

/** The decoded value of a parameter, traced; empty when there is none. */
template <typename Unit>
BexUnicodeString ParmOf(View<Unit> iUrl, View<Unit> iName, BexQorTraceStep& ioStep) {
    View<Unit> encoded;
    if (!FindParm(iUrl, iName, encoded)) {
        return BexUnicodeString("");
    }
    BexUnicodeString value = Decode(encoded);
    ioStep << "Found [" << value << "]" << std::endl;
    return value;
}

/** The code units of a text, narrow ones widened. */
std::u16string UnitsOf(const BexUnicodeString& iText) {
    std::u16string units(iText.WideView());
    for (const char character : iText.NarrowView()) {
        units += static_cast<char16_t>(static_cast<unsigned char>(character));
    }
    return units;
}

}  // namespace

void QorWflUuidDeleter::operator()(char* iUuid) const noexcept {
    ::operator delete(iUuid);
}

BexUnicodeString QorWflUrlUtil::UrlToActionId(const BexUnicodeString& iUrl) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::UrlToActionId");
    step << "Input url=[" << iUrl << "]" << std::endl;
    return WithView(iUrl, [](auto iView) { return ActionIdOf(iView); });
}

BexUnicodeString QorWflUrlUtil::ActionUrl(const BexUnicodeString& iActionId) {
    const BexQorTraceStep step(trace, "QorWflUrlUtil::ActionUrl");
    BexNarrowText url(kLongPrefix);
    url.Append(kDefaultEnvironment);
    url.Append('/');
    WithView(iActionId, [&url](auto iView) { AppendEncoded(url, iView); });
    url.Append('.');
    url.Append(kActionSuffix);
    return BexUnicodeString::FromNarrow(std::move(url));
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
    if (iUrl.IsWide()) {
        const std::u16string name = UnitsOf(iName);
        return ParmOf(iUrl.WideView(), View<char16_t>(name), step);
    }
    return iName.IsWide() ? BexUnicodeString("") : ParmOf(iUrl.NarrowView(), iName.NarrowView(), step);
}

void QorWflUrlUtil::AddUrlParm(BexUnicodeString& ioUrl, const BexUnicodeString& iName, const BexUnicodeString& iValue) {
    BexQorTraceStep step(trace, "QorWflUrlUtil::AddUrlParm");
    const bool hasQuery = WithView(ioUrl, [](auto iView) { return iView.find('?') != iView.npos; });
    const char mark = hasQuery ? '&' : '?';
    BexNarrowText text;
    if (ioUrl.IsWide() || iName.IsWide()) {
        text.Append('=');
        WithView(iValue, [&text](auto iView) { AppendEncoded(text, iView); });
        ioUrl.Append((BexUnicodeString() += mark) + iName + BexUnicodeString::FromNarrow(std::move(text)));
    } else {  // written to one text, with room from the start for a value that is not unusually long
        constexpr std::size_t kUsualLength = 4096;
        const auto valueLength = static_cast<std::size_t>(iValue.GetLengthInChar());
        text.Reserve(ioUrl.NarrowView().size() + iName.NarrowView().size() +
                     sizeof "?=" + LongestEncoding(std::min(valueLength, kUsualLength)));
        char* const head = text.Extend(ioUrl.NarrowView().size() + iName.NarrowView().size() + 2);
        char* end = std::copy(ioUrl.NarrowView().begin(), ioUrl.NarrowView().end(), head);
        *end++ = mark;
        end = std::copy(iName.NarrowView().begin(), iName.NarrowView().end(), end);
        *end = '=';
        WithView(iValue, [&text](auto iView) { AppendEncoded(text, iView); });
        ioUrl = BexUnicodeString::FromNarrow(std::move(text));
    }
    step << "url set to [" << ioUrl << "]" << std::endl;
}

BexUnicodeString QorWflUrlUtil::InstanceUrl(const char* iUuid) {
    using namespace QorWflUuidLayout;
    BexQorTraceStep step(trace, "QorWflUrlUtil::InstanceUrl");
    if (iUuid == nullptr) {
        return BexUnicodeString("");
    }
    const auto text = [iUuid](Field iField) {
        return std::string_view(iUuid + iField.offset, static_cast<std::size_t>(iField.width));
    };
    BexNarrowText url;
    url.Reserve(kLongestUrl);
    url.Append(kLongPrefix);
    url.Append(FromChar(text(kKienv), kPad));
    url.Append('/');
    AppendEncoded(url, FromChar(text(kDbName), '\0'));
    url.Append(kFieldMark);
    AppendEncoded(url, FromChar(text(kKienv), '\0'));
    url.Append(kFieldMark);
    AppendEncoded(url, FromChar(text(kKitab), '\0'));
    url.Append(kFieldMark);
    BinToHex(url, text(kXCoid));  // digits stand for themselves in a URL
    url.Append(kFieldMark);
    BinToHex(url, text(kXCompid));
    url.Append(kTableMark);
    url.Append(FromChar(text(kKitab), kPad));
    step << "url is [" << url.View() << "]" << std::endl;
    return BexUnicodeString::FromNarrow(std::move(url));
}

char* QorWflUrlUtil::UrlToUuid(const BexUnicodeString& iUrl) {
    // Traced under a name of its own, which those who read traces look for.
    BexQorTraceStep step(trace, "QorWflUrlUtil::UrlToInstance");
    step << "Input url is [" << iUrl << "]" << std::endl;
    if (iUrl.IsEmpty() != 0) {
        return nullptr;
    }
    return WithView(iUrl, [&step](auto iView) {
        if (StartsWith(iView, kLongPrefix)) {
            step << "Url looks like a LumenUID" << std::endl;
            return LongUrlToUuid(iView, step);
        }
        return ShortUrlToUuid(iView, step);
    });
}
