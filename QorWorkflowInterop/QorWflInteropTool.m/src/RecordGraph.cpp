#include "RecordGraph.h"

#include "Unicode.h"

#include <cstdio>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

using Lines = std::vector<std::string>;  // of a label, UTF-8

/** A data field that goes into the activity or comes out of it. */
struct Item {
    Lines label;
    bool isKnown;  // whether the process has a data field of that name
};

/** What the picture shows, in whatever language it is drawn. */
struct Picture {
    Lines process;
    Lines activity;
    Lines participant;
    std::vector<Item> inputs;
    std::vector<Item> outputs;
};

void AddLine(const BexUnicodeString& iText, Lines& ioLines) {
    if (iText.IsEmpty() == 0) {
        ioLines.push_back(ToUtf8(iText));
    }
}

Lines LinesOf(std::initializer_list<const BexUnicodeString*> iTexts) {
    Lines lines;
    for (const BexUnicodeString* text : iTexts) {
        AddLine(*text, lines);
    }
    return lines;
}

std::vector<Item> ItemsOf(const ProcessInfo& iProcess, const BexUnicodeString* iNames, int iCount) {
    std::map<BexUnicodeString, const DataInfo*> byName;
    for (int i = 0; i < iProcess.dataNumber; ++i) {
        byName.emplace(iProcess.datas[i].name, &iProcess.datas[i]);
    }
    std::vector<Item> items;
    for (int i = 0; i < iCount; ++i) {
        const auto data = byName.find(iNames[i]);
        Item item{LinesOf({&iNames[i]}), data != byName.end()};
        if (item.isKnown) {
            AddLine(data->second->value, item.label);
            AddLine(data->second->type, item.label);
        }
        items.push_back(std::move(item));
    }
    return items;
}

Picture PictureOf(const ActivityInfo& iRecord) {
    Picture picture;
    picture.process = LinesOf({&iRecord.process.name, &iRecord.process.id});
    picture.activity = LinesOf({&iRecord.name, &iRecord.id, &iRecord.status});
    picture.participant = LinesOf({&iRecord.participant, &iRecord.participantType});
    picture.inputs = ItemsOf(iRecord.process, iRecord.inputs, iRecord.inputNumber);
    picture.outputs = ItemsOf(iRecord.process, iRecord.outputs, iRecord.outputNumber);
    return picture;
}

/** The next character; one that no picture can show is replaced. */
char32_t TakeShown(std::string_view& ioText) {
    const char32_t code = TakeCharacter(ioText);
    const bool isControl = (code < 0x20 && code != '\n' && code != '\t') || (code >= 0x7F && code < 0xA0) ||
                           code == 0xFFFE || code == 0xFFFF;
    return isControl ? kReplacement : code;
}

// ---------------------------------------------------------------------------------------------------- Graphviz

/** A label in quotes, in which neither escape sequences nor entities of the text itself have a meaning. */
std::string DotLabel(const Lines& iLines) {
    std::string label = "\"";
    for (const std::string& line : iLines) {
        label += label.size() > 1 ? "\\n" : "";
        for (std::string_view rest = line; !rest.empty();) {
            const char32_t code = TakeShown(rest);
            label += code == '"'    ? "\\\""
                     : code == '\\' ? "\\\\"
                     : code == '&'  ? "&amp;"
                     : code == '\n' ? "\\n"
                                    : ToUtf8(code);
        }
    }
    return label + '"';
}

void AppendDotItems(const std::vector<Item>& iItems, const std::string& iPrefix, std::string& ioText) {
    for (std::size_t i = 0; i < iItems.size(); ++i) {
        ioText += "  " + iPrefix + std::to_string(i + 1) + " [shape=note, label=" + DotLabel(iItems[i].label) +
                  (iItems[i].isKnown ? "];\n" : ", style=dashed];\n");
    }
}

// ---------------------------------------------------------------------------------------------------- Mermaid

