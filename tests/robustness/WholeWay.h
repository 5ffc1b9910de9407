#ifndef WholeWay_H
#define WholeWay_H

#include <ActivityInfo.h>
#include <BexDom.h>
#include <BexUnicodeString.h>
#include <QorWflActivityToXml.h>
#include <QorWflInteropInfo.h>
#include <QorWflPropertyFile.h>
#include <QorWflUrlUtil.h>
#include <QorWflXmlToActivity.h>
#include <WriteXML.h>

#include <ActivityFields.h>
#include <TestAction.h>
#include <TestManager.h>
#include <cstddef>
#include <memory>
#include <sstream>
#include <string>

/**
 * Everything that a host does with the library, once: settings, an action that goes out, the reply that comes back, its
 * record as text, and URLs. Each step gives what it found as text, so that two runs can be compared.
 *
 * The settings are looked for as always, so `BexMsgCatalogPath` decides which they are.
 */
namespace WholeWay {

inline std::string BytesOf(const BexUnicodeString& iText) {
    return std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

/** An action with a product, parts with and without a name, and a document. */
inline TestAction Action() {
    TestAction action;
    action.abstractText = "Review the bracket";
    action.priority = "2";
    action.actionId = "A 1/\xE9";
    action.owner = "smith";
    action.contexts = {{"Config", "conf A", ""}, {"WFProcess", "P1", ""}, {"WFActivity", "A1", ""}};
    const auto object = [](const char* iType, const char* iDirection, const char* iNickname, const char* iName,
                           const char* iTable) {
        return TestObject{iType, iDirection, iNickname, iName, Octets(UuidBlock("PDM1", "PROD", iTable))};
    };
    action.objects = {object("Product", "", "the product", "product", "PRODUCT"),
                      object("Part", "I", "a bracket", "part", "PART_LIST"),
                      object("Model", "I", "its model", nullptr, "KIRVA_MODEL"),
                      object("Document", "O", "the report", "report", "DOC_STD")};
    return action;
}

/** A manager and its handler with the settings taken in. */
inline std::unique_ptr<TestManager> ConfiguredManager() {
    auto manager = std::make_unique<TestManager>();
    QorWflPropertyFile properties;
    manager->InitResources(properties);
    manager->handler.Init(properties);
    return manager;
}

inline std::string Shown(const ActivityInfo& iActivity) {
    std::string shown;
    for (const auto& [name, value] : FieldsOf(iActivity)) {
        shown += name + "=" + value + "\n";
    }
    return shown;
}

/** The document of a record, without the time it was made at. */
inline std::string Document(const ActivityInfo& iActivity) {
    BexUnicodeString xml;
    QorWflActivityToXml(iActivity, xml);
    std::string text = BytesOf(xml);
    const std::size_t start = text.find("<Created>");
    const std::size_t end = text.find("</Created>");
    if (start != std::string::npos && end != std::string::npos) {
        text.erase(start, end - start);
    }
    return text;
}

/** An action to a document and back. Uses the manager for reading only. */
inline std::string OutAndBack(TestManager& ioManager) {
    const TestAction action = Action();
    ActivityInfo out;
    ioManager.GetActionInfo(&action, out);
    out.name = "A name";
    out.documentation = "<&>\"'";
    BexUnicodeString xml;
    QorWflActivityToXml(out, xml);
    ActivityInfo back;
    QorWflXmlToActivity(xml, back);
    return Shown(out) + Document(out) + Shown(back) + BytesOf(ioManager.GetInternalPriority(back.priority));
}

/** URLs of every kind, there and back. */
inline std::string Urls() {
    const std::string block = UuidBlock("PDM1", "PROD", "PART_LIST");
    const BexUnicodeString instance = QorWflUrlUtil::InstanceUrl(block.c_str());
    BexUnicodeString withParameter = QorWflUrlUtil::ContextUrl(block.c_str(), "a context");
    QorWflUrlUtil::AddUrlParm(withParameter, "Nickname", "a nickname & more");
    BexUnicodeString context;
    const std::unique_ptr<char, QorWflUuidDeleter> uuid(QorWflUrlUtil::UrlToUuid(instance));
    const std::unique_ptr<char, QorWflUuidDeleter> product(QorWflUrlUtil::UrlToContext(withParameter, context));
    return BytesOf(instance) + BytesOf(withParameter) + BytesOf(context) +
           BytesOf(QorWflUrlUtil::GetUrlParm(withParameter, "Nickname")) +
           BytesOf(QorWflUrlUtil::UrlToActionId(QorWflUrlUtil::ActionUrl("A 1"))) +
           (uuid ? std::string(uuid.get(), QorWflUuidLayout::kBlockSize) : "no block") +
           (product ? std::string(product.get(), QorWflUuidLayout::kBlockSize) : "no block");
}

/** A record read from its text form. */
inline std::string RecordFromText(const std::string& iText) {
    std::istringstream stream(iText);
    ActivityInfo activity;
    stream >> activity;
    return Shown(activity);
}

/** The text form of the record of the action; one thread at a time may ask for it. */
inline std::string RecordText() {
    const TestAction action = Action();
    ActivityInfo out;
    ConfiguredManager()->GetActionInfo(&action, out);
    std::ostringstream stream;
    stream << out;
    return stream.str();
}

/** A small tree written as text. */
inline std::string Tree() {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element root = document.createElement("root");
    root.setAttribute("name", "value");
    root.appendChild(document.createTextNode("text"));
    document.appendChild(root);
    DOMString text;
    DOM_Node node = document;
    WriteXML(node, text);
    const std::unique_ptr<char[]> narrow(text.transcode());
    return narrow.get();
}

/** All of it but the writing of record texts, which any number of threads may do side by side. */
inline std::string Once(const std::string& iRecordText) {
    return OutAndBack(*ConfiguredManager()) + Urls() + RecordFromText(iRecordText) + Tree();
}

}  // namespace WholeWay

#endif
