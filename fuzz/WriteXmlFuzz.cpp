#include "DomTree.h"
#include "FuzzBytes.h"
#include "FuzzTarget.h"
#include "NaiveXmlWriter.h"
#include "PropertyCheck.h"

#include <BexDom.h>
#include <WriteXML.h>

#include <xercesc/dom/DOMException.hpp>

#include <XmlText.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

/** Builds a tree as the bytes tell: a character for what comes next, its name and text behind it. */
class TreeMaker {
public:
    explicit TreeMaker(FuzzBytes& ioBytes) : bytes(ioBytes), document(DOM_Document::createDocument()) {}

    DOM_Document Make() {
        open.push_back(document);
        while (!bytes.IsEmpty()) {
            try {
                AddNode();
            } catch (const xercesc::DOMException&) {
                continue;  // a name that XML does not allow, or a node that cannot stand there
            }
        }
        if (document.getDocumentElement() == nullptr) {
            document.appendChild(document.createElement("root"));
        }
        return document;
    }

private:
    static constexpr std::size_t kMaxDepth = 300;

    void AddNode() {
        switch (bytes.Byte()) {
            case '<':
                OpenElement();
                break;
            case '/':
                if (open.size() > 1) {
                    open.pop_back();
                }
                break;
            case '=': {
                const DOMString name = Name();
                DOM_Element(open.back()).setAttribute(name, Text());
                break;
            }
            case '!':
                open.back().appendChild(document.createComment(Text()));
                break;
            case '[':
                open.back().appendChild(document.createCDATASection(Text()));
                break;
            case '?': {
                const DOMString target = Name();
                open.back().appendChild(document.createProcessingInstruction(target, Text()));
                break;
            }
            case '&':
                open.back().appendChild(document.createEntityReference("unknown"));
                break;
            default:
                open.back().appendChild(document.createTextNode(Text()));
                break;
        }
    }

    void OpenElement() {
        const DOM_Element element = document.createElement(Name());
        if (open.size() < kMaxDepth) {
            open.back().appendChild(element);
            open.push_back(element);
        }
    }

    /** A text, up to its first NUL, at which Xerces-C takes it to end. */
    DOMString Text() {
        const std::u16string text = bytes.WideText();
        return DOMString(text.c_str());
    }

    /** A name; those that begin with "xml" and those with colons have meanings to some parsers. */
    DOMString Name() {
        const DOMString name = Text();
        const std::string narrow = Narrow(name);
        const bool isReserved =
            narrow.size() > 2 && (narrow[0] | 0x20) == 'x' && (narrow[1] | 0x20) == 'm' && (narrow[2] | 0x20) == 'l';
        const bool hasOddColon = narrow.find(':') != std::string::npos && narrow != "x:y";
        return isReserved || hasOddColon ? DOMString("x:y") : name;
    }

    FuzzBytes& bytes;
    DOM_Document document;
    std::vector<DOM_Node> open;  // the document, and the elements that are not closed yet
};

/** Each node by itself takes the place of what was in the text, or goes behind it. */
void CheckNodes(const DOM_Node& iParent) {
    for (DOM_Node node = iParent.getFirstChild(); node != nullptr; node = node.getNextSibling()) {
        DOMString out("before");
        PropertyCheck::Expect(WriteXML(node, out) == 0, "WriteXML gives 0");
        PropertyCheck::ExpectEqual("the naive writer writes the same of one node", Utf8Of(Units(out)),
                                   Utf8Of(NaiveXmlWriter::NaivelyWritten(*node.getNative(), u"before")));
    }
}

}  // namespace

/** The bytes tell how a tree is built. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    FuzzBytes bytes(iData, iSize);
    DOM_Document document = TreeMaker(bytes).Make();
    CheckWrittenTree(document);
    CheckNodes(document);
    CheckNodes(document.getDocumentElement());
    return 0;
}
