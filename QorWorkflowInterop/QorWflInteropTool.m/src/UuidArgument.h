#ifndef UuidArgument_H
#define UuidArgument_H

#include <optional>
#include <string>

/** A UUID block told field by field on the command line; a field that was not given is absent. */
struct UuidFields {
    std::optional<std::string> dbName;
    std::optional<std::string> environment;
    std::optional<std::string> table;
    std::optional<std::string> coid;
    std::optional<std::string> compid;
};

/**
 * The UUID block that a text tells.
 * @param iText a JSON object or an instance URL, as an action in JSON has them, or the hexadecimal digits of all 50
 * bytes
 * @return the 50 bytes.
 * @throw Failure with the text when it is none of these.
 */
std::string ReadUuidArgument(const std::string& iText);
/** The same for fields, all of which must be given. */
std::string ReadUuidFields(const UuidFields& iFields);

#endif
