#pragma once
// The properties of a study file's fields as the file itself states them: PRAGMA table_info for the
// declared type, Required (NOT NULL) and the default, and the stored CREATE TABLE text for the
// CHECK constraints that carry the validation rule and text, forbid zero-length text and hold each
// type's kind and range. Each
// property comes back as the text the old engine would have given for it ("10", "5", "0", "True").

#include "database/db_connection.h"

#include <QList>
#include <QString>

namespace vesk {

struct FieldProperties {
    QString name;
    QString type;            // DAO type code, or the declared type itself when it names none
    QString size;            // text length, or the fixed size of the type (SMALLINT 2, LONG 4 ...)
    QString defaultValue;    // empty when none
    QString validationRule;  // in the rule language (">0 And <=9")
    QString validationText;  // the name of the rule's CHECK constraint
    QString required;        // "True" / "False"
    QString allowZeroLength; // "True" / "False"
    QString typeRules;       // the CHECKs of kind and range, as typeRuleText writes them, "; " between

    // The property compared with attribute `attribute` of the definition (AttrType .. AttrAllowZeroLength).
    QString property(int attribute) const;
};

// The fields of one table of the file, in column order. std::nullopt with `error` when the file
// cannot be read.
std::optional<QList<FieldProperties>> readFieldProperties(const DbConnection& db,
                                                          const DbConnection::TableEntry& table,
                                                          QSqlError* error = nullptr);

// The type code and size that a declared column type stands for.
void typeFromDeclared(const QString& declared, QString* typeCode, QString* size);

} // namespace vesk
