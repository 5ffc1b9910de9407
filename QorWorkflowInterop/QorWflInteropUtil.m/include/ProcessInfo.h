#ifndef ProcessInfo_H
#define ProcessInfo_H

#include "DataInfo.h"

/** The workflow process of an activity. A plain record that owns its array; it belongs to one thread at a time. */
class QORWFL_EXPORT ProcessInfo {
public:
    /** Null texts and no data fields. */
    ProcessInfo();
    /** Destroys the data fields. */
    ~ProcessInfo();
    ProcessInfo(const ProcessInfo&) = delete;  // a copy would share the array
    ProcessInfo& operator=(const ProcessInfo&) = delete;

    /**
     * Replaces the data fields by @p n fresh ones, whatever there was before.
     *
     * For 0 the array is null. A negative count is kept in dataNumber, with a null array.
     * Throws std::bad_alloc when there is no memory for @p n of them, the record being as after 0.
     */
    void SetDataNumber(int n);

    BexUnicodeString id;        ///< the process identifier
    BexUnicodeString name;      ///< the process name
    BexUnicodeString context;   ///< the context URL
    DataInfo* datas = nullptr;  ///< the data fields, element 0 first; owned, made by SetDataNumber() only
    int dataNumber = 0;         ///< the number of data fields
};

#endif
