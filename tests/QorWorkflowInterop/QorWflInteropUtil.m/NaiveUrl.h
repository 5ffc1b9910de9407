#ifndef NaiveUrl_H
#define NaiveUrl_H

#include <cstdio>
#include <optional>
#include <string>

/**
 * The URL operations once more, step by step over byte strings and the C library's own scanning and formatting: slow,
 * simple and independent of the library, to judge it by.
 */
namespace NaiveUrl {

inline const std::string kShortAction = "qor://ACTION/";
inline const std::string kLong = "LumenUID://Legacy+QOR1/";
inline const std::string kShort = "qor://";

inline bool BeginsWith(const std::string& iText, const std::string& iPrefix) {
    return iText.compare(0, iPrefix.size(), iPrefix) == 0;
}

/** The part of @p iText from @p iFrom up to @p iTo; nothing when that is no part of it. */
inline std::string Between(const std::string& iText, std::size_t iFrom, std::size_t iTo) {
    return iFrom < iText.size() && iFrom < iTo ? iText.substr(iFrom, iTo - iFrom) : std::string();
}

inline bool CopiedUnchanged(char iChar) {
    const std::string unchanged = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.-*_";
    return unchanged.find(iChar) != std::string::npos;
}

inline std::string Encode(const std::string& iText) {
    std::string result;
    for (const char c : iText) {
        if (c == ' ') {
            result += '+';
        } else if (CopiedUnchanged(c)) {
            result += c;
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned int>(static_cast<unsigned char>(c)));
            result += escape;
        }
    }
    return result;
}

/** What "%2X" reads at the start of a text; nothing where it reads nothing. */
inline std::optional<char> ScanByte(const char* iText) {
    unsigned int value = 0;
    if (std::sscanf(iText, "%2X", &value) != 1) {
        return std::nullopt;
    }
    return static_cast<char>(static_cast<unsigned char>(value & 0xFFU));
}

inline std::string Decode(const std::string& iText) {
    std::string copy = iText;
    for (std::size_t plus = copy.find('+'); plus != std::string::npos; plus = copy.find('+')) {
        copy[plus] = ' ';
    }
    std::string result;
    std::size_t stop = 0;
    std::size_t percent = copy.find('%');
    while (percent != std::string::npos) {
        result += copy.substr(stop, percent - stop);
        if (const std::optional<char> byte = ScanByte(copy.substr(percent + 1, 2).c_str())) {
            result += *byte;
        }
        stop = percent + 3;
        percent = stop < copy.size() ? copy.find('%', stop) : std::string::npos;
    }
    return stop < copy.size() ? result + copy.substr(stop) : result;
}

inline std::string ToChar(std::size_t iSize, const std::string& iText, char iPad) {
    std::string field = iText.substr(0, iSize);
    field.resize(iSize, iPad);
    return field;
}

inline std::string FromChar(const std::string& iField, char iPad) {
    std::string text = iField;
    while (!text.empty() && text.back() == iPad) {
        text.pop_back();
    }
    return text;
}

inline std::string HexToBin(std::size_t iSize, const std::string& iHex) {
    std::string bytes(iSize, '\0');
    for (std::size_t i = 0; i < iSize && i < iHex.size() / 2; ++i) {
        bytes[i] = ScanByte(iHex.c_str() + 2 * i).value_or('\0');
    }
    return bytes;
}

inline std::string BinToHex(const std::string& iBytes) {
    std::string hex;
    for (const char c : iBytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned int>(static_cast<unsigned char>(c)));
        hex += digits;
    }
    return hex;
}

inline std::string UrlToActionId(const std::string& iUrl) {
    if (BeginsWith(iUrl, kShortAction)) {
        return Decode(iUrl.substr(kShortAction.size()));
    }
    if (!BeginsWith(iUrl, kLong)) {
        return "";
    }
    const std::size_t slash = iUrl.find('/', kLong.size());
    if (slash == std::string::npos) {
        return "";
    }
    const std::size_t mark = iUrl.rfind('?');
    const std::string path = iUrl.substr(0, mark);
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || path.substr(dot) != ".ACTION") {
        return "";
    }
    return Decode(Between(path, slash + 1, dot));
}

