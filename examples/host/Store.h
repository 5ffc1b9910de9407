#ifndef Store_H
#define Store_H

#include "Database.h"

#include <BexTime.h>
#include <BexUnicodeString.h>

#include <string>
#include <vector>

/** A PDM object as an action refers to it. */
struct Object {
    std::string uuid;  ///< its block of 50 bytes
    BexUnicodeString type;
    BexUnicodeString direction;  ///< I, O or null
    BexUnicodeString nickname;
};

struct Context {
    BexUnicodeString kind;
    BexUnicodeString value;
};

/** One workflow action with all that belongs to it: a row of `actions` and its rows of the other tables. */
struct Action {
    BexUnicodeString id, name, abstract, priority, status, owner, documentation, processName;
    int generation = 1;
    BexTime plannedStart;
    int duration = 0;
    BexUnicodeString unit;
    std::vector<Context> contexts;
    std::vector<Object> objects;
};

/** What the workflow tool tells about an action, in the words of the store. */
struct Reply {
    struct Nickname {
        std::string uuid;
        BexUnicodeString value;
    };
    BexUnicodeString actionId, priority, status, owner, unit, due;
    long duration = 0;
    std::vector<Nickname> nicknames;
};

/** The tables of store.sql. Every failure is a DatabaseError. */
class Store {
public:
    explicit Store(const std::string& iFile) : database(iFile) {}

    /** Makes a new store with a script. */
    static void Create(const std::string& iFile, const std::string& iScript);

    /** @return the identifiers of the actions that are to start or run. */
    std::vector<BexUnicodeString> OpenActions() const;
    /** @return an action; one that is not there is an error. */
    Action Load(const BexUnicodeString& iId) const;
    /** @return an attribute of an object; null when it has none. */
    BexUnicodeString Attribute(const std::string& iUuid, const BexUnicodeString& iName) const;

    void MarkSent(const BexUnicodeString& iId, const BexUnicodeString& iDue);
    /** Takes over a reply as a whole or, when it names an object that is not there, not at all. */
    void Apply(const Reply& iReply);

private:
    mutable Database database;
};

/** A date in the form of GetDateImage(), in which the store has them. */
BexTime TimeOf(const BexUnicodeString& iImage);

#endif
