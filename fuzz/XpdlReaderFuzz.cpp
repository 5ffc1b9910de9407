#include "ActivityFields.h"
#include "DomTree.h"
#include "FuzzRecord.h"
#include "FuzzTarget.h"
#include "NaiveXpdlReader.h"
#include "OtherParsers.h"
#include "PropertyCheck.h"
#include "WholeWay.h"

#include <QorWflXmlToActivity.h>

#include <CapturedStream.h>
#include <XmlText.h>
#include <algorithm>
#include <iostream>
#include <optional>
#include <regex>
#include <string>

namespace {

using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;

/** The fields of a record of old values after a text was read into it, and what was written to standard error. */
std::string FieldsAfter(const std::string& iText, std::string& oErrors) {
    const CapturedStream errors(std::cerr);
    ActivityInfo activity;
    FillWithOldValues(activity);
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(iText), activity);
    oErrors = errors.Text();
    return Printed(FieldsOf(activity));
}

/** Whether a text says XML 1.0 and an encoding that every parser has, or nothing of either. */
bool IsDeclaredPlainly(const std::string& iText) {
    static const std::regex kDeclaration(
        "(\xEF\xBB\xBF)?<\\?xml\\s+version\\s*=\\s*['\"]1\\.0['\"]"
        "(\\s+encoding\\s*=\\s*['\"](UTF-8|utf-8|ISO-8859-1|iso-8859-1|US-ASCII)['\"])?\\s*\\?>");
    const std::string begin = iText.substr(0, 100);
    return begin.find("<?xml") == std::string::npos ||
           std::regex_search(begin, kDeclaration, std::regex_constants::match_continuous);
}

/** Whether other parsers are asked: only the library refuses document types, and NULs end texts elsewhere. */
bool IsForOtherParsers(const std::string& iText) {
    return iText.find("<!DOCTYPE") == std::string::npos && iText.find('\0') == std::string::npos &&
           IsDeclaredPlainly(iText);
}

/** Whether nothing in a text is beyond the library's own limits, or a matter of the edition of XML. */
bool IsWithinLimits(const std::string& iText) {
    const bool isAscii =
        std::all_of(iText.begin(), iText.end(), [](char iByte) { return static_cast<signed char>(iByte) >= 0; });
    return isAscii && std::count(iText.begin(), iText.end(), '<') < DOMParser::kMaxDepth &&
           std::count(iText.begin(), iText.end(), '=') < DOMParser::kMaxAttributes;
}

/** The most elements of a tree that are inside one another. */
int DepthOf(const DOM_Document& iDocument) {
    const DOM_Node document = iDocument;
    int deepest = 0;
    int depth = 0;
    DOM_Node node = document;
    while (true) {
        deepest = std::max(deepest, depth);
        if (node.getFirstChild() != 0) {
            node = node.getFirstChild();
            ++depth;
            continue;
        }
        while (node != document && node.getNextSibling() == 0) {
            node = node.getParentNode();
            --depth;
        }
        if (node == document) {
            return deepest;
        }
        node = node.getNextSibling();
    }
}

/** What declares namespaces is checked and dropped by libxml2 where it is odd, and of no interest here. */
void DropNamespaces(XmlNode& ioNode) {
    std::erase_if(ioNode.attributes, [](const auto& iEntry) { return iEntry.first.compare(0, 5, "xmlns") == 0; });
    for (XmlNode& child : ioNode.children) {
        DropNamespaces(child);
    }
}

void CompareWithLibxml2(const std::string& iText, const DOM_Document& iDocument, const std::string& iFields) {
    std::optional<XmlNode> other = OtherParsers::ReadWithLibxml2(iText);
    if (iDocument == nullptr) {
        Expect(!other || !IsWithinLimits(iText), "what libxml2 reads, the library reads");
        return;
    }
    Expect(other.has_value(), "what the library reads, libxml2 reads");
    XmlNode own = TreeOf(iDocument, TreeForm::AsItIs);
    DropNamespaces(own);
    DropNamespaces(*other);
    ExpectEqual("libxml2 reads the same tree", own.Print(), other->Print());
    if (iText.find("<![CDATA[") == std::string::npos) {
        ActivityInfo activity;
        FillWithOldValues(activity);
        ReadXpdlNaively(*other, activity);
        ExpectEqual("the naive reader reads the same record", iFields, Printed(FieldsOf(activity)));
    }
}

}  // namespace

/** The bytes are a document. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    const std::string text(reinterpret_cast<const char*>(iData), iSize);
    std::string errors;
    const std::string fields = FieldsAfter(text, errors);
    DOM_Document document = Parsed(text);
    if (document == nullptr) {
        ExpectEqual("a text that is no document is told in one line", errors, "getDocument failed\n");
        ExpectEqual("a text that is no document leaves the record alone", fields, Printed(OldFields()));
    } else {
        ExpectEqual("nothing is told of a document", errors, "");
        Expect(DepthOf(document) <= DOMParser::kMaxDepth + 1,
               "no tree is deeper than its limit, but for a text inside");
        CheckWrittenTree(document);
        ActivityInfo activity;
        QorWflXmlToActivity(BexUnicodeString::FromNarrow(text), activity);
        CheckWholeWay(activity);
    }
    if (IsForOtherParsers(text)) {
        CompareWithLibxml2(text, document, fields);
    }
    return 0;
}
