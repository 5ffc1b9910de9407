#include "QorWflXmlToActivity.h"

#include "QorWflInteropInfo.h"
#include "XpdlNames.h"

#include <BexDom.h>
#include <BexQorTrace.h>
#include <BexQorTraceStep.h>
#include <BexXMLParser.h>

#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <iostream>
#include <memory>
#include <string_view>

namespace {

BexQorTrace trace("WFInteropXML", "WFInteropXML", "STDOUT", 1024);

constexpr int kSuccess = 0;
constexpr int kFailure = static_cast<int>(0x80004005);

/** Hard failures go to standard error, a line each. */
void Report(const char* iFailure) {
    std::cerr << iFailure << std::endl;
}

/** The 8-bit form of a text of the tree, as the framework's string. */
BexUnicodeString DsToUs(std::u16string_view iText) {
    BexUnicodeString text(iText.data(), static_cast<int>(iText.size()));
    return text.IsWide() ? BexUnicodeString(text.ConvertToChar()) : text;
}

// Nodes and texts are handed about without a share in the document, which outlives the reading.

/** The first child element of that exact name, or the next one behind @p iAfter; null, and traced, when there is none.
 */
DOM_Node SearchSubElement(const DOM_Node& iParent, std::u16string_view iTagName, const DOM_Node& iAfter,
                          BexQorTraceStep& ioStep) {
    xercesc::DOMNode* child = nullptr;
    if (!iAfter.isNull()) {
        child = iAfter.getNative()->getNextSibling();
    } else if (!iParent.isNull()) {
        child = iParent.getNative()->getFirstChild();
    }
    while (child != nullptr) {
        if (child->getNodeType() == xercesc::DOMNode::ELEMENT_NODE && child->getNodeName() == iTagName) {
            return DOM_Node(child);
        }
        child = child->getNextSibling();
    }
    ioStep << iTagName << " child not found" << std::endl;
    return DOM_Node();
}

/** The first text below an element, empty when there is none. */
std::u16string_view GetText(const DOM_Node& iNode) {
    xercesc::DOMNode* child = iNode.getNative()->getFirstChild();
    while (child != nullptr && child->getNodeType() != xercesc::DOMNode::TEXT_NODE) {
        child = child->getNextSibling();
    }
    return DOM_Node(child).viewNodeValue();
}

/** An attribute's value, empty when it is absent. */
std::u16string_view GetAttribute(const DOM_Node& iNode, const char16_t* iName, BexQorTraceStep& ioStep) {
    const DOM_Node attribute(iNode.getNative()->getAttributes()->getNamedItem(iName));
    if (attribute.isNull()) {
        ioStep << "Attribute [" << std::u16string_view(iName) << "] NOT found" << std::endl;
        return std::u16string_view();
    }
    const std::u16string_view value = attribute.viewNodeValue();
    ioStep << "Attribute [" << std::u16string_view(iName) << "] found" << std::endl;
    ioStep << "Value=[" << value << "]" << std::endl;
    return value;
}

/**
 * One step of the reading: walks the tree for it, writes its trace, and keeps its status. As soon as a required element
 * is missing the step has failed, and what it is asked for after that is nowhere.
 */
class ReadingStep {
public:
    explicit ReadingStep(const char* iName) : step(trace, iName) {}

    bool Failed() const { return status < 0; }
    int Status() const { return status; }
    BexQorTraceStep& Trace() { return step; }
    void Fail() { status = kFailure; }

    /** The first child element of a name; a missing one fails the step. */
    DOM_Node Required(const DOM_Node& iParent, const char16_t* iTagName) {
        DOM_Node child;
        if (!Failed()) {
            child = SearchSubElement(iParent, iTagName, DOM_Node(), step);
            if (child.isNull()) {
                Fail();
            }
        }
        return child;
    }

    /** The first child element of a name, or null. */
    DOM_Node Optional(const DOM_Node& iParent, const char16_t* iTagName) {
        return Failed() ? DOM_Node() : SearchSubElement(iParent, iTagName, DOM_Node(), step);
    }

