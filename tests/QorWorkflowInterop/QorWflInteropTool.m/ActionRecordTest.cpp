#include "ToolRun.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

using nlohmann::json;

namespace {

constexpr const char* kPart = R"("uuid": "qor://DB/ENV.PART_LIST/00000000000000010000000000000002")";
constexpr const char* kPartUrl =
    "LumenUID://Legacy+QOR1/ENV/DB++++++#ENV+++++#PART_LIST+++++++++#0000000000000001#0000000000000002.PART_LIST";

/** The record that an action in JSON becomes. */
json RecordOf(const std::string& iAction) {
    const ToolResult result = RunTool({"export", "-", "--format", "json"}, {.input = iAction});
    EXPECT_EQ(result.status, 0) << iAction << '\n' << result;
    return json::parse(result.out, nullptr, false).value("record", json::object());
}

json RecordOfObjects(const std::string& iObjects) {
    return RecordOf("{\"objects\": [" + iObjects + "]}");
}

/** The members that a message names as the known ones. */
std::vector<std::string> KnownMembers(const std::string& iAction) {
    const std::string known = "unknown member; known are ";
    const std::string message = RunTool({"export", "-"}, {.input = iAction}).err;
    std::vector<std::string> members;
    std::istringstream list(message.substr(message.find(known) + known.size()));
    for (std::string member; list >> member;) {
        members.push_back(member.substr(0, member.find(',')));
    }
    return members;
}

/** The first columns of the tables of a section of the page of the command, without the head. */
std::vector<std::vector<std::string>> FirstColumns(const std::string& iSection) {
    std::istringstream page(FileBytes(std::string(DOCS_DIR) + "/qorwfl.md"));
    const std::regex row("\\| `([A-Za-z]+)` \\|.*");
    std::vector<std::vector<std::string>> tables;
    bool isInside = false;
    bool isTable = false;
    for (std::string line; std::getline(page, line);) {
        isInside = line.starts_with("##") ? line == iSection : isInside;
        std::smatch match;
        if (isInside && std::regex_match(line, match, row)) {
            if (!isTable) {
                tables.emplace_back();
            }
            tables.back().push_back(match[1]);
            isTable = true;
        } else {
            isTable = false;
        }
    }
    return tables;
}

}  // namespace

TEST(ActionPage, NamesTheMembersThatAreKnown) {
    const auto tables = FirstColumns("### The JSON of an action");
    ASSERT_EQ(tables.size(), 3U);
    std::vector<std::string> members = KnownMembers(R"({"?": 0})");
    ASSERT_FALSE(members.empty());
    EXPECT_EQ(members.back(), "record");
    members.pop_back();  // which stands in the place of the action
    const auto sorted = [](std::vector<std::string> iNames) {
        std::sort(iNames.begin(), iNames.end());
        return iNames;
    };
    EXPECT_EQ(sorted(tables[0]), sorted(members));
    EXPECT_EQ(sorted(tables[1]), sorted(KnownMembers(R"({"contexts": [{"?": 0}]})")));
    EXPECT_EQ(sorted(tables[2]), sorted(KnownMembers(R"({"objects": [{"?": 0}]})")));
}

TEST(ActionRecord, WhatIsMissingBecomesWhatThePageSays) {
    const json expected = json::parse(R"({
        "id": null, "name": null, "generation": 1, "abstract": null, "priority": null,
        "extid": "LumenUID://Legacy+QOR1/default/.ACTION", "status": null, "duration": 0, "durationUnit": null,
        "owner": null, "participant": null, "participantType": "HUMAN", "documentation": null,
        "process": {"id": null, "name": null, "context": null, "datas": [], "dataNumber": 0},
        "inputs": [], "outputs": [], "inputNumber": 0, "outputNumber": 0})");
    EXPECT_EQ(RecordOf("{}"), expected);
    EXPECT_EQ(RecordOf(R"({"id": null, "abstract": null, "priority": null, "owner": null, "name": null, "status": null,
                           "generation": null, "duration": null, "durationUnit": null, "documentation": null,
                           "processName": null, "contexts": null, "objects": null, "record": null})"),
              expected);
}

