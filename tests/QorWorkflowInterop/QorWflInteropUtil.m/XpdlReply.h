#ifndef XpdlReply_H
#define XpdlReply_H

#include "ActivityFields.h"

#include <BexUnicodeString.h>
#include <QorWflXmlToActivity.h>

#include <cstddef>
#include <stdexcept>
#include <string>

/** A document in which every field of a record has a value: "new" and the field's name, 33, 44, and lists. */
inline std::string XpdlReply() {
    return R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<Package Id="p" Name="n">
 <PackageHeader><XPDLVersion>0.02</XPDLVersion><Vendor>VERANT_050803</Vendor></PackageHeader>
 <Participants>
  <Participant Id="new participant"><ParticipantType Type="new participantType"/></Participant>
 </Participants>
 <WorkflowProcesses>
  <WorkflowProcess Id="new process.id" Name="new process.name">
   <ProcessHeader DurationUnit="new durationUnit"/>
   <DataFields>
    <DataField Id="d1">
     <DataType><DeclaredType Id="t1"/></DataType>
     <InitialValue>v1</InitialValue>
     <ExtendedAttributes><ExtendedAttribute Name="externId" Value="x1"/></ExtendedAttributes>
    </DataField>
    <DataField Id="d2">
     <DataType><DeclaredType Id="t2"/></DataType>
     <InitialValue>v2</InitialValue>
     <ExtendedAttributes><ExtendedAttribute Name="externId" Value="x2"/></ExtendedAttributes>
    </DataField>
   </DataFields>
   <Activities>
    <Activity Id="new id" Name="new name">
     <Description>new abstract</Description>
     <Implementation><No/></Implementation>
     <Performer>new owner</Performer>
     <Priority>new priority</Priority>
     <SimulationInformation><Cost/><TimeEstimation><Duration>44</Duration></TimeEstimation></SimulationInformation>
     <Documentation>new documentation</Documentation>
     <ExtendedAttributes>
      <ExtendedAttribute Name="IN" Value="d1"/>
      <ExtendedAttribute Name="OUT" Value="d2"/>
      <ExtendedAttribute Name="IN" Value="d2"/>
      <ExtendedAttribute Name="status" Value="new status"/>
      <ExtendedAttribute Name="externId" Value="new extid"/>
      <ExtendedAttribute Name="generation" Value="33"/>
     </ExtendedAttributes>
    </Activity>
   </Activities>
   <ExtendedAttributes><ExtendedAttribute Name="context" Value="new process.context"/></ExtendedAttributes>
  </WorkflowProcess>
 </WorkflowProcesses>
</Package>
)";
}

/** The fields that XpdlReply() gives. */
inline ActivityFields NewFields() {
    ActivityFields fields = {
        {"generation", "33"},
        {"duration", "44"},
        {"process.datas", R"([{"d1" "t1" "x1" "v1"}{"d2" "t2" "x2" "v2"}])"},
        {"process.dataNumber", "2"},
        {"inputs", R"(["d1""d2"])"},
        {"inputNumber", "2"},
        {"outputs", R"(["d2"])"},
        {"outputNumber", "1"},
    };
    const ActivityInfo record;
    for (const auto& field : TextsOf(record)) {
        fields[field.first] = "\"new " + field.first + "\"";
    }
    return fields;
}

/** Where the element stands that is the n-th of its tag in a text, from its "<" to behind its end. */
struct ElementPlace {
    std::size_t start;
    std::size_t length;

    static ElementPlace Of(const std::string& iText, const std::string& iTag, int iNumber = 1) {
        std::size_t at = 0;
        for (int number = 0;; ++at) {
            at = iText.find("<" + iTag, at);
            if (at == std::string::npos) {
                throw std::invalid_argument("no such element: " + iTag);
            }
            const char behind = iText[at + 1 + iTag.size()];
            if ((behind == ' ' || behind == '>' || behind == '/') && ++number == iNumber) {
                break;
            }
        }
        const std::size_t tagEnd = iText.find('>', at);
        if (iText[tagEnd - 1] == '/') {
            return {at, tagEnd + 1 - at};
        }
        const std::string endTag = "</" + iTag + ">";
        return {at, iText.find(endTag, tagEnd) + endTag.size() - at};
    }
};

/** The text without the n-th element of a tag. */
inline std::string WithoutElement(std::string iText, const std::string& iTag, int iNumber = 1) {
    const ElementPlace place = ElementPlace::Of(iText, iTag, iNumber);
    return iText.erase(place.start, place.length);
}

/** The text with other text in the place of the n-th element of a tag. */
inline std::string WithElement(std::string iText, const std::string& iTag, const std::string& iNew, int iNumber = 1) {
    const ElementPlace place = ElementPlace::Of(iText, iTag, iNumber);
    return iText.replace(place.start, place.length, iNew);
}

/** The text with its one occurrence of a part replaced. */
inline std::string WithPart(std::string iText, const std::string& iOld, const std::string& iNew) {
    const std::size_t at = iText.find(iOld);
    if (at == std::string::npos || iText.find(iOld, at + 1) != std::string::npos) {
        throw std::invalid_argument("not exactly once in the text: " + iOld);
    }
    return iText.replace(at, iOld.size(), iNew);
}

/** The fields after a text has been read into a record of old values. */
inline ActivityFields FieldsAfterReading(const std::string& iText) {
    ActivityInfo activity;
    FillWithOldValues(activity);
    QorWflXmlToActivity(BexUnicodeString(iText.data(), static_cast<int>(iText.size())), activity);
    return FieldsOf(activity);
}

#endif
