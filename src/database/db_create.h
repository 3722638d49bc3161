#pragma once
// Turns the schema definition (ArrDBStru) into a study file. Each field becomes a column whose
// declared type names the old type and size (VARCHAR(5), SMALLINT, BYTE, SINGLE ...), with
// DEFAULT, NOT NULL for Required, and CHECK constraints that carry what the old engine enforced:
//
//   - the validation rule, translated, named by its validation text, so that a refused value
//     reads as that text;
//   - no zero-length text where Allow Zero Length is False;
//   - no text longer than the field's size;
//   - no Null in a member of the primary index.
//
// The primary index "NumIndex" becomes the PRIMARY KEY and the enforced relations become FOREIGN
// KEYs. A relation whose primary field alone has no unique index is refused, as the old engine
// refused it (its error 3609), and creation goes on without it: "BDSId" and "Bdsid1" never exist.
// Text columns compare without regard to case, as the old engine's text did.

#include "database/db_connection.h"

#include <QString>
#include <QStringList>

namespace vesk {

// The CREATE TABLE statements of ArrDBStru, in table order. The caller fills ArrDBStru first.
// std::nullopt with `error` when the definition holds something that cannot be built.
std::optional<QStringList> createTableStatements(QString* error);

// Runs the statements on an empty database, table by table; the first failure stops it and
// leaves the tables made so far.
bool buildStudyTables(const DbConnection& db, QString* error);

// Removes the file at `path` and whatever an earlier database of that name left beside it (which a
// new file would take for its own journal). Refused for a file this program holds open.
bool removeStudyFile(const QString& path, QString* error);

// A new study file at `path` (which must not exist), with every table of a freshly filled ArrDBStru
// and no rows.
bool createStudyFile(const QString& path, QString* error);

// The declared SQLite type of a DAO type code and size ("VARCHAR(5)", "SMALLINT", ...); empty for
// a code that names no type.
QString declaredType(int typeCode, int size);

// The name of the CHECK constraint of a rule that has no validation text: the old engine's own
// words for a refused value. The structure check reads such a name as no validation text.
QString ruleWithoutTextMessage(const QString& rule, const QString& table, const QString& field);
inline constexpr const char* kRuleWithoutTextOpening =
    "One or more values are prohibited by the validation rule '";

} // namespace vesk
