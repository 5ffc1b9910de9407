#ifndef NaiveXpdlReader_H
#define NaiveXpdlReader_H

#include <ActivityInfo.h>
#include <BexDom.h>

#include <XmlText.h>
#include <stdexcept>
#include <string>
#include <vector>

/**
 * What the reader is to make of a document, written down a second time over the public DOM: slow, plain, and step by
 * step as the document form has it. A missing required element throws, and the record keeps what came before.
 */
class NaiveXpdlReader {
public:
    static void Read(const DOM_Document& iDocument, ActivityInfo& oActivity) {
        try {
            NaiveXpdlReader(oActivity).Package(iDocument.getDocumentElement());
        } catch (const Missing&) {  // the rest is as it was
        }
    }

private:
    class Missing : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    explicit NaiveXpdlReader(ActivityInfo& oActivity) : activity(oActivity) {}

    static std::vector<DOM_Node> Children(const DOM_Node& iParent, const std::string& iTag) {
        std::vector<DOM_Node> children;
        for (DOM_Node child = iParent.getFirstChild(); child != 0; child = child.getNextSibling()) {
            if (child.getNodeType() == DOM_Node::ELEMENT_NODE && Narrow(child.getNodeName()) == iTag &&
                child.getNodeName().length() == iTag.size()) {
                children.push_back(child);
            }
        }
        return children;
    }

    static DOM_Node First(const DOM_Node& iParent, const std::string& iTag) {
        const std::vector<DOM_Node> children = Children(iParent, iTag);
        return children.empty() ? DOM_Node() : children.front();
    }

    static DOM_Node Required(const DOM_Node& iParent, const std::string& iTag) {
        const DOM_Node child = First(iParent, iTag);
        if (child == 0) {
            throw Missing(iTag);
        }
        return child;
    }

    static BexUnicodeString Text(const DOM_Node& iElement) {
        for (DOM_Node child = iElement.getFirstChild(); child != 0; child = child.getNextSibling()) {
            if (child.getNodeType() == DOM_Node::TEXT_NODE) {
                const std::string text = Narrow(child.getNodeValue());
                return BexUnicodeString(text.data(), static_cast<int>(text.size()));
            }
        }
        return BexUnicodeString("");
    }

    static BexUnicodeString Attribute(const DOM_Node& iElement, const char* iName) {
        const std::string value = Narrow(DOM_Element(iElement).getAttribute(iName));
        return BexUnicodeString(value.data(), static_cast<int>(value.size()));
    }

    /** Whether an extended attribute is of that name, character by character. */
    static bool IsNamed(const DOM_Node& iAttribute, const char* iName) {
        return DOM_Element(iAttribute).getAttribute("Name").equals(DOMString(iName));
    }

    static void TakeText(const DOM_Node& iParent, const char* iTag, BexUnicodeString& oText) {
        const DOM_Node element = First(iParent, iTag);
        if (element != 0) {
            oText = Text(element);
        }
    }

    void Package(const DOM_Node& iRoot) {
        Required(Required(iRoot, "PackageHeader"), "Vendor");
        const DOM_Node participants = First(iRoot, "Participants");
        if (participants == 0) {
            activity.participant.Reset();
            activity.participantType.Reset();
        } else {
            const DOM_Node participant = Required(participants, "Participant");
            activity.participant = Attribute(participant, "Id");
            activity.participantType = Attribute(Required(participant, "ParticipantType"), "Type");
        }
        const DOM_Node process = Required(Required(iRoot, "WorkflowProcesses"), "WorkflowProcess");
        activity.process.id = Attribute(process, "Id");
        activity.process.name = Attribute(process, "Name");
        activity.durationUnit = Attribute(Required(process, "ProcessHeader"), "DurationUnit");
        DataFields(process);
        Activity(process);
        const DOM_Node attributes = First(process, "ExtendedAttributes");
        for (const DOM_Node& one : Children(attributes, "ExtendedAttribute")) {
            if (IsNamed(one, "context")) {
                activity.process.context = Attribute(one, "Value");
            }
        }
    }

    void DataFields(const DOM_Node& iProcess) {
        const DOM_Node element = First(iProcess, "DataFields");
        const std::vector<DOM_Node> fields = Children(element, "DataField");
        activity.process.SetDataNumber(static_cast<int>(fields.size()));
        if (element == 0) {
            throw Missing("DataFields");
        }
        DataInfo* data = activity.process.datas;
        for (const DOM_Node& field : fields) {
            const DOM_Node dataType = Required(field, "DataType");
            data->name = Attribute(field, "Id");
            data->type = Attribute(Required(dataType, "DeclaredType"), "Id");
            data->value = Text(Required(field, "InitialValue"));
            for (const DOM_Node& one : Children(Required(field, "ExtendedAttributes"), "ExtendedAttribute")) {
                if (IsNamed(one, "externId")) {
                    data->extid = Attribute(one, "Value");
                    break;
                }
            }
            ++data;
        }
    }

    void Activity(const DOM_Node& iProcess) {
        const DOM_Node element = Required(Required(iProcess, "Activities"), "Activity");
        activity.id = Attribute(element, "Id");
        activity.name = Attribute(element, "Name");
        TakeText(element, "Description", activity.abstract);
        const DOM_Node performer = First(element, "Performer");
        if (performer != 0) {
            activity.owner = Text(performer);
            if (activity.participant.IsNull() != 0) {
                activity.participant = activity.owner;
                activity.participantType = "HUMAN";
            }
        }
        TakeText(element, "Priority", activity.priority);
        const DOM_Node simulation = First(element, "SimulationInformation");
        if (simulation != 0) {
            const DOM_Node duration = First(Required(simulation, "TimeEstimation"), "Duration");
            if (duration != 0) {
                Text(duration).ConvertToNum(&activity.duration, "%ld");
            }
        }
        TakeText(element, "Documentation", activity.documentation);
        ActivityAttributes(Children(Required(element, "ExtendedAttributes"), "ExtendedAttribute"));
    }

    void ActivityAttributes(const std::vector<DOM_Node>& iAttributes) {
        std::vector<BexUnicodeString> inputs;
        std::vector<BexUnicodeString> outputs;
        for (const DOM_Node& one : iAttributes) {
            const BexUnicodeString value = Attribute(one, "Value");
            if (IsNamed(one, "IN")) {
                inputs.push_back(value);
            } else if (IsNamed(one, "OUT")) {
                outputs.push_back(value);
            } else if (IsNamed(one, "status")) {
                activity.status = value;
            } else if (IsNamed(one, "externId")) {
                activity.extid = value;
            } else if (IsNamed(one, "generation")) {
                value.ConvertToNum(&activity.generation, "%d");
            }
        }
        activity.SetInputNumber(static_cast<int>(inputs.size()));
        activity.SetOutputNumber(static_cast<int>(outputs.size()));
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            activity.inputs[i] = inputs[i];
        }
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            activity.outputs[i] = outputs[i];
        }
    }

    ActivityInfo& activity;
};

#endif
