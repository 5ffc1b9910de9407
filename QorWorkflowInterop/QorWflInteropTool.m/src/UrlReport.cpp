#include "UrlReport.h"

#include "JsonDocument.h"
#include "SafeText.h"
#include "TextTable.h"
#include "Unicode.h"
#include "UrlText.h"
#include "UserText.h"

#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;
using namespace QorWflUuidLayout;

/** A text of a UUID block without its padding. */
std::string TextField(const std::string& iBlock, Field iField) {
    const std::string text =
        iBlock.substr(static_cast<std::size_t>(iField.offset), static_cast<std::size_t>(iField.width));
    return Latin1ToUtf8(text.substr(0, text.find_last_not_of(' ') + 1));
}

/** An identifier of a UUID block in hexadecimal digits. */
std::string HexField(const std::string& iBlock, Field iField) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string hex;
    for (int i = iField.offset; i < iField.End(); ++i) {
        const auto byte = static_cast<unsigned char>(iBlock[static_cast<std::size_t>(i)]);
        hex += kDigits[byte / 16];
        hex += kDigits[byte % 16];
    }
    return hex;
}

/** The part of a URL that a piece is. */
std::string TextOfPiece(const UrlExplanation& iUrl, const UrlPiece& iPiece) {
    return ToUtf8(UnitsOf(iUrl.url).substr(iPiece.start, iPiece.length));
}

// ---------------------------------------------------------------------------------------------------- text

std::string PiecesText(const UrlExplanation& iUrl, const UrlReading& iReading) {
    TextTable table;
    table.Add({"AT", "LENGTH", "PIECE", "TEXT", "MEANING"});
    for (const UrlPiece& piece : iReading.pieces) {
        const std::string text = TextOfPiece(iUrl, piece);
        table.Add({std::to_string(piece.start), std::to_string(piece.length), piece.name, text,
                   piece.meaning == text ? "" : piece.meaning});
    }
    return table.Text();
}

/** Names the URL that the library writes for what it has read. */
std::string WrittenText(const BexUnicodeString& iWritten) {
    return "  written by the library as " + SafeText(ToUtf8(iWritten)) + '\n';
}

std::string VerdictText(const char* iWhat, const UrlReading& iReading) {
    return std::string("  no ") + iWhat + ": " + SafeText(iReading.reason) + " (at " + std::to_string(iReading.at) +
           ") [" + iReading.code + "]\n";
}

std::string ActionText(const UrlExplanation& iUrl) {
    if (!iUrl.action.isAccepted) {
        return VerdictText("action", iUrl.action);
    }
    return "  action " + Quoted(ToUtf8(iUrl.actionId)) + '\n' + WrittenText(QorWflUrlUtil::ActionUrl(iUrl.actionId));
}

std::string InstanceText(const UrlExplanation& iUrl) {
    if (!iUrl.instance.isAccepted) {
        return VerdictText("object instance", iUrl.instance);
    }
    const auto text = [&iUrl](const char* iName, Field iField) {
        return std::string(iName) + ' ' + Quoted(TextField(iUrl.uuid, iField));
    };
    std::string verdict = "  object instance of " + text("database", kDbName) + ", " + text("environment", kKienv) +
                          ", " + text("table", kKitab) + ", identifiers " + HexField(iUrl.uuid, kXCoid) + " and " +
                          HexField(iUrl.uuid, kXCompid) + '\n';
    if (iUrl.context.IsEmpty() == 0) {
        verdict += "  in the context " + Quoted(ToUtf8(iUrl.context)) + '\n';
    }
    return verdict + WrittenText(QorWflUrlUtil::InstanceUrl(iUrl.uuid.data()));
}

std::string ParametersText(const UrlExplanation& iUrl) {
    TextTable table;
    for (const UrlParameter& parameter : iUrl.parameters) {
        table.Add({std::to_string(parameter.name.start), parameter.name.meaning, "= \"" + parameter.value.meaning + '"',
                   parameter.isRead ? "" : "not read: there is one of that name before it"});
    }
    const std::string text = table.Text();
    return text.empty() ? "" : "Parameters\n" + text;
}

