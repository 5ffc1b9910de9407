#ifndef XpdlReading_H
#define XpdlReading_H

#include "PositionedDocument.h"
#include "XpdlRoles.h"

#include <ActivityInfo.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** A value that a field gets, or would get if the reading came there. */
struct ReadValue {
    Field field;
    std::size_t item = 0;  ///< in which element of its list, from 0
    std::size_t element = kNone;
    std::size_t attribute = kNone;  ///< that holds it; kNone for a text
    std::u16string_view attributeName = {};
    std::u16string_view text = {};
    TextPlace place;
    bool isRead = true;          ///< false behind the place where the reading stops
    bool isMissing = false;      ///< its attribute is not there
    bool isStandIn = false;      ///< for a participant that is not there
    std::size_t winner = kNone;  ///< the value that takes its place; kNone when it counts itself
};

/** The value as a record holds it: in ISO-8859-1. */
BexUnicodeString NarrowValue(std::u16string_view iText);
/** The number that a text begins with, as the reader takes it for a field; nothing when it takes none. */
std::optional<long> NumberOf(Field iField, std::u16string_view iText);

/** A required element that is not there. */
struct MissingElement {
    std::size_t parent;
    const Role* role;
};

/**
 * What QorWflXmlToActivity() does with a document, step by step: which elements it takes, which fields it sets, and
 * where it stops. The steps behind that place are told as well, as they would be taken if nothing was missing.
 */
class XpdlReading {
public:
    /** @param iDocument lives as long as the reading. */
    explicit XpdlReading(const PositionedDocument& iDocument);
    XpdlReading(const XpdlReading&) = delete;  // refers to a document that is not its own
    XpdlReading& operator=(const XpdlReading&) = delete;

    const PositionedDocument& Document() const { return document; }
    /** Whether there are no participants, so that the performer stands in. */
    bool HasNoParticipants() const { return hasNoParticipants; }
    /** @return the role of an element that the reader takes, null for one that it passes over. */
    const Role* RoleOf(std::size_t iElement) const { return roles[iElement]; }
    /** The elements that the reader takes, in the order in which it finds them. */
    const std::vector<std::size_t>& Taken() const { return taken; }
    /** The values in the order of the reading. */
    const std::vector<ReadValue>& Values() const { return values; }
    /** The required elements that are not there; at the first one the reading stops. */
    const std::vector<MissingElement>& Missing() const { return missing; }
    bool Stops() const { return !missing.empty(); }
    /** @return the path that a missing element would have. */
    std::string PathOf(const MissingElement& iMissing) const;

    /** Does to a record what the reader does. */
    void Apply(ActivityInfo& ioRecord) const;
    /** @return the fields, in the order of the reading, that keep their value; lists by the name of the list. */
    std::vector<std::string> KeptFields() const;
    /** @return the other fields. */
    std::vector<std::string> SetFields() const;

private:
    void Take(const Role& iRole, std::size_t iElement);
    void TakeChild(const Role& iRole, std::size_t iParent);
    void TakeAttributes(const std::vector<RoleAttribute>& iAttributes, std::size_t iElement);
    void TakeEntries(const Role& iRole, std::size_t iElement);
    void TakePerformerForParticipant();
    void TakeText(Field iField, std::size_t iElement);
    void AddAttributeValue(Field iField, std::size_t iElement, std::u16string_view iAttribute, std::size_t iItem);
    void FindWinners(const Role& iRole, std::size_t iFirst);
    void Prepare(const Role& iRole, std::size_t iParent, bool iIsThere);
    bool IsSet(const FieldInfo& iField) const;
    std::vector<std::string> FieldsThatAre(bool iSet) const;

    const PositionedDocument& document;
    std::vector<const Role*> roles;
    std::vector<std::size_t> taken;
    std::vector<ReadValue> values;
    std::vector<MissingElement> missing;
    std::size_t dataField = 0;
    std::optional<std::size_t> dataCount;    // what the list of data fields is made for; none: it is left alone
    std::optional<std::size_t> inputCount;   // the same for the inputs
    std::optional<std::size_t> outputCount;  // and the outputs
    bool hasNoParticipants = false;
    bool resetsParticipant = false;  // because there are none, and the reading comes there
};

#endif