bool IsPlain(char32_t iCode) {
    const bool isAlphanumeric =
        (iCode >= '0' && iCode <= '9') || (iCode >= 'A' && iCode <= 'Z') || (iCode >= 'a' && iCode <= 'z');
    return isAlphanumeric || iCode >= 0x80 ||
           std::u32string_view(U" .,-_:/+=").find(iCode) != std::u32string_view::npos;
}

/** A label in quotes. What could be markup of Mermaid, Markdown or HTML goes by its number. */
std::string MermaidLabel(const Lines& iLines) {
    std::string label = "\"";
    for (const std::string& line : iLines) {
        label += label.size() > 1 ? "<br/>" : "";
        for (std::string_view rest = line; !rest.empty();) {
            const char32_t code = TakeShown(rest);
            label += code == '\n' ? "<br/>" : IsPlain(code) ? ToUtf8(code) : '#' + std::to_string(code) + ';';
        }
    }
    return (label.size() > 1 ? label : label + ' ') + '"';  // an empty label is an error there
}

void AppendMermaidItems(const std::vector<Item>& iItems, const std::string& iPrefix, std::string& ioText) {
    for (std::size_t i = 0; i < iItems.size(); ++i) {
        const std::string name = iPrefix + std::to_string(i + 1);
        ioText += "  " + name + '[' + MermaidLabel(iItems[i].label) + "]\n";
        if (!iItems[i].isKnown) {
            ioText += "  style " + name + " stroke-dasharray: 5 5\n";
        }
    }
}

}  // namespace

std::string RecordToDot(const ActivityInfo& iRecord) {
    const Picture picture = PictureOf(iRecord);
    std::string text =
        "digraph activity {\n"
        "  charset=\"UTF-8\";\n"
        "  rankdir=LR;\n"
        "  node [fontname=\"sans-serif\"];\n"
        "  fontname=\"sans-serif\";\n";
    AppendDotItems(picture.inputs, "input", text);
    text += "  subgraph cluster_process {\n    label=" + DotLabel(picture.process) +
            ";\n    activity [shape=box, style=rounded, label=" + DotLabel(picture.activity) + "];\n";
    if (!picture.participant.empty()) {
        text += "    participant [shape=ellipse, label=" + DotLabel(picture.participant) + "];\n" +
                "    { rank=same; activity; participant; }\n";
    }
    text += "  }\n";
    AppendDotItems(picture.outputs, "output", text);
    for (std::size_t i = 0; i < picture.inputs.size(); ++i) {
        text += "  input" + std::to_string(i + 1) + " -> activity;\n";
    }
    for (std::size_t i = 0; i < picture.outputs.size(); ++i) {
        text += "  activity -> output" + std::to_string(i + 1) + ";\n";
    }
    if (!picture.participant.empty()) {
        text += "  participant -> activity [style=dotted, arrowhead=none];\n";
    }
    return text + "}\n";
}

std::string RecordToMermaid(const ActivityInfo& iRecord) {
    const Picture picture = PictureOf(iRecord);
    std::string text = "flowchart LR\n";
    AppendMermaidItems(picture.inputs, "input", text);
    text += "  subgraph process [" + MermaidLabel(picture.process) + "]\n    activity(" +
            MermaidLabel(picture.activity) + ")\n";
    if (!picture.participant.empty()) {
        text += "    participant([" + MermaidLabel(picture.participant) + "])\n";
    }
    text += "  end\n";
    AppendMermaidItems(picture.outputs, "output", text);
    for (std::size_t i = 0; i < picture.inputs.size(); ++i) {
        text += "  input" + std::to_string(i + 1) + " --> activity\n";
    }
    for (std::size_t i = 0; i < picture.outputs.size(); ++i) {
        text += "  activity --> output" + std::to_string(i + 1) + "\n";
    }
    if (!picture.participant.empty()) {
        text += "  participant -.- activity\n";
    }
    return text;
}
