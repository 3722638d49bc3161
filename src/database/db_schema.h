#pragma once
// The schema of a study database, in one place. ArrDBStru holds every table, field and attribute;
// InitDBStruArr fills it; creation (CreateNewDatabase) builds a file from it and the structure
// check (ChkDBStru) holds a file against it. A change to a table is one change here.
//
// Indexing is ArrDBStru(table, slot, attribute): tables 0..24, slots 0..13, attributes 0..10.
// Slot 0 holds the table's name (attribute 0) and class (attribute 1); slots 1.. hold the fields,
// and the first empty field name ends them. An attribute left Empty is not stated.

#include "platform/cell_array.h"

namespace vesk {

inline constexpr int kDbTableCount = 25;
inline constexpr int kDbSlotCount = 14;
inline constexpr int kDbAttributeCount = 11;

// The attributes of a field slot.
enum DbAttr : int {
    AttrName = 0,            // field name (slot 0: table name)
    AttrType = 1,            // DAO type code as text, at times with a trailing blank (slot 0: class)
    AttrSize = 2,            // text length; stated as 2 for some integer fields
    AttrDefault = 3,         // default value
    AttrValidationRule = 4,  // validation rule, in the rule language of the old engine
    AttrValidationText = 5,  // text shown when the rule refuses a value
    AttrRequired = 6,        // "True" / "False"
    AttrAllowZeroLength = 7, // "False" on every field
    AttrReserved = 8,        // a mark that nothing reads
    AttrPrimaryKey = 9,      // "True": member of the primary index "NumIndex"
    AttrRelation = 10,       // "name|primary table|foreign table[|attributes word]"
};

// DAO type codes.
enum DbType : int {
    dbBoolean = 1,
    dbByte = 2,
    dbInteger = 3,
    dbLong = 4,
    dbSingle = 6,
    dbDouble = 7,
    dbDate = 8,
    dbText = 10,
    dbMemo = 12,
};

// The name of the primary index of every table that has one.
inline const QString kPrimaryIndexName = QStringLiteral("NumIndex");

// The definition array (25 x 14 x 11 cells).
CellArray& ArrDBStru();

// Rewrites all of ArrDBStru.
void InitDBStruArr();

// Reading helpers: the attribute's text (Empty and Null give ""), untrimmed.
QString dbAttr(int table, int slot, int attribute);
QString dbTableName(int table);
// The number of field slots of a table (slots 1..n hold names).
int dbFieldCount(int table);
// The table whose name matches, case-blind; -1 when none.
int dbTableIndex(const QString& name);

} // namespace vesk
