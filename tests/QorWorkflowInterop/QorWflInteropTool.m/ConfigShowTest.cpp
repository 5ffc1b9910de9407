#include "../QorWflInteropUtil.m/PropertyEntries.h"
#include "../QorWflInteropUtil.m/TestManager.h"
#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <EnvironmentVariable.h>
#include <TemporaryDirectory.h>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr const char* kFileName = "QorWflActionManager";

/** A text of the library as UTF-8. */
std::string Utf8(const BexUnicodeString& iText) {
    std::string text;
    for (const char character : NarrowText(iText)) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            text += character;
        } else {
            text += static_cast<char>(0xC0U | (code >> 6U));
            text += static_cast<char>(0x80U | (code & 0x3FU));
        }
    }
    return text;
}

/** What a command shows as JSON. */
json JsonOf(const std::vector<std::string>& iArguments, const ToolSettings& iSettings = {}) {
    std::vector<std::string> arguments = iArguments;
    arguments.insert(arguments.end(), {"--format", "json"});
    const ToolResult result = RunTool(arguments, iSettings);
    json document = json::parse(result.out, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << result;
    return document;
}

/** The library itself, with a property file that is found along a path. */
struct Library {
    explicit Library(const std::string& iPath) {
        const EnvironmentVariable path("BexMsgCatalogPath", iPath.c_str());
        manager.InitResources(properties);
        manager.handler.Init(properties);
    }

    /** What `config show` has to say about it. */
    json Words() {
        json words{{"actionType", Utf8(manager.actionType)},
                   {"maturities",
                    {Utf8(manager.startStatus), Utf8(manager.runStatus), Utf8(manager.completeStatus),
                     Utf8(manager.abortStatus), Utf8(manager.bypassStatus)}},
                   {"markers", {Utf8(manager.GetSpecialDataName(1)), Utf8(manager.GetSpecialDataName(2))}},
                   {"priorities", json::array()},
                   {"mappings", json::array()}};
        for (int i = 1; i <= manager.internalPriorities.Size(); ++i) {
            words["priorities"].push_back({Utf8(manager.internalPriorities[i]), Utf8(manager.exportedPriorities[i])});
        }
        const TestHandler& handler = manager.handler;
        for (int i = 1; i <= handler.objectKeys.Size(); ++i) {
            words["mappings"].push_back({Utf8(handler.externalTypes[i]), Utf8(handler.environments[i]),
                                         Utf8(handler.objectKinds[i]), Utf8(handler.tables[i]),
                                         Utf8(handler.nameAttributes[i])});
        }
        return words;
    }

    QorWflPropertyFile properties;
    TestManager manager;
};

/** The same out of what `config show` prints. */
json WordsOf(const json& iShown) {
    json words{{"actionType", iShown["actionType"]["value"]},
               {"maturities", json::array()},
               {"markers", {iShown["markers"]["missing"]["value"], iShown["markers"]["ambiguous"]["value"]}},
               {"priorities", json::array()},
               {"mappings", json::array()}};
    for (const json& maturity : iShown["maturities"]) {
        words["maturities"].push_back(maturity["value"]);
    }
    for (const json& priority : iShown["priorities"]) {
        words["priorities"].push_back({priority["code"], priority["word"]});
    }
    for (const json& mapping : iShown["mappings"]) {
        words["mappings"].push_back(
            {mapping["type"], mapping["environment"], mapping["kind"], mapping["table"], mapping["attribute"]});
    }
    return words;
}

/** The settings that count, by key. */
json SettingsOf(const json& iShown) {
    json settings = json::object();
    for (const json& setting : iShown["settings"]) {
        if (setting["counts"].get<bool>()) {
            settings[setting["key"].get<std::string>()] = setting["value"];
        }
    }
    return settings;
}

/** What the library's table holds but for the built-in mappings that no line sets. */
json EntriesAsJson(const QorWflPropertyFile& iProperties, const json& iSettings) {
    json entries = json::object();
    for (int i = 1; i <= iProperties.GetNKeys(); ++i) {
        const std::string key = Utf8(iProperties.GetKey(i));
        if (i > 3 || iSettings.contains(key)) {
            entries[key] = Utf8(iProperties.GetValue(i));
        }
    }
    return entries;
}

/** Files made of pieces that matter to the reader, put together at random, always the same. */
std::vector<std::string> RandomFiles(int iCount) {
    const std::vector<std::string> pieces{"actionType",
                                          "actionStatus.run",
                                          "actionPriority.",
                                          "actionPriority.1",
                                          "actionObjects.",
                                          "actionObjects.A.E",
                                          "X.*",
                                          "dataName.missing",
                                          " = ",
                                          "=",
                                          "DOC*.N",
                                          "DOC_A.N",
                                          "PART_LIST.M",
                                          "FEAT*.",
                                          "\n",
                                          "\n",
                                          "\n",
                                          "\\\n",
                                          "\\",
                                          "/",
                                          "//",
                                          " ",
                                          "\"",
                                          "\t",
                                          "\r\n",
                                          "\xE9",
                                          "word",
                                          "1",
                                          ".",
                                          std::string(1, '\0')};
    std::mt19937 random(4711);
    std::vector<std::string> files;
    for (int i = 0; i < iCount; ++i) {
        std::string file;
        for (auto length = random() % 40; length > 0; --length) {
            file += pieces[random() % pieces.size()];
        }
        files.push_back(file);
    }
    return files;
}

}  // namespace

