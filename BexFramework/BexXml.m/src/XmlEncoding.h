#ifndef XmlEncoding_H
#define XmlEncoding_H

#include <cstddef>
#include <string>
#include <string_view>

/** How the bytes of an XML text are to be understood. */
struct XmlEncoding {
    std::u16string name;         ///< as Xerces-C takes it; empty for a name that no encoding can have
    std::size_t markLength = 0;  ///< bytes of the byte order mark in front
    bool isAsciiBased = false;   ///< whether every byte below 0x80 means its ASCII character and nothing else
};

/**
 * Finds out the encoding of an XML text: by its byte order mark, by the shape of its first characters, by what its XML
 * declaration says, else UTF-8.
 * @param iGiven a name that somebody who knows has given; wins over the text when it is not empty
 */
XmlEncoding DetectXmlEncoding(std::string_view iBytes, std::u16string_view iGiven);

/**
 * Turns a text into UTF-16.
 * @return false when the encoding is not known or the text does not follow it, an incomplete character at its end
 *         included; may throw what Xerces-C throws.
 */
bool DecodeXml(std::string_view iBytes, const XmlEncoding& iEncoding, std::u16string& oText);

/** @return where UTF-8 text first holds what is no character, cut ones at its end included; its length when nowhere. */
std::size_t FirstInvalidUtf8(std::string_view iBytes);

#endif
