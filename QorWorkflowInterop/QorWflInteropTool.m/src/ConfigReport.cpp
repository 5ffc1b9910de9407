#include "ConfigReport.h"

#include "Configuration.h"
#include "FindingText.h"
#include "JsonDocument.h"
#include "PropertyKeys.h"
#include "SafeText.h"
#include "TextTable.h"
#include "Unicode.h"
#include "UserText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using Json = nlohmann::ordered_json;

/** How messages call the file, also when there is none. */
std::string NameOfFile(const LoadedConfig& iConfig) {
    return iConfig.FileName().empty() ? kPropertyFileName : iConfig.FileName();
}

Json FindingsOf(const ExaminedConfig& iConfig) {
    Json list = Json::array();
    for (const ConfigFinding& finding : iConfig.findings) {
        const ConfigCodeInfo& code = InfoOf(finding.code);
        list.push_back({{"code", code.id},
                        {"severity", NameOf(code.severity)},
                        {"title", code.title},
                        {"line", finding.line == 0 ? Json() : Json(finding.line)},
                        {"message", finding.message},
                        {"hint", finding.hint}});
    }
    return list;
}

Json FileOf(const LoadedConfig& iConfig) {
    return iConfig.FileName().empty() ? Json() : Json(iConfig.FileName());
}

/** The keys of the words of the action manager. */
std::string MaturityKey(const MaturityWord& iMaturity) {
    return std::string("actionStatus.") + iMaturity.status;
}

std::string PriorityKey(const PriorityWord& iPriority) {
    return std::string(kPriorityPrefix) + std::string(iPriority.code.NarrowView());
}

/** The number of the line that sets a key, null when none does. */
Json LineNumberOf(const ExaminedConfig& iConfig, const std::string& iKey) {
    const PropertyLine* line = iConfig.file.LineOf(iKey);
    return line == nullptr ? Json() : Json(line->first);
}

/** The codes of the findings about a line, each once. */
std::vector<std::string> CodesOf(const ExaminedConfig& iConfig, const PropertyLine& iLine) {
    std::vector<std::string> codes;
    auto finding = std::lower_bound(iConfig.findings.begin(), iConfig.findings.end(), iLine.first,
                                    [](const ConfigFinding& iOne, std::size_t iNumber) { return iOne.line < iNumber; });
    for (; finding != iConfig.findings.end() && finding->line <= iLine.Last(); ++finding) {
        const char* code = InfoOf(finding->code).id;
        if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
            codes.emplace_back(code);
        }
    }
    return codes;
}

/** The words of the action manager, with the keys that set them. */
struct Word {
    std::string name;
    std::string text;
    std::string key;
};

std::vector<Word> WordsOf(const LoadedConfig& iConfig) {
    std::vector<Word> words{{"action type", ToUtf8(iConfig.ActionType()), "actionType"}};
    for (const MaturityWord& maturity : iConfig.Maturities()) {
        words.push_back({std::string("maturity ") + maturity.status, ToUtf8(maturity.word), MaturityKey(maturity)});
    }
    for (const PriorityWord& priority : iConfig.Priorities()) {
        words.push_back({"priority " + ToUtf8(priority.code), ToUtf8(priority.word), PriorityKey(priority)});
    }
    words.push_back({"missing data", ToUtf8(iConfig.MissingMarker()), "dataName.missing"});
    words.push_back({"ambiguous data", ToUtf8(iConfig.AmbiguousMarker()), "dataName.ambiguous"});
    return words;
}

// ---------------------------------------------------------------------------------------------------- text

std::string SearchText(const LoadedConfig& iConfig) {
    if (!iConfig.Search()) {
        return "";
    }
    const PropertySearch& search = *iConfig.Search();
    TextTable table;
    for (const PropertyCandidate& candidate : search.candidates) {
        table.Add({candidate.file, candidate.reason.empty() ? "taken" : "passed over: " + candidate.reason});
    }
    const std::string value = search.path ? "which is " + Quoted(*search.path) : "which is not set";
    return "Looked for along BexMsgCatalogPath, " + SafeText(value) + '\n' + table.Text();
}

std::string SettingsText(const ExaminedConfig& iConfig) {
    TextTable table;
    for (const PropertyLine& line : iConfig.file.Lines()) {
        if (line.kind != PropertyLine::Kind::kSetting) {
            continue;
        }
        std::string remarks;
        for (const std::string& code : CodesOf(iConfig, line)) {
            remarks += (remarks.empty() ? "[" : ", ") + code;
        }
        const std::string place = line.first == line.Last()
                                      ? "line " + std::to_string(line.first)
                                      : "lines " + std::to_string(line.first) + '-' + std::to_string(line.Last());
        table.Add({place, Latin1ToUtf8(line.key), "= \"" + Latin1ToUtf8(line.value) + '"',
                   remarks.empty() ? "" : remarks + ']'});
    }
    const std::string text = table.Text();
    return "\nSettings\n" + (text.empty() ? "  none\n" : text);
}

std::string WordsText(const ExaminedConfig& iConfig) {
    TextTable table;
    for (const Word& word : WordsOf(iConfig.config)) {
        const BexUnicodeString key = BexUnicodeString::FromNarrow(word.key);
        table.Add({word.name, '"' + word.text + '"', PlaceOf(iConfig.file, key)});
    }
    return "\nWords\n" + table.Text();
}

