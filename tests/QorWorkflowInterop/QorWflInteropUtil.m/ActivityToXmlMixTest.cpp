#include "ActivityFields.h"
#include "NaiveXpdlWriter.h"
#include "RandomActivity.h"

#include <ActivityInfo.h>
#include <QorWflActivityToXml.h>
#include <QorWflXmlToActivity.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::vector<BexUnicodeString> kTexts = {
    "x", "two words", "a<b>&\"c\"'", "><", "]]>", "&lt;", "caf\xE9 \xFF", " ", "line\nfeed", "<Created>x</Created>"};

std::string Written(const ActivityInfo& iActivity) {
    BexUnicodeString xml("old");
    QorWflActivityToXml(iActivity, xml);
    return NaiveXpdlWriter::Masked(std::string(xml.ConvertToChar(), static_cast<std::size_t>(xml.GetLengthInChar())));
}

/** A field as it comes back: null attributes are empty ones, and white space in an attribute is a blank. */
void ReadBackAttribute(BexUnicodeString& ioText) {
    std::string text = ioText.ConvertToChar();
    for (char& character : text) {
        character = character == '\n' ? ' ' : character;
    }
    ioText = text.c_str();
}

/** The text of an element that is always there: a null one comes back empty, an empty one as a line feed. */
void ReadBackText(BexUnicodeString& ioText) {
    if (ioText.IsNull() != 0) {
        ioText = "";
    } else if (ioText.IsEmpty() != 0) {
        ioText = "\n";
    }
}

/** The text of an element that is missing when the text is null, so that the field keeps its value. */
void ReadBackOptionalText(BexUnicodeString& ioText, const BexUnicodeString& iOld) {
    if (ioText.IsNull() != 0) {
        ioText = iOld;
    } else {
        ReadBackText(ioText);
    }
}

/** Turns a record into what a record of old values holds after reading its document. */
void ReadBack(ActivityInfo& ioActivity) {
    ActivityInfo old;
    FillWithOldValues(old);
    const std::vector<BexUnicodeString*> elementTexts = {&ioActivity.abstract, &ioActivity.owner, &ioActivity.priority,
                                                         &ioActivity.documentation};
    for (BexUnicodeString* text : AllTextsOf(ioActivity)) {
        bool isAttribute = std::find(elementTexts.begin(), elementTexts.end(), text) == elementTexts.end();
        for (int index = 0; index < ioActivity.process.dataNumber; ++index) {
            isAttribute = isAttribute && text != &ioActivity.process.datas[index].value;
        }
        if (isAttribute) {
            ReadBackAttribute(*text);
        }
    }
    ReadBackText(ioActivity.abstract);
    if (ioActivity.priority.IsEmpty() != 0) {
        ioActivity.priority = "\n";
    }
    ReadBackOptionalText(ioActivity.owner, old.owner);
    ReadBackOptionalText(ioActivity.documentation, old.documentation);
    for (int index = 0; index < ioActivity.process.dataNumber; ++index) {
        ReadBackText(ioActivity.process.datas[index].value);
    }
    for (const auto set : {&ActivityInfo::SetInputNumber, &ActivityInfo::SetOutputNumber}) {
        const int count = set == &ActivityInfo::SetInputNumber ? ioActivity.inputNumber : ioActivity.outputNumber;
        if (count < 0) {
            (ioActivity.*set)(0);
        }
    }
    if (ioActivity.process.dataNumber < 0) {
        ioActivity.process.SetDataNumber(0);
    }
}

}  // namespace

TEST(ActivityToXmlMix, EveryMixOfNullEmptyAndFilledElementTexts) {
    for (unsigned kinds = 0; kinds < 3 * 3 * 3 * 3 * 3; ++kinds) {
        ActivityInfo activity;
        activity.process.SetDataNumber(1);
        unsigned left = kinds;
        for (BexUnicodeString* text : {&activity.abstract, &activity.owner, &activity.priority, &activity.documentation,
                                       &activity.process.datas[0].value}) {
            *text = NullEmptyOr(left % 3, "text");
            left /= 3;
        }
        ASSERT_EQ(Written(activity), NaiveXpdlWriter::DocumentOf(activity)) << kinds;
    }
}

TEST(ActivityToXmlMix, EveryMixOfCounts) {
    for (int datas = -1; datas < 3; ++datas) {
        for (int inputs = -1; inputs < 3; ++inputs) {
            for (int outputs = -1; outputs < 3; ++outputs) {
                for (unsigned kind = 0; kind < 3; ++kind) {
                    ActivityInfo activity;
                    activity.process.SetDataNumber(datas);
                    activity.SetInputNumber(inputs);
                    activity.SetOutputNumber(outputs);
                    for (BexUnicodeString* text : AllTextsOf(activity)) {
                        *text = NullEmptyOr(kind, "text");
                    }
                    ASSERT_EQ(Written(activity), NaiveXpdlWriter::DocumentOf(activity))
                        << datas << inputs << outputs << kind;
                }
            }
        }
    }
}

TEST(ActivityToXmlMix, RandomRecordsAreWrittenAsByTheNaiveWriter) {
    RandomActivity random(20041126, kTexts);
    for (int round = 0; round < 1000; ++round) {
        ActivityInfo activity;
        random.Fill(activity);
        ASSERT_EQ(Written(activity), NaiveXpdlWriter::DocumentOf(activity)) << round;
    }
}

TEST(ActivityToXmlMix, RandomRecordsComeBackByTheRulesForNullAndEmpty) {
    RandomActivity random(20041127, kTexts);
    for (int round = 0; round < 1000; ++round) {
        ActivityInfo activity;
        random.Fill(activity);
        BexUnicodeString xml;
        QorWflActivityToXml(activity, xml);
        ActivityInfo back;
        FillWithOldValues(back);
        QorWflXmlToActivity(xml, back);
        ReadBack(activity);
        ASSERT_EQ(FieldsOf(back), FieldsOf(activity)) << round;
    }
}

TEST(ActivityToXmlMix, TextThatIsAFieldOfTheRecordIsResetBeforeTheRecordIsRead) {
    ActivityInfo activity;
    FillWithOldValues(activity);
    ActivityInfo expected;
    FillWithOldValues(expected);
    expected.documentation.Reset();
    QorWflActivityToXml(activity, activity.documentation);
    EXPECT_EQ(NaiveXpdlWriter::Masked(activity.documentation.ConvertToChar()), NaiveXpdlWriter::DocumentOf(expected));
}
