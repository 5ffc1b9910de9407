#include "../QorWflInteropUtil.m/RecordTesting.h"
#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <string>
#include <vector>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

ToolResult Convert(const std::string& iFrom, const std::string& iTo, const std::string& iText) {
    return RunTool({"convert", "--from", iFrom, "--to", iTo, "-"}, {.input = iText});
}

/** Writes the JSON of a record as the command lays it out, so that the two can be compared byte for byte. */
class RecordWriter {
public:
    explicit RecordWriter(unsigned iSeed) : random(iSeed) {}

    std::string Record() {
        text = "{\n  \"record\": {\n";
        Member("    ", "id", Text());
        Member("    ", "name", Text());
        Member("    ", "generation", Number<int>());
        for (const char* name : {"abstract", "priority", "extid", "status"}) {
            Member("    ", name, Text());
        }
        Member("    ", "duration", Number<long>());
        for (const char* name : {"durationUnit", "owner", "participant", "participantType", "documentation"}) {
            Member("    ", name, Text());
        }
        text += "    \"process\": {\n";
        for (const char* name : {"id", "name", "context"}) {
            Member("      ", name, Text());
        }
        const int datas = Datas();
        Last("      ", "dataNumber", std::to_string(datas));
        text += "    },\n";
        const int inputs = Names("inputs");
        const int outputs = Names("outputs");
        Member("    ", "inputNumber", std::to_string(inputs));
        Last("    ", "outputNumber", std::to_string(outputs));
        return text + "  }\n}\n";
    }

private:
    int Upto(int iMost) { return std::uniform_int_distribution<int>(0, iMost)(random); }

    /** Null, empty, or pieces of which each is something special to one of the forms. */
    std::string Text() {
        const int kind = Upto(5);
        if (kind == 0) {
            return "null";
        }
        static const std::vector<std::string> pieces = {"a",        "Z9 ",      "\\\"",         "\\\\",
                                                        "/",        "\\n",      "\\r",          "\\t",
                                                        "\\b",      "\\f",      "\\u0000",      "\\u0001",
                                                        "\\u001f",  "\x7F",     "<b>&",         "';",
                                                        "\xC2\x80", "\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                                        "null"};
        std::string piecesTaken;
        for (int count = kind == 1 ? 0 : 1 + Upto(30); count > 0; --count) {
            piecesTaken += pieces[static_cast<std::size_t>(Upto(static_cast<int>(pieces.size()) - 1))];
        }
        return '"' + piecesTaken + '"';
    }

    template <typename Value>
    std::string Number() {
        const Value values[] = {0,
                                1,
                                -1,
                                std::numeric_limits<Value>::min(),
                                std::numeric_limits<Value>::max(),
                                static_cast<Value>(Upto(1000000))};
        return std::to_string(values[Upto(5)]);
    }

    void Member(const std::string& iIndent, const std::string& iName, const std::string& iValue) {
        text += iIndent + '"' + iName + "\": " + iValue + ",\n";
    }
    void Last(const std::string& iIndent, const std::string& iName, const std::string& iValue) {
        text += iIndent + '"' + iName + "\": " + iValue + '\n';
    }

    /** The number of elements of a list that has none can be negative. */
    int Count() { return Upto(9) == 0 ? -Upto(5) : Upto(4); }

    int Names(const std::string& iName) {
        const int count = Count();
        std::string names;
        for (int i = 0; i < count; ++i) {
            names += (i == 0 ? "\n      " : ",\n      ") + Text();
        }
        Member("    ", iName, count > 0 ? "[" + names + "\n    ]" : "[]");
        return count;
    }

    int Datas() {
        const int count = Count();
        text += count > 0 ? "      \"datas\": [\n" : "      \"datas\": [],\n";
        for (int i = 0; i < count; ++i) {
            text += "        {\n";
            for (const char* name : {"name", "type", "extid"}) {
                Member("          ", name, Text());
            }
            Last("          ", "value", Text());
            text += i + 1 < count ? "        },\n" : "        }\n      ],\n";
        }
        return count;
    }

    std::mt19937 random;
    std::string text;
};

const std::string kSampleJson = R"({
  "record": {
    "id": "A1",
    "name": "Design review",
    "generation": 34,
    "abstract": "Check the wing",
    "priority": "high",
    "extid": "LumenUID://Legacy+QOR1/default/A1.ACTION",
    "status": "RUN",
    "duration": 12,
    "durationUnit": "D",
    "owner": "smith",
    "participant": null,
    "participantType": null,
    "documentation": "see drawing",
    "process": {
      "id": "P7",
      "name": "Release",
      "context": "ctx?context=x",
      "datas": [
        {
          "name": "D1",
          "type": "Part",
          "extid": "url1",
          "value": "v1"
        },
        {
          "name": "D2",
          "type": "Model",
          "extid": "url2",
          "value": "v2"
        }
      ],
      "dataNumber": 2
    },
    "inputs": [
      "D1",
      "D2"
    ],
    "outputs": [
      "D3",
      "D4"
    ],
    "inputNumber": 2,
    "outputNumber": 2
  }
}
)";

}  // namespace

