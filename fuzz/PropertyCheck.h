#ifndef PropertyCheck_H
#define PropertyCheck_H

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

/** What fuzz targets promise of an input. Where it does not hold, the difference is printed and the process ended. */
namespace PropertyCheck {

/** A text in quotes, with escapes for what does not show; line feeds stay, for texts of many lines. */
inline std::string Printable(std::string_view iText) {
    std::string printed = "\"";
    for (const char character : iText) {
        const auto code = static_cast<unsigned char>(character);
        if (character != '\n' && (code < 0x20 || code > 0x7E || character == '\\')) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned int>(code));
            printed += escape;
        } else {
            printed += character;
        }
    }
    return printed + "\"";
}

inline std::string PrintableIfAny(const std::optional<std::string>& iText) {
    return iText ? Printable(*iText) : "nothing";
}

[[noreturn]] inline void Fail(const std::string& iMessage) {
    std::fprintf(stderr, "\n== the property does not hold: %s\n", iMessage.c_str());
    std::abort();
}

/** @param iWhat what the property is, in words. */
inline void Expect(bool iHolds, const char* iWhat) {
    if (!iHolds) {
        Fail(iWhat);
    }
}

inline void ExpectEqual(const char* iWhat, const std::string& iGot, const std::string& iWanted) {
    if (iGot == iWanted) {
        return;
    }
    const std::size_t length = std::min(iGot.size(), iWanted.size());
    std::size_t at = 0;
    while (at < length && iGot[at] == iWanted[at]) {
        ++at;
    }
    Fail(std::string(iWhat) + "\ngot    " + Printable(iGot) + "\nwanted " + Printable(iWanted) +
         "\nthe same up to byte " + std::to_string(at));
}

inline void ExpectEqual(const char* iWhat, const std::optional<std::string>& iGot,
                        const std::optional<std::string>& iWanted) {
    if (iGot != iWanted) {
        Fail(std::string(iWhat) + "\ngot    " + PrintableIfAny(iGot) + "\nwanted " + PrintableIfAny(iWanted));
    }
}

}  // namespace PropertyCheck

#endif
