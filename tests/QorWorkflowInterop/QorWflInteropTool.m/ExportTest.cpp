#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/** The lines of the record that comes back from the document of an action. */
class ThereAndBack {
public:
    explicit ThereAndBack(const std::string& iJson) {
        const ToolResult document = RunTool({"export", "-"}, {.input = iJson});
        EXPECT_EQ(document.status, 0) << document;
        EXPECT_THAT(document.err, IsEmpty());
        xml = document.out;
        const ToolResult record = RunTool({"import", "-"}, {.input = xml});
        EXPECT_EQ(record.status, 0) << record;
        EXPECT_THAT(record.err, IsEmpty());
        text = record.out;
    }

    /** What stands behind a label. */
    std::string Value(const std::string& iLabel) const {
        const std::string label = '\n' + iLabel + '=';
        const std::size_t start = ('\n' + text).find(label);
        if (start == std::string::npos) {
            return "(no line)";
        }
        const std::size_t value = start + label.size() - 1;
        return text.substr(value, text.find(";\n", value) - value);
    }
    const std::string& Xml() const { return xml; }

private:
    std::string xml;
    std::string text;
};

}  // namespace

TEST(Export, EveryMemberArrivesInItsField) {
    const ThereAndBack action(R"({
        "id": "A 1", "abstract": "An abstract", "priority": "2", "owner": "jdoe", "name": "A name", "status": "own word",
        "generation": 7, "duration": 40, "durationUnit": "h", "documentation": "A text", "processName": "A process",
        "contexts": [{"kind": "Config", "value": "C/1"}, {"kind": "WFProcess", "value": "P1"},
                     {"kind": "WFActivity", "value": "W1"}, {"kind": "Other", "value": "ignored"}],
        "objects": [{"type": "Product", "nickname": "A product", "uuid": "qor://DB/ENV.T/00000000000000010000000000000002"},
                    {"type": "Model", "direction": "I", "nickname": "A model", "name": "M1",
                     "uuid": "qor://DB/ENV.KIRVA_MODEL/00000000000000030000000000000004"},
                    {"type": "Document", "direction": "O", "nickname": "A document", "name": "D1",
                     "uuid": "qor://DB/ENV.DOC_1/00000000000000050000000000000006"}]})");
    const struct {
        const char* label;
        const char* value;
    } fields[] = {
        {"id", "\"W1\""},
        {"name", "\"A name\""},
        {"abstract", "\"An abstract\""},
        {"priority", "\"Medium\""},
        {"extid", "\"LumenUID://Legacy+QOR1/default/A+1.ACTION\""},
        {"status", "\"own word\""},
        {"duration", "40"},
        {"durationUnit", "\"h\""},
        {"owner", "\"jdoe\""},
        {"documentation", "\"A text\""},
        {"generation", "7"},
        {"process.id", "\"P1\""},
        {"process.name", "\"A process\""},
        {"process.context",
         "\"LumenUID://Legacy+QOR1/ENV/DB++++++#ENV+++++#T+++++++++++++++++#0000000000000001#0000000000000002.T"
         "?context=C%2F1&Nickname=A+product\""},
        {"process.datas.length", "2"},
        {"process.datas.1.name", "\"M1\""},
        {"process.datas.1.type", "\"VERANT_QORModel\""},
        {"process.datas.1.value", "\"A model\""},
        {"process.datas.2.name", "\"D1\""},
        {"process.datas.2.type", "\"VERANT_QORDocument\""},
        {"process.datas.2.value", "\"A document\""},
        {"inputs.length", "1"},
        {"inputs.1.name", "\"M1\""},
        {"outputs.length", "1"},
        {"outputs.1.name", "\"D1\""},
    };
    for (const auto& field : fields) {
        EXPECT_EQ(action.Value(field.label), field.value) << field.label;
    }
    EXPECT_THAT(action.Xml(), HasSubstr("Id = \"jdoe\""));
    EXPECT_THAT(action.Xml(), HasSubstr("Type = \"HUMAN\""));
}

