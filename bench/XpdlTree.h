#ifndef XpdlTree_H
#define XpdlTree_H

#include <ActivityInfo.h>
#include <BexTime.h>

#include <string>

/** A fixed text of the document, for libraries that want it in bytes and for those that want it in UTF-16. */
struct Tag {
    const char* narrow;
    const char16_t* wide;
};

namespace Tags {
constexpr Tag kPackage{"Package", u"Package"};
constexpr Tag kPackageHeader{"PackageHeader", u"PackageHeader"};
constexpr Tag kXpdlVersion{"XPDLVersion", u"XPDLVersion"};
constexpr Tag kVendor{"Vendor", u"Vendor"};
constexpr Tag kCreated{"Created", u"Created"};
constexpr Tag kParticipants{"Participants", u"Participants"};
constexpr Tag kParticipant{"Participant", u"Participant"};
constexpr Tag kParticipantType{"ParticipantType", u"ParticipantType"};
constexpr Tag kWorkflowProcesses{"WorkflowProcesses", u"WorkflowProcesses"};
constexpr Tag kWorkflowProcess{"WorkflowProcess", u"WorkflowProcess"};
constexpr Tag kProcessHeader{"ProcessHeader", u"ProcessHeader"};
constexpr Tag kDataFields{"DataFields", u"DataFields"};
constexpr Tag kDataField{"DataField", u"DataField"};
constexpr Tag kDataType{"DataType", u"DataType"};
constexpr Tag kDeclaredType{"DeclaredType", u"DeclaredType"};
constexpr Tag kInitialValue{"InitialValue", u"InitialValue"};
constexpr Tag kExtendedAttributes{"ExtendedAttributes", u"ExtendedAttributes"};
constexpr Tag kExtendedAttribute{"ExtendedAttribute", u"ExtendedAttribute"};
constexpr Tag kActivities{"Activities", u"Activities"};
constexpr Tag kActivity{"Activity", u"Activity"};
constexpr Tag kDescription{"Description", u"Description"};
constexpr Tag kImplementation{"Implementation", u"Implementation"};
constexpr Tag kNo{"No", u"No"};
constexpr Tag kPerformer{"Performer", u"Performer"};
constexpr Tag kPriority{"Priority", u"Priority"};
constexpr Tag kSimulationInformation{"SimulationInformation", u"SimulationInformation"};
constexpr Tag kCost{"Cost", u"Cost"};
constexpr Tag kTimeEstimation{"TimeEstimation", u"TimeEstimation"};
constexpr Tag kDuration{"Duration", u"Duration"};
constexpr Tag kDocumentation{"Documentation", u"Documentation"};

constexpr Tag kNamespaceDeclaration{"xmlns:xpdl", u"xmlns:xpdl"};
constexpr Tag kId{"Id", u"Id"};
constexpr Tag kName{"Name", u"Name"};
constexpr Tag kType{"Type", u"Type"};
constexpr Tag kValue{"Value", u"Value"};
constexpr Tag kDurationUnit{"DurationUnit", u"DurationUnit"};

constexpr Tag kIn{"IN", u"IN"};
constexpr Tag kOut{"OUT", u"OUT"};
constexpr Tag kStatus{"status", u"status"};
constexpr Tag kExternId{"externId", u"externId"};
constexpr Tag kGeneration{"generation", u"generation"};
constexpr Tag kContext{"context", u"context"};
}  // namespace Tags

/**
 * Builds the tree of a record's document with some library; a Tree puts that library behind these operations:
 * `Node Root(Tag)`, `Node Element(Node parent, Tag)`, `void Attribute(Node, Tag name, value)` and
 * `void Text(Node, value)`, a value being a Tag or a BexUnicodeString.
 */
template <typename Tree>
class XpdlTreeBuilder {
public:
    using Node = typename Tree::Node;

    explicit XpdlTreeBuilder(Tree& ioTree) : tree(ioTree) {}

    void Build(const ActivityInfo& iActivity) {
        const Node package = tree.Root(Tags::kPackage);
        tree.Attribute(package, Tags::kNamespaceDeclaration, BexUnicodeString("http://www.wfmc.org/2002/XPDL1.0"));
        tree.Attribute(package, Tags::kId, BexUnicodeString("WFRTPackageId"));
        tree.Attribute(package, Tags::kName, BexUnicodeString("WFRTPackageName"));
        AddHeader(package);
        AddParticipants(package, iActivity);
        AddProcess(package, iActivity);
    }

private:
    void AddTextElement(Node iParent, const Tag& iTag, const BexUnicodeString& iText) {
        tree.Text(tree.Element(iParent, iTag), iText);
    }

