#ifndef JsonPlace_H
#define JsonPlace_H

#include <BexUnicodeString.h>

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/**
 * A value in a JSON document, together with where it stands. Reading it as something that it is not throws a Failure
 * with the file, the JSON pointer and what was expected. Null counts as absent everywhere.
 *
 * A view: the document and the file name must live as long.
 */
class JsonPlace {
public:
    /** The document as a whole. */
    JsonPlace(const nlohmann::json& iDocument, const std::string& iFileName);

    /** @return whether there is nothing here. */
    bool IsAbsent() const;
    /** @return whether there is an object here. */
    bool IsObject() const;
    /** @return whether there is a text here. */
    bool IsText() const;
    /** Refuses anything but an object with no other members than these. */
    void RequireObject(const std::vector<std::string_view>& iMembers) const;
    /** @return the member of that name of an object, absent when it has none. */
    JsonPlace Member(std::string_view iName) const;
    /** @return the number of elements of a list, 0 for an absent one. */
    std::size_t GetListSize() const;
    /** @return an element of a list, from 0. */
    JsonPlace Element(std::size_t iIndex) const;

    /** @return the text in ISO-8859-1, null when absent; refused with a character that is not in it or not in XML. */
    BexUnicodeString Text() const;
    /** @return the text whatever characters it has, null when absent. */
    BexUnicodeString AnyText() const;
    /** @return the text as Text() has it, refused when absent. */
    std::string RequiredText() const;
    /** @return a whole number between these, nothing when absent. */
    std::optional<long> WholeNumber(long iLeast, long iMost) const;

    /** Refuses the value. @throw Failure with file, pointer and @p iReason. */
    [[noreturn]] void Refuse(const std::string& iReason) const;
    /** Refuses the value, telling what should stand there and what does. */
    [[noreturn]] void RefuseOther(const std::string& iExpected) const;

private:
    JsonPlace(const nlohmann::json& iValue, const std::string& iFileName, std::string iPointer);
    void RequireText() const;

    const nlohmann::json* value;
    const std::string* fileName;
    std::string pointer;
};

#endif
