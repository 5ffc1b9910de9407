#ifndef DataInfo_H
#define DataInfo_H

#include "QorWflExport.h"

#include <BexUnicodeString.h>

/** One data field of a process. A plain record; it belongs to one thread at a time. */
class QORWFL_EXPORT DataInfo {
public:
    /** Four null texts. */
    DataInfo() {}
    ~DataInfo() {}
    DataInfo(const DataInfo&) = delete;  // records are filled in place, never copied
    DataInfo& operator=(const DataInfo&) = delete;

    BexUnicodeString name;   ///< the identifier, to which inputs and outputs of an activity refer
    BexUnicodeString type;   ///< the declared type: the external type of the object
    BexUnicodeString extid;  ///< the object behind the field: an instance URL
    BexUnicodeString value;  ///< the value
};

#endif