inline std::string GetUrlParm(const std::string& iUrl, const std::string& iName) {
    const std::size_t mark = iUrl.find('?');
    if (mark == std::string::npos) {
        return "";
    }
    std::size_t at = mark + 1;
    while (at < iUrl.size()) {
        if (iUrl.substr(at, iName.size() + 1) == iName + "=") {
            const std::size_t value = at + iName.size() + 1;
            return Decode(Between(iUrl, value, iUrl.find('&', value)));
        }
        const std::size_t ampersand = iUrl.find('&', at);
        if (ampersand == std::string::npos) {
            return "";
        }
        at = ampersand + 1;
    }
    return "";
}

inline std::string Block(const std::string& iDbName, const std::string& iKienv, const std::string& iKitab,
                         const std::string& iXCoid, const std::string& iXCompid) {
    return ToChar(8, iDbName, ' ') + ToChar(8, iKienv, ' ') + ToChar(18, iKitab, ' ') + HexToBin(8, iXCoid) +
           HexToBin(8, iXCompid);
}

/** @param iBlock the 50 bytes of a UUID block */
inline std::string InstanceUrl(const std::string& iBlock) {
    const std::string dbName = iBlock.substr(0, 8);
    const std::string kienv = iBlock.substr(8, 8);
    const std::string kitab = iBlock.substr(16, 18);
    return kLong + FromChar(kienv, ' ') + "/" + Encode(FromChar(dbName, '\0')) + "#" + Encode(FromChar(kienv, '\0')) +
           "#" + Encode(FromChar(kitab, '\0')) + "#" + BinToHex(iBlock.substr(34, 8)) + "#" +
           BinToHex(iBlock.substr(42, 8)) + "." + FromChar(kitab, ' ');
}

inline std::optional<std::string> LongUrlToUuid(const std::string& iUrl) {
    const std::size_t slash = iUrl.find('/', kLong.size());
    if (slash == std::string::npos) {
        return std::nullopt;
    }
    const std::string key = Between(iUrl, slash + 1, iUrl.rfind('?'));
    if (key.size() < 71 || key[8] != '#' || key[17] != '#' || key[36] != '#' || key[53] != '#' || key[70] != '.') {
        return std::nullopt;
    }
    const std::string kienv = FromChar(key.substr(9, 8), '+');
    if (iUrl.substr(kLong.size(), slash - kLong.size()) != kienv) {
        return std::nullopt;
    }
    return Block(FromChar(key.substr(0, 8), '+'), kienv, FromChar(key.substr(18, 18), '+'), key.substr(37, 16),
                 key.substr(54, 16));
}

inline std::optional<std::string> ShortUrlToUuid(const std::string& iUrl) {
    const std::size_t mark = iUrl.find('?', kShort.size());
    const std::string body = Decode(Between(iUrl, kShort.size(), mark));
    const std::size_t firstSlash = body.find('/');
    if (firstSlash == std::string::npos || firstSlash == 0) {
        return std::nullopt;
    }
    const std::size_t dot = body.find('.', firstSlash + 1);
    if (dot == std::string::npos) {
        return std::nullopt;
    }
    const std::size_t lastSlash = body.find('/', dot + 1);
    if (lastSlash == std::string::npos || body.size() - (lastSlash + 1) != 32) {
        return std::nullopt;
    }
    return Block(body.substr(0, firstSlash), Between(body, firstSlash + 1, dot), Between(body, dot + 1, lastSlash),
                 body.substr(lastSlash + 1, 16), body.substr(lastSlash + 17, 16));
}

/** The 50 bytes, or nothing for a text that names no instance. */
inline std::optional<std::string> UrlToUuid(const std::string& iUrl) {
    if (BeginsWith(iUrl, kLong)) {
        return LongUrlToUuid(iUrl);
    }
    return BeginsWith(iUrl, kShort) ? ShortUrlToUuid(iUrl) : std::nullopt;
}

}  // namespace NaiveUrl

#endif
