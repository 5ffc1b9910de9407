#include "Bench.h"
#include "Inputs.h"

#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>

#include <benchmark/benchmark.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <curl/curl.h>
#include <glib.h>
#include <memory>
#include <new>
#include <uriparser/Uri.h>

namespace {

const std::vector<int> kTextSizes{16, 128, 4096};
constexpr const char* kParm = "Nickname";

std::string Uuid() {
    return Inputs::Uuid("KIRVA_MODEL", "0123456789ABCDEF");
}

/** The URL that gets a parameter. */
std::string BaseUrl() {
    return QorWflUrlUtil::InstanceUrl(Uuid().c_str()).ConvertToChar();
}

/** A text about a fifth of which has to be encoded, by everybody in the same way. */
std::string PlainText(int iSize) {
    constexpr std::string_view kPattern("Wing-Box_12.rib#7/A&B:Tr\xE4ger");
    std::string text;
    while (text.size() < static_cast<std::size_t>(iSize)) {
        text += kPattern;
    }
    text.resize(static_cast<std::size_t>(iSize));
    return text;
}

BexUnicodeString OurText(const std::string& iText) {
    return BexUnicodeString(iText.data(), static_cast<int>(iText.size()));
}

// ---------------------------------------------------------------------------------------------------- parameters

// Everybody does the whole of AddUrlParm() and GetUrlParm(): the others with std::string around their own codec.

using Encoder = void (*)(std::string_view, std::string&);
using Decoder = std::string (*)(std::string_view);

std::string AddParm(const std::string& iUrl, const std::string& iValue, Encoder iEncode) {
    std::string url(iUrl);
    url += url.find('?') == std::string::npos ? '?' : '&';
    url += kParm;
    url += '=';
    iEncode(iValue, url);
    return url;
}

std::string GetParm(std::string_view iUrl, Decoder iDecode) {
    const std::string wanted = std::string(kParm) + "=";
    std::size_t at = iUrl.find('?');
    while (at != std::string_view::npos) {
        ++at;
        const std::size_t end = iUrl.find('&', at);
        if (iUrl.substr(at, wanted.size()) == wanted) {
            at += wanted.size();
            return iDecode(iUrl.substr(at, end == std::string_view::npos ? end : end - at));
        }
        at = end;
    }
    return std::string();
}

struct FreeCurl {
    void operator()(char* iText) const { curl_free(iText); }
    void operator()(CURL* iHandle) const { curl_easy_cleanup(iHandle); }
};

CURL* CurlHandle() {
    static const std::unique_ptr<CURL, FreeCurl> handle(curl_easy_init());
    return handle.get();
}

void EncodeWithCurl(std::string_view iText, std::string& ioUrl) {
    const std::unique_ptr<char, FreeCurl> encoded(
        curl_easy_escape(CurlHandle(), iText.data(), static_cast<int>(iText.size())));
    ioUrl += encoded.get();
}

std::string DecodeWithCurl(std::string_view iText) {
    int length = 0;
    const std::unique_ptr<char, FreeCurl> decoded(
        curl_easy_unescape(CurlHandle(), iText.data(), static_cast<int>(iText.size()), &length));
    return std::string(decoded.get(), static_cast<std::size_t>(length));
}

void EncodeWithUriParser(std::string_view iText, std::string& ioUrl) {
    const std::size_t start = ioUrl.size();
    ioUrl.resize(start + iText.size() * 3 + 1);
    const char* end =
        uriEscapeExA(iText.data(), iText.data() + iText.size(), ioUrl.data() + start, URI_TRUE, URI_FALSE);
    ioUrl.resize(static_cast<std::size_t>(end - ioUrl.data()));
}

std::string DecodeWithUriParser(std::string_view iText) {
    std::string decoded(iText);
    const char* end = uriUnescapeInPlaceExA(decoded.data(), URI_TRUE, URI_BR_DONT_TOUCH);
    decoded.resize(static_cast<std::size_t>(end - decoded.data()));
    return decoded;
}

struct FreeGlib {
    void operator()(char* iText) const { g_free(iText); }
};

void EncodeWithGlib(std::string_view iText, std::string& ioUrl) {
    // The text ends in NUL: it is the whole of a std::string.
    const std::unique_ptr<char, FreeGlib> encoded(g_uri_escape_string(iText.data(), nullptr, FALSE));
    ioUrl += encoded.get();
}

std::string DecodeWithGlib(std::string_view iText) {
    const std::unique_ptr<char, FreeGlib> decoded(
        g_uri_unescape_segment(iText.data(), iText.data() + iText.size(), nullptr));
    return decoded.get();
}

struct Codec {
    const char* name;
    Encoder encode;
    Decoder decode;
};

constexpr Codec kOthers[]{{"curl", EncodeWithCurl, DecodeWithCurl},
                          {"uriparser", EncodeWithUriParser, DecodeWithUriParser},
                          {"GLib", EncodeWithGlib, DecodeWithGlib}};

std::string AddOurParm(const std::string& iUrl, const std::string& iValue) {
    BexUnicodeString url = OurText(iUrl);
    QorWflUrlUtil::AddUrlParm(url, kParm, OurText(iValue));
    return url.ConvertToChar();
}

void TimeOurEncoding(benchmark::State& ioState, int iSize) {
    const BexUnicodeString base = OurText(BaseUrl());
    const BexUnicodeString name(kParm);
    const BexUnicodeString value = OurText(PlainText(iSize));
    for ([[maybe_unused]] auto round : ioState) {
        BexUnicodeString url(base);
        QorWflUrlUtil::AddUrlParm(url, name, value);
        benchmark::DoNotOptimize(url.ConvertToChar());
    }
}

void TimeOurDecoding(benchmark::State& ioState, int iSize) {
    const BexUnicodeString url = OurText(AddOurParm(BaseUrl(), PlainText(iSize)));
    const BexUnicodeString name(kParm);
    for ([[maybe_unused]] auto round : ioState) {
        const BexUnicodeString value = QorWflUrlUtil::GetUrlParm(url, name);
        benchmark::DoNotOptimize(value.ConvertToChar());
    }
}

Bench::Work TimedEncoding(Encoder iEncode) {
    return [iEncode](benchmark::State& ioState, int iSize) {
        const std::string base = BaseUrl();
        const std::string value = PlainText(iSize);
        for ([[maybe_unused]] auto round : ioState) {
            const std::string url = AddParm(base, value, iEncode);
            benchmark::DoNotOptimize(url.data());
        }
    };
}

Bench::Work TimedDecoding(Decoder iDecode) {
    return [iDecode](benchmark::State& ioState, int iSize) {
        const std::string url = AddOurParm(BaseUrl(), PlainText(iSize));
        for ([[maybe_unused]] auto round : ioState) {
            const std::string value = GetParm(url, iDecode);
            benchmark::DoNotOptimize(value.data());
        }
    };
}

// ---------------------------------------------------------------------------------------------------- instances

using namespace QorWflUuidLayout;

struct UrlField {
    char text[3 * 18 + 1];
};

/** A field as it stands in a URL, the characters that need it through snprintf. */
UrlField EncodedField(const char* iUuid, Field iField) {
    UrlField field;
    char* out = field.text;
    for (int i = 0; i < iField.width; ++i) {
        const auto code = static_cast<unsigned char>(iUuid[iField.offset + i]);
        if (std::isalnum(code) != 0 || std::strchr(".-*_", code) != nullptr) {
            *out++ = static_cast<char>(code);
        } else if (code == ' ') {
            *out++ = '+';
        } else {
            out += std::snprintf(out, 4, "%%%02X", code);
        }
    }
    *out = '\0';
    return field;
}

int UnpaddedWidth(const char* iText, int iWidth, char iPad) {
    while (iWidth > 0 && iText[iWidth - 1] == iPad) {
        --iWidth;
    }
    return iWidth;
}

std::string PrintedInstanceUrl(const char* iUuid) {
    const auto byte = [iUuid](Field iField, int iAt) { return static_cast<unsigned char>(iUuid[iField.offset + iAt]); };
    char url[300];
    const int length = std::snprintf(
        url, sizeof url,
        "LumenUID://Legacy+QOR1/%.*s/%s#%s#%s#%02X%02X%02X%02X%02X%02X%02X%02X#%02X%02X%02X%02X%02X%02X%02X%02X.%.*s",
        UnpaddedWidth(iUuid + kKienv.offset, kKienv.width, ' '), iUuid + kKienv.offset,
        EncodedField(iUuid, kDbName).text, EncodedField(iUuid, kKienv).text, EncodedField(iUuid, kKitab).text,
        byte(kXCoid, 0), byte(kXCoid, 1), byte(kXCoid, 2), byte(kXCoid, 3), byte(kXCoid, 4), byte(kXCoid, 5),
        byte(kXCoid, 6), byte(kXCoid, 7), byte(kXCompid, 0), byte(kXCompid, 1), byte(kXCompid, 2), byte(kXCompid, 3),
        byte(kXCompid, 4), byte(kXCompid, 5), byte(kXCompid, 6), byte(kXCompid, 7),
        UnpaddedWidth(iUuid + kKitab.offset, kKitab.width, ' '), iUuid + kKitab.offset);
    return std::string(url, static_cast<std::size_t>(length));
}

void PutField(char* oUuid, Field iField, const char* iText) {
    const int width = UnpaddedWidth(iText, iField.width, '+');
    std::memset(oUuid + iField.offset, ' ', static_cast<std::size_t>(iField.width));
    std::memcpy(oUuid + iField.offset, iText, static_cast<std::size_t>(width));
}

/** Reads eight bytes out of their digits. */
bool ScanBytes(char* oUuid, Field iField, const char* iDigits) {
    auto* bytes = reinterpret_cast<unsigned char*>(oUuid + iField.offset);
    return std::sscanf(iDigits, "%2hhX%2hhX%2hhX%2hhX%2hhX%2hhX%2hhX%2hhX", bytes, bytes + 1, bytes + 2, bytes + 3,
                       bytes + 4, bytes + 5, bytes + 6, bytes + 7) == iField.width;
}

/** A new block, or null. */
char* ScannedUuid(const char* iUrl) {
    char environment[9];
    char dbName[9];
    char kienv[9];
    char kitab[19];
    char xCoid[17];
    char xCompid[17];
    char mark = '\0';
    const int found = std::sscanf(iUrl, "LumenUID://Legacy+QOR1/%8[^/]/%8[^#]#%8[^#]#%18[^#]#%16[^#]#%16[^.]%c",
                                  environment, dbName, kienv, kitab, xCoid, xCompid, &mark);
    const auto environmentWidth = static_cast<std::size_t>(UnpaddedWidth(kienv, kKienv.width, '+'));
    if (found != 7 || mark != '.' || std::strlen(environment) != environmentWidth ||
        std::memcmp(environment, kienv, environmentWidth) != 0) {
        return nullptr;
    }
    auto* uuid = static_cast<char*>(::operator new(kBlockSize));
    PutField(uuid, kDbName, dbName);
    PutField(uuid, kKienv, kienv);
    PutField(uuid, kKitab, kitab);
    if (!ScanBytes(uuid, kXCoid, xCoid) || !ScanBytes(uuid, kXCompid, xCompid)) {
        ::operator delete(uuid);
        return nullptr;
    }
    return uuid;
}

using UuidBlock = std::unique_ptr<char, QorWflUuidDeleter>;

void TimeInstanceUrl(benchmark::State& ioState, int /*iSize*/) {
    const std::string uuid = Uuid();
    for ([[maybe_unused]] auto round : ioState) {
        const BexUnicodeString url = QorWflUrlUtil::InstanceUrl(uuid.data());
        benchmark::DoNotOptimize(url.ConvertToChar());
    }
}

void TimePrintedInstanceUrl(benchmark::State& ioState, int /*iSize*/) {
    const std::string uuid = Uuid();
    for ([[maybe_unused]] auto round : ioState) {
        const std::string url = PrintedInstanceUrl(uuid.data());
        benchmark::DoNotOptimize(url.data());
    }
}

void TimeUrlToUuid(benchmark::State& ioState, int /*iSize*/) {
    const BexUnicodeString url = OurText(BaseUrl());
    for ([[maybe_unused]] auto round : ioState) {
        const UuidBlock uuid(QorWflUrlUtil::UrlToUuid(url));
        benchmark::DoNotOptimize(uuid.get());
    }
}

void TimeScannedUuid(benchmark::State& ioState, int /*iSize*/) {
    const std::string url = BaseUrl();
    for ([[maybe_unused]] auto round : ioState) {
        const UuidBlock uuid(ScannedUuid(url.c_str()));
        benchmark::DoNotOptimize(uuid.get());
    }
}

std::string BytesOf(const UuidBlock& iUuid) {
    return iUuid == nullptr ? std::string("no instance") : std::string(iUuid.get(), kBlockSize);
}

}  // namespace

