#include "NaiveXpdlReader.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

/** A required element is missing. */
struct Missing {};

/** The narrow form of UTF-8: a question mark for each UTF-16 unit above 0xFF. */
BexUnicodeString Narrow(const std::string& iUtf8) {
    std::string narrow;
    for (std::size_t i = 0; i < iUtf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(iUtf8[i]);
        if (lead < 0x80) {
            narrow += iUtf8[i];
        } else if (lead == 0xC2 || lead == 0xC3) {
            narrow += static_cast<char>(static_cast<unsigned char>(iUtf8[++i]) | (lead == 0xC3 ? 0x40 : 0));
        } else {
            narrow += lead < 0xF0 ? "?" : "??";
            i += lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        }
    }
    return BexUnicodeString::FromNarrow(narrow);
}

std::vector<const XmlNode*> Children(const XmlNode& iParent, const std::string& iTag) {
    std::vector<const XmlNode*> found;
    for (const XmlNode& child : iParent.children) {
        if (child.kind == XmlNode::Kind::Element && child.name == iTag) {
            found.push_back(&child);
        }
    }
    return found;
}

const XmlNode* Optional(const XmlNode& iParent, const std::string& iTag) {
    const std::vector<const XmlNode*> found = Children(iParent, iTag);
    return found.empty() ? nullptr : found.front();
}

const XmlNode& Required(const XmlNode& iParent, const std::string& iTag) {
    const XmlNode* found = Optional(iParent, iTag);
    if (found == nullptr) {
        throw Missing();
    }
    return *found;
}

std::string RawAttribute(const XmlNode& iElement, const std::string& iName) {
    const auto found = iElement.attributes.find(iName);
    return found == iElement.attributes.end() ? "" : found->second;
}

BexUnicodeString Attribute(const XmlNode& iElement, const std::string& iName) {
    return Narrow(RawAttribute(iElement, iName));
}

BexUnicodeString Text(const XmlNode& iElement) {
    for (const XmlNode& child : iElement.children) {
        if (child.kind == XmlNode::Kind::Text) {
            return Narrow(child.value);
        }
    }
    return BexUnicodeString("");
}

/** What "%d" or "%ld" reads at the start of a text; the number stays when there is none or it does not fit. */
template <typename Number>
void ReadNumber(const BexUnicodeString& iText, Number& ioNumber, long iLeast, long iMost) {
    const char* text = iText.ConvertToChar();
    char* end = nullptr;
    errno = 0;
    const long number = std::strtol(text, &end, 10);
    if (end != text && errno == 0 && number >= iLeast && number <= iMost) {
        ioNumber = static_cast<Number>(number);
    }
}

void ReadDataField(const XmlNode& iField, DataInfo& oData) {
    const XmlNode& type = Required(iField, "DataType");
    oData.name = Attribute(iField, "Id");
    oData.type = Attribute(Required(type, "DeclaredType"), "Id");
    oData.value = Text(Required(iField, "InitialValue"));
    for (const XmlNode* entry : Children(Required(iField, "ExtendedAttributes"), "ExtendedAttribute")) {
        if (RawAttribute(*entry, "Name") == "externId") {
            oData.extid = Attribute(*entry, "Value");
            break;
        }
    }
}

void ReadDataFields(const XmlNode& iProcess, ProcessInfo& oProcess) {
    const XmlNode* fields = Optional(iProcess, "DataFields");
    if (fields == nullptr) {
        oProcess.SetDataNumber(0);
        throw Missing();
    }
    const std::vector<const XmlNode*> found = Children(*fields, "DataField");
    oProcess.SetDataNumber(static_cast<int>(found.size()));
    for (std::size_t i = 0; i < found.size(); ++i) {
        ReadDataField(*found[i], oProcess.datas[i]);
    }
}

