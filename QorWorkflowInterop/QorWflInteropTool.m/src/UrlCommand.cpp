#include "Commands.h"
#include "Failure.h"
#include "Files.h"
#include "Message.h"
#include "SafeText.h"
#include "Unicode.h"
#include "UrlReport.h"
#include "UserText.h"
#include "UuidArgument.h"

#include <QorWflUrlUtil.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

/** What the subcommands of url share and have of their own. */
struct Options {
    std::vector<std::string> words;
    UuidFields uuid;
    std::string context;
    std::string parmUrl;
    std::string parmName;
    std::string parmValue;
    std::string format = "text";
};

/** The words of the command line, "-" replaced by the lines of the standard input that are not empty. */
std::vector<std::string> LinesOf(const std::vector<std::string>& iWords) {
    std::vector<std::string> lines;
    for (const std::string& word : iWords) {
        if (word != "-") {
            lines.push_back(word);
            continue;
        }
        const std::string input = ReadInput(word);
        for (std::size_t start = 0; start < input.size();) {
            const std::size_t end = std::min(input.find('\n', start), input.size());
            std::string line = input.substr(start, end - start);
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            if (!line.empty()) {
                lines.push_back(line);
            }
            start = end + 1;
        }
    }
    return lines;
}

bool HasControls(const std::string& iText) {
    return SafeText(iText) != iText;
}

/** A URL as a line of output. A control character in it would make it something else. */
std::string LineOfUrl(const BexUnicodeString& iUrl) {
    const std::string line = ToUtf8(iUrl);
    if (HasControls(line)) {
        throw Failure("the URL would have a control character in it: " + line);
    }
    return line + '\n';
}

/** Warns of a URL that the library writes but does not read back. */
void RequireReadBack(bool iIsRead, const BexUnicodeString& iUrl, const std::string& iWhy) {
    if (!iIsRead) {
        Report("warning: " + ToUtf8(iUrl) + ": the library cannot read it back: " + iWhy);
    }
}

void PrintActions(const Options& iOptions) {
    std::string output;
    for (const std::string& line : LinesOf(iOptions.words)) {
        const BexUnicodeString id = FromUserForUrl(line, "identifier");
        const BexUnicodeString url = QorWflUrlUtil::ActionUrl(id);
        output += LineOfUrl(url);
        RequireReadBack(id.IsEmpty() == 0, url, "the identifier is empty");
    }
    WriteOutput(output);
}

/** The UUID blocks that the command line tells, in one way or the other. */
std::vector<std::string> BlocksOf(const Options& iOptions) {
    const UuidFields& fields = iOptions.uuid;
    if (fields.dbName || fields.environment || fields.table || fields.coid || fields.compid) {
        return {ReadUuidFields(fields)};
    }
    std::vector<std::string> blocks;
    for (const std::string& line : LinesOf(iOptions.words)) {
        blocks.push_back(ReadUuidArgument(line));
    }
    return blocks;
}

void PrintInstances(const Options& iOptions) {
    const BexUnicodeString context = FromUserForUrl(iOptions.context, "context");
    std::string output;
    for (const std::string& block : BlocksOf(iOptions)) {
        const BexUnicodeString url = QorWflUrlUtil::ContextUrl(block.data(), context);
        output += LineOfUrl(url);
        const UrlExplanation explanation(url);
        RequireReadBack(explanation.instance.isAccepted, url, explanation.instance.reason);
        RequireReadBack(!explanation.instance.isAccepted || explanation.uuid == block, url,
                        "it would be another object, because a field has blanks or marks in it");
    }
    WriteOutput(output);
}

void PrintWithParm(const Options& iOptions) {
    const BexUnicodeString name = FromUserForUrl(iOptions.parmName, "name");
    const BexUnicodeString value = FromUserForUrl(iOptions.parmValue, "value");
    std::string output;
    for (const std::string& line : LinesOf({iOptions.parmUrl})) {
        BexUnicodeString url = FromUser(line);
        QorWflUrlUtil::AddUrlParm(url, name, value);
        output += LineOfUrl(url);
        RequireReadBack(QorWflUrlUtil::GetUrlParm(url, name) == value, url,
                        "there is a parameter of that name before it");
    }
    WriteOutput(output);
}

void Explain(const Options& iOptions, ExitStatus& oStatus) {
    std::vector<UrlExplanation> urls;
    for (const std::string& line : LinesOf(iOptions.words)) {
        urls.emplace_back(FromUser(line));
    }
    std::string output;
    for (const UrlExplanation& url : urls) {
        output += (output.empty() ? "" : "\n") + UrlAsText(url);
    }
    WriteOutput(iOptions.format == "json" ? UrlsAsJson(urls) : output);
    const bool isWrong =
        std::any_of(urls.begin(), urls.end(), [](const UrlExplanation& iUrl) { return !iUrl.IsAccepted(); });
    oStatus = isWrong ? kWrongInput : kDone;
}

