// A host that works with documents itself: parses one, adds an element to it and writes it.
#include <BexDom.h>
#include <BexXMLParser.h>
#include <WriteXML.h>

#include <iostream>
#include <memory>
#include <string>

int main() {
    BexXMLParser::Initialize();
    const std::string text = "<Package Id=\"P1\"><PackageHeader/></Package>";
    const std::unique_ptr<InputSource> source(
        BexXMLParser::CreateMemBufInputSource(text.data(), static_cast<int>(text.size()), "host"));
    DOMParser parser;
    parser.parse(*source);
    DOM_Document document = parser.getDocument();
    if (document.isNull()) {
        std::cerr << "the document was not read\n";
        return 1;
    }
    document.getDocumentElement().appendChild(document.createElement("Participants"));
    DOMString out;
    WriteXML(document, out);
    const std::unique_ptr<char[]> narrow(out.transcode());
    std::cout << narrow.get() << '\n';
    const std::string wanted = "<Package Id = \"P1\"><PackageHeader/><Participants/></Package>";
    return std::string(narrow.get()).find(wanted) == std::string::npos ? 1 : 0;
}
