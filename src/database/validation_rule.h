#pragma once
// Validation rules of a field, in the old engine's rule language (">0 And <=9", "Between 1 And 9",
// "Is Not Null", "In (1,2)", "Like "A*""), where a comparison may leave out its left side, which is
// then the field itself. A study file keeps each rule as a CHECK constraint of its column; these two
// translations go there and back, so that the structure check reads the rule from the file.

#include "database/sql_tokens.h"

#include <QString>
#include <optional>

namespace vesk {

// The CHECK expression of `rule` on the column `field`, e.g. ">0 And <=9" on GrpCd gives
// "GrpCd" > 0 AND "GrpCd" <= 9. std::nullopt (with `error` set) for a rule it cannot read.
std::optional<QString> ruleToCheck(const QString& rule, const QString& field, QString* error = nullptr);

// The rule that a CHECK expression of the column `field` stands for, in the rule language:
// the column is left out before a comparison, keywords take the rule language's spelling.
QString checkToRule(const QList<sql::Token>& expression, const QString& field);

} // namespace vesk