TEST(JsonRecord, EveryFieldComesBackWhateverItHolds) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        const std::string record = RecordWriter(seed).Record();
        const ToolResult result = Convert("json", "json", record);
        ASSERT_EQ(result.status, 0) << "seed " << seed << '\n' << result;
        ASSERT_EQ(result.out, record) << "seed " << seed;
        ASSERT_THAT(result.err, IsEmpty());
    }
}

TEST(JsonRecord, RecordOfTheLibraryHasItsFieldsUnderTheirNames) {
    const ToolResult json = Convert("text", "json", RecordTesting::kSampleText);
    EXPECT_EQ(json.status, 0) << json;
    EXPECT_EQ(json.out, kSampleJson);
    EXPECT_EQ(Convert("json", "text", kSampleJson).out, RecordTesting::kSampleText + "\n");
}

TEST(JsonRecord, MissingMembersLeaveTheFieldsOfAFreshRecord) {
    const std::string fresh = Convert("json", "json", R"({"record": {}})").out;
    EXPECT_THAT(fresh, HasSubstr("\"id\": null"));
    EXPECT_THAT(fresh, HasSubstr("\"generation\": 1,"));
    EXPECT_THAT(fresh, HasSubstr("\"duration\": 0,"));
    EXPECT_THAT(fresh, HasSubstr("\"datas\": []"));
    EXPECT_THAT(fresh, HasSubstr("\"inputNumber\": 0"));
    EXPECT_EQ(Convert("json", "json", R"({"record": {"process": null, "inputs": null, "outputNumber": null}})").out,
              fresh);
    EXPECT_EQ(Convert("json", "json", R"({"record": {}, "owner": null, "objects": null})").out, fresh);
}

TEST(JsonRecord, DocumentIsTheOneThatTheLibraryWritesOfTheFields) {
    const ToolResult fromRecord = RunTool({"export", "-", "--created", "now"}, {.input = kSampleJson});
    EXPECT_EQ(fromRecord.status, 0) << fromRecord;
    const ToolResult back = RunTool({"import", "-"}, {.input = fromRecord.out});
    EXPECT_EQ(back.out, RecordTesting::kSampleText + "\n");
}

TEST(JsonRecord, NullRecordMakesTheTextAnAction) {
    EXPECT_THAT(RunTool({"export", "-", "--format", "json"}, {.input = R"({"record": null, "owner": "o"})"}).out,
                HasSubstr("\"participantType\": \"HUMAN\""));
}

TEST(JsonRecord, NegativeCountsGoThroughTheTextFormToo) {
    std::string text = RecordTesting::kSampleText;
    text.erase(text.find("outputs.length"));
    text += "outputs.length=-3;\n";
    const ToolResult json = Convert("text", "json", text);
    EXPECT_THAT(json.out, HasSubstr("\"outputs\": [],"));
    EXPECT_THAT(json.out, HasSubstr("\"outputNumber\": -3"));
    EXPECT_EQ(Convert("json", "text", json.out).out, text);
}
