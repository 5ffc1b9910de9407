#ifndef ConfigCodes_H
#define ConfigCodes_H

#include "Severity.h"

/** Everything that can be found in a property file. The numbers that users know them by are in ConfigCodeInfo. */
enum class ConfigCode {
    NoFile,
    NotOpened,
    ByteOrderMarkInKey,
    ByteOrderMark,
    CarriageReturn,
    AccidentalComment,
    SwallowedSetting,
    JoinedSetting,
    OpenContinuation,
    NoContinuation,
    NoSetting,
    UnknownKey,
    ForeignKey,
    EmptyKey,
    TabInKey,
    SetTwice,
    EmptyValue,
    TabAroundValue,
    UnpairedQuote,
    ControlCharacter,
    Utf8,
    PrioritiesReplaced,
    PriorityWordTwice,
    PriorityWithoutCode,
    UnusableMapping,
    NeverAsked,
    LiteralStar,
    NoAttribute,
    ShadowedMapping,
    LostAttribute,
};

/** What a code means to users. */
struct ConfigCodeInfo {
    ConfigCode code;
    const char* id;  ///< "QC101", which never changes its meaning
    Severity severity;
    const char* title;  ///< a few words
};

const ConfigCodeInfo& InfoOf(ConfigCode iCode);

#endif
