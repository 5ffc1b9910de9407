#ifndef NaiveXpdlReader_H
#define NaiveXpdlReader_H

#include "XmlPiece.h"

#include <ActivityInfo.h>

#include <string>
#include <vector>

/** Reads an activity from a document in pieces, as the reader is defined, and tells what is traced; independent of the
 * library, to judge it by. */
class NaiveXpdlReader {
public:
    explicit NaiveXpdlReader(ActivityInfo& oActivity) : activity(oActivity) {}

    void Read(const XmlPiece& iRoot) {
        Open("QorWflXmlToActivity");
        Open("QorWflXmlToActivity::ReadPackage");
        ReadPackage(iRoot);
        Close("QorWflXmlToActivity::ReadPackage");
        Trace("=================== Received inputs =======================");
        Trace("==================== End of inputs ========================");
        Close("QorWflXmlToActivity");
    }

    /** The lines of the trace, a line feed behind each. */
    const std::string& TraceText() const { return trace; }

private:
    using Elements = std::vector<const XmlPiece*>;

    void Trace(const std::string& iLine) { trace += iLine + "\n"; }
    void Open(const std::string& iStep) { Trace(">> " + iStep); }
    void Close(const std::string& iStep) { Trace("<< " + iStep); }
    void TraceNoChild(const std::string& iTag) { Trace(iTag + " child not found"); }

    static Elements Children(const XmlPiece* iParent, const std::string& iTag) {
        Elements found;
        if (iParent != nullptr) {
            for (const XmlPiece& child : iParent->children) {
                if (child.kind == XmlPiece::Kind::Element && child.name == iTag) {
                    found.push_back(&child);
                }
            }
        }
        return found;
    }

    const XmlPiece* First(const XmlPiece* iParent, const std::string& iTag) {
        const Elements found = Children(iParent, iTag);
        if (found.empty()) {
            TraceNoChild(iTag);
            return nullptr;
        }
        return found.front();
    }

    /** The text up to the first piece that is none, as a parser joins texts that touch. */
    static std::string Text(const XmlPiece& iElement) {
        std::string text;
        for (const XmlPiece& child : iElement.children) {
            if (child.kind == XmlPiece::Kind::Text) {
                text += child.name;
            } else if (!text.empty()) {
                break;
            }
        }
        return text;
    }

    std::string Attribute(const XmlPiece& iElement, const std::string& iName) {
        for (const auto& [name, value] : iElement.attributes) {
            if (name == iName) {
                Trace("Attribute [" + iName + "] found");
                Trace("Value=[" + value + "]");
                return value;
            }
        }
        Trace("Attribute [" + iName + "] NOT found");
        return "";
    }

    void ReadPackage(const XmlPiece& iRoot) {
        Trace("Package tag is <" + iRoot.name + ">");
        const XmlPiece* header = First(&iRoot, "PackageHeader");
        const XmlPiece* vendor = header == nullptr ? nullptr : First(header, "Vendor");
        if (vendor == nullptr) {
            return;
        }
        int level = 0;
        const std::string vendorText = Text(*vendor);
        if (vendorText.compare(0, 7, "VERANT_") == 0) {
            BexUnicodeString(vendorText.substr(7).c_str()).ConvertToNum(&level, "%d");
        }
        Trace("Protocol level=" + std::to_string(level));
        const XmlPiece* participants = First(&iRoot, "Participants");
        if (participants == nullptr) {
            Trace("No participants : using old performer info");
            activity.participant.Reset();
            activity.participantType.Reset();
        } else if (!ReadParticipant(*participants)) {
            return;
        }
        const XmlPiece* processes = First(&iRoot, "WorkflowProcesses");
        const XmlPiece* process = processes == nullptr ? nullptr : First(processes, "WorkflowProcess");
        if (process != nullptr) {
            ReadProcess(*process);
        }
    }

    bool ReadParticipant(const XmlPiece& iParticipants) {
        const XmlPiece* participant = First(&iParticipants, "Participant");
        if (participant == nullptr) {
            return false;
        }
        activity.participant = Attribute(*participant, "Id").c_str();
        const XmlPiece* type = First(participant, "ParticipantType");
        if (type == nullptr) {
            return false;
        }
        activity.participantType = Attribute(*type, "Type").c_str();
        return true;
    }

    void ReadProcess(const XmlPiece& iProcess) {
        activity.process.id = Attribute(iProcess, "Id").c_str();
        activity.process.name = Attribute(iProcess, "Name").c_str();
        const XmlPiece* header = First(&iProcess, "ProcessHeader");
        if (header == nullptr) {
            return;
        }
        activity.durationUnit = Attribute(*header, "DurationUnit").c_str();
        Open("QorWflXmlToActivity::ReadDataFields");
        const bool datasRead = ReadDataFields(iProcess);
        Close("QorWflXmlToActivity::ReadDataFields");
        if (!datasRead) {
            return;
        }
        Open("QorWflXmlToActivity::ReadActivity");
        const bool activityRead = ReadActivity(iProcess);
        Close("QorWflXmlToActivity::ReadActivity");
        if (!activityRead) {
            return;
        }
        if (const XmlPiece* extended = First(&iProcess, "ExtendedAttributes")) {
            for (const XmlPiece* entry : Children(extended, "ExtendedAttribute")) {
                if (Attribute(*entry, "Name") == "context") {
                    activity.process.context = Attribute(*entry, "Value").c_str();
                }
            }
            TraceNoChild("ExtendedAttribute");
        }
    }

