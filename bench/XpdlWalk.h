#ifndef XpdlWalk_H
#define XpdlWalk_H

#include "XpdlTree.h"

#include <charconv>
#include <stdexcept>
#include <string_view>

/**
 * Takes a record out of a parsed document with some library, element by element in the order in which our own reader
 * does; a Walk puts that library behind these operations: `Node FirstChild(Node, Tag)` and `Node NextSibling(Node,
 * Tag)` give the first or next element of a name or null, `BexUnicodeString Text(Node)` and `Attribute(Node, Tag)` its
 * text and an attribute, `bool HasValue(Node, Tag name, Tag value)` compares an attribute.
 */
template <typename Walk>
class XpdlReader {
public:
    using Node = typename Walk::Node;

    XpdlReader(Walk& ioWalk, ActivityInfo& oActivity) : walk(ioWalk), activity(oActivity) {}

    void Read(Node iPackage) {
        walk.Text(Child(Child(iPackage, Tags::kPackageHeader), Tags::kVendor));
        const Node participant = Child(Child(iPackage, Tags::kParticipants), Tags::kParticipant);
        activity.participant = walk.Attribute(participant, Tags::kId);
        activity.participantType = walk.Attribute(Child(participant, Tags::kParticipantType), Tags::kType);
        const Node process = Child(Child(iPackage, Tags::kWorkflowProcesses), Tags::kWorkflowProcess);
        activity.process.id = walk.Attribute(process, Tags::kId);
        activity.process.name = walk.Attribute(process, Tags::kName);
        activity.durationUnit = walk.Attribute(Child(process, Tags::kProcessHeader), Tags::kDurationUnit);
        ReadDataFields(Child(process, Tags::kDataFields));
        ReadActivity(Child(Child(process, Tags::kActivities), Tags::kActivity));
        ForEach(Child(process, Tags::kExtendedAttributes), Tags::kExtendedAttribute, [this](Node iAttribute) {
            if (walk.HasValue(iAttribute, Tags::kName, Tags::kContext)) {
                activity.process.context = walk.Attribute(iAttribute, Tags::kValue);
            }
        });
    }

private:
    Node Child(Node iParent, const Tag& iTag) {
        const Node child = walk.FirstChild(iParent, iTag);
        if (!child) {
            throw std::runtime_error(std::string("no element ") + iTag.narrow);
        }
        return child;
    }

    template <typename Take>
    void ForEach(Node iParent, const Tag& iTag, Take iTake) {
        for (Node child = walk.FirstChild(iParent, iTag); child; child = walk.NextSibling(child, iTag)) {
            iTake(child);
        }
    }

    template <typename Number>
    static void TakeNumber(const BexUnicodeString& iText, Number& oNumber) {
        const char* text = iText.ConvertToChar();
        std::from_chars(text, text + iText.GetLengthInChar(), oNumber);
    }

    void ReadDataFields(Node iFields) {
        int count = 0;
        ForEach(iFields, Tags::kDataField, [&count](Node /*iField*/) { ++count; });
        activity.process.SetDataNumber(count);
        DataInfo* data = activity.process.datas;
        ForEach(iFields, Tags::kDataField, [this, &data](Node iField) { ReadDataField(iField, *data++); });
    }

    void ReadDataField(Node iField, DataInfo& oData) {
        oData.name = walk.Attribute(iField, Tags::kId);
        oData.type = walk.Attribute(Child(Child(iField, Tags::kDataType), Tags::kDeclaredType), Tags::kId);
        oData.value = walk.Text(Child(iField, Tags::kInitialValue));
        Node attribute = walk.FirstChild(Child(iField, Tags::kExtendedAttributes), Tags::kExtendedAttribute);
        while (attribute && !walk.HasValue(attribute, Tags::kName, Tags::kExternId)) {
            attribute = walk.NextSibling(attribute, Tags::kExtendedAttribute);
        }
        if (attribute) {
            oData.extid = walk.Attribute(attribute, Tags::kValue);
        }
    }

    void ReadActivity(Node iElement) {
        activity.id = walk.Attribute(iElement, Tags::kId);
        activity.name = walk.Attribute(iElement, Tags::kName);
        activity.abstract = walk.Text(Child(iElement, Tags::kDescription));
        activity.owner = walk.Text(Child(iElement, Tags::kPerformer));
        activity.priority = walk.Text(Child(iElement, Tags::kPriority));
        const Node simulation = Child(iElement, Tags::kSimulationInformation);
        TakeNumber(walk.Text(Child(Child(simulation, Tags::kTimeEstimation), Tags::kDuration)), activity.duration);
        activity.documentation = walk.Text(Child(iElement, Tags::kDocumentation));
        ReadLists(Child(iElement, Tags::kExtendedAttributes));
    }

    void ReadLists(Node iAttributes) {
        int inputs = 0;
        int outputs = 0;
        ForEach(iAttributes, Tags::kExtendedAttribute, [&, this](Node iAttribute) {
            if (walk.HasValue(iAttribute, Tags::kName, Tags::kIn)) {
                ++inputs;
            } else if (walk.HasValue(iAttribute, Tags::kName, Tags::kOut)) {
                ++outputs;
            } else if (walk.HasValue(iAttribute, Tags::kName, Tags::kStatus)) {
                activity.status = walk.Attribute(iAttribute, Tags::kValue);
            } else if (walk.HasValue(iAttribute, Tags::kName, Tags::kExternId)) {
                activity.extid = walk.Attribute(iAttribute, Tags::kValue);
            } else if (walk.HasValue(iAttribute, Tags::kName, Tags::kGeneration)) {
                TakeNumber(walk.Attribute(iAttribute, Tags::kValue), activity.generation);
            }
        });
        activity.SetInputNumber(inputs);
        activity.SetOutputNumber(outputs);
        BexUnicodeString* input = activity.inputs;
        BexUnicodeString* output = activity.outputs;
        ForEach(iAttributes, Tags::kExtendedAttribute, [&, this](Node iAttribute) {
            if (walk.HasValue(iAttribute, Tags::kName, Tags::kIn)) {
                *input++ = walk.Attribute(iAttribute, Tags::kValue);
            } else if (walk.HasValue(iAttribute, Tags::kName, Tags::kOut)) {
                *output++ = walk.Attribute(iAttribute, Tags::kValue);
            }
        });
    }

    Walk& walk;
    ActivityInfo& activity;
};

#endif
