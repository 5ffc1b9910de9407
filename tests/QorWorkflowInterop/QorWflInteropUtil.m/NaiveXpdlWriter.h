#ifndef NaiveXpdlWriter_H
#define NaiveXpdlWriter_H

#include <ActivityInfo.h>

#include <regex>
#include <string>

/** Writes the document of a record line by line, the time it was made at masked; independent of the library, to judge
 * it by. */
class NaiveXpdlWriter {
public:
    static std::string DocumentOf(const ActivityInfo& iActivity) {
        NaiveXpdlWriter writer;
        writer.Write(iActivity);
        return writer.text;
    }

    /** The library's document with its time, which has to have its form, masked. */
    static std::string Masked(const std::string& iDocument) {
        static const std::regex kCreated("<Created>[0-9]{2}-[0-9]{2}-[0-9]{4}-[0-9]{2}:[0-9]{2}:[0-9]{2}</Created>");
        return std::regex_replace(iDocument, kCreated, "<Created>masked</Created>",
                                  std::regex_constants::format_first_only);
    }

private:
    void Line(const std::string& iLine) { text += iLine + "\n"; }

    static std::string Escaped(const BexUnicodeString& iText) {
        std::string escaped;
        for (const char character : std::string(iText.ConvertToChar())) {
            if (character == '&') {
                escaped += "&amp;";
            } else if (character == '<') {
                escaped += "&lt;";
            } else if (character == '>') {
                escaped += "&gt;";
            } else if (character == '"') {
                escaped += "&quot;";
            } else {
                escaped += character;
            }
        }
        return escaped;
    }

    static std::string Attribute(const std::string& iName, const BexUnicodeString& iValue) {
        return " " + iName + " = \"" + Escaped(iValue) + "\"";
    }

    /** An element whose text is null has no content; between two tags that touch there is a line feed. */
    void Text(const std::string& iTag, const BexUnicodeString& iText) {
        const std::string content = Escaped(iText);
        if (iText.IsNull() != 0) {
            Line("<" + iTag + "/>");
        } else {
            Line("<" + iTag + ">" + (content.empty() ? "\n" : content) + "</" + iTag + ">");
        }
    }
    void TextUnlessNull(const std::string& iTag, const BexUnicodeString& iText) {
        if (iText.IsNull() == 0) {
            Text(iTag, iText);
        }
    }
    void TextNullAsEmpty(const std::string& iTag, const BexUnicodeString& iText) {
        Text(iTag, iText.IsNull() != 0 ? BexUnicodeString("") : iText);
    }
    void Entry(const char* iName, const BexUnicodeString& iValue) {
        Line("<ExtendedAttribute" + Attribute("Name", iName) + Attribute("Value", iValue) + "/>");
    }

    void Write(const ActivityInfo& iActivity) {
        const ProcessInfo& process = iActivity.process;
        Line("<?xml version='1.0' encoding='ISO-8859-1' ?>");
        Line(
            "<Package Id = \"WFRTPackageId\" Name = \"WFRTPackageName\" "
            "xmlns:xpdl = \"http://www.wfmc.org/2002/XPDL1.0\">");
        Line("<PackageHeader>");
        Line("<XPDLVersion>0.02</XPDLVersion>");
        Line("<Vendor>VERANT_050803</Vendor>");
        Line("<Created>masked</Created>");
        Line("</PackageHeader>");
        Line("<Participants>");
        Line("<Participant" + Attribute("Id", iActivity.participant) + ">");
        Line("<ParticipantType" + Attribute("Type", iActivity.participantType) + "/>");
        Line("</Participant>");
        Line("</Participants>");
        Line("<WorkflowProcesses>");
        Line("<WorkflowProcess" + Attribute("Id", process.id) + Attribute("Name", process.name) + ">");
        Line("<ProcessHeader" + Attribute("DurationUnit", iActivity.durationUnit) + "/>");
        WriteDataFields(process);
        Line("<Activities>");
        WriteActivity(iActivity);
        Line("</Activities>");
        Line("<ExtendedAttributes>");
        Entry("context", process.context);
        Line("</ExtendedAttributes>");
        Line("</WorkflowProcess>");
        Line("</WorkflowProcesses>");
        Line("</Package>");
    }

    void WriteDataFields(const ProcessInfo& iProcess) {
        if (iProcess.dataNumber < 1) {
            Line("<DataFields/>");
            return;
        }
        Line("<DataFields>");
        for (int index = 0; index < iProcess.dataNumber; ++index) {
            const DataInfo& data = iProcess.datas[index];
            Line("<DataField" + Attribute("Id", data.name) + ">");
            Line("<DataType>");
            Line("<DeclaredType" + Attribute("Id", data.type) + "/>");
            Line("</DataType>");
            Text("InitialValue", data.value);
            Line("<ExtendedAttributes>");
            Entry("externId", data.extid);
            Line("</ExtendedAttributes>");
            Line("</DataField>");
        }
        Line("</DataFields>");
    }

    void WriteActivity(const ActivityInfo& iActivity) {
        Line("<Activity" + Attribute("Id", iActivity.id) + Attribute("Name", iActivity.name) + ">");
        Text("Description", iActivity.abstract);
        Line("<Implementation>");
        Line("<No/>");
        Line("</Implementation>");
        TextUnlessNull("Performer", iActivity.owner);
        TextNullAsEmpty("Priority", iActivity.priority);
        Line("<SimulationInformation>");
        Line("<Cost/>");
        Line("<TimeEstimation>");
        Line("<Duration>" + std::to_string(iActivity.duration) + "</Duration>");
        Line("</TimeEstimation>");
        Line("</SimulationInformation>");
        TextUnlessNull("Documentation", iActivity.documentation);
        Line("<ExtendedAttributes>");
        for (int index = 0; index < iActivity.inputNumber; ++index) {
            Entry("IN", iActivity.inputs[index]);
        }
        for (int index = 0; index < iActivity.outputNumber; ++index) {
            Entry("OUT", iActivity.outputs[index]);
        }
        Entry("status", iActivity.status);
        Entry("externId", iActivity.extid);
        Entry("generation", std::to_string(iActivity.generation).c_str());
        Line("</ExtendedAttributes>");
        Line("</Activity>");
    }

    std::string text;
};

#endif
