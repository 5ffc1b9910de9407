#include "Bench.h"
#include "Inputs.h"
#include "XercesTree.h"

#include <WriteXML.h>

#include <benchmark/benchmark.h>
#include <xercesc/util/XMLString.hpp>

#include <pugixml.hpp>
#include <stdexcept>

namespace {

struct ReleaseText {
    void operator()(XMLCh* iText) const { xercesc::XMLString::release(&iText); }
};
using XercesText = std::unique_ptr<XMLCh, ReleaseText>;

/** The tree in one form; both texts are UTF-16, whatever their declarations say. */
std::string Normalized(std::u16string_view iXml) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_buffer(iXml.data(), iXml.size() * sizeof(char16_t), pugi::parse_full, pugi::encoding_utf16);
    if (!parsed) {
        throw std::runtime_error(std::string("a serializer wrote no document: ") + parsed.description());
    }
    std::string normalized;
    struct Writer final : pugi::xml_writer {
        explicit Writer(std::string& ioText) : text(ioText) {}
        void write(const void* iData, std::size_t iSize) override {
            text.append(static_cast<const char*>(iData), iSize);
        }
        std::string& text;
    } writer(normalized);
    for (const pugi::xml_node node : document.children()) {
        if (node.type() == pugi::node_element) {
            node.print(writer, "", pugi::format_raw);
        }
    }
    return normalized;
}

void TimeOurs(benchmark::State& ioState, int iSize) {
    const XercesTree::Document document = XercesTree::Build(*Inputs::Activity(iSize));
    DOM_Node node(document.get());
    for ([[maybe_unused]] auto round : ioState) {
        DOMString text;
        WriteXML(node, text);
        benchmark::DoNotOptimize(text.rawBuffer());
    }
}

void TimeXerces(benchmark::State& ioState, int iSize) {
    const XercesTree::Document document = XercesTree::Build(*Inputs::Activity(iSize));
    const XercesTree::Serializer serializer = XercesTree::MakeSerializer();
    for ([[maybe_unused]] auto round : ioState) {
        const XercesText text(serializer->writeToString(document.get()));
        benchmark::DoNotOptimize(text.get());
    }
}

}  // namespace

void Bench::CheckSerializers() {
    for (const int size : kSizes) {
        const XercesTree::Document document = XercesTree::Build(*Inputs::Activity(size));
        DOM_Node node(document.get());
        DOMString ours;
        WriteXML(node, ours);
        const XercesText other(XercesTree::MakeSerializer()->writeToString(document.get()));
        RequireSame("texts of DOMLSSerializer", Normalized(ours.view()), Normalized(other.get()));
    }
}

void Bench::AddSerializers() {
    AddOurs("serialize", kSizes, TimeOurs);
    Add("serialize", "DOMLSSerializer", kSizes, TimeXerces);
}