void Bench::CheckUrls() {
    const std::string base = BaseUrl();
    for (const int size : kTextSizes) {
        const std::string text = PlainText(size);
        const std::string ours = AddOurParm(base, text);
        RequireSame("the value that was added", QorWflUrlUtil::GetUrlParm(OurText(ours), kParm).ConvertToChar(), text);
        for (const Codec& other : kOthers) {
            RequireSame(std::string("URLs of ") + other.name, ours, AddParm(base, text, other.encode));
            RequireSame(std::string("values of ") + other.name, text, GetParm(ours, other.decode));
        }
    }
    const std::string uuid = Uuid();
    RequireSame("URLs of snprintf", base, PrintedInstanceUrl(uuid.data()));
    RequireSame("the block that was written", BytesOf(UuidBlock(QorWflUrlUtil::UrlToUuid(OurText(base)))), uuid);
    RequireSame("blocks of sscanf", uuid, BytesOf(UuidBlock(ScannedUuid(base.c_str()))));
}

void Bench::AddUrls() {
    AddOurs("encode", kTextSizes, TimeOurEncoding);
    AddOurs("decode", kTextSizes, TimeOurDecoding);
    for (const Codec& other : kOthers) {
        Add("encode", other.name, kTextSizes, TimedEncoding(other.encode));
        Add("decode", other.name, kTextSizes, TimedDecoding(other.decode));
    }
    const std::vector<int> oneBlock{kBlockSize};
    Add("InstanceUrl", "ours", oneBlock, TimeInstanceUrl);
    Add("InstanceUrl", "snprintf", oneBlock, TimePrintedInstanceUrl);
    Add("UrlToUuid", "ours", oneBlock, TimeUrlToUuid);
    Add("UrlToUuid", "sscanf", oneBlock, TimeScannedUuid);
}
