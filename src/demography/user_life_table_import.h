#pragma once
// File -> Import -> User Defined Standard Life Table, without its file dialog: the question about
// the layout of the file's kind, the reading (user_life_table_file.h), the consistency check DoChk,
// and the messages. A table that passes replaces the user table of the preferences; any failure
// leaves the table there was as it was. The settings file takes the table at its next rewrite.

#include "foundation/settings.h"
#include "inputs/foreign_types.h"

#include <QString>

namespace vesk {

enum class UserTableImport {
    Declined,     // the layout question was answered No: nothing read, nothing changed
    Refused,      // the file could not be read as a table: "The data could not be imported ..."
    FailedChecks, // the table failed DoChk: the three checks shown
    Imported,     // the table is the user table now
};

// The layout question of a kind of file, as it is asked (Yes / No).
QString userTableQuestion(ForeignKind kind);

// "The User defined Life table failed to satisfy the following Consistency Checks " and the three
// checks, each on a line of its own.
QString consistencyFailureMessage();

// The name of the table that a database file or a dBase folder is read from: UsrLTSTblNm, or its
// default "USRLTS" when the settings name none.
QString userTableSourceName(const VeskSettings& s = settings());

// Imports the table of `path` into p.userLifeTable (and sets p.userLifeTableLoaded).
UserTableImport importUserLifeTable(const QString& path, const VeskSettings& s = settings(),
                                    PreferencesControls& p = preferences());

} // namespace vesk