std::string ReadingText(const UrlExplanation& iUrl, const UrlReading& iReading, const std::string& iTitle) {
    std::string text = iTitle + '\n' + PiecesText(iUrl, iReading);
    for (const std::string& remark : iReading.remarks) {
        text += "  note: " + SafeText(remark) + '\n';
    }
    return text;
}

// ---------------------------------------------------------------------------------------------------- JSON

Json PieceJson(const UrlExplanation& iUrl, const UrlPiece& iPiece) {
    return {{"start", iPiece.start},
            {"length", iPiece.length},
            {"piece", iPiece.name},
            {"text", TextOfPiece(iUrl, iPiece)},
            {"meaning", iPiece.meaning}};
}

Json ReadingJson(const UrlExplanation& iUrl, const UrlReading& iReading) {
    Json reading{{"accepted", iReading.isAccepted},
                 {"code", iReading.isAccepted ? Json() : Json(iReading.code)},
                 {"reason", iReading.isAccepted ? Json() : Json(iReading.reason)},
                 {"at", iReading.isAccepted ? Json() : Json(iReading.at)},
                 {"pieces", Json::array()},
                 {"remarks", iReading.remarks}};
    for (const UrlPiece& piece : iReading.pieces) {
        reading["pieces"].push_back(PieceJson(iUrl, piece));
    }
    return reading;
}

Json UrlJson(const UrlExplanation& iUrl) {
    Json action = ReadingJson(iUrl, iUrl.action);
    if (iUrl.action.isAccepted) {
        action["id"] = ToUtf8(iUrl.actionId);
        action["written"] = ToUtf8(QorWflUrlUtil::ActionUrl(iUrl.actionId));
    }
    Json instance = ReadingJson(iUrl, iUrl.instance);
    if (iUrl.instance.isAccepted) {
        instance["uuid"] = {{"dbName", TextField(iUrl.uuid, kDbName)},
                            {"environment", TextField(iUrl.uuid, kKienv)},
                            {"table", TextField(iUrl.uuid, kKitab)},
                            {"coid", HexField(iUrl.uuid, kXCoid)},
                            {"compid", HexField(iUrl.uuid, kXCompid)}};
        instance["context"] = ToUtf8(iUrl.context);
        instance["written"] = ToUtf8(QorWflUrlUtil::InstanceUrl(iUrl.uuid.data()));
    }
    instance["trace"] = iUrl.trace;
    Json parameters = Json::array();
    for (const UrlParameter& parameter : iUrl.parameters) {
        parameters.push_back({{"start", parameter.name.start},
                              {"name", parameter.name.meaning},
                              {"valueStart", parameter.value.start},
                              {"valueLength", parameter.value.length},
                              {"value", parameter.value.meaning},
                              {"read", parameter.isRead}});
    }
    return {{"url", ToUtf8(iUrl.url)},
            {"accepted", iUrl.IsAccepted()},
            {"action", action},
            {"instance", instance},
            {"parameters", parameters}};
}

}  // namespace

std::string UrlAsText(const UrlExplanation& iUrl) {
    std::string text = SafeText(ToUtf8(iUrl.url)) + '\n';
    text += ActionText(iUrl) + InstanceText(iUrl);
    const bool showsAction = iUrl.action.isAccepted || (!iUrl.IsAccepted() && iUrl.LooksLikeAction());
    const bool showsInstance = iUrl.instance.isAccepted || (!iUrl.IsAccepted() && !iUrl.LooksLikeAction());
    if (showsAction) {
        text += ReadingText(iUrl, iUrl.action, "Read as the URL of an action");
    }
    if (showsInstance) {
        text += ReadingText(iUrl, iUrl.instance, "Read as the URL of an object instance");
    }
    return text + ParametersText(iUrl);
}

std::string UrlsAsJson(const std::vector<UrlExplanation>& iUrls) {
    Json list = Json::array();
    for (const UrlExplanation& url : iUrls) {
        list.push_back(UrlJson(url));
    }
    return JsonDocument(list);
}
