#include "database/db_structure.h"

#include "database/db_create.h"
#include "database/db_schema.h"
#include "database/ddl_parser.h"
#include "database/type_rules.h"
#include "database/validation_rule.h"

#include <QRegularExpression>

namespace vesk {

using sql::Token;
using Kind = Token::Kind;

QString FieldProperties::property(int attribute) const {
    switch (attribute) {
    case AttrType:
        return type;
    case AttrSize:
        return size;
    case AttrDefault:
        return defaultValue;
    case AttrValidationRule:
        return validationRule;
    case AttrValidationText:
        return validationText;
    case AttrRequired:
        return required;
    case AttrAllowZeroLength:
        return allowZeroLength;
    default:
        return {};
    }
}

void typeFromDeclared(const QString& declared, QString* typeCode, QString* size) {
    static const QRegularExpression re(
        QStringLiteral("^\\s*([A-Za-z_ ]*?)\\s*(?:\\(\\s*(\\d+)[^)]*\\))?\\s*$"));
    const auto m = re.match(declared);
    const QString base = m.hasMatch() ? m.captured(1).toUpper().simplified() : declared.toUpper();
    const QString length = m.hasMatch() ? m.captured(2) : QString();
    struct Known {
        const char* names;
        int code;
        int size;
    };
    // The declared types of creation first, then the usual synonyms of other tools.
    static const Known known[] = {
        {"|BOOLEAN|BIT|YESNO|LOGICAL|", dbBoolean, 1},
        {"|BYTE|TINYINT|", dbByte, 1},
        {"|SMALLINT|SHORT|INTEGER2|", dbInteger, 2},
        {"|LONG|INTEGER|INT|INTEGER4|BIGINT|", dbLong, 4},
        {"|SINGLE|REAL|FLOAT4|", dbSingle, 4},
        {"|DOUBLE|FLOAT|DOUBLE PRECISION|FLOAT8|NUMERIC|", dbDouble, 8},
        {"|DATETIME|DATE|TIME|TIMESTAMP|", dbDate, 8},
        {"|VARCHAR|CHAR|TEXT|NVARCHAR|CHARACTER|VARYING CHARACTER|", dbText, 255},
        {"|LONGTEXT|MEMO|CLOB|", dbMemo, 0},
    };
    for (const Known& k : known) {
        if (!QString::fromLatin1(k.names).contains(u'|' + base + u'|'))
            continue;
        *typeCode = QString::number(k.code);
        *size = (k.code == dbText && !length.isEmpty()) ? length : QString::number(k.size);
        return;
    }
    *typeCode = declared.trimmed();
    *size = length;
}

namespace {

bool isColumn(const Token& t, const QString& field) {
    return (t.is(Kind::Name) || t.is(Kind::Word)) && t.text.compare(field, Qt::CaseInsensitive) == 0;
}

// `"F" IS NOT NULL`: the guard of a primary index member.
bool isKeyGuard(const QList<Token>& e, const QString& field) {
    return e.size() == 4 && isColumn(e[0], field) && e[1].isWord(QStringLiteral("IS")) &&
           e[2].isWord(QStringLiteral("NOT")) && e[3].isWord(QStringLiteral("NULL"));
}

// `"F" <> ''`: no zero-length text.
bool isZeroLengthGuard(const QList<Token>& e, const QString& field) {
    return e.size() == 3 && isColumn(e[0], field) && e[1].is(Kind::Op) && e[1].text == u"<>" &&
           e[2].is(Kind::String) && e[2].text.isEmpty();
}

// `length("F") <= n`: no text longer than the size.
bool isSizeGuard(const QList<Token>& e, const QString& field) {
    return e.size() == 6 && e[0].isWord(QStringLiteral("length")) && e[1].is(Kind::Open) &&
           isColumn(e[2], field) && e[3].is(Kind::Close) && e[4].is(Kind::Op) && e[4].text == u"<=" &&
           e[5].is(Kind::Number);
}

void readChecks(FieldProperties& f, const ColumnDdl* ddl, bool isText) {
    bool zeroLengthForbidden = false;
    bool ruleSeen = false;
    QStringList typeRules;
    for (const CheckDdl& c : ddl ? ddl->checks : QList<CheckDdl>()) {
        if (isKeyGuard(c.expression, f.name) || isSizeGuard(c.expression, f.name))
            continue;
        if (typeRuleNumber(c.name) != 0) {
            typeRules << typeRuleText(c.name, c.expression);
            continue;
        }
        if (isZeroLengthGuard(c.expression, f.name)) {
            zeroLengthForbidden = true;
            continue;
        }
        if (!ruleSeen) {
            f.validationRule = checkToRule(c.expression, f.name);
            // A rule without a text carries the engine's own words, which are no validation text.
            f.validationText = c.name.startsWith(kRuleWithoutTextOpening) ? QString() : c.name;
            ruleSeen = true;
        }
    }
    f.allowZeroLength = (isText && !zeroLengthForbidden) ? QStringLiteral("True") : QStringLiteral("False");
    f.typeRules = typeRules.join(QStringLiteral("; "));
}

// A default as the old engine shows it: a string in double quotes, anything else as written.
QString defaultText(const QVariant& value) {
    if (value.isNull())
        return {};
    const QString v = value.toString().trimmed();
    bool ok = true;
    const QList<Token> t = sql::tokenize(v, sql::Dialect::Sqlite, &ok);
    if (ok && t.size() == 1 && t[0].is(Kind::String))
        return u'"' + t[0].text + u'"';
    return v;
}

} // namespace

std::optional<QList<FieldProperties>>
readFieldProperties(const DbConnection& db, const DbConnection::TableEntry& table, QSqlError* error) {
    auto q = db.query(QStringLiteral("SELECT name, type, \"notnull\", dflt_value FROM pragma_table_info(?)"),
                      {table.name}, error);
    if (!q)
        return std::nullopt;
    const QList<ColumnDdl> ddl = parseCreateTable(table.sql);
    QList<FieldProperties> out;
    while (q->next()) {
        FieldProperties f;
        f.name = q->value(0).toString();
        typeFromDeclared(q->value(1).toString(), &f.type, &f.size);
        f.required = q->value(2).toInt() ? QStringLiteral("True") : QStringLiteral("False");
        f.defaultValue = defaultText(q->value(3));
        const ColumnDdl* column = nullptr;
        for (const ColumnDdl& c : ddl)
            if (c.name.compare(f.name, Qt::CaseInsensitive) == 0)
                column = &c;
        const bool isText = f.type == QString::number(dbText) || f.type == QString::number(dbMemo);
        readChecks(f, column, isText);
        out.push_back(f);
    }
    return out;
}

} // namespace vesk
