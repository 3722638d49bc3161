#include "database/type_rules.h"

#include "database/db_schema.h"
#include "foundation/runtime_error.h"

#include <QStringList>

namespace vesk {

using sql::Token;
using Kind = Token::Kind;

namespace {

constexpr int kMismatch = runtime_error::kTypeMismatch;
constexpr int kOverflow = runtime_error::kOverflow;

// A whole number between `low` and `high`.
QList<TypeRule> wholeNumber(const QString& c, const char* low, const char* high) {
    return {
        {kMismatch, QStringLiteral("typeof(%1) IN ('integer', 'null')").arg(c)},
        {kOverflow, QStringLiteral("%1 BETWEEN %2 AND %3").arg(c, QLatin1String(low), QLatin1String(high))}};
}

// Any number whose size passes `comparison` ("< 1e999" lets every finite double through: the engine
// reads 1e999 as infinity).
QList<TypeRule> anyNumber(const QString& c, const char* comparison) {
    return {{kMismatch, QStringLiteral("typeof(%1) IN ('integer', 'real', 'null')").arg(c)},
            {kOverflow, QStringLiteral("abs(%1) %2").arg(c, QLatin1String(comparison))}};
}

// A date as the program writes it ("yyyy-MM-dd" or "yyyy-MM-dd hh:mm:ss"), of a day that exists,
// from the year 100 on; the engine's calendar ends with 9999.
QList<TypeRule> date(const QString& c) {
    // The pattern comes first: a word such as 'now' never reaches the engine's date functions, which
    // a CHECK may not call on the clock.
    return {
        {kMismatch, QStringLiteral("%1 IS NULL OR (typeof(%1) = 'text' AND %1 GLOB "
                                   "'[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*' AND julianday(%1) IS NOT "
                                   "NULL AND %1 IN (date(julianday(%1)), datetime(julianday(%1))))")
                        .arg(c)},
        {kOverflow, QStringLiteral("%1 >= '0100-01-01'").arg(c)}};
}

QString tokenText(const Token& t) {
    switch (t.kind) {
    case Kind::Name:
        return sql::quoteName(t.text);
    case Kind::String:
        return sql::quoteString(t.text);
    case Kind::Word:
        return t.text.toUpper();
    default:
        return t.text;
    }
}

} // namespace

QList<TypeRule> typeRules(int typeCode, const QString& column) {
    const QString c = sql::quoteName(column);
    switch (typeCode) {
    case dbBoolean:
        return {{kMismatch, QStringLiteral("typeof(%1) IN ('integer', 'null')").arg(c)},
                {kOverflow, QStringLiteral("%1 IN (-1, 0, 1)").arg(c)}};
    case dbByte:
        return wholeNumber(c, "0", "255");
    case dbInteger:
        return wholeNumber(c, "-32768", "32767");
    case dbLong:
        return wholeNumber(c, "-2147483648", "2147483647");
    case dbSingle:
        return anyNumber(c, "<= 3.4028234663852886e38");
    case dbDouble:
        return anyNumber(c, "< 1e999");
    case dbDate:
        return date(c);
    case dbText:
    case dbMemo:
        return {{kMismatch, QStringLiteral("typeof(%1) IN ('text', 'null')").arg(c)}};
    default:
        return {};
    }
}

int typeRuleNumber(const QString& name) {
    for (const int number : {kMismatch, kOverflow})
        if (name == runtimeWords(number))
            return number;
    return 0;
}

QString typeRuleText(const QString& name, const QList<Token>& expression) {
    QStringList parts;
    for (const Token& t : expression)
        parts << tokenText(t);
    return name + QStringLiteral(": ") + parts.join(u' ');
}

QString expectedTypeRules(int typeCode, const QString& column) {
    QStringList out;
    for (const TypeRule& rule : typeRules(typeCode, column))
        out << typeRuleText(runtimeWords(rule.number), sql::tokenize(rule.expression, sql::Dialect::Sqlite));
    return out.join(QStringLiteral("; "));
}

} // namespace vesk
