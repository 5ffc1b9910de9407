#include "FuzzBytes.h"
#include "FuzzRecord.h"
#include "FuzzTarget.h"
#include "WholeWay.h"

#include <CapturedStream.h>
#include <iostream>

/** A record of any texts and numbers goes out as a document and comes back. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    const CapturedStream errors(std::cerr);
    FuzzBytes bytes(iData, iSize);
    ActivityInfo activity;
    FillRecord(bytes, activity);
    CheckWholeWay(activity);
    return 0;
}