TEST(ConfigShow, SettingsAndWordsAreThoseOfTheLibrary) {
    for (const std::string& content : RandomFiles(150)) {
        const TemporaryDirectory folder;
        folder.Write(kFileName, content);
        Library library(folder.Path().string());
        const json shown = JsonOf({"config", "show", "--config", "-"}, {.input = content});
        const json settings = SettingsOf(shown);
        ASSERT_EQ(settings, EntriesAsJson(library.properties, settings)) << content;
        ASSERT_EQ(WordsOf(shown), library.Words()) << content;
    }
}

TEST(ConfigShow, FileIsFoundWhereTheLibraryFindsIt) {
    const TemporaryDirectory root;
    const std::string base = root.Path().string();
    for (const char* folder : {"one", "two", "here"}) {
        root.Write(std::string(folder) + '/' + kFileName, std::string("actionType = ") + folder + '\n');
    }
    std::filesystem::create_directories(root.Path() / "folder" / kFileName);
    root.Write("file", "");
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(root.Path() / "here");
    for (const std::string& path :
         {std::string(""), std::string(":"), ":" + base + "/one", base + "/one:" + base + "/two",
          base + "/two:", base + "/none:" + base + "/folder:" + base + "/file:" + base + "/two", base + "/none",
          base + "/folder::" + base + "/one", std::string("../one"), std::string("../none:../two:")}) {
        Library library(path);
        const json shown =
            JsonOf({"config", "show"}, {.environment = {{"BexMsgCatalogPath", path}}, .folder = base + "/here"});
        EXPECT_EQ(shown["actionType"]["value"], Utf8(library.manager.actionType)) << path << shown;
        EXPECT_EQ(shown["file"].is_null(), library.manager.actionType == "Design") << path << shown;
    }
    std::filesystem::current_path(former);
}

TEST(ConfigShow, EveryEntryOfThePathIsToldWithWhyItWasPassedOver) {
    const TemporaryDirectory root;
    const std::string base = root.Path().string();
    std::filesystem::create_directories(root.Path() / "folder" / kFileName);
    root.Write(std::string("one/") + kFileName, "");
    root.Write("file", "");
    const std::string path = base + "/none:" + base + "/folder:" + base + "/file:" + base + "/one::" + base + "/one";
    const ToolResult result = RunTool({"config", "show"}, {.environment = {{"BexMsgCatalogPath", path}}});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("Property file: " + base + "/one/QorWflActionManager\n"));
    EXPECT_THAT(result.out, HasSubstr("Looked for along BexMsgCatalogPath, which is \"" + base));
    const json shown = JsonOf({"config", "show"}, {.environment = {{"BexMsgCatalogPath", path}}});
    std::vector<std::string> reasons;
    for (const json& candidate : shown["search"]["candidates"]) {
        reasons.push_back(candidate["reason"]);
        EXPECT_EQ(candidate["taken"], candidate["reason"] == "");
    }
    EXPECT_THAT(reasons, ElementsAre("there is no such file", "it is a folder", "Not a directory", "",
                                     "a file was found before", "a file was found before"));
}

