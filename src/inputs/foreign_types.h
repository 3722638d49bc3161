#pragma once
// The vocabulary of the foreign-file layer: which kind of file a path names, the column types of an
// array, the `create table` text built from them and read back by the file drivers, and the folder
// and base name of a dBase path.

#include "foundation/runtime_error.h"
#include "platform/cell_array.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace vesk {

// The five kinds, with the worksheet kind split into the workbook format that is written and read
// (.xlsx) and the legacy one that is only read (.xls). Database tables are SQLite files.
enum class ForeignKind { None, Wk1, Xlsx, Xls, Dbf, Database, Text };

// By the trimmed, upper-cased path matched with Like: "*.WK1", "*.XLSX", "*.XLS", "*.DBF",
// "*.MDB" / "*.VDB" / "*.DB" / "*.SQLITE", "*.TXT".
ForeignKind foreignKind(const QString& path);
// The kind named by a word such as "WK1", "xls" or "txt" (for callers that pass the kind apart).
ForeignKind foreignKindOfName(const QString& name);

// The column types of an array (rows, columns): a two-row array, row 0 the type name ("Integer",
// "Long", "Double", "Date", "Logical", "Single", "String"), row 1 the greatest text length of a
// value in the column. Within numbers the widest type wins; any other mix is "String". Empty and
// Null cells do not count; a column of nothing else is "String" without a length.
void FnColTypes(const CellArray& array, CellArray& types);

// "create table NAME ( [f1] Integer,[f2] String(12),[f3] string ) ": every field as "[", its name,
// "] " and its type, the last comma cut.
QString FnCreateTableSql(const QString& tableName, const QStringList& fieldNames, const CellArray& types);

// What a field holds, whatever the type's spelling.
enum class FieldType { Text, Integer, Long, Single, Double, Date, Logical };
FieldType fieldTypeOf(const QString& typeName);

struct FieldDef {
    QString name;
    QString typeName; // as written: "Integer", "String", "char", ...
    int length = 0;   // the length in brackets, 0 when none
    FieldType type() const { return fieldTypeOf(typeName); }
};

struct TableDef {
    QString name;
    QList<FieldDef> fields;
};

// Reads a `create table` statement the way the file drivers accept it: case-blind keywords, field
// names bare or in brackets, types with an optional length, and a closing parenthesis that may
// be missing. std::nullopt with `error` set for anything else.
std::optional<TableDef> parseCreateTable(const QString& sql, QString* error = nullptr);

// The folder and base name of a dBase path: the folder is everything up to the last "\" or "/"
// (kept with its separator when it is a root such as "C:\" or "/"), the base name the rest
// without its extension.
struct FolderAndBase {
    QString folder;
    QString base;
};
FolderAndBase splitFolderAndBase(const QString& path);

// A table read from a foreign file: the field names and the rows (records, fields).
struct ForeignTable {
    QString name;
    QStringList fieldNames;
    CellArray rows; // empty when the table has no record
    int rowCount() const { return rows.rank() == 2 ? rows.size(0) : 0; }
};

// The last failure of the layer, as the engine would have raised it: its number and words (number 0
// and no words when the last operation succeeded).
const RuntimeError& lastForeignError();
void setForeignError(int number, const QString& description);
void clearForeignError();

// Engine error numbers that the drivers reuse.
namespace engine_error {
constexpr int kTableExists = 3010;    // "Table '...' already exists."
constexpr int kCannotOpen = 3051;     // the file cannot be opened or written
constexpr int kNoSuchTable = 3078;    // the file holds no table (named range) of that name
constexpr int kSyntaxInCreate = 3290; // syntax error in CREATE TABLE statement
constexpr int kItemNotFound = 3265;   // a field position beyond the table's fields
constexpr int kInvalidPath = 3044;    // not a valid path
constexpr int kNotWritable = 3027;    // cannot update; database or object is read-only
constexpr int kFieldTooSmall = 3163;  // the field is too small for the data
constexpr int kInvalidName = 3125;    // not a valid name for a table or field
constexpr int kTooLarge = 3183;       // the file has no room for the data
constexpr int kNumericOverflow = 3349; // a number the field cannot hold
} // namespace engine_error

} // namespace vesk
