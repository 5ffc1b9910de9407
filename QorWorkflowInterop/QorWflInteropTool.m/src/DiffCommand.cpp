#include "Commands.h"
#include "CommonOptions.h"
#include "Files.h"
#include "Message.h"
#include "RecordDiff.h"
#include "RecordFormat.h"
#include "SafeText.h"
#include "Terminal.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <new>
#include <optional>
#include <unistd.h>

namespace {

// What the exit status means for this command alone, as programs that compare files have it.
constexpr ExitStatus kSame = kDone;
constexpr ExitStatus kDifferent = kWrongInput;
constexpr ExitStatus kTrouble = kWrongUsage;

struct Options {
    std::string first;
    std::string second;
    std::optional<std::string> config;
    std::string format;
};

/** Reads a record, and tells in which format it is. */
RecordFormat ReadRecord(RecordReader& ioReader, const std::string& iInput, const std::string& iFormat,
                        ActivityInfo& oRecord) {
    const std::string text = ReadInput(iInput);
    const RecordFormat format = iFormat.empty() ? RecognizeFormat(text, InputName(iInput)) : FormatOfName(iFormat);
    std::vector<std::string> warnings;
    ioReader.Read(text, InputName(iInput), format, oRecord, warnings);
    for (const std::string& warning : warnings) {
        Report(warning);
    }
    return format;
}

/** The differences as lines, coloured where that is wanted. */
class Listing {
public:
    void Add(const Difference& iDifference) {
        text += Shown(kBold, iDifference.place);
        for (const std::string& removed : iDifference.removed) {
            text += Shown(kRed, "  - " + removed);
        }
        for (const std::string& added : iDifference.added) {
            text += Shown(kGreen, "  + " + added);
        }
    }
    const std::string& Text() const { return text; }

private:
    std::string Shown(const char* iColour, const std::string& iLine) const {
        const std::string line = SafeText(iLine);
        return (isColoured ? iColour + line + "\x1B[0m" : line) + '\n';
    }

    static constexpr const char* kBold = "\x1B[1m";
    static constexpr const char* kRed = "\x1B[31m";
    static constexpr const char* kGreen = "\x1B[32m";
    const bool isColoured = MayDecorate(STDOUT_FILENO);
    std::string text;
};

ExitStatus Diff(const Options& iOptions) {
    RecordReader reader(iOptions.config);
    ActivityInfo first;
    ActivityInfo second;
    const RecordFormat firstFormat = ReadRecord(reader, iOptions.first, iOptions.format, first);
    const RecordFormat secondFormat = ReadRecord(reader, iOptions.second, iOptions.format, second);
    // What one of the two formats cannot tell is no difference.
    const auto isAny = [&](RecordFormat iFormat) { return firstFormat == iFormat || secondFormat == iFormat; };
    const Comparison comparison{!isAny(RecordFormat::kXpdl) && !isAny(RecordFormat::kText),
                                !isAny(RecordFormat::kText)};
    Listing listing;
    for (const Difference& difference : CompareRecords(first, second, comparison)) {
        listing.Add(difference);
    }
    WriteOutput(listing.Text());
    return listing.Text().empty() ? kSame : kDifferent;
}

/** A failure of this command must not look like a difference. */
ExitStatus DiffOrTrouble(const Options& iOptions) {
    if (iOptions.first == "-" && iOptions.second == "-") {
        RefuseUsage("the standard input can be one of the two only");
    }
    RequireOneStandardInput({iOptions.first, iOptions.second}, iOptions.config);
    try {
        return Diff(iOptions);
    } catch (const std::bad_alloc&) {
        Report("not enough memory");
    } catch (const std::exception& error) {
        Report(error.what());
    }
    return kTrouble;
}

}  // namespace

void AddDiffCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command = ioApp.add_subcommand("diff", "List what differs between two records");
    const auto options = std::make_shared<Options>();
    AddInput(*command, options->first, "A", "An XPDL document, a record text, or JSON; - for the standard input");
    AddInput(*command, options->second, "B", "Another one, in whatever form");
    AddFormat(*command, "--format", options->format, {"xpdl", "text", "json"},
              "The form of both; without it, each is recognised by how it begins");
    AddConfig(*command, options->config);
    command->footer(
        "The records are compared, not the texts. Null and empty texts differ between two JSON files only, and the\n"
        "participant is not compared with a record text, which has none.\n"
        "\n"
        "Exit status: 0 the records are the same, 1 they differ, 2 trouble.\n"
        "\n"
        "Example:\n"
        "  qorwfl diff sent.xpdl examples/reply.xpdl");
    command->callback([options, &oStatus] { oStatus = DiffOrTrouble(*options); });
}
