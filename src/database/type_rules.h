#pragma once
// The rules of kind and range that each declared type of a study file holds, as CHECK constraints
// named with the old runtime's words for the refusal: a value of the wrong kind is a "Type mismatch"
// (13), a number or date beyond what the type holds an "Overflow" (6). A Null passes both.
//
// Creation writes them after a column's other constraints; the structure check reads them back from
// the stored CREATE TABLE text and holds them against the ones the definition's type gives.

#include "database/sql_tokens.h"

#include <QList>
#include <QString>

namespace vesk {

struct TypeRule {
    int number;         // the runtime's number of the refusal
    QString expression; // the CHECK expression on the column
};

// The rules of the DAO type `typeCode` on `column`, kind first; none for a code the types lack.
QList<TypeRule> typeRules(int typeCode, const QString& column);

// The runtime's number a CHECK named `name` stands for as a type rule; 0 when it is none.
int typeRuleNumber(const QString& name);

// One rule as the structure check compares it: its words and its expression, written the one way
// ("Overflow: "YEAR" BETWEEN -32768 AND 32767"), whatever the spacing of the file.
QString typeRuleText(const QString& name, const QList<sql::Token>& expression);

// The rules of `typeCode` on `column` in that form, joined by "; ", in their order.
QString expectedTypeRules(int typeCode, const QString& column);

} // namespace vesk
