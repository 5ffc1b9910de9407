#include "QorWflActivityToXml.h"

#include "WriteXML.h"
#include "XpdlNames.h"

#include <BexDom.h>
#include <BexTime.h>
#include <BexXMLParser.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr const char* kCreatedFormat = "%m-%d-%Y-%H:%M:%S";

/** Appends a new element to a node of a document. */
DOM_Element AddElement(DOM_Node& ioParent, const char16_t* iTagName) {
    DOM_Document document = ioParent.getOwnerDocument();
    DOM_Element element = document.createElement(iTagName);
    ioParent.appendChild(element);
    return element;
}

/** Appends an element with one text below it, also when the text is empty. */
void AddTextElement(DOM_Node& ioParent, const char16_t* iTagName, const BexUnicodeString& iText) {
    DOM_Element element = AddElement(ioParent, iTagName);
    DOM_Document document = element.getOwnerDocument();
    element.appendChild(document.createTextNode(iText.ConvertToChar()));
}

void AddExtendedAttribute(DOM_Node& ioAttributes, const char16_t* iName, const BexUnicodeString& iValue) {
    DOM_Element attribute = AddElement(ioAttributes, Xpdl::kExtendedAttribute);
    attribute.setAttribute(Xpdl::kName, iName);
    attribute.setAttribute(Xpdl::kValue, iValue.ConvertToChar());
}

void AddPackageHeader(DOM_Node& ioPackage) {
    DOM_Element header = AddElement(ioPackage, Xpdl::kPackageHeader);
    AddTextElement(header, Xpdl::kXpdlVersion, Xpdl::kVersion);
    AddTextElement(header, Xpdl::kVendor, BexUnicodeString(Xpdl::kVendorPrefix) + Xpdl::kProtocolLevel);
    AddTextElement(header, Xpdl::kCreated, BexTime().ConvertToString(kCreatedFormat));
}

void AddParticipants(const ActivityInfo& iActivity, DOM_Node& ioPackage) {
    DOM_Element participants = AddElement(ioPackage, Xpdl::kParticipants);
    DOM_Element participant = AddElement(participants, Xpdl::kParticipant);
    participant.setAttribute(Xpdl::kId, iActivity.participant.ConvertToChar());
    DOM_Element type = AddElement(participant, Xpdl::kParticipantType);
    type.setAttribute(Xpdl::kType, iActivity.participantType.ConvertToChar());
}

void AddDataField(const DataInfo& iData, DOM_Node& ioFields) {
    DOM_Element field = AddElement(ioFields, Xpdl::kDataField);
    field.setAttribute(Xpdl::kId, iData.name.ConvertToChar());
    DOM_Element dataType = AddElement(field, Xpdl::kDataType);
    DOM_Element declaredType = AddElement(dataType, Xpdl::kDeclaredType);
    declaredType.setAttribute(Xpdl::kId, iData.type.ConvertToChar());
    if (iData.value.IsNull() != 0) {
        AddElement(field, Xpdl::kInitialValue);
    } else {
        AddTextElement(field, Xpdl::kInitialValue, iData.value);
    }
    DOM_Element attributes = AddElement(field, Xpdl::kExtendedAttributes);
    AddExtendedAttribute(attributes, Xpdl::kExternId, iData.extid);
}

void AddDataFields(const ProcessInfo& iProcess, DOM_Node& ioParent) {
    DOM_Element fields = AddElement(ioParent, Xpdl::kDataFields);
    for (int i = 0; i < iProcess.dataNumber; ++i) {
        AddDataField(iProcess.datas[i], fields);
    }
}

void AddSimulationInformation(const ActivityInfo& iActivity, DOM_Node& ioElement) {
    DOM_Element simulation = AddElement(ioElement, Xpdl::kSimulationInformation);
    AddElement(simulation, Xpdl::kCost);
    DOM_Element estimation = AddElement(simulation, Xpdl::kTimeEstimation);
    BexUnicodeString duration;
    duration.BuildFromNum(iActivity.duration, "%ld");
    AddTextElement(estimation, Xpdl::kDuration, duration);
}

void AddActivityAttributes(const ActivityInfo& iActivity, DOM_Node& ioElement) {
    DOM_Element attributes = AddElement(ioElement, Xpdl::kExtendedAttributes);
    for (int i = 0; i < iActivity.inputNumber; ++i) {
        AddExtendedAttribute(attributes, Xpdl::kIn, iActivity.inputs[i]);
    }
    for (int i = 0; i < iActivity.outputNumber; ++i) {
        AddExtendedAttribute(attributes, Xpdl::kOut, iActivity.outputs[i]);
    }
    AddExtendedAttribute(attributes, Xpdl::kStatus, iActivity.status);
    AddExtendedAttribute(attributes, Xpdl::kExternId, iActivity.extid);
    BexUnicodeString generation;
    generation.BuildFromNum(iActivity.generation, "%d");
    AddExtendedAttribute(attributes, Xpdl::kGeneration, generation);
}