std::string MappingsText(const ExaminedConfig& iConfig) {
    TextTable table;
    table.Add({"TYPE", "ENVIRONMENT", "KIND", "TABLE", "ATTRIBUTE"});
    for (const ObjectMapping& mapping : iConfig.config.Mappings()) {
        table.Add({ToUtf8(mapping.type), ToUtf8(mapping.environment), ToUtf8(mapping.kind), ToUtf8(mapping.table),
                   ToUtf8(mapping.attribute),
                   PlaceOf(iConfig.file, iConfig.config.Properties().GetKey(mapping.property))});
    }
    return "\nObject types\n" + table.Text();
}

}  // namespace

ExaminedConfig::ExaminedConfig(const std::optional<std::string>& iConfig)
    : config(iConfig), file(config.Content()), findings(FindInConfig(file, config)) {}

std::size_t ExaminedConfig::Count(Severity iSeverity) const {
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(),
        [iSeverity](const ConfigFinding& iFinding) { return InfoOf(iFinding.code).severity == iSeverity; }));
}

std::string FindingsAsText(const ExaminedConfig& iConfig, bool iColours) {
    const FindingText lines(iColours);
    const std::string file = SafeText(NameOfFile(iConfig.config));
    std::string text;
    for (const ConfigFinding& finding : iConfig.findings) {
        const ConfigCodeInfo& code = InfoOf(finding.code);
        const std::string place = finding.line == 0 ? file : file + ':' + std::to_string(finding.line);
        text += lines.Line(place, code.severity, SafeText(finding.message), code.id);
        text += FindingText::Detail("hint", SafeText(finding.hint));
    }
    return text;
}

std::string FindingsAsJson(const ExaminedConfig& iConfig) {
    return JsonDocument({{"file", FileOf(iConfig.config)},
                         {"errors", iConfig.Count(Severity::Error)},
                         {"warnings", iConfig.Count(Severity::Warning)},
                         {"notes", iConfig.Count(Severity::Note)},
                         {"findings", FindingsOf(iConfig)}});
}

std::string ConfigAsText(const ExaminedConfig& iConfig, bool iColours) {
    const std::string name = iConfig.config.FileName();
    std::string text = "Property file: " + (name.empty() ? "none" : SafeText(name)) + '\n';
    text += SearchText(iConfig.config) + SettingsText(iConfig) + WordsText(iConfig) + MappingsText(iConfig);
    return iConfig.findings.empty() ? text : text + "\nFindings\n" + FindingsAsText(iConfig, iColours);
}

std::string ConfigAsJson(const ExaminedConfig& iConfig) {
    const LoadedConfig& config = iConfig.config;
    Json document{{"file", FileOf(config)}, {"search", nullptr}, {"settings", Json::array()}};
    if (config.Search()) {
        Json candidates = Json::array();
        for (const PropertyCandidate& candidate : config.Search()->candidates) {
            candidates.push_back({{"entry", candidate.entry},
                                  {"file", candidate.file},
                                  {"taken", candidate.reason.empty()},
                                  {"reason", candidate.reason}});
        }
        const auto& path = config.Search()->path;
        document["search"] = {{"path", path ? Json(*path) : Json()}, {"candidates", candidates}};
    }
    for (const PropertyLine& line : iConfig.file.Lines()) {
        if (line.kind == PropertyLine::Kind::kSetting) {
            document["settings"].push_back({{"line", line.first},
                                            {"lastLine", line.Last()},
                                            {"key", Latin1ToUtf8(line.key)},
                                            {"value", Latin1ToUtf8(line.value)},
                                            {"counts", iConfig.file.LineOf(line.key) == &line},
                                            {"codes", CodesOf(iConfig, line)}});
        }
    }
    document["actionType"] = {{"value", ToUtf8(config.ActionType())}, {"line", LineNumberOf(iConfig, "actionType")}};
    for (const MaturityWord& maturity : config.Maturities()) {
        document["maturities"].push_back({{"status", maturity.status},
                                          {"value", ToUtf8(maturity.word)},
                                          {"line", LineNumberOf(iConfig, MaturityKey(maturity))}});
    }
    document["priorities"] = Json::array();
    for (const PriorityWord& priority : config.Priorities()) {
        document["priorities"].push_back({{"code", ToUtf8(priority.code)},
                                          {"word", ToUtf8(priority.word)},
                                          {"line", LineNumberOf(iConfig, PriorityKey(priority))}});
    }
    document["markers"] = {
        {"missing", {{"value", ToUtf8(config.MissingMarker())}, {"line", LineNumberOf(iConfig, "dataName.missing")}}},
        {"ambiguous",
         {{"value", ToUtf8(config.AmbiguousMarker())}, {"line", LineNumberOf(iConfig, "dataName.ambiguous")}}}};
    document["mappings"] = Json::array();
    for (const ObjectMapping& mapping : config.Mappings()) {
        const BexUnicodeString key = config.Properties().GetKey(mapping.property);
        document["mappings"].push_back({{"type", ToUtf8(mapping.type)},
                                        {"environment", ToUtf8(mapping.environment)},
                                        {"kind", ToUtf8(mapping.kind)},
                                        {"table", ToUtf8(mapping.table)},
                                        {"attribute", ToUtf8(mapping.attribute)},
                                        {"line", LineNumberOf(iConfig, std::string(key.NarrowView()))}});
    }
    document["findings"] = FindingsOf(iConfig);
    return JsonDocument(document);
}
