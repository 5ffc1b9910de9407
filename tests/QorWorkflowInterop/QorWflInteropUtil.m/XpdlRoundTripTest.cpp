#include "ActivityFields.h"
#include "RandomActivity.h"

#include <ActivityInfo.h>
#include <QorWflActivityToXml.h>
#include <QorWflXmlToActivity.h>

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

BexUnicodeString Written(const ActivityInfo& iActivity) {
    BexUnicodeString xml;
    QorWflActivityToXml(iActivity, xml);
    return xml;
}

/** The document's text but for the time it was made at. */
std::string Masked(const BexUnicodeString& iXml) {
    static const std::regex kCreated("<Created>[^<]*</Created>");
    const std::string text(iXml.ConvertToChar(), static_cast<std::size_t>(iXml.GetLengthInChar()));
    return std::regex_replace(text, kCreated, "<Created/>");
}

/** The fields after a record's document has been read into a fresh record. */
ActivityFields FieldsBack(const ActivityInfo& iActivity) {
    ActivityInfo back;
    QorWflXmlToActivity(Written(iActivity), back);
    return FieldsOf(back);
}

/** Every text field of a record whose lists have two elements each, in groups by how its text is written. */
struct TextFields {
    std::vector<BexUnicodeString*> attributes;
    std::vector<BexUnicodeString*> elementTexts;
};

TextFields TextFieldsOf(ActivityInfo& ioActivity) {
    ProcessInfo& process = ioActivity.process;
    DataInfo* datas = process.datas;
    return {{&ioActivity.id,
             &ioActivity.name,
             &ioActivity.extid,
             &ioActivity.status,
             &ioActivity.durationUnit,
             &ioActivity.participant,
             &ioActivity.participantType,
             &process.id,
             &process.name,
             &process.context,
             &ioActivity.inputs[0],
             &ioActivity.inputs[1],
             &ioActivity.outputs[0],
             &ioActivity.outputs[1],
             &datas[0].name,
             &datas[0].type,
             &datas[0].extid,
             &datas[1].name,
             &datas[1].type,
             &datas[1].extid},
            {&ioActivity.abstract, &ioActivity.owner, &ioActivity.priority, &ioActivity.documentation, &datas[0].value,
             &datas[1].value}};
}

struct TwoOfEachList : ActivityInfo {
    TwoOfEachList() {
        process.SetDataNumber(2);
        SetInputNumber(2);
        SetOutputNumber(2);
    }
};

void FillAll(ActivityInfo& ioActivity, const std::function<BexUnicodeString()>& iText) {
    const TextFields fields = TextFieldsOf(ioActivity);
    for (BexUnicodeString* field : fields.attributes) {
        *field = iText();
    }
    for (BexUnicodeString* field : fields.elementTexts) {
        *field = iText();
    }
}

}  // namespace

TEST(XpdlRoundTrip, RecordOfFullTextsComesBackTheSame) {
    for (const char* text :
         {"x", "two words", "<tag a=\"b\">&amp;</tag>", "><", "]]>", "it's", " leading and trailing ", "&#65;",
          "caf\xE9 \xFF\x80\xA0", "%41?a=b&c=d", "-->", "<![CDATA[", "<?t d?>", "\x7F"}) {
        TwoOfEachList activity;
        int number = 0;
        FillAll(activity, [text, &number] { return BexUnicodeString((text + std::to_string(++number)).c_str()); });
        activity.generation = 7;
        activity.duration = -9;
        EXPECT_EQ(FieldsBack(activity), FieldsOf(activity)) << text;
    }
}

TEST(XpdlRoundTrip, EveryByteThatXmlAllowsComesBack) {
    for (int code = 0x20; code < 256; ++code) {
        TwoOfEachList activity;
        FillAll(activity, [code] {
            const char text[] = {'a', static_cast<char>(code), 'b', '\0'};
            return BexUnicodeString(text);
        });
        EXPECT_EQ(FieldsBack(activity), FieldsOf(activity)) << code;
    }
}

TEST(XpdlRoundTrip, LineFeedsAndTabsComeBackInElementTexts) {
    TwoOfEachList activity;
    FillAll(activity, [] { return BexUnicodeString("x"); });
    for (BexUnicodeString* field : TextFieldsOf(activity).elementTexts) {
        *field = "\none\n\ttwo\n";
    }
    EXPECT_EQ(FieldsBack(activity), FieldsOf(activity));
}

TEST(XpdlRoundTrip, RandomRecordsComeBackTheSame) {
    std::mt19937 random(20040229);
    for (int round = 0; round < 300; ++round) {
        TwoOfEachList activity;
        FillAll(activity, [&random] {
            std::string text;
            for (unsigned count = 1 + static_cast<unsigned>(random() % 30); count > 0; --count) {
                static const std::string kLikely = "<>&\"'/!?-[];#= ";
                text += random() % 2 == 0 ? kLikely[random() % kLikely.size()]
                                          : static_cast<char>(0x20 + static_cast<int>(random() % 224));
            }
            return BexUnicodeString(text.c_str());
        });
        activity.generation = static_cast<int>(random());
        activity.duration = static_cast<int>(random());
        ASSERT_EQ(FieldsBack(activity), FieldsOf(activity)) << "round " << round;
    }
}

