#ifndef FuzzRecord_H
#define FuzzRecord_H

#include "ActivityFields.h"
#include "FuzzBytes.h"

#include <ActivityInfo.h>

#include <string>

/** Fills a record, each field with what the bytes make of it, up to 7 of each list. */
void FillRecord(FuzzBytes& ioBytes, ActivityInfo& oActivity);

/** The fields as lines, which print and compare. */
std::string Printed(const ActivityFields& iFields);

/** Calls @p iVisit with every text of a record, constant or not. */
template <typename Activity, typename Visit>
void ForEachText(Activity& ioActivity, Visit iVisit) {
    auto& process = ioActivity.process;
    for (auto* text :
         {&ioActivity.id, &ioActivity.name, &ioActivity.abstract, &ioActivity.priority, &ioActivity.extid,
          &ioActivity.status, &ioActivity.durationUnit, &ioActivity.owner, &ioActivity.participant,
          &ioActivity.participantType, &ioActivity.documentation, &process.id, &process.name, &process.context}) {
        iVisit(*text);
    }
    for (int i = 0; i < process.dataNumber; ++i) {
        auto& data = process.datas[i];
        for (auto* text : {&data.name, &data.type, &data.extid, &data.value}) {
            iVisit(*text);
        }
    }
    for (int i = 0; i < ioActivity.inputNumber; ++i) {
        iVisit(ioActivity.inputs[i]);
    }
    for (int i = 0; i < ioActivity.outputNumber; ++i) {
        iVisit(ioActivity.outputs[i]);
    }
}

#endif
