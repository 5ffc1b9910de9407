#ifndef OtherParsers_H
#define OtherParsers_H

#include "XmlNode.h"

#include <optional>
#include <string>

/** Parsers that the library has nothing to do with, to judge its reader and its writers by. They open no file. */
namespace OtherParsers {

/** The encoding of a text that says nothing, or something else, about it. */
enum class Encoding { AsDeclared, Utf8 };

/** What libxml2 reads; nothing when it finds the text not well-formed. */
std::optional<XmlNode> ReadWithLibxml2(const std::string& iText, Encoding iEncoding = Encoding::AsDeclared);
/** What pugixml reads; nothing when it finds an error, but it looks for few. */
std::optional<XmlNode> ReadWithPugixml(const std::string& iText, Encoding iEncoding = Encoding::AsDeclared);

}  // namespace OtherParsers

#endif