    bool ReadDataFields(const XmlPiece& iProcess) {
        const XmlPiece* parent = First(&iProcess, "DataFields");
        const Elements fields = Children(parent, "DataField");
        TraceNoChild("DataField");
        activity.process.SetDataNumber(static_cast<int>(fields.size()));
        if (parent == nullptr) {
            return false;
        }
        for (std::size_t index = 0; index < fields.size(); ++index) {
            if (!ReadDataField(*fields[index], activity.process.datas[index])) {
                return false;
            }
        }
        return true;
    }

    bool ReadDataField(const XmlPiece& iField, DataInfo& oData) {
        const XmlPiece* dataType = First(&iField, "DataType");
        if (dataType == nullptr) {
            return false;
        }
        oData.name = Attribute(iField, "Id").c_str();
        const XmlPiece* declared = First(dataType, "DeclaredType");
        if (declared == nullptr) {
            return false;
        }
        oData.type = Attribute(*declared, "Id").c_str();
        const XmlPiece* value = First(&iField, "InitialValue");
        if (value == nullptr) {
            return false;
        }
        oData.value = Text(*value).c_str();
        const XmlPiece* extended = First(&iField, "ExtendedAttributes");
        if (extended == nullptr) {
            return false;
        }
        for (const XmlPiece* entry : Children(extended, "ExtendedAttribute")) {
            if (Attribute(*entry, "Name") == "externId") {
                oData.extid = Attribute(*entry, "Value").c_str();
                return true;
            }
        }
        TraceNoChild("ExtendedAttribute");
        return true;
    }

    void ReadOptionalText(const XmlPiece& iElement, const std::string& iTag, BexUnicodeString& oText) {
        if (const XmlPiece* element = First(&iElement, iTag)) {
            oText = Text(*element).c_str();
        }
    }

    bool ReadActivity(const XmlPiece& iProcess) {
        const XmlPiece* activities = First(&iProcess, "Activities");
        const XmlPiece* element = activities == nullptr ? nullptr : First(activities, "Activity");
        if (element == nullptr) {
            return false;
        }
        activity.id = Attribute(*element, "Id").c_str();
        activity.name = Attribute(*element, "Name").c_str();
        ReadOptionalText(*element, "Description", activity.abstract);
        if (const XmlPiece* performer = First(element, "Performer")) {
            activity.owner = Text(*performer).c_str();
            if (activity.participant.IsNull() != 0) {
                activity.participant = activity.owner;
                activity.participantType = "HUMAN";
            }
        }
        ReadOptionalText(*element, "Priority", activity.priority);
        if (const XmlPiece* simulation = First(element, "SimulationInformation")) {
            const XmlPiece* estimation = First(simulation, "TimeEstimation");
            if (estimation == nullptr) {
                return false;
            }
            if (const XmlPiece* duration = First(estimation, "Duration")) {
                BexUnicodeString(Text(*duration).c_str()).ConvertToNum(&activity.duration, "%ld");
            }
        }
        ReadOptionalText(*element, "Documentation", activity.documentation);
        const XmlPiece* extended = First(element, "ExtendedAttributes");
        if (extended == nullptr) {
            return false;
        }
        ReadEntries(*extended);
        return true;
    }

    void ReadEntries(const XmlPiece& iExtended) {
        int inputs = 0;
        int outputs = 0;
        for (const XmlPiece* entry : Children(&iExtended, "ExtendedAttribute")) {
            const std::string name = Attribute(*entry, "Name");
            if (name == "IN") {
                ++inputs;
            } else if (name == "OUT") {
                ++outputs;
            } else if (name == "status") {
                activity.status = Attribute(*entry, "Value").c_str();
            } else if (name == "externId") {
                activity.extid = Attribute(*entry, "Value").c_str();
            } else if (name == "generation") {
                BexUnicodeString(Attribute(*entry, "Value").c_str()).ConvertToNum(&activity.generation, "%d");
            }
        }
        TraceNoChild("ExtendedAttribute");
        activity.SetInputNumber(inputs);
        activity.SetOutputNumber(outputs);
        inputs = 0;
        outputs = 0;
        for (const XmlPiece* entry : Children(&iExtended, "ExtendedAttribute")) {
            const std::string name = Attribute(*entry, "Name");
            if (name == "IN") {
                activity.inputs[inputs++] = Attribute(*entry, "Value").c_str();
            } else if (name == "OUT") {
                activity.outputs[outputs++] = Attribute(*entry, "Value").c_str();
            }
        }
        TraceNoChild("ExtendedAttribute");
    }

    ActivityInfo& activity;
    std::string trace;
};

#endif