TEST(ActionRecord, LastContextOfAKindCounts) {
    const json record =
        RecordOf(R"({"contexts": [{"kind": "WFProcess", "value": "P1"}, {"kind": "WFActivity", "value": "A1"},
                                                  {"kind": "WFProcess", "value": "P2"}, {"kind": "WFActivity"}]})");
    EXPECT_EQ(record["process"]["id"], "P2");
    EXPECT_EQ(record["id"], json());
}

TEST(ActionRecord, ContextsOfOtherKindsOrNoneArePassedOver) {
    EXPECT_EQ(RecordOf(R"({"contexts": [{"kind": "wfprocess", "value": "P"}, {"value": "A"}, {}, {"kind": ""}]})"),
              RecordOf("{}"));
}

TEST(ActionRecord, LastProductMakesTheProcessContextWhateverItsDirection) {
    const std::string first =
        R"({"type": "Product", "nickname": "X", "uuid": "qor://A/B.C/00000000000000000000000000000000"})";
    const std::string second = std::string(R"({"type": "Product", "direction": "I", "name": "N", )") + kPart + "}";
    const json record = RecordOfObjects(first + "," + second);
    EXPECT_EQ(record["process"]["context"], std::string(kPartUrl) + "?Nickname=");
    EXPECT_EQ(record["process"]["datas"], json::array());
    EXPECT_EQ(record["inputs"], json::array());
    EXPECT_EQ(RecordOfObjects(first + R"(, {"type": "Product"})")["process"]["context"], json());
}

TEST(ActionRecord, ConfigIsTheContextInTheUrlOfTheProduct) {
    const json record = RecordOf(std::string(R"({"contexts": [{"kind": "Config", "value": "As built"}],
                                                 "objects": [{"type": "Product", )") +
                                 kPart + "}]}");
    EXPECT_EQ(record["process"]["context"], std::string(kPartUrl) + "?context=As+built&Nickname=");
}

TEST(ActionRecord, ObjectWithoutNameIsCalledByItsPlaceAndHasNoValueWithoutNickname) {
    const json record =
        RecordOfObjects(R"({"type": "Product"}, {"type": "Part", "direction": "O", )" + std::string(kPart) + "}");
    EXPECT_EQ(record["outputs"], json::array({"*AUTO_ID#2"}));
    const json data = record["process"]["datas"][0];
    EXPECT_EQ(data["name"], "*AUTO_ID#2");
    EXPECT_EQ(data["value"], json());
    EXPECT_EQ(data["extid"], std::string(kPartUrl) + "?Nickname=");
}

TEST(ActionRecord, OfTwoObjectsOfOneNameTheLaterFillsTheDataField) {
    const json record =
        RecordOfObjects(std::string(R"({"type": "Part", "direction": "I", "name": "N", "nickname": "first", )") +
                        kPart + R"(}, {"type": "Model", "name": "N", "nickname": "second", )" + kPart + "}");
    EXPECT_EQ(record["inputs"], json::array({"N"}));
    ASSERT_EQ(record["process"]["datas"].size(), 1U);
    EXPECT_EQ(record["process"]["datas"][0]["value"], "second");
}

TEST(ActionRecord, EmptyTextIsNotAMissingOne) {
    const json record = RecordOfObjects(
        std::string(R"({"type": "Part", "direction": "I", "name": "", "nickname": "", )") + kPart + "}");
    EXPECT_EQ(record["inputs"], json::array({""}));
    EXPECT_EQ(record["process"]["datas"][0]["value"], "");
    EXPECT_EQ(RecordOf(R"({"abstract": "", "status": ""})")["abstract"], "");
}
