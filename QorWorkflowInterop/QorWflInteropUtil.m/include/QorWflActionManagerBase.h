#ifndef QorWflActionManagerBase_H
#define QorWflActionManagerBase_H

#include "ActivityInfo.h"
#include "QorWflActionItf.h"
#include "QorWflExport.h"
#include "QorWflObjectNameHandlerBase.h"
#include "QorWflPropertyFile.h"

#include <BexListValBexUnicodeString.h>
#include <BexTime.h>

/**
 * Turns workflow actions into activity records, in the words of a property file. The host derives its own manager.
 *
 * A host builds its manager, calls InitResources() once with a fresh property table, hands the same table to its
 * handler's Init(), then calls GetActionInfo() as often as it likes. Filled once and read afterwards, a manager may be
 * read by several threads if the host's handler may. Memory that cannot be had is std::bad_alloc.
 */
class QORWFL_EXPORT QorWflActionManagerBase {
public:
    /** The built-in vocabulary. */
    QorWflActionManagerBase();

    /** @return the derived class's own handler, initialised, never null; asked once for each object mapped. */
    virtual QorWflObjectNameHandlerBase* GetObjectNameHandler() = 0;

    /**
     * Takes the vocabulary from the property file "QorWflActionManager", looked for as QorWflPropertyFile::Read() does;
     * without one the defaults stay. The first priority in the file replaces all that was mapped before.
     * @param ioProperties receives three default object mappings, then what the file sets
     */
    void InitResources(QorWflPropertyFile& ioProperties);

    /** @return the exported word of an internal priority code, or the code itself when none is mapped. */
    BexUnicodeString GetExportedPriority(const BexUnicodeString& iInternal);
    /** @return the internal code of an exported priority word, or the word itself when none is mapped. */
    BexUnicodeString GetInternalPriority(const BexUnicodeString& iExported);
    /**
     * The marker for data that is not as it should be, between slashes.
     * @param iId 1 for missing data, 2 for ambiguous data; anything else ends the process, in every build type
     */
    BexUnicodeString GetSpecialDataName(int iId);

    /**
     * Fills a record from an action: abstract, priority, extid, owner, participant, participantType, the identifiers
     * and the context of the process, inputs, outputs and data fields. Identifiers and a context that the action does
     * not tell keep their values, and so do name, generation, status, duration, durationUnit, documentation and the
     * process name, which are the host's to set. An object without a name is called "*AUTO_ID#" and its index.
     *
     * An object that fills a data field, as each input and output does, ends the process when its UUID has fewer than
     * 50 bytes.
     *
     * @param iAction the action; null leaves the record alone
     * @param oInfo the record
     * @return 0.
     */
    int GetActionInfo(const QorWflActionItf* iAction, ActivityInfo& oInfo);

    /** @return a date and time as text, YYYY-MM-DD-HH.MM.SS. */
    static BexUnicodeString GetDateImage(const BexTime& iTime);
    /**
     * A date moved forward.
     * @param iStart the date
     * @param iDuration how many units; 0 and below leave the date as it is
     * @param iUnit "Y" years, "M" months, "D" days, "h" hours, "m" minutes, "s" seconds; another leaves the date
     * @return the date. Years and months count on the calendar: a day that the month does not have runs into the next,
     *         as BexTime has it. The last date is the end of BexTime's range.
     */
    static BexTime GetNextDate(const BexTime& iStart, int iDuration, const BexUnicodeString& iUnit);

protected:
    ~QorWflActionManagerBase();  // not virtual: a manager is not destroyed through this class

    BexUnicodeString actionType;                    ///< the action type
    BexUnicodeString startStatus;                   ///< the maturity of an action that is to start
    BexUnicodeString runStatus;                     ///< the maturity of a running action
    BexUnicodeString completeStatus;                ///< the maturity of a completed action
    BexUnicodeString abortStatus;                   ///< the maturity of an aborted action
    BexUnicodeString bypassStatus;                  ///< the maturity of a bypassed action
    BexListValBexUnicodeString internalPriorities;  ///< internal priority codes
    BexListValBexUnicodeString exportedPriorities;  ///< exported words, parallel to the codes
    BexUnicodeString specialDataNames[2];           ///< the markers for missing and for ambiguous data
};

#endif