void AddActivity(const ActivityInfo& iActivity, DOM_Node& ioParent) {
    DOM_Element activities = AddElement(ioParent, Xpdl::kActivities);
    DOM_Element element = AddElement(activities, Xpdl::kActivity);
    element.setAttribute(Xpdl::kId, iActivity.id.ConvertToChar());
    element.setAttribute(Xpdl::kName, iActivity.name.ConvertToChar());
    if (iActivity.abstract.IsNull() != 0) {
        AddElement(element, Xpdl::kDescription);
    } else {
        AddTextElement(element, Xpdl::kDescription, iActivity.abstract);
    }
    DOM_Element implementation = AddElement(element, Xpdl::kImplementation);
    AddElement(implementation, Xpdl::kNo);
    if (iActivity.owner.IsNull() == 0) {
        AddTextElement(element, Xpdl::kPerformer, iActivity.owner);
    }
    AddTextElement(element, Xpdl::kPriority, iActivity.priority);
    AddSimulationInformation(iActivity, element);
    if (iActivity.documentation.IsNull() == 0) {
        AddTextElement(element, Xpdl::kDocumentation, iActivity.documentation);
    }
    AddActivityAttributes(iActivity, element);
}

void AddWorkflowProcess(const ActivityInfo& iActivity, DOM_Node& ioPackage) {
    DOM_Element processes = AddElement(ioPackage, Xpdl::kWorkflowProcesses);
    DOM_Element process = AddElement(processes, Xpdl::kWorkflowProcess);
    process.setAttribute(Xpdl::kId, iActivity.process.id.ConvertToChar());
    process.setAttribute(Xpdl::kName, iActivity.process.name.ConvertToChar());
    DOM_Element header = AddElement(process, Xpdl::kProcessHeader);
    header.setAttribute(Xpdl::kDurationUnit, iActivity.durationUnit.ConvertToChar());
    AddDataFields(iActivity.process, process);
    AddActivity(iActivity, process);
    DOM_Element attributes = AddElement(process, Xpdl::kExtendedAttributes);
    AddExtendedAttribute(attributes, Xpdl::kContext, iActivity.process.context);
}

void CreatePackageNode(const ActivityInfo& iActivity, DOM_Document& ioDocument) {
    DOM_Element package = ioDocument.createElement(Xpdl::kPackage);
    ioDocument.appendChild(package);
    package.setAttribute(Xpdl::kNamespaceDeclaration, Xpdl::kNamespace);
    package.setAttribute(Xpdl::kId, Xpdl::kPackageId);
    package.setAttribute(Xpdl::kName, Xpdl::kPackageName);
    AddPackageHeader(package);
    AddParticipants(iActivity, package);
    AddWorkflowProcess(iActivity, package);
}

/**
 * The text without its last character, unless that is a line feed. The tool on the other side counts on the final line
 * feed staying and on nothing else standing in its place.
 */
std::string_view WithoutUnendedLine(std::string_view iText) {
    if (!iText.empty() && iText.back() != '\n') {
        iText.remove_suffix(1);
    }
    return iText;
}

/** The text with a line feed between every two adjacent tags. */
std::string BreakBetweenTags(std::string_view iText) {
    constexpr std::string_view kAdjacentTags("><");
    std::string broken;
    broken.reserve(iText.size() + iText.size() / 16);
    while (true) {
        const std::size_t adjacent = iText.find(kAdjacentTags);
        if (adjacent == std::string_view::npos) {
            return broken.append(iText);
        }
        broken.append(iText.substr(0, adjacent)).append(">\n");
        iText.remove_prefix(adjacent + 1);
    }
}

}  // namespace

void QorWflActivityToXml(const ActivityInfo& iActivity, BexUnicodeString& oXml) {
    oXml.Reset();
    BexXMLParser::Initialize();
    DOM_Document document = DOM_Document::createDocument();
    CreatePackageNode(iActivity, document);
    DOMString text;
    WriteXML(document, text);
    const std::unique_ptr<char[]> narrow(text.transcode());
    oXml = BexUnicodeString::FromNarrow(
        BreakBetweenTags(WithoutUnendedLine(std::string_view(narrow.get(), text.length()))));
}