void ReadActivityAttributes(const XmlNode& iAttributes, ActivityInfo& ioActivity) {
    std::vector<BexUnicodeString> inputs;
    std::vector<BexUnicodeString> outputs;
    for (const XmlNode* entry : Children(iAttributes, "ExtendedAttribute")) {
        const std::string name = RawAttribute(*entry, "Name");
        const BexUnicodeString value = Attribute(*entry, "Value");
        if (name == "IN") {
            inputs.push_back(value);
        } else if (name == "OUT") {
            outputs.push_back(value);
        } else if (name == "status") {
            ioActivity.status = value;
        } else if (name == "externId") {
            ioActivity.extid = value;
        } else if (name == "generation") {
            ReadNumber(value, ioActivity.generation, INT_MIN, INT_MAX);
        }
    }
    ioActivity.SetInputNumber(static_cast<int>(inputs.size()));
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        ioActivity.inputs[i] = inputs[i];
    }
    ioActivity.SetOutputNumber(static_cast<int>(outputs.size()));
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        ioActivity.outputs[i] = outputs[i];
    }
}

void ReadPerformer(const XmlNode& iElement, ActivityInfo& ioActivity) {
    if (const XmlNode* performer = Optional(iElement, "Performer")) {
        ioActivity.owner = Text(*performer);
        if (ioActivity.participant.IsNull() != 0) {
            ioActivity.participant = ioActivity.owner;
            ioActivity.participantType = "HUMAN";
        }
    }
}

void ReadActivity(const XmlNode& iProcess, ActivityInfo& ioActivity) {
    const XmlNode& element = Required(Required(iProcess, "Activities"), "Activity");
    ioActivity.id = Attribute(element, "Id");
    ioActivity.name = Attribute(element, "Name");
    if (const XmlNode* description = Optional(element, "Description")) {
        ioActivity.abstract = Text(*description);
    }
    ReadPerformer(element, ioActivity);
    if (const XmlNode* priority = Optional(element, "Priority")) {
        ioActivity.priority = Text(*priority);
    }
    if (const XmlNode* simulation = Optional(element, "SimulationInformation")) {
        if (const XmlNode* duration = Optional(Required(*simulation, "TimeEstimation"), "Duration")) {
            ReadNumber(Text(*duration), ioActivity.duration, LONG_MIN, LONG_MAX);
        }
    }
    if (const XmlNode* documentation = Optional(element, "Documentation")) {
        ioActivity.documentation = Text(*documentation);
    }
    ReadActivityAttributes(Required(element, "ExtendedAttributes"), ioActivity);
}

void ReadParticipants(const XmlNode& iPackage, ActivityInfo& ioActivity) {
    const XmlNode* participants = Optional(iPackage, "Participants");
    if (participants == nullptr) {
        ioActivity.participant.Reset();
        ioActivity.participantType.Reset();
        return;
    }
    const XmlNode& participant = Required(*participants, "Participant");
    ioActivity.participant = Attribute(participant, "Id");
    ioActivity.participantType = Attribute(Required(participant, "ParticipantType"), "Type");
}

void ReadPackage(const XmlNode& iPackage, ActivityInfo& ioActivity) {
    Required(Required(iPackage, "PackageHeader"), "Vendor");
    ReadParticipants(iPackage, ioActivity);
    const XmlNode& process = Required(Required(iPackage, "WorkflowProcesses"), "WorkflowProcess");
    ioActivity.process.id = Attribute(process, "Id");
    ioActivity.process.name = Attribute(process, "Name");
    ioActivity.durationUnit = Attribute(Required(process, "ProcessHeader"), "DurationUnit");
    ReadDataFields(process, ioActivity.process);
    ReadActivity(process, ioActivity);
    if (const XmlNode* attributes = Optional(process, "ExtendedAttributes")) {
        for (const XmlNode* entry : Children(*attributes, "ExtendedAttribute")) {
            if (RawAttribute(*entry, "Name") == "context") {
                ioActivity.process.context = Attribute(*entry, "Value");
            }
        }
    }
}

}  // namespace

void ReadXpdlNaively(const XmlNode& iDocument, ActivityInfo& ioActivity) {
    try {
        for (const XmlNode& child : iDocument.children) {
            if (child.kind == XmlNode::Kind::Element) {
                ReadPackage(child, ioActivity);
            }
        }
    } catch (const Missing&) {
        return;  // as far as it was read
    }
}
