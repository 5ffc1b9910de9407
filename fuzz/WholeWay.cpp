#include "WholeWay.h"

#include "ActivityFields.h"
#include "FuzzRecord.h"
#include "NaiveXpdlReader.h"
#include "OtherParsers.h"
#include "PropertyCheck.h"
#include "XmlNode.h"

#include <QorWflActivityToXml.h>
#include <QorWflXmlToActivity.h>

#include <algorithm>
#include <optional>
#include <string>

namespace {

using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;

/** A text as it is written into a document. */
std::string Carried(const BexUnicodeString& iText) {
    return iText.ConvertToChar();  // up to the first NUL
}

bool IsXmlText(const std::string& iText) {
    return std::all_of(iText.begin(), iText.end(), [](char iCharacter) {
        const auto code = static_cast<unsigned char>(iCharacter);
        return code >= 0x20 || iCharacter == '\t' || iCharacter == '\n' || iCharacter == '\r';
    });
}

BexUnicodeString FromAttribute(const BexUnicodeString& iText) {
    return BexUnicodeString::FromNarrow(AsAttribute(Carried(iText)));
}

/** A text node that is empty leaves two tags that touch, and a line feed between them. */
BexUnicodeString FromElement(const BexUnicodeString& iText) {
    const std::string text = WithLineFeeds(Carried(iText));
    return BexUnicodeString::FromNarrow(text.empty() ? "\n" : text);
}

/** A null text has no text node. */
BexUnicodeString FromOptionalText(const BexUnicodeString& iText) {
    return iText.IsNull() != 0 ? BexUnicodeString("") : FromElement(iText);
}

/** A null text has no element, and what is read keeps what it was. */
BexUnicodeString FromOptionalElement(const BexUnicodeString& iText) {
    return iText.IsNull() != 0 ? BexUnicodeString() : FromElement(iText);
}

/** Makes the fresh record @p oBack what a record's document is to be read as. */
void FillAsReadBack(const ActivityInfo& iActivity, ActivityInfo& oBack) {
    oBack.id = FromAttribute(iActivity.id);
    oBack.name = FromAttribute(iActivity.name);
    oBack.generation = iActivity.generation;
    oBack.abstract = FromOptionalText(iActivity.abstract);
    oBack.priority = FromElement(iActivity.priority);
    oBack.extid = FromAttribute(iActivity.extid);
    oBack.status = FromAttribute(iActivity.status);
    oBack.duration = iActivity.duration;
    oBack.durationUnit = FromAttribute(iActivity.durationUnit);
    oBack.owner = FromOptionalElement(iActivity.owner);
    oBack.participant = FromAttribute(iActivity.participant);
    oBack.participantType = FromAttribute(iActivity.participantType);
    oBack.documentation = FromOptionalElement(iActivity.documentation);
    oBack.process.id = FromAttribute(iActivity.process.id);
    oBack.process.name = FromAttribute(iActivity.process.name);
    oBack.process.context = FromAttribute(iActivity.process.context);
    oBack.process.SetDataNumber(std::max(iActivity.process.dataNumber, 0));
    for (int i = 0; i < iActivity.process.dataNumber; ++i) {
        const DataInfo& data = iActivity.process.datas[i];
        oBack.process.datas[i].name = FromAttribute(data.name);
        oBack.process.datas[i].type = FromAttribute(data.type);
        oBack.process.datas[i].extid = FromAttribute(data.extid);
        oBack.process.datas[i].value = FromOptionalText(data.value);
    }
    oBack.SetInputNumber(std::max(iActivity.inputNumber, 0));
    for (int i = 0; i < iActivity.inputNumber; ++i) {
        oBack.inputs[i] = FromAttribute(iActivity.inputs[i]);
    }
    oBack.SetOutputNumber(std::max(iActivity.outputNumber, 0));
    for (int i = 0; i < iActivity.outputNumber; ++i) {
        oBack.outputs[i] = FromAttribute(iActivity.outputs[i]);
    }
}

std::string Written(const ActivityInfo& iActivity) {
    BexUnicodeString xml("replaced");
    QorWflActivityToXml(iActivity, xml);
    return std::string(xml.ConvertToChar(), static_cast<std::size_t>(xml.GetLengthInChar()));
}

/** The document but for the time it was made at. */
std::string WithoutTime(std::string iDocument) {
    const std::string start = "<Created>";
    const std::size_t from = iDocument.find(start) + start.size();
    const std::size_t to = iDocument.find("</Created>", from);
    Expect(to != std::string::npos, "the document tells when it was made");
    return iDocument.erase(from, to - from);
}

void ExpectReadBack(const char* iReader, const std::optional<XmlNode>& iTree, const std::string& iExpected) {
    Expect(iTree.has_value(), "another parser reads the written document");
    ActivityInfo activity;
    ReadXpdlNaively(*iTree, activity);
    ExpectEqual(iReader, Printed(FieldsOf(activity)), iExpected);
}

}  // namespace

void CheckWholeWay(const ActivityInfo& iActivity) {
    const std::string document = Written(iActivity);
    Expect(document.find("><") == std::string::npos, "no two tags of a written document touch");

    bool isXml = true;
    ForEachText(iActivity, [&isXml](const BexUnicodeString& iText) { isXml = isXml && IsXmlText(Carried(iText)); });
    const std::optional<XmlNode> tree = OtherParsers::ReadWithLibxml2(document);
    ActivityInfo back;
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(document), back);
    if (!isXml) {
        Expect(!tree, "libxml2 refuses what XML has no place for");
        ExpectEqual("a document that is none leaves the record alone", Printed(FieldsOf(back)),
                    Printed(FieldsOf(ActivityInfo())));
        return;
    }

    ActivityInfo expected;
    FillAsReadBack(iActivity, expected);
    const std::string fields = Printed(FieldsOf(expected));
    ExpectReadBack("libxml2 reads what was written", tree, fields);
    const std::optional<XmlNode> other = OtherParsers::ReadWithPugixml(document);
    ExpectReadBack("pugixml reads what was written", other, fields);
    ExpectEqual("libxml2 and pugixml read the same tree", tree->Print(), other->Print());
    ExpectEqual("the library reads what it wrote", Printed(FieldsOf(back)), fields);

    ActivityInfo again;
    const std::string settled = Written(back);
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(settled), again);
    ActivityInfo expectedAgain;
    FillAsReadBack(back, expectedAgain);
    ExpectEqual("what was read and written reads back", Printed(FieldsOf(again)), Printed(FieldsOf(expectedAgain)));
    ExpectEqual("the document of what was read back is the document", WithoutTime(Written(again)),
                WithoutTime(settled));
}