    template <typename Value>
    void AddExtendedAttribute(Node iParent, const Tag& iName, const Value& iValue) {
        const Node attribute = tree.Element(iParent, Tags::kExtendedAttribute);
        tree.Attribute(attribute, Tags::kName, iName);
        tree.Attribute(attribute, Tags::kValue, iValue);
    }

    void AddHeader(Node iPackage) {
        const Node header = tree.Element(iPackage, Tags::kPackageHeader);
        AddTextElement(header, Tags::kXpdlVersion, "0.02");
        AddTextElement(header, Tags::kVendor, "VERANT_050803");
        AddTextElement(header, Tags::kCreated, BexTime().ConvertToString("%m-%d-%Y-%H:%M:%S"));
    }

    void AddParticipants(Node iPackage, const ActivityInfo& iActivity) {
        const Node participant = tree.Element(tree.Element(iPackage, Tags::kParticipants), Tags::kParticipant);
        tree.Attribute(participant, Tags::kId, iActivity.participant);
        tree.Attribute(tree.Element(participant, Tags::kParticipantType), Tags::kType, iActivity.participantType);
    }

    void AddProcess(Node iPackage, const ActivityInfo& iActivity) {
        const ProcessInfo& info = iActivity.process;
        const Node process = tree.Element(tree.Element(iPackage, Tags::kWorkflowProcesses), Tags::kWorkflowProcess);
        tree.Attribute(process, Tags::kId, info.id);
        tree.Attribute(process, Tags::kName, info.name);
        tree.Attribute(tree.Element(process, Tags::kProcessHeader), Tags::kDurationUnit, iActivity.durationUnit);
        const Node fields = tree.Element(process, Tags::kDataFields);
        for (int i = 0; i < info.dataNumber; ++i) {
            AddDataField(fields, info.datas[i]);
        }
        AddActivity(process, iActivity);
        AddExtendedAttribute(tree.Element(process, Tags::kExtendedAttributes), Tags::kContext, info.context);
    }

    void AddDataField(Node iFields, const DataInfo& iData) {
        const Node field = tree.Element(iFields, Tags::kDataField);
        tree.Attribute(field, Tags::kId, iData.name);
        tree.Attribute(tree.Element(tree.Element(field, Tags::kDataType), Tags::kDeclaredType), Tags::kId, iData.type);
        AddTextElement(field, Tags::kInitialValue, iData.value);
        AddExtendedAttribute(tree.Element(field, Tags::kExtendedAttributes), Tags::kExternId, iData.extid);
    }

    void AddActivity(Node iProcess, const ActivityInfo& iActivity) {
        const Node element = tree.Element(tree.Element(iProcess, Tags::kActivities), Tags::kActivity);
        tree.Attribute(element, Tags::kId, iActivity.id);
        tree.Attribute(element, Tags::kName, iActivity.name);
        AddTextElement(element, Tags::kDescription, iActivity.abstract);
        tree.Element(tree.Element(element, Tags::kImplementation), Tags::kNo);
        AddTextElement(element, Tags::kPerformer, iActivity.owner);
        AddTextElement(element, Tags::kPriority, iActivity.priority);
        const Node simulation = tree.Element(element, Tags::kSimulationInformation);
        tree.Element(simulation, Tags::kCost);
        AddTextElement(tree.Element(simulation, Tags::kTimeEstimation), Tags::kDuration,
                       std::to_string(iActivity.duration).c_str());
        AddTextElement(element, Tags::kDocumentation, iActivity.documentation);
        const Node attributes = tree.Element(element, Tags::kExtendedAttributes);
        for (int i = 0; i < iActivity.inputNumber; ++i) {
            AddExtendedAttribute(attributes, Tags::kIn, iActivity.inputs[i]);
        }
        for (int i = 0; i < iActivity.outputNumber; ++i) {
            AddExtendedAttribute(attributes, Tags::kOut, iActivity.outputs[i]);
        }
        AddExtendedAttribute(attributes, Tags::kStatus, iActivity.status);
        AddExtendedAttribute(attributes, Tags::kExternId, iActivity.extid);
        AddExtendedAttribute(attributes, Tags::kGeneration,
                             BexUnicodeString(std::to_string(iActivity.generation).c_str()));
    }

    Tree& tree;
};

#endif
