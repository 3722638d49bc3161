#pragma once
// The texts the data-input and interchange routines show, kept to the letter.

#include "platform/texts.h"

namespace vesk::texts {

// Foreign files
inline constexpr const char* kReplaceExistingFile =
    "The file mentioned in the path string already exists. Do you want to replace the existing file?";
inline constexpr const char* kDataStoredInFile = "The data is successfully stored in the file ";

// The filter of file dialogs over foreign tables, in the dialogs' own notation: worksheets are
// offered as the workbook of today (.xlsx) and the legacy one (.xls), database tables as SQLite files.
inline constexpr const char* kForeignFileFilter =
    "Lotus Worksheet(*.WK1);;Excel Worksheet(*.xlsx *.xls);;Access Database(*.vdb *.db *.sqlite *.mdb);;"
    "Database File(*.dbf);;Text Files(*.txt)";

} // namespace vesk::texts
