#pragma once
// File -> Export -> Life Tables -> Standard Life Table - KRO / - WHO, without the Save As dialog: the
// fixed table of the settings written as the table "LTSKRO" or "LTSWHO" of a foreign file of the kind
// its extension names (FnWriteArrFile), with the fields [Age] [EXF] [EXM] and every value as a
// number, so that the file reads back to the numbers the settings hold. A worksheet or a database
// file gains the table beside those it holds. Where the file is the table (a text file, a dBase
// table), a file that exists is replaced only when the user says so; the old file stays whole
// until the new one is written.

#include "foundation/settings.h"

#include <QString>

namespace vesk {

enum class FixedStandardTable { Kro, Who };

enum class StandardTableExport {
    Declined, // the file exists and the user chose not to replace it: nothing written, nothing shown
    Exported, // "Standard Life Table - KRO  exported successfully" shown
    Failed,   // "... couldn't be exported successfully" shown, with the reason on the next line
};

// The rows written: (0..n-1, 0..2) of numbers, age, female, male; a value that is no number stays
// as it is held.
CellArray standardTableRows(const CellArray& table);

StandardTableExport exportStandardTable(FixedStandardTable which, const QString& path,
                                        const VeskSettings& s = settings());

// File -> Export -> Life Tables -> User Defined Standard Life Table: the user's table of the
// preferences (GetUsrLifeTable) in the layout its import reads back: in a text file the block
// "[User Defined Tables]" with its lines [BAI]:, [EXM]:, [EXF]:, values separated by "|"; in any
// other kind the table named UsrLTSTblNm, fields [Age] [EXF] [EXM]. Without a user table it does
// nothing (Declined, nothing shown).
StandardTableExport exportUserTable(const QString& path, const VeskSettings& s = settings(),
                                    const PreferencesControls& p = preferences());

} // namespace vesk
