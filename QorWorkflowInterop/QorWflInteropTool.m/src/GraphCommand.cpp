#include "Batch.h"
#include "Commands.h"
#include "CommonOptions.h"
#include "Files.h"
#include "Graphviz.h"
#include "RecordFormat.h"
#include "RecordGraph.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace {

struct Options {
    std::string input;
    std::optional<std::string> output;
    std::optional<std::string> config;
    std::string format = "dot";
    std::string from;
};

std::string Draw(const ActivityInfo& iRecord, const std::string& iFormat) {
    if (iFormat == "mermaid") {
        return RecordToMermaid(iRecord);
    }
    return iFormat == "svg" ? DrawSvg(RecordToDot(iRecord)) : RecordToDot(iRecord);
}

ExitStatus Graph(const Options& iOptions) {
    RequireOneStandardInput({iOptions.input}, iOptions.config);
    RecordReader reader(iOptions.config);
    const std::string ending = iOptions.format == "mermaid" ? ".mmd" : '.' + iOptions.format;
    return RunBatch({{iOptions.input}, iOptions.output, 1, iOptions.config}, ending, [&](const std::string& iInput) {
        const std::string text = ReadInput(iInput);
        const std::string fileName = InputName(iInput);
        ActivityInfo record;
        Converted converted;
        reader.Read(text, fileName,
                    iOptions.from.empty() ? RecognizeFormat(text, fileName) : FormatOfName(iOptions.from), record,
                    converted.warnings);
        converted.bytes = Draw(record, iOptions.format);
        return converted;
    });
}

}  // namespace

void AddGraphCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command = ioApp.add_subcommand("graph", "Draw a record: inputs, activity, outputs, process, participant");
    const auto options = std::make_shared<Options>();
    AddInput(*command, options->input, "FILE", "An XPDL document, a record text, or JSON; - for the standard input");
    AddFormat(*command, "--format", options->format, {"dot", "mermaid", "svg"},
              "The form of the picture: dot as a rule, the language of Graphviz; mermaid; or svg, for which\n"
              "Graphviz has to be installed");
    AddFormat(*command, "--from", options->from, {"xpdl", "text", "json"},
              "The form of the input; without it, it is recognised by how it begins");
    AddOutput(*command, options->output, "FILE_OR_DIR",
              "The output file, or a folder that takes one, instead of the standard output");
    AddConfig(*command, options->config);
    command->footer(
        "An input or output that is no data field of the process is drawn with a dashed line.\n"
        "\n"
        "Example:\n"
        "  qorwfl graph examples/reply.xpdl --format svg -o reply.svg");
    command->callback([options, &oStatus] { oStatus = Graph(*options); });
}