TEST(ConfigShow, SettingOfSeveralLinesHasFirstAndLast) {
    const std::string content = "// c\nactionType = a\\\n b\\\n c\nactionType = d\n";
    const json settings = JsonOf({"config", "show", "--config", "-"}, {.input = content})["settings"];
    ASSERT_EQ(settings.size(), 2U);
    EXPECT_EQ(settings[0], (json{{"line", 2},
                                 {"lastLine", 4},
                                 {"key", "actionType"},
                                 {"value", "a b c"},
                                 {"counts", false},
                                 {"codes", {"QC205"}}}));
    EXPECT_EQ(settings[1]["line"], 5);
    EXPECT_THAT(RunTool({"config", "show", "--config", "-"}, {.input = content}).out,
                HasSubstr("lines 2-4  actionType  = \"a b c\"  [QC205]\n"));
}

TEST(ConfigExplain, TypeAndAttributeAreThoseOfTheLibrary) {
    const std::string content =
        "actionObjects.P.* = PART_LIST.N1\nactionObjects.P.E = PART_LIST.N2\nactionObjects.D.E = DOC_A.N3\n"
        "actionObjects.D.* = DOC*.N4\nactionObjects.Q.E = DOC*.N5\nactionObjects.R.* = DOC_B.N6\n"
        "actionObjects.S. = FEAT*.N7\nactionObjects.T.F = FEATURE.\nactionObjects.A,B.E = DOC,X.N\n";
    const TemporaryDirectory folder;
    folder.Write(kFileName, content);
    Library library(folder.Path().string());
    for (const char* environment : {"E", "F", "", "*", "e", "12345678"}) {
        for (const char* table : {"PART_LIST", "KIRVA_MODEL", "DOC_A", "DOC_B", "DOC", "DOC*", "FEATURE", "FEAT", "",
                                  "PART_LIST.X", "DOC.X", "ZZ", "*", "DOC,X"}) {
            const json shown = JsonOf({"config", "explain", "--environment", environment, "--table", table, "--config",
                                       folder.Path().string()});
            const BexUnicodeString type = library.manager.handler.GetExternalType(environment, table);
            const BexUnicodeString attribute = library.manager.handler.GetNameAttribute(type, environment, table);
            EXPECT_EQ(shown["type"], type.IsEmpty() != 0 ? json() : json(Utf8(type))) << shown;
            EXPECT_EQ(shown["attribute"], attribute.IsEmpty() != 0 ? json() : json(Utf8(attribute))) << shown;
            // The mapping shown is the first of those keys that the handler holds, and no key is tried behind it.
            bool isFound = false;
            for (const json& key : shown["typeKeys"]) {
                const std::string text = key["key"];
                const bool isThere = library.manager.handler.objectKeys.Locate(text.c_str()) > 0;
                EXPECT_EQ(key["tried"], !isFound) << shown;
                EXPECT_EQ(key["mapping"].is_null(), isFound || !isThere) << shown;
                isFound = isFound || isThere;
            }
            EXPECT_EQ(isFound, type.IsEmpty() == 0) << shown;
        }
    }
}

TEST(ConfigExplain, TellsKeysMappingAndLine) {
    const ToolResult result = RunTool({"config", "explain", "--environment", "PROD", "--table", "DOC_OTHER", "--config",
                                       Example("QorWflActionManager")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "Environment: PROD\nTable: DOC_OTHER\nKind: Document\n\n"
              "Keys of the type, in the order of the look-up\n"
              "  PROD,Document,DOC_OTHER  no mapping\n"
              "  PROD,Document,*          no mapping\n"
              "  *,Document,DOC_OTHER     no mapping\n"
              "  *,Document,*             line 32: actionObjects.VERANT_QORDocument.* = DOC*.S_TYPE_REP\n\n"
              "Type: VERANT_QORDocument\n\n"
              "Keys of the name attribute, in the order of the look-up\n"
              "  VERANT_QORDocument,PROD  no mapping\n"
              "  VERANT_QORDocument,*     line 32: actionObjects.VERANT_QORDocument.* = DOC*.S_TYPE_REP\n\n"
              "Name attribute: S_TYPE_REP\n");
}

TEST(ConfigExplain, MappingForAnotherTableIsToldAsTheEndOfTheSearch) {
    const ToolResult result =
        RunTool({"config", "explain", "--environment", "E", "--table", "DOC_OTHER", "--config", "-"},
                {.input = "actionObjects.VERANT_QORDocument.E = DOC_STD.A\n"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("Name attribute: none; the mapping found is for another table"));
}
