#ifndef RandomActivity_H
#define RandomActivity_H

#include "ActivityFields.h"

#include <ActivityInfo.h>

#include <random>
#include <vector>

/** Every text of a record, those of its lists included. */
inline std::vector<BexUnicodeString*> AllTextsOf(ActivityInfo& ioActivity) {
    ProcessInfo& process = ioActivity.process;
    std::vector<BexUnicodeString*> texts;
    for (const auto& field : TextsOf(ioActivity)) {
        texts.push_back(field.second);
    }
    for (int index = 0; index < process.dataNumber; ++index) {
        DataInfo& data = process.datas[index];
        texts.insert(texts.end(), {&data.name, &data.type, &data.extid, &data.value});
    }
    for (int index = 0; index < ioActivity.inputNumber; ++index) {
        texts.push_back(&ioActivity.inputs[index]);
    }
    for (int index = 0; index < ioActivity.outputNumber; ++index) {
        texts.push_back(&ioActivity.outputs[index]);
    }
    return texts;
}

/** The null text for 0, the empty one for 1, and otherwise this text. */
inline BexUnicodeString NullEmptyOr(unsigned long iChoice, const BexUnicodeString& iText) {
    switch (iChoice) {
        case 0:
            return BexUnicodeString();
        case 1:
            return BexUnicodeString("");
        default:
            return iText;
    }
}

/** Fills a record at random: a third of its texts null, a third empty, lists of -1 to 3 elements, any numbers. */
class RandomActivity {
public:
    /** @param iTexts the texts to choose from where a text is neither null nor empty */
    RandomActivity(unsigned iSeed, std::vector<BexUnicodeString> iTexts) : random(iSeed), texts(std::move(iTexts)) {}

    void Fill(ActivityInfo& oActivity) {
        oActivity.generation = static_cast<int>(random());
        oActivity.duration = static_cast<int>(random());
        oActivity.process.SetDataNumber(Count());
        oActivity.SetInputNumber(Count());
        oActivity.SetOutputNumber(Count());
        for (BexUnicodeString* text : AllTextsOf(oActivity)) {
            *text = Text();
        }
    }

private:
    int Count() { return static_cast<int>(random() % 5) - 1; }

    BexUnicodeString Text() {
        const auto choice = random() % 3;
        return NullEmptyOr(choice, choice == 2 ? texts[random() % texts.size()] : BexUnicodeString());
    }

    std::mt19937 random;
    std::vector<BexUnicodeString> texts;
};

#endif
