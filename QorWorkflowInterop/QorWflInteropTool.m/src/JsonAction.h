#ifndef JsonAction_H
#define JsonAction_H

#include "JsonPlace.h"

#include <BexUnicodeString.h>

#include <optional>
#include <string>
#include <vector>

/** A workflow action as a JSON text tells it. A text that it does not tell is null. */
struct JsonAction {
    /** A context entry. */
    struct Context {
        BexUnicodeString kind;
        BexUnicodeString value;
    };
    /** An attached object. */
    struct Object {
        std::string uuid;  ///< the UUID block, empty for a product without one
        BexUnicodeString type;
        BexUnicodeString direction;
        BexUnicodeString nickname;
        BexUnicodeString name;
    };

    BexUnicodeString id;
    BexUnicodeString abstract;
    BexUnicodeString priority;
    BexUnicodeString owner;
    BexUnicodeString name;
    BexUnicodeString status;  ///< "start", "run", "complete", "abort", "bypass" or a text of the host's own
    std::optional<int> generation;
    std::optional<long> duration;
    BexUnicodeString durationUnit;
    BexUnicodeString documentation;
    BexUnicodeString processName;
    std::vector<Context> contexts;
    std::vector<Object> objects;
};

/**
 * Reads an action from a JSON document.
 * @throw Failure with file and place when the document is no action.
 */
JsonAction ReadJsonAction(const JsonPlace& iDocument);

/**
 * A JSON document holds an action or a record. Refuses one that holds members of an action beside a record, or any that
 * nobody knows.
 * @throw Failure with file and place of the first of them.
 */
void RequireNoAction(const JsonPlace& iDocument);

#endif