void AddUuid(CLI::App& ioCommand, Options& oOptions) {
    CLI::Option* words = ioCommand
                             .add_option("UUID", oOptions.words,
                                         "The object: a JSON object with dbName, environment, table, coid and compid,\n"
                                         "an instance URL, or the 100 hexadecimal digits of the UUID block;\n"
                                         "- for the lines of the standard input")
                             ->type_name("");
    std::vector<CLI::Option*> fields;
    const auto add = [&](const char* iName, std::optional<std::string>& oField, const char* iText, const char* iType) {
        fields.push_back(ioCommand.add_option(iName, oField, iText)->type_name(iType)->excludes(words));
    };
    add("--db-name", oOptions.uuid.dbName, "The object's database, instead of a UUID", "TEXT");
    add("--environment", oOptions.uuid.environment, "Its environment", "TEXT");
    add("--table", oOptions.uuid.table, "Its table", "TEXT");
    add("--coid", oOptions.uuid.coid, "Its identifier, 16 hexadecimal digits", "HEX");
    add("--compid", oOptions.uuid.compid, "Its second identifier, 16 hexadecimal digits", "HEX");
    for (CLI::Option* field : fields) {
        for (CLI::Option* other : fields) {
            if (field != other) {
                field->needs(other);
            }
        }
    }
}

/** Runs a builder that wants an object; without one the usage is wrong. */
std::function<void()> WithObject(const std::shared_ptr<Options>& iOptions) {
    return [iOptions] {
        if (iOptions->words.empty() && !iOptions->uuid.dbName) {
            throw CLI::RequiredError("UUID");
        }
        PrintInstances(*iOptions);
    };
}

void AddAction(CLI::App& ioUrl, const std::shared_ptr<Options>& iOptions) {
    CLI::App* command = ioUrl.add_subcommand("action", "Print the URLs of actions");
    command->add_option("ID", iOptions->words, "The identifier; - for the lines of the standard input")
        ->required()
        ->type_name("");
    command->footer(
        "Example:\n"
        "  qorwfl url action \"DR 4711\"");
    command->callback([iOptions] { PrintActions(*iOptions); });
}

void AddInstance(CLI::App& ioUrl, const std::shared_ptr<Options>& iOptions) {
    CLI::App* command = ioUrl.add_subcommand("instance", "Print the URLs of object instances");
    AddUuid(*command, *iOptions);
    command->footer(
        "Example:\n"
        "  qorwfl url instance qor://VERANT/ENV1.KIRVA_MODEL/00000000000000A100000000000000B2");
    command->callback(WithObject(iOptions));
}

void AddContext(CLI::App& ioUrl, const std::shared_ptr<Options>& iOptions) {
    CLI::App* command = ioUrl.add_subcommand("context", "Print the URLs of object instances in a context");
    AddUuid(*command, *iOptions);
    command->add_option("--context", iOptions->context, "The context; an empty one adds nothing")
        ->required()
        ->type_name("TEXT");
    command->footer(
        "Example:\n"
        "  qorwfl url context --context \"As built\" "
        "qor://VERANT/ENV1.PART_LIST/00000000000000A100000000000000B2");
    command->callback(WithObject(iOptions));
}

void AddParm(CLI::App& ioUrl, const std::shared_ptr<Options>& iOptions) {
    CLI::App* command = ioUrl.add_subcommand("parm", "Print a URL with one more parameter");
    command->add_option("URL", iOptions->parmUrl, "The URL; - for the lines of the standard input")
        ->required()
        ->type_name("");
    command->add_option("NAME", iOptions->parmName, "The name, written as it stands")->required()->type_name("");
    command->add_option("VALUE", iOptions->parmValue, "The value, written encoded")->required()->type_name("");
    command->footer(
        "Example:\n"
        "  qorwfl url parm LumenUID://Legacy+QOR1/default/DR+4711.ACTION Nickname \"Pump housing\"");
    command->callback([iOptions] { PrintWithParm(*iOptions); });
}

void AddExplain(CLI::App& ioUrl, const std::shared_ptr<Options>& iOptions, ExitStatus& oStatus) {
    CLI::App* command = ioUrl.add_subcommand("explain", "Take URLs apart and tell why one is rejected");
    command->add_option("URL", iOptions->words, "The URL, of any form; - for the lines of the standard input")
        ->required()
        ->type_name("");
    command->add_option("--format", iOptions->format, "text, or json for programs")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORMAT");
    command->footer(
        "Positions count characters from 0. Exit status 1 when a URL names neither an action nor an object.\n"
        "\n"
        "Example:\n"
        "  qorwfl url explain LumenUID://Legacy+QOR1/default/DR+4711.ACTION");
    command->callback([iOptions, &oStatus] { Explain(*iOptions, oStatus); });
}

}  // namespace

void AddUrlCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command = ioApp.add_subcommand("url", "Build URLs or take them apart");
    const auto options = std::make_shared<Options>();
    AddAction(*command, options);
    AddInstance(*command, options);
    AddContext(*command, options);
    AddParm(*command, options);
    AddExplain(*command, options, oStatus);
    command->require_subcommand(1);
    command->footer(
        "'qorwfl url COMMAND --help' tells more about a command.\n"
        "\n"
        "Example:\n"
        "  qorwfl url explain LumenUID://Legacy+QOR1/default/DR+4711.ACTION");
}
