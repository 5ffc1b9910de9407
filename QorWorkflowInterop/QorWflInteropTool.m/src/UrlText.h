#ifndef UrlText_H
#define UrlText_H

#include <BexUnicodeString.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/** What the long URLs begin with. */
constexpr std::u16string_view kLongUrlPrefix = u"LumenUID://Legacy+QOR1/";
/** What the short instance URLs begin with. */
constexpr std::u16string_view kShortUrlPrefix = u"qor://";
/** What the short action URLs begin with. */
constexpr std::u16string_view kShortActionPrefix = u"qor://ACTION/";

/** @return the code units of a text. */
std::u16string UnitsOf(const BexUnicodeString& iText);
/** @return a text of these code units. */
BexUnicodeString TextOf(std::u16string_view iUnits);

/** @return an encoded text as the library decodes it. */
BexUnicodeString DecodeUrlText(const BexUnicodeString& iText);

/** A decoded text that knows where in the encoded one each of its characters came from. */
class DecodedText {
public:
    /** Decodes a part of a URL. @param iStart where it begins in the URL */
    DecodedText(std::u16string_view iUrl, std::size_t iStart, std::size_t iEnd);

    const std::u16string& Text() const { return text; }
    /** @return where in the URL a character of the text begins, and for the end of the text the end of the part. */
    std::size_t PlaceOf(std::size_t iIndex) const;
    /** @return where escapes begin that are none: they vanish, or count for one digit. */
    const std::vector<std::size_t>& BadEscapes() const { return badEscapes; }

private:
    std::u16string text;
    std::vector<std::size_t> places;  // of each character; what vanishes belongs to the one before it
    std::vector<std::size_t> badEscapes;
    std::size_t end;
};

#endif
