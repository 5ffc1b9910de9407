#ifndef ActivityInfo_H
#define ActivityInfo_H

#include "ProcessInfo.h"

/**
 * One workflow activity: what the PDM side and the workflow side tell each other about an action. A plain record that
 * owns its arrays; it belongs to one thread at a time.
 */
class QORWFL_EXPORT ActivityInfo {
public:
    /** Null texts, generation 1, duration 0, no data fields, inputs or outputs. */
    ActivityInfo();
    /** Destroys the arrays. */
    ~ActivityInfo();
    ActivityInfo(const ActivityInfo&) = delete;  // a copy would share the arrays
    ActivityInfo& operator=(const ActivityInfo&) = delete;

    /**
     * Replaces the inputs by @p n null texts, whatever there was before.
     *
     * For 0 the array is null. A negative count is kept in inputNumber, with a null array.
     * Throws std::bad_alloc when there is no memory for @p n of them, the record being as after 0.
     */
    void SetInputNumber(int n);
    /** The same for the outputs. */
    void SetOutputNumber(int n);

    BexUnicodeString id;                  ///< the activity identifier
    BexUnicodeString name;                ///< the activity name
    int generation = 1;                   ///< the generation number
    BexUnicodeString abstract;            ///< a short description
    BexUnicodeString priority;            ///< the priority in the words of the workflow side
    BexUnicodeString extid;               ///< the PDM action: an action URL
    BexUnicodeString status;              ///< the status of the action
    long duration = 0;                    ///< the expected duration, in durationUnit
    BexUnicodeString durationUnit;        ///< the unit of the duration
    BexUnicodeString owner;               ///< the performer
    BexUnicodeString participant;         ///< the workflow participant, as a rule the owner
    BexUnicodeString participantType;     ///< the kind of participant, as a rule "HUMAN"
    BexUnicodeString documentation;       ///< free text
    ProcessInfo process;                  ///< the process of the activity
    BexUnicodeString* inputs = nullptr;   ///< names of data fields taken in; owned, made by SetInputNumber() only
    BexUnicodeString* outputs = nullptr;  ///< names of data fields produced; owned, made by SetOutputNumber() only
    int inputNumber = 0;                  ///< the number of inputs
    int outputNumber = 0;                 ///< the number of outputs
};

#endif