TEST(XpdlRoundTrip, ListsOfEveryLengthComeBack) {
    for (const int count : {0, 1, 2, 3, 100}) {
        ActivityInfo activity;
        FillWithOldValues(activity);
        activity.process.SetDataNumber(count);
        activity.SetInputNumber(count);
        activity.SetOutputNumber(count);
        for (int index = 0; index < count; ++index) {
            const BexUnicodeString text(std::to_string(index).c_str());
            activity.process.datas[index].name = "name" + text;
            activity.process.datas[index].type = "type" + text;
            activity.process.datas[index].extid = "extid" + text;
            activity.process.datas[index].value = "value" + text;
            activity.inputs[index] = "in" + text;
            activity.outputs[index] = "out" + text;
        }
        EXPECT_EQ(FieldsBack(activity), FieldsOf(activity)) << count;
    }
}

TEST(XpdlRoundTrip, LongTextsComeBack) {
    TwoOfEachList activity;
    FillAll(activity, [] {
        std::string text;
        for (int count = 0; count < 20000; ++count) {
            text += "a<b>&\"c\" ";
        }
        return BexUnicodeString(text.c_str());
    });
    EXPECT_TRUE(FieldsBack(activity) == FieldsOf(activity));
}

TEST(XpdlRoundTrip, NullTextsComeBackEmptyButForOwnerAndDocumentation) {
    ActivityInfo back;
    FillWithOldValues(back);
    QorWflXmlToActivity(Written(TwoOfEachList()), back);
    const std::string data = R"({"" "" "" ""})";
    const ActivityFields expected = {
        {"id", "\"\""},
        {"name", "\"\""},
        {"generation", "1"},
        {"abstract", "\"\""},
        {"priority", "\"\n\""},
        {"extid", "\"\""},
        {"status", "\"\""},
        {"duration", "0"},
        {"durationUnit", "\"\""},
        {"owner", "\"old owner\""},
        {"participant", "\"\""},
        {"participantType", "\"\""},
        {"documentation", "\"old documentation\""},
        {"process.id", "\"\""},
        {"process.name", "\"\""},
        {"process.context", "\"\""},
        {"process.datas", "[" + data + data + "]"},
        {"process.dataNumber", "2"},
        {"inputs", "[\"\"\"\"]"},
        {"inputNumber", "2"},
        {"outputs", "[\"\"\"\"]"},
        {"outputNumber", "2"},
    };
    EXPECT_EQ(FieldsOf(back), expected);
}

TEST(XpdlRoundTrip, EmptyTextsOfElementsComeBackAsALineFeed) {
    TwoOfEachList activity;
    FillAll(activity, [] { return BexUnicodeString(""); });
    const std::string data = "{\"\" \"\" \"\" \"\n\"}";
    EXPECT_EQ(FieldsBack(activity), With(FieldsOf(activity), {{"abstract", "\"\n\""},
                                                              {"owner", "\"\n\""},
                                                              {"priority", "\"\n\""},
                                                              {"documentation", "\"\n\""},
                                                              {"process.datas", "[" + data + data + "]"}}));
}

TEST(XpdlRoundTrip, OwnerThatIsNullLeavesTheOwnerOfTheTarget) {
    ActivityInfo activity;
    activity.participant = "jdoe";
    activity.participantType = "ROLE";
    ActivityInfo back;
    back.owner = "kept";
    back.documentation = "kept too";
    QorWflXmlToActivity(Written(activity), back);
    EXPECT_EQ(Shown(back.owner), "\"kept\"");
    EXPECT_EQ(Shown(back.documentation), "\"kept too\"");
    EXPECT_EQ(Shown(back.participant), "\"jdoe\"");
    EXPECT_EQ(Shown(back.participantType), "\"ROLE\"");
}

TEST(XpdlRoundTrip, DocumentOfWhatWasReadIsTheDocument) {
    std::mt19937 random(7);
    for (int round = 0; round < 100; ++round) {
        TwoOfEachList activity;
        FillAll(activity, [&random] {
            static const char* const kTexts[] = {"a", "<&>", " ", "caf\xE9", "\"'", "><"};
            return BexUnicodeString(kTexts[random() % 6]);
        });
        const BexUnicodeString once = Written(activity);
        ActivityInfo back;
        QorWflXmlToActivity(once, back);
        ASSERT_EQ(Masked(Written(back)), Masked(once)) << "round " << round;
    }
}

TEST(XpdlRoundTrip, DocumentSettlesAfterOneReadingAlsoWithNullAndEmptyTexts) {
    std::mt19937 random(8);
    for (int round = 0; round < 100; ++round) {
        TwoOfEachList activity;
        FillAll(activity, [&random] { return NullEmptyOr(random() % 3, "text"); });
        ActivityInfo first;
        QorWflXmlToActivity(Written(activity), first);
        const BexUnicodeString settled = Written(first);
        ActivityInfo second;
        QorWflXmlToActivity(settled, second);
        // An element that was read as empty is written with a line feed, which then stays.
        ActivityInfo third;
        QorWflXmlToActivity(Written(second), third);
        ASSERT_EQ(Masked(Written(second)), Masked(settled)) << "round " << round;
        ASSERT_EQ(FieldsOf(third), FieldsOf(second)) << "round " << round;
    }
}

TEST(XpdlRoundTrip, CharactersAboveAByteComeBackAsQuestionMarks) {
    ActivityInfo activity;
    activity.abstract = BexUnicodeString(u"a\u20acb\U0001F600", 5);
    activity.id = BexUnicodeString(u"\u0141", 1);
    ActivityInfo back;
    QorWflXmlToActivity(Written(activity), back);
    EXPECT_EQ(Shown(back.abstract), "\"a?b\?\?\"");
    EXPECT_EQ(Shown(back.id), "\"?\"");
}