    /** Calls @p iTake with each child element of a name, until it gives false. */
    template <typename Take>
    void ForEach(const DOM_Node& iParent, const char16_t* iTagName, Take iTake) {
        DOM_Node child = SearchSubElement(iParent, iTagName, DOM_Node(), step);
        while (child != nullptr && iTake(child)) {
            child = SearchSubElement(iParent, iTagName, child, step);
        }
    }

    /** Takes an attribute of an element that was found. */
    void TakeAttribute(const DOM_Node& iElement, const char16_t* iName, BexUnicodeString& oText) {
        if (!Failed()) {
            oText = DsToUs(GetAttribute(iElement, iName, step));
        }
    }

    /** Takes the text of an optional element; without the element the field keeps its value. */
    void TakeText(const DOM_Node& iParent, const char16_t* iTagName, BexUnicodeString& oText) {
        const DOM_Node element = Optional(iParent, iTagName);
        if (element != nullptr) {
            oText = DsToUs(GetText(element));
        }
    }

private:
    BexQorTraceStep step;
    int status = kSuccess;
};

/** The level of the protocol that the document's vendor text tells; of no effect on the reading. */
void TraceProtocolLevel(const BexUnicodeString& iVendor, BexQorTraceStep& ioStep) {
    const BexUnicodeString prefix(Xpdl::kVendorPrefix);
    int level = 0;
    if (iVendor.SubString(0, prefix.GetLengthInChar()) == prefix) {
        iVendor.SubString(prefix.GetLengthInChar(), iVendor.GetLengthInChar()).ConvertToNum(&level, "%d");
    }
    ioStep << "Protocol level=" << level << std::endl;
}

/** Of several external identifiers of a data field, the first counts. */
void ReadDataField(ReadingStep& ioReading, const DOM_Node& iField, DataInfo& oData) {
    const DOM_Node dataType = ioReading.Required(iField, Xpdl::kDataType);
    ioReading.TakeAttribute(iField, Xpdl::kId, oData.name);
    const DOM_Node declaredType = ioReading.Required(dataType, Xpdl::kDeclaredType);
    ioReading.TakeAttribute(declaredType, Xpdl::kId, oData.type);
    const DOM_Node initialValue = ioReading.Required(iField, Xpdl::kInitialValue);
    if (!ioReading.Failed()) {
        oData.value = DsToUs(GetText(initialValue));
    }
    const DOM_Node attributes = ioReading.Required(iField, Xpdl::kExtendedAttributes);
    if (ioReading.Failed()) {
        return;
    }
    ioReading.ForEach(attributes, Xpdl::kExtendedAttribute, [&](const DOM_Node& iAttribute) {
        if (GetAttribute(iAttribute, Xpdl::kName, ioReading.Trace()) != Xpdl::kExternId) {
            return true;
        }
        ioReading.TakeAttribute(iAttribute, Xpdl::kValue, oData.extid);
        return false;
    });
}

int ReadDataFields(const DOM_Node& iNode, ProcessInfo& oProcess) {
    ReadingStep reading("QorWflXmlToActivity::ReadDataFields");
    const DOM_Node fields = reading.Required(iNode, Xpdl::kDataFields);
    int count = 0;
    reading.ForEach(fields, Xpdl::kDataField, [&count](const DOM_Node& /*iField*/) {
        ++count;
        return true;
    });
    oProcess.SetDataNumber(count);
    DOM_Node field;
    for (int i = 0; i < count && !reading.Failed(); ++i) {
        field = SearchSubElement(fields, Xpdl::kDataField, field, reading.Trace());
        ReadDataField(reading, field, oProcess.datas[i]);
    }
    return reading.Status();
}

/** Takes what stands once in an activity's extended attributes, the last entry of a name counting, and counts the
 * lists. */
void ReadActivityAttributes(ReadingStep& ioReading, const DOM_Node& iAttributes, ActivityInfo& oActivity) {
    int inputs = 0;
    int outputs = 0;
    ioReading.ForEach(iAttributes, Xpdl::kExtendedAttribute, [&](const DOM_Node& iAttribute) {
        const std::u16string_view name = GetAttribute(iAttribute, Xpdl::kName, ioReading.Trace());
        if (name == Xpdl::kIn) {
            ++inputs;
        } else if (name == Xpdl::kOut) {
            ++outputs;
        } else if (name == Xpdl::kStatus) {
            ioReading.TakeAttribute(iAttribute, Xpdl::kValue, oActivity.status);
        } else if (name == Xpdl::kExternId) {
            ioReading.TakeAttribute(iAttribute, Xpdl::kValue, oActivity.extid);
        } else if (name == Xpdl::kGeneration) {
            DsToUs(GetAttribute(iAttribute, Xpdl::kValue, ioReading.Trace())).ConvertToNum(&oActivity.generation, "%d");
        }
        return true;
    });
    oActivity.SetInputNumber(inputs);
    oActivity.SetOutputNumber(outputs);
}

/** Fills the lists in document order. */
void ReadInputsAndOutputs(ReadingStep& ioReading, const DOM_Node& iAttributes, ActivityInfo& oActivity) {
    int input = 0;
    int output = 0;
    ioReading.ForEach(iAttributes, Xpdl::kExtendedAttribute, [&](const DOM_Node& iAttribute) {
        const std::u16string_view name = GetAttribute(iAttribute, Xpdl::kName, ioReading.Trace());
        if (name == Xpdl::kIn) {
            ioReading.TakeAttribute(iAttribute, Xpdl::kValue, oActivity.inputs[input++]);
        } else if (name == Xpdl::kOut) {
            ioReading.TakeAttribute(iAttribute, Xpdl::kValue, oActivity.outputs[output++]);
        }
        return true;
    });
}

/** Documents of an older protocol tell no participant: the performer stands in. */
void ReadPerformer(ReadingStep& ioReading, const DOM_Node& iElement, ActivityInfo& oActivity) {
    const DOM_Node performer = ioReading.Optional(iElement, Xpdl::kPerformer);
    if (performer.isNull()) {
        return;
    }
    oActivity.owner = DsToUs(GetText(performer));
    if (oActivity.participant.IsNull() != 0) {
        oActivity.participant = oActivity.owner;
        oActivity.participantType = Xpdl::kHumanParticipant;
    }
}

void ReadDuration(ReadingStep& ioReading, const DOM_Node& iElement, ActivityInfo& oActivity) {
    const DOM_Node simulation = ioReading.Optional(iElement, Xpdl::kSimulationInformation);
    if (simulation.isNull()) {
        return;
    }
    const DOM_Node estimation = ioReading.Required(simulation, Xpdl::kTimeEstimation);
    const DOM_Node duration = ioReading.Optional(estimation, Xpdl::kDuration);
    if (duration != nullptr) {
        DsToUs(GetText(duration)).ConvertToNum(&oActivity.duration, "%ld");
    }
}

int ReadActivity(const DOM_Node& iNode, ActivityInfo& oActivity) {
    ReadingStep reading("QorWflXmlToActivity::ReadActivity");
    const DOM_Node activities = reading.Required(iNode, Xpdl::kActivities);
    const DOM_Node element = reading.Required(activities, Xpdl::kActivity);
    reading.TakeAttribute(element, Xpdl::kId, oActivity.id);
    reading.TakeAttribute(element, Xpdl::kName, oActivity.name);
    reading.TakeText(element, Xpdl::kDescription, oActivity.abstract);
    ReadPerformer(reading, element, oActivity);
    reading.TakeText(element, Xpdl::kPriority, oActivity.priority);
    ReadDuration(reading, element, oActivity);
    reading.TakeText(element, Xpdl::kDocumentation, oActivity.documentation);
    const DOM_Node attributes = reading.Required(element, Xpdl::kExtendedAttributes);
    if (!reading.Failed()) {
        ReadActivityAttributes(reading, attributes, oActivity);
        ReadInputsAndOutputs(reading, attributes, oActivity);
    }
    return reading.Status();
}

void ReadParticipants(ReadingStep& ioReading, const DOM_Node& iPackage, ActivityInfo& oActivity) {
    if (ioReading.Failed()) {
        return;
    }
    const DOM_Node participants = ioReading.Optional(iPackage, Xpdl::kParticipants);
    if (participants.isNull()) {
        ioReading.Trace() << "No participants : using old performer info" << std::endl;
        oActivity.participant.Reset();
        oActivity.participantType.Reset();
        return;
    }
    const DOM_Node participant = ioReading.Required(participants, Xpdl::kParticipant);
    ioReading.TakeAttribute(participant, Xpdl::kId, oActivity.participant);
    const DOM_Node type = ioReading.Required(participant, Xpdl::kParticipantType);
    ioReading.TakeAttribute(type, Xpdl::kType, oActivity.participantType);
}

/** Of several contexts of a process, the last counts. */
void ReadContext(ReadingStep& ioReading, const DOM_Node& iProcess, BexUnicodeString& oContext) {
    const DOM_Node attributes = ioReading.Optional(iProcess, Xpdl::kExtendedAttributes);
    if (attributes.isNull()) {
        return;
    }
    ioReading.ForEach(attributes, Xpdl::kExtendedAttribute, [&](const DOM_Node& iAttribute) {
        if (GetAttribute(iAttribute, Xpdl::kName, ioReading.Trace()) == Xpdl::kContext) {
            ioReading.TakeAttribute(iAttribute, Xpdl::kValue, oContext);
        }
        return true;
    });
}

int ReadPackage(const DOM_Document& iDocument, ActivityInfo& oActivity) {
    ReadingStep reading("QorWflXmlToActivity::ReadPackage");
    const DOM_Element package = iDocument.getDocumentElement();
    // GCOVR_EXCL_START: a text without a root element gives no document; the reader does not take this for granted
    if (package.isNull()) {
        Report("getDocumentElement failed");
        return kFailure;
    }
    // GCOVR_EXCL_STOP
    reading.Trace() << "Package tag is <" << package.viewNodeName() << ">" << std::endl;
    const DOM_Node header = reading.Required(package, Xpdl::kPackageHeader);
    const DOM_Node vendor = reading.Required(header, Xpdl::kVendor);
    if (!reading.Failed()) {
        TraceProtocolLevel(DsToUs(GetText(vendor)), reading.Trace());
    }
    ReadParticipants(reading, package, oActivity);
    const DOM_Node processes = reading.Required(package, Xpdl::kWorkflowProcesses);
    const DOM_Node process = reading.Required(processes, Xpdl::kWorkflowProcess);
    reading.TakeAttribute(process, Xpdl::kId, oActivity.process.id);
    reading.TakeAttribute(process, Xpdl::kName, oActivity.process.name);
    const DOM_Node processHeader = reading.Required(process, Xpdl::kProcessHeader);
    reading.TakeAttribute(processHeader, Xpdl::kDurationUnit, oActivity.durationUnit);
    if (reading.Failed() || ReadDataFields(process, oActivity.process) < 0 || ReadActivity(process, oActivity) < 0) {
        return kFailure;
    }
    ReadContext(reading, process, oActivity.process.context);
    return reading.Status();
}

/** The document that a text holds, or null when it holds none. */
DOM_Document Parse(const BexUnicodeString& iXml) {
    const std::unique_ptr<InputSource> source(
        BexXMLParser::CreateMemBufInputSource(iXml.ConvertToChar(), iXml.GetLengthInChar(), "XPDL"));
    if (source == nullptr) {
        Report("CreateMemBufInputSource failed");
        return DOM_Document();
    }
    DOMParser parser;
    parser.parse(*source);
    if (parser.getDocument().isNull()) {
        Report("getDocument failed");
    }
    return parser.getDocument();
}

/** The record goes to standard output itself, between two lines of the trace. */
void DumpInputs(const ActivityInfo& iActivity, BexQorTraceStep& ioStep) {
    ioStep << "=================== Received inputs =======================" << std::endl;
    std::cout << iActivity << std::endl;
    ioStep << "==================== End of inputs ========================" << std::endl;
}

}  // namespace

void QorWflXmlToActivity(const BexUnicodeString& iXml, ActivityInfo& oActivity) {
    try {
        BexQorTraceStep step(trace, "QorWflXmlToActivity");
        try {
            const DOM_Document document = Parse(iXml);
            if (!document.isNull()) {
                ReadPackage(document, oActivity);
            }
        } catch (...) {
            // Memory that cannot be had: nothing may leave here, and the record keeps what was read up to there.
            Report("getDocument failed");
        }
        if (step.IsOn() != 0) {
            DumpInputs(oActivity, step);
        }
    } catch (...) {
        // A standard stream that throws: there is nobody left to tell.
        return;
    }
}
