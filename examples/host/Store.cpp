#include "Store.h"

#include <QorWflActionManagerBase.h>
#include <QorWflUuidLayout.h>

namespace {

using QorWflUuidLayout::Field;

/** Puts a text or identifier at its place in a block that is full of blanks. */
void Put(std::string& ioUuid, Field iField, std::string iValue) {
    iValue.resize(static_cast<std::size_t>(iField.width), ' ');
    ioUuid.replace(static_cast<std::size_t>(iField.offset), iValue.size(), iValue);
}

std::string Get(const std::string& iUuid, Field iField) {
    return iUuid.substr(static_cast<std::size_t>(iField.offset), static_cast<std::size_t>(iField.width));
}

BexUnicodeString TextOf(const std::string& iUuid, Field iField) {
    return BexUnicodeString::FromNarrow(Get(iUuid, iField)).Strip(2, ' ');
}

/** The columns db_name, environment, pdm_table, coid and compid, from a first one on, as a block of 50 bytes. */
std::string UuidAt(const Statement& iRow, int iColumn) {
    std::string uuid(QorWflUuidLayout::kBlockSize, ' ');
    Put(uuid, QorWflUuidLayout::kDbName, iRow.Text(iColumn).ConvertToChar());
    Put(uuid, QorWflUuidLayout::kKienv, iRow.Text(iColumn + 1).ConvertToChar());
    Put(uuid, QorWflUuidLayout::kKitab, iRow.Text(iColumn + 2).ConvertToChar());
    Put(uuid, QorWflUuidLayout::kXCoid, iRow.Bytes(iColumn + 3));
    Put(uuid, QorWflUuidLayout::kXCompid, iRow.Bytes(iColumn + 4));
    return uuid;
}

/** Binds the same five values, the other way round. */
void BindUuid(Statement& ioStatement, int iPos, const std::string& iUuid) {
    ioStatement.Bind(iPos, TextOf(iUuid, QorWflUuidLayout::kDbName));
    ioStatement.Bind(iPos + 1, TextOf(iUuid, QorWflUuidLayout::kKienv));
    ioStatement.Bind(iPos + 2, TextOf(iUuid, QorWflUuidLayout::kKitab));
    ioStatement.BindBytes(iPos + 3, Get(iUuid, QorWflUuidLayout::kXCoid));
    ioStatement.BindBytes(iPos + 4, Get(iUuid, QorWflUuidLayout::kXCompid));
}

BexUnicodeString Now() {
    return QorWflActionManagerBase::GetDateImage(BexTime());
}

}  // namespace

BexTime TimeOf(const BexUnicodeString& iImage) {
    const auto number = [&iImage](int iPos, int iLength) {
        int result = 0;
        if (iImage.SubString(iPos, iLength).ConvertToNum(&result, "%d") != 0) {
            throw DatabaseError(std::string("no date: ") + iImage.ConvertToChar());
        }
        return result;
    };
    return BexTime(number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(14, 2), number(17, 2));
}

void Store::Create(const std::string& iFile, const std::string& iScript) {
    Database database(iFile, true);
    Transaction transaction(database);
    database.Run(iScript);
    transaction.Commit();
}

std::vector<BexUnicodeString> Store::OpenActions() const {
    std::vector<BexUnicodeString> ids;
    Statement rows = database.Prepare("SELECT id FROM actions WHERE status IN ('start', 'run') ORDER BY id");
    while (rows.Next()) {
        ids.push_back(rows.Text(1));
    }
    return ids;
}

Action Store::Load(const BexUnicodeString& iId) const {
    Statement row = database.Prepare(
        "SELECT name, abstract, priority, status, owner, documentation, process_name, generation, planned_start, "
        "duration, unit FROM actions WHERE id = ?");
    if (!row.Bind(1, iId).Next()) {
        throw DatabaseError(std::string("no action ") + iId.ConvertToChar());
    }
    Action action;
    action.id = iId;
    action.name = row.Text(1);
    action.abstract = row.Text(2);
    action.priority = row.Text(3);
    action.status = row.Text(4);
    action.owner = row.Text(5);
    action.documentation = row.Text(6);
    action.processName = row.Text(7);
    action.generation = static_cast<int>(row.Number(8));
    action.plannedStart = TimeOf(row.Text(9));
    action.duration = static_cast<int>(row.Number(10));
    action.unit = row.Text(11);

    Statement contexts = database.Prepare("SELECT kind, value FROM contexts WHERE action = ? ORDER BY kind");
    contexts.Bind(1, iId);
    while (contexts.Next()) {
        action.contexts.push_back({contexts.Text(1), contexts.Text(2)});
    }

    Statement objects = database.Prepare(
        "SELECT type, direction, nickname, db_name, environment, pdm_table, coid, compid FROM action_objects "
        "JOIN objects ON objects.id = object WHERE action = ? ORDER BY position");
    objects.Bind(1, iId);
    while (objects.Next()) {
        action.objects.push_back({UuidAt(objects, 4), objects.Text(1), objects.Text(2), objects.Text(3)});
    }
    return action;
}

BexUnicodeString Store::Attribute(const std::string& iUuid, const BexUnicodeString& iName) const {
    Statement row = database.Prepare(
        "SELECT value FROM attributes JOIN objects ON objects.id = object WHERE attribute = ? AND db_name = ? AND "
        "environment = ? AND pdm_table = ? AND coid = ? AND compid = ?");
    row.Bind(1, iName);
    BindUuid(row, 2, iUuid);
    return row.Next() ? row.Text(1) : BexUnicodeString();
}

void Store::MarkSent(const BexUnicodeString& iId, const BexUnicodeString& iDue) {
    database.Prepare("UPDATE actions SET sent = ?, due = ? WHERE id = ?")
        .Bind(1, Now())
        .Bind(2, iDue)
        .Bind(3, iId)
        .Next();
}

void Store::Apply(const Reply& iReply) {
    Transaction transaction(database);
    database
        .Prepare(
            "UPDATE actions SET priority = ?, status = ?, owner = ?, duration = ?, unit = ?, due = ?, answered = ? "
            "WHERE id = ?")
        .Bind(1, iReply.priority)
        .Bind(2, iReply.status)
        .Bind(3, iReply.owner)
        .Bind(4, iReply.duration)
        .Bind(5, iReply.unit)
        .Bind(6, iReply.due)
        .Bind(7, Now())
        .Bind(8, iReply.actionId)
        .Next();
    if (database.Changed() != 1) {
        throw DatabaseError(std::string("no action ") + iReply.actionId.ConvertToChar());
    }
    for (const Reply::Nickname& nickname : iReply.nicknames) {
        Statement update = database.Prepare(
            "UPDATE objects SET nickname = ? WHERE db_name = ? AND environment = ? AND pdm_table = ? AND coid = ? AND "
            "compid = ?");
        update.Bind(1, nickname.value);
        BindUuid(update, 2, nickname.uuid);
        update.Next();
        if (database.Changed() != 1) {
            throw DatabaseError(std::string("no object for ") + nickname.value.ConvertToChar());
        }
    }
    transaction.Commit();
}
