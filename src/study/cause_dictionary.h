#pragma once
// The dictionary of causes of burden, common to every study of a database: groups (_DctBDMGrps,
// a single digit), subgroups (_DctBDMSGrps), clusters (_DctBDMClstr), causes (_DctBDM, five
// characters of which the first four are the cluster) and sequelae (_DctBDMSqla), joined to the
// causes through _MapBDMSqla. _DctBDM.Sqla is -1 for a cause with a sequela and 0 otherwise.
//
// The operations talk to the user through prompts() with the program's own words. Nothing runs in
// a transaction: a failure midway leaves what was written or deleted before it.

#include "database/db_connection.h"
#include "platform/progress.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>

namespace vesk {

enum class DictLevel { Group = 0, SubGroup = 1, Cluster = 2, Cause = 3 };

// A row of a level: its code, its description and the code of its parent ("" for none).
struct DictRow {
    QString code;
    QString description;
    QString parent;
    bool operator==(const DictRow&) const = default;
};

// The rows of a level as the form shows them: groups and causes in table order, subgroups and
// clusters by code. Sequelae: code and description.
QList<DictRow> loadDictLevel(const DbConnection& db, DictLevel level);
QList<DictRow> loadSequelae(const DbConnection& db);

// The check of cause codes: a trimmed code of five characters whose first four are a cluster.
// `valid` keeps the codes that pass; `errors` lists the others as code + "::" + reason.
struct CobcdCheck {
    QStringList valid;
    QStringList errors;
};
CobcdCheck chkcobcd(const DbConnection& db, const QStringList& codes);

class CauseDictionary {
public:
    explicit CauseDictionary(const DbConnection& db) : db_(db) {}

    // Append: groups, subgroups, clusters and causes, in that order, each row added or edited.
    // A cause without description stops it before anything is written; causes that fail
    // chkcobcd are listed and left out. Returns false when a check or a write stopped it.
    bool append(const std::array<QList<DictRow>, 4>& levels, Progress& progress) const;

    // Sequelae: each row checked, added or edited, and confirmed once. False on a refused row.
    bool saveSequelae(const QList<DictRow>& rows) const;
    // Maps a cause to a sequela (refused when the pair exists) and flags the cause.
    bool mapSequela(const QString& sequela, const QString& cause) const;
    // Removes the pair; a cause left without sequela loses its flag.
    bool removeSequelaMap(const QString& cause, const QString& sequela) const;
    // The causes mapped to a sequela.
    QList<DictRow> causesOfSequela(const QString& sequela) const;
    // Deletes a sequela and its pairs after the question; the causes' flags stay as they were.
    bool deleteSequela(const QString& code) const;

    // The deletion cascade of a code at `level` (2 cluster, 1 subgroup, 0 group), with its
    // questions; every row of the data tables under the causes below it goes too, for every
    // study. Returns whether the code went.
    bool deleteCode(const QString& code, int level) const;
    // Every table of the database whose name begins with "DAT".
    QStringList dataTables() const;

private:
    bool writeRow(DictLevel level, const DictRow& row) const;
    bool writeLevel(DictLevel level, const QList<DictRow>& rows, Progress& progress) const;
    bool writeSequela(const DictRow& row) const;
    bool deleteCluster(const QString& code) const;
    bool deleteSubGroup(const QString& code) const;
    bool deleteGroup(const QString& code) const;
    // The deletions of one cluster from its causes' data rows on, without questions.
    bool removeCluster(const QString& code) const;
    bool removeSubGroup(const QString& code) const;
    QStringList codes(const QString& sql, const QVariant& value, bool* ok) const;
    // The codes under an entry, by `childrenSql`, when the user agrees to lose them: `confirm` is
    // asked only when there are any. Nothing when `entrySql` does not find the entry, a query fails
    // (the failure shown) or the user declines.
    std::optional<QStringList> childrenToDelete(const QString& entrySql, const QString& childrenSql,
                                                const QVariant& key,
                                                const std::function<bool(qsizetype)>& confirm) const;
    // Runs a deletion of the rows of `key`; a failure is shown.
    bool removeRows(const QString& sql, const QVariant& key) const;

    const DbConnection& db_;
};

// After a change of causes or sequelae: the causes of the current study in the context, quietly
// (what is wrong with them is reported by the next load or by Study Setup, not by this refresh).
void reloadStudyCauses();

} // namespace vesk
