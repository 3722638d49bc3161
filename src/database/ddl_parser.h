#pragma once
// Reads the column constraints back out of the CREATE TABLE text that a study file stores, so that
// the structure check sees what the file itself says (a constraint changed by hand included).

#include "database/sql_tokens.h"

#include <QList>
#include <QString>

namespace vesk {

struct CheckDdl {
    QString name;                 // the constraint's name, empty when it has none
    QList<sql::Token> expression; // the tokens inside CHECK ( ... )
};

struct ColumnDdl {
    QString name;
    QList<CheckDdl> checks; // the column's own CHECK constraints, in order
};

// The columns of a CREATE TABLE statement with their CHECK constraints. Table constraints are
// passed over. An unreadable statement gives no columns.
QList<ColumnDdl> parseCreateTable(const QString& sql);

} // namespace vesk
