#include "RecordFormat.h"

#include "Failure.h"
#include "Files.h"
#include "JsonAction.h"
#include "JsonRecord.h"
#include "JsonText.h"
#include "NamelessFile.h"
#include "RecordText.h"
#include "XpdlText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/** Whether a text begins as XML does that is not in an extension of ASCII. */
bool BeginsAsWideXml(std::string_view iText) {
    for (const std::string_view start :
         {std::string_view("\xFF\xFE"), std::string_view("\xFE\xFF"), std::string_view("<\0", 2),
          std::string_view("\0<", 2), std::string_view("\0\0", 2), std::string_view("\x4C\x6F")}) {
        if (iText.starts_with(start)) {
            return true;
        }
    }
    return false;
}

}  // namespace

RecordFormat FormatOfName(std::string_view iName) {
    return iName == "xpdl" ? RecordFormat::kXpdl : iName == "text" ? RecordFormat::kText : RecordFormat::kJson;
}

std::string EndingOf(RecordFormat iFormat) {
    return iFormat == RecordFormat::kXpdl ? ".xpdl" : iFormat == RecordFormat::kText ? ".txt" : ".json";
}

RecordFormat RecognizeFormat(const std::string& iText, const std::string& iFileName) {
    std::string_view text = iText;
    if (text.starts_with(kUtf8Mark)) {
        text.remove_prefix(kUtf8Mark.size());
    }
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (text.starts_with('{')) {
        return RecordFormat::kJson;
    }
    if (text.starts_with('<') || BeginsAsWideXml(iText)) {
        return RecordFormat::kXpdl;
    }
    if (text.starts_with("id=")) {
        return RecordFormat::kText;
    }
    throw Failure(iFileName +
                  ": expected an XPDL document, which begins with <, a record text, which begins with id=, or JSON, "
                  "which begins with {; found " +
                  (text.empty() ? "nothing" : "something else"));
}

RecordReader::RecordReader(const std::optional<std::string>& iConfig) {
    if (iConfig == "-") {
        const NamelessFile words(ReadInput(*iConfig));  // which the manager has read once it is there
        manager = std::make_unique<ToolActionManager>(words.Path());
    } else if (iConfig) {
        manager = std::make_unique<ToolActionManager>(iConfig);
    }
}

ToolActionManager& RecordReader::Manager() {
    if (!manager) {
        manager = std::make_unique<ToolActionManager>(std::nullopt);
    }
    return *manager;
}

void RecordReader::Read(const std::string& iText, const std::string& iFileName, RecordFormat iFormat,
                        ActivityInfo& oRecord, std::vector<std::string>& oWarnings) {
    if (iFormat == RecordFormat::kJson) {
        ReadJson(iText, iFileName, oRecord);
    } else if (iFormat == RecordFormat::kText) {
        for (std::string& cut : TextToRecord(iText, iFileName, oRecord)) {
            oWarnings.push_back(std::move(cut));
        }
    } else if (const std::optional<std::string> missing = XpdlToRecord(iText, iFileName, oRecord)) {
        throw Failure(iFileName + ": " + *missing + ": required element missing");
    }
}

void RecordReader::ReadJson(const std::string& iText, const std::string& iFileName, ActivityInfo& oRecord) {
    const nlohmann::json document = ParseJson(iText, iFileName);
    const JsonPlace place(document, iFileName);
    if (!place.IsObject() || place.Member(kRecordMember).IsAbsent()) {
        Manager().FillRecord(ReadJsonAction(place), oRecord);
        return;
    }
    RequireNoAction(place);
    JsonToRecord(place.Member(kRecordMember), oRecord);
}

std::string WriteRecord(const ActivityInfo& iRecord, RecordFormat iFormat, const std::optional<std::string>& iCreated,
                        const std::string& iFileName) {
    switch (iFormat) {
        case RecordFormat::kXpdl:
            return RecordToXpdl(iRecord, iCreated, iFileName);
        case RecordFormat::kText:
            return RecordToText(iRecord, iFileName);
        default:
            return RecordToJson(iRecord);
    }
}