TEST(Export, AbsentAndNullMembersLeaveTheRecordsDefaults) {
    const std::string absent = MaskCreated(RunTool({"export", "-"}, {.input = "{}"}).out);
    EXPECT_THAT(absent, HasSubstr("<Duration>0</Duration>"));
    EXPECT_THAT(absent, HasSubstr("\"generation\" Value = \"1\""));
    EXPECT_THAT(absent, Not(HasSubstr("Performer")));
    EXPECT_THAT(absent, Not(HasSubstr("Documentation")));
    EXPECT_THAT(absent, HasSubstr("<Description/>"));
    const std::string null = MaskCreated(RunTool({"export", "-"}, {.input = R"({
        "id": null, "abstract": null, "priority": null, "owner": null, "name": null, "status": null, "generation": null,
        "duration": null, "durationUnit": null, "documentation": null, "processName": null, "contexts": null,
        "objects": null})"})
                                             .out);
    EXPECT_EQ(null, absent);
}

TEST(Export, EmptyTextIsNotAnAbsentOne) {
    const std::string xml = RunTool({"export", "-"}, {.input = R"({"owner": "", "documentation": ""})"}).out;
    EXPECT_THAT(xml, HasSubstr("Performer"));
    EXPECT_THAT(xml, HasSubstr("Documentation"));
    const std::string object = R"({"objects": [{"type": "Part", "direction": "I", "name": )";
    const std::string rest = R"(, "uuid": "qor://D/E.T/00000000000000000000000000000000"}]})";
    EXPECT_EQ(ThereAndBack(object + "\"\"" + rest).Value("inputs.1.name"), "\"\"");
    EXPECT_EQ(ThereAndBack(object + "null" + rest).Value("inputs.1.name"), "\"*AUTO_ID#1\"");
}

TEST(Export, StatusWordsBecomeMaturitiesAndOthersStay) {
    const struct {
        const char* status;
        const char* maturity;
    } cases[] = {
        {"start", "DSGproposed"},        {"run", "DSGin work"}, {"complete", "DSGcompleted"}, {"abort", "rejected"},
        {"bypass", "obsoleted"},         {"Run", "Run"},        {"running", "running"},       {"", ""},
        {"DSGcompleted", "DSGcompleted"}};
    for (const auto& test : cases) {
        EXPECT_EQ(ThereAndBack(std::string(R"({"status": ")") + test.status + "\"}").Value("status"),
                  std::string("\"") + test.maturity + "\"");
    }
}

TEST(Export, ObjectsWithoutDirectionGiveNoDataField) {
    const ThereAndBack action(
        R"({"objects": [{"type": "Part", "name": "P", "uuid": "qor://D/E.T/00000000000000000000000000000000"},
                        {"type": "Part", "direction": null, "uuid": "qor://D/E.T/00000000000000000000000000000001"}]})");
    EXPECT_EQ(action.Value("process.datas.length"), "0");
    EXPECT_EQ(action.Value("inputs.length"), "0");
    EXPECT_EQ(action.Value("outputs.length"), "0");
}

TEST(Export, ProductWithoutUuidLeavesTheContextUnset) {
    EXPECT_EQ(ThereAndBack(R"({"objects": [{"type": "Product", "nickname": "X"}]})").Value("process.context"), "\"\"");
}

TEST(Export, TenThousandObjectsComeThrough) {
    std::string json = "{\"objects\": [";
    for (int i = 0; i < 10000; ++i) {
        json += (i == 0 ? "" : ",") + std::string(R"({"type":"Part","direction":"I","uuid":"qor://D/E.T/)") +
                "00000000000000000000000000000000\"}";
    }
    const ThereAndBack action(json + "]}");
    EXPECT_EQ(action.Value("process.datas.length"), "10000");
    EXPECT_EQ(action.Value("inputs.10000.name"), "\"*AUTO_ID#10000\"");
}
