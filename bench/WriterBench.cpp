#include "Bench.h"
#include "Inputs.h"
#include "PeerText.h"
#include "XercesTree.h"
#include "XpdlTree.h"

#include <QorWflActivityToXml.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <libxml/tree.h>
#include <pugixml.hpp>
#include <stdexcept>

namespace {

// ---------------------------------------------------------------------------------------------------- ours

std::string WriteOurs(const ActivityInfo& iActivity) {
    BexUnicodeString xml;
    QorWflActivityToXml(iActivity, xml);
    return xml.ConvertToChar();
}

// ---------------------------------------------------------------------------------------------------- Xerces-C

std::string WriteWithXerces(const ActivityInfo& iActivity) {
    const XercesTree::Document document = XercesTree::Build(iActivity);
    return XercesTree::WriteLatin1(*XercesTree::MakeSerializer(), *document);
}

// ---------------------------------------------------------------------------------------------------- libxml2

const xmlChar* Xml(const char* iText) {
    return reinterpret_cast<const xmlChar*>(iText);
}

struct FreeDocument {
    void operator()(xmlDoc* iDocument) const { xmlFreeDoc(iDocument); }
};

struct FreeText {
    void operator()(xmlChar* iText) const { xmlFree(iText); }
};

class LibXmlTree {
public:
    using Node = xmlNode*;

    explicit LibXmlTree(xmlDoc& ioDocument) : document(ioDocument) {}

    Node Root(const Tag& iTag) {
        Node root = xmlNewDocNode(&document, nullptr, Xml(iTag.narrow), nullptr);
        xmlDocSetRootElement(&document, root);
        return root;
    }
    Node Element(Node iParent, const Tag& iTag) {
        return xmlAddChild(iParent, xmlNewDocNode(&document, nullptr, Xml(iTag.narrow), nullptr));
    }
    template <typename Value>
    void Attribute(Node iElement, const Tag& iName, const Value& iValue) {
        xmlNewProp(iElement, Xml(iName.narrow), Utf8(iValue));
    }
    void Text(Node iElement, const BexUnicodeString& iText) {
        xmlAddChild(iElement, xmlNewDocText(&document, Utf8(iText)));
    }

private:
    static const xmlChar* Utf8(const Tag& iTag) { return Xml(iTag.narrow); }
    const xmlChar* Utf8(const BexUnicodeString& iText) { return Xml(PeerText::Utf8(iText, buffer)); }

    xmlDoc& document;
    std::string buffer;
};

std::string WriteWithLibXml(const ActivityInfo& iActivity) {
    const std::unique_ptr<xmlDoc, FreeDocument> document(xmlNewDoc(Xml("1.0")));
    document->encoding = xmlStrdup(Xml("ISO-8859-1"));
    LibXmlTree tree(*document);
    XpdlTreeBuilder<LibXmlTree>(tree).Build(iActivity);
    xmlChar* text = nullptr;
    int length = 0;
    xmlDocDumpMemory(document.get(), &text, &length);
    const std::unique_ptr<xmlChar, FreeText> owned(text);
    return std::string(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length));
}

// ---------------------------------------------------------------------------------------------------- pugixml

class PugiTree {
public:
    using Node = pugi::xml_node;

    explicit PugiTree(pugi::xml_document& ioDocument) : document(ioDocument) {}

    Node Root(const Tag& iTag) { return document.append_child(iTag.narrow); }
    static Node Element(Node iParent, const Tag& iTag) { return iParent.append_child(iTag.narrow); }
    template <typename Value>
    void Attribute(Node iElement, const Tag& iName, const Value& iValue) {
        iElement.append_attribute(iName.narrow).set_value(Utf8(iValue));
    }
    void Text(Node iElement, const BexUnicodeString& iText) {
        iElement.append_child(pugi::node_pcdata).set_value(Utf8(iText));
    }

private:
    static const char* Utf8(const Tag& iTag) { return iTag.narrow; }
    const char* Utf8(const BexUnicodeString& iText) { return PeerText::Utf8(iText, buffer); }

    pugi::xml_document& document;
    std::string buffer;
};

class StringWriter final : public pugi::xml_writer {
public:
    void write(const void* iData, std::size_t iSize) override { text.append(static_cast<const char*>(iData), iSize); }
    std::string text;
};

std::string WriteWithPugi(const ActivityInfo& iActivity) {
    pugi::xml_document document;
    PugiTree tree(document);
    XpdlTreeBuilder<PugiTree>(tree).Build(iActivity);
    StringWriter writer;
    document.save(writer, "", pugi::format_raw, pugi::encoding_latin1);
    return std::move(writer.text);
}

// ---------------------------------------------------------------------------------------------------- checking

/** Puts the attributes of each element in the order of their names: in XML they have none. */
struct AttributeSorter final : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& ioNode) override {
        std::vector<pugi::xml_attribute> attributes(ioNode.attributes_begin(), ioNode.attributes_end());
        std::sort(attributes.begin(), attributes.end(), [](pugi::xml_attribute iLeft, pugi::xml_attribute iRight) {
            return std::strcmp(iLeft.name(), iRight.name()) < 0;
        });
        for (const pugi::xml_attribute attribute : attributes) {
            ioNode.append_copy(attribute);
            ioNode.remove_attribute(attribute);
        }
        return true;
    }
};

/** A document in one form, whatever stands between its tags, without the time of its writing. */
std::string Normalized(const std::string& iXml) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(iXml.data(), iXml.size());
    pugi::xml_node created = document.first_child().child("PackageHeader").child("Created");
    if (!parsed || !created.text().set("")) {
        throw std::runtime_error(std::string("a writer wrote no document: ") + parsed.description());
    }
    AttributeSorter sorter;
    document.traverse(sorter);
    StringWriter writer;
    document.save(writer, "", pugi::format_raw | pugi::format_no_declaration);
    return std::move(writer.text);
}

// ---------------------------------------------------------------------------------------------------- timing

/** Times a writer of text. */
Bench::Work Timed(std::string (*iWrite)(const ActivityInfo&)) {
    return [iWrite](benchmark::State& ioState, int iSize) {
        const std::shared_ptr<const ActivityInfo> activity = Inputs::Activity(iSize);
        for ([[maybe_unused]] auto round : ioState) {
            const std::string xml = iWrite(*activity);
            benchmark::DoNotOptimize(xml.data());
        }
    };
}

void TimeOurs(benchmark::State& ioState, int iSize) {
    const std::shared_ptr<const ActivityInfo> activity = Inputs::Activity(iSize);
    for ([[maybe_unused]] auto round : ioState) {
        BexUnicodeString xml;
        QorWflActivityToXml(*activity, xml);
        benchmark::DoNotOptimize(xml.ConvertToChar());
    }
}

}  // namespace

void Bench::CheckWriters() {
    for (const int size : kSizes) {
        const std::shared_ptr<const ActivityInfo> activity = Inputs::Activity(size);
        const std::string ours = Normalized(WriteOurs(*activity));
        RequireSame("documents of Xerces-C", ours, Normalized(WriteWithXerces(*activity)));
        RequireSame("documents of libxml2", ours, Normalized(WriteWithLibXml(*activity)));
        RequireSame("documents of pugixml", ours, Normalized(WriteWithPugi(*activity)));
    }
}

void Bench::AddWriters() {
    AddOurs("write", kSizes, TimeOurs);
    Add("write", "Xerces-C", kSizes, Timed(WriteWithXerces));
    Add("write", "libxml2", kSizes, Timed(WriteWithLibXml));
    Add("write", "pugixml", kSizes, Timed(WriteWithPugi));
}
