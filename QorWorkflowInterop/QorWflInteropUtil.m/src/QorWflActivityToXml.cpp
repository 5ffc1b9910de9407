#include "QorWflActivityToXml.h"

#include "TreeText.h"
#include "XmlOutput.h"
#include "XpdlNames.h"

#include <BexDom.h>
#include <BexTime.h>

#include <string>
#include <utility>

namespace {

constexpr const char* kCreatedFormat = "%m-%d-%Y-%H:%M:%S";

/** An element that is open while this lives; its attributes are given before what is below it. */
class Element {
public:
    Element(BexTreeBuilder& ioBuilder, const char16_t* iTagName) : builder(ioBuilder) { builder.OpenElement(iTagName); }
    ~Element() { builder.CloseElement(); }
    Element(const Element&) = delete;  // an element is closed once
    Element& operator=(const Element&) = delete;

    void Attribute(const char16_t* iName, const BexUnicodeString& iValue) {
        builder.AddAttribute(iName, iValue.ConvertToChar());
    }

private:
    BexTreeBuilder& builder;
};

void AddEmptyElement(BexTreeBuilder& ioBuilder, const char16_t* iTagName) {
    const Element element(ioBuilder, iTagName);
}

/** An element with one text below it, also when the text is empty. */
void AddTextElement(BexTreeBuilder& ioBuilder, const char16_t* iTagName, const BexUnicodeString& iText) {
    const Element element(ioBuilder, iTagName);
    ioBuilder.AddText(iText.ConvertToChar());
}

/** An element that is there in any case, with a text below it only when there is one. */
void AddOptionalText(BexTreeBuilder& ioBuilder, const char16_t* iTagName, const BexUnicodeString& iText) {
    if (iText.IsNull() != 0) {
        AddEmptyElement(ioBuilder, iTagName);
    } else {
        AddTextElement(ioBuilder, iTagName, iText);
    }
}

/** An element that is only there when there is a text. */
void AddOptionalElement(BexTreeBuilder& ioBuilder, const char16_t* iTagName, const BexUnicodeString& iText) {
    if (iText.IsNull() == 0) {
        AddTextElement(ioBuilder, iTagName, iText);
    }
}

void AddExtendedAttribute(BexTreeBuilder& ioBuilder, const char16_t* iName, const BexUnicodeString& iValue) {
    const Element attribute(ioBuilder, Xpdl::kExtendedAttribute);
    ioBuilder.AddAttribute(Xpdl::kName, iName);
    ioBuilder.AddAttribute(Xpdl::kValue, iValue.ConvertToChar());
}

void AddPackageHeader(BexTreeBuilder& ioBuilder) {
    const Element header(ioBuilder, Xpdl::kPackageHeader);
    AddTextElement(ioBuilder, Xpdl::kXpdlVersion, Xpdl::kVersion);
    AddTextElement(ioBuilder, Xpdl::kVendor, BexUnicodeString(Xpdl::kVendorPrefix) + Xpdl::kProtocolLevel);
    AddTextElement(ioBuilder, Xpdl::kCreated, BexTime().ConvertToString(kCreatedFormat));
}

void AddParticipants(const ActivityInfo& iActivity, BexTreeBuilder& ioBuilder) {
    const Element participants(ioBuilder, Xpdl::kParticipants);
    Element participant(ioBuilder, Xpdl::kParticipant);
    participant.Attribute(Xpdl::kId, iActivity.participant);
    Element type(ioBuilder, Xpdl::kParticipantType);
    type.Attribute(Xpdl::kType, iActivity.participantType);
}

void AddDataType(const DataInfo& iData, BexTreeBuilder& ioBuilder) {
    const Element dataType(ioBuilder, Xpdl::kDataType);
    Element declaredType(ioBuilder, Xpdl::kDeclaredType);
    declaredType.Attribute(Xpdl::kId, iData.type);
}

void AddDataField(const DataInfo& iData, BexTreeBuilder& ioBuilder) {
    Element field(ioBuilder, Xpdl::kDataField);
    field.Attribute(Xpdl::kId, iData.name);
    AddDataType(iData, ioBuilder);
    AddOptionalText(ioBuilder, Xpdl::kInitialValue, iData.value);
    const Element attributes(ioBuilder, Xpdl::kExtendedAttributes);
    AddExtendedAttribute(ioBuilder, Xpdl::kExternId, iData.extid);
}

void AddDataFields(const ProcessInfo& iProcess, BexTreeBuilder& ioBuilder) {
    const Element fields(ioBuilder, Xpdl::kDataFields);
    for (int i = 0; i < iProcess.dataNumber; ++i) {
        AddDataField(iProcess.datas[i], ioBuilder);
    }
}

void AddImplementation(BexTreeBuilder& ioBuilder) {
    const Element implementation(ioBuilder, Xpdl::kImplementation);
    AddEmptyElement(ioBuilder, Xpdl::kNo);
}

void AddSimulationInformation(const ActivityInfo& iActivity, BexTreeBuilder& ioBuilder) {
    const Element simulation(ioBuilder, Xpdl::kSimulationInformation);
    AddEmptyElement(ioBuilder, Xpdl::kCost);
    const Element estimation(ioBuilder, Xpdl::kTimeEstimation);
    BexUnicodeString duration;
    duration.BuildFromNum(iActivity.duration, "%ld");
    AddTextElement(ioBuilder, Xpdl::kDuration, duration);
}

void AddActivityAttributes(const ActivityInfo& iActivity, BexTreeBuilder& ioBuilder) {
    const Element attributes(ioBuilder, Xpdl::kExtendedAttributes);
    for (int i = 0; i < iActivity.inputNumber; ++i) {
        AddExtendedAttribute(ioBuilder, Xpdl::kIn, iActivity.inputs[i]);
    }
    for (int i = 0; i < iActivity.outputNumber; ++i) {
        AddExtendedAttribute(ioBuilder, Xpdl::kOut, iActivity.outputs[i]);
    }
    AddExtendedAttribute(ioBuilder, Xpdl::kStatus, iActivity.status);
    AddExtendedAttribute(ioBuilder, Xpdl::kExternId, iActivity.extid);
    BexUnicodeString generation;
    generation.BuildFromNum(iActivity.generation, "%d");
    AddExtendedAttribute(ioBuilder, Xpdl::kGeneration, generation);
}

void AddActivity(const ActivityInfo& iActivity, BexTreeBuilder& ioBuilder) {
    const Element activities(ioBuilder, Xpdl::kActivities);
    Element element(ioBuilder, Xpdl::kActivity);
    element.Attribute(Xpdl::kId, iActivity.id);
    element.Attribute(Xpdl::kName, iActivity.name);
    AddOptionalText(ioBuilder, Xpdl::kDescription, iActivity.abstract);
    AddImplementation(ioBuilder);
    AddOptionalElement(ioBuilder, Xpdl::kPerformer, iActivity.owner);
    AddTextElement(ioBuilder, Xpdl::kPriority, iActivity.priority);
    AddSimulationInformation(iActivity, ioBuilder);
    AddOptionalElement(ioBuilder, Xpdl::kDocumentation, iActivity.documentation);
    AddActivityAttributes(iActivity, ioBuilder);
}

void AddProcessHeader(const ActivityInfo& iActivity, BexTreeBuilder& ioBuilder) {
    Element header(ioBuilder, Xpdl::kProcessHeader);
    header.Attribute(Xpdl::kDurationUnit, iActivity.durationUnit);
}

void AddWorkflowProcess(const ActivityInfo& iActivity, BexTreeBuilder& ioBuilder) {
    const Element processes(ioBuilder, Xpdl::kWorkflowProcesses);
    Element process(ioBuilder, Xpdl::kWorkflowProcess);
    process.Attribute(Xpdl::kId, iActivity.process.id);
    process.Attribute(Xpdl::kName, iActivity.process.name);
    AddProcessHeader(iActivity, ioBuilder);
    AddDataFields(iActivity.process, ioBuilder);
    AddActivity(iActivity, ioBuilder);
    const Element attributes(ioBuilder, Xpdl::kExtendedAttributes);
    AddExtendedAttribute(ioBuilder, Xpdl::kContext, iActivity.process.context);
}

void CreatePackageNode(const ActivityInfo& iActivity, DOM_Document& ioDocument) {
    BexTreeBuilder builder(ioDocument);
    Element package(builder, Xpdl::kPackage);
    package.Attribute(Xpdl::kNamespaceDeclaration, Xpdl::kNamespace);
    package.Attribute(Xpdl::kId, Xpdl::kPackageId);
    package.Attribute(Xpdl::kName, Xpdl::kPackageName);
    AddPackageHeader(builder);
    AddParticipants(iActivity, builder);
    AddWorkflowProcess(iActivity, builder);
}

/** The text of a document in ISO-8859-1, with a line feed between any two tags that touch. */
BexNarrowText NarrowTextOf(const DOM_Document& iDocument) {
    BexNarrowText text;
    XmlOutput<BexNarrowText> output(text);
    TreeText<BexNarrowText>(output, true).Write(iDocument.getNative());
    return text;
}

/**
 * Takes off the last character, unless that is a line feed. The tool on the other side counts on the final line feed
 * staying and on nothing else standing in its place.
 */
void DropUnendedLine(BexNarrowText& ioText) {
    const std::string_view text = ioText.View();
    // GCOVR_EXCL_START: the text of a document ends with a line feed as long as TreeText writes it so
    if (!text.empty() && text.back() != '\n') {
        ioText.Shorten(text.size() - 1);
    }
    // GCOVR_EXCL_STOP
}

}  // namespace

void QorWflActivityToXml(const ActivityInfo& iActivity, BexUnicodeString& oXml) {
    oXml.Reset();
    DOM_Document document = DOM_Document::createDocument();
    if (document.isNull()) {
        return;  // Xerces-C cannot be started
    }
    CreatePackageNode(iActivity, document);
    BexNarrowText text = NarrowTextOf(document);
    DropUnendedLine(text);
    oXml = BexUnicodeString::FromNarrow(std::move(text));
}
