#include "database/validation_rule.h"

#include <QStringList>

namespace vesk {

using sql::Token;
using Kind = Token::Kind;

namespace {

// Keywords of the rule language and their SQL spelling.
struct Keyword {
    const char* rule;
    const char* sql;
};
const Keyword kKeywords[] = {{"And", "AND"}, {"Or", "OR"},     {"Not", "NOT"}, {"Between", "BETWEEN"},
                             {"In", "IN"},   {"Like", "LIKE"}, {"Is", "IS"},   {"Null", "NULL"},
                             {"True", "1"},  {"False", "0"}};

const Keyword* keyword(const Token& t) {
    if (t.kind != Kind::Word)
        return nullptr;
    for (const auto& k : kKeywords)
        if (t.text.compare(QLatin1String(k.rule), Qt::CaseInsensitive) == 0)
            return &k;
    return nullptr;
}

// A token before which the left-out field stands: a comparison, or Between / In / Like / Is.
bool startsPredicate(const Token& t) {
    return t.isCompare() || t.isWord(QStringLiteral("Between")) || t.isWord(QStringLiteral("In")) ||
           t.isWord(QStringLiteral("Like")) || t.isWord(QStringLiteral("Is"));
}

// Joins pieces with one blank, except inside parentheses, before a comma and after a comparison.
class Joiner {
public:
    void add(const QString& piece, bool glue = false) {
        const bool tight =
            out_.isEmpty() || glue || glueNext_ || out_.endsWith(u'(') || piece == u")" || piece == u",";
        out_ += tight ? piece : u' ' + piece;
        glueNext_ = false;
    }
    void glueNext() { glueNext_ = true; }
    QString text() const { return out_; }

private:
    QString out_;
    bool glueNext_ = false;
};

QString likePattern(QString p, bool toSql) {
    if (toSql) {
        p.replace(u'*', u'%');
        p.replace(u'?', u'_');
    } else {
        p.replace(u'%', u'*');
        p.replace(u'_', u'?');
    }
    return p;
}

} // namespace

std::optional<QString> ruleToCheck(const QString& rule, const QString& field, QString* error) {
    bool ok = true;
    const QList<Token> tokens = sql::tokenize(rule, sql::Dialect::Jet, &ok);
    auto fail = [&](const QString& why) -> std::optional<QString> {
        if (error)
            *error = QStringLiteral("The validation rule '%1' of the field %2 cannot be read: %3")
                         .arg(rule, field, why);
        return std::nullopt;
    };
    if (!ok)
        return fail(QStringLiteral("an unclosed quotation"));
    QStringList pieces;
    bool operandStart = true;
    bool afterLike = false;
    for (const Token& t : tokens) {
        if (operandStart && startsPredicate(t))
            pieces << sql::quoteName(field);
        const Keyword* k = keyword(t);
        switch (t.kind) {
        case Kind::Word:
            if (!k)
                return fail(QStringLiteral("the word %1 is not known").arg(t.text));
            pieces << QString::fromLatin1(k->sql);
            break;
        case Kind::Name:
            pieces << sql::quoteName(t.text);
            break;
        case Kind::String:
            pieces << sql::quoteString(afterLike ? likePattern(t.text, true) : t.text);
            break;
        case Kind::Date:
            pieces << sql::quoteString(t.text);
            break;
        case Kind::Other:
            return fail(QStringLiteral("the sign %1 is not known").arg(t.text));
        default:
            pieces << t.text;
        }
        operandStart = t.is(Kind::Open) || (k && QByteArray(k->rule) != "Between" &&
                                            QByteArray(k->rule) != "Is" && QByteArray(k->rule) != "Null");
        afterLike = t.isWord(QStringLiteral("Like"));
    }
    if (pieces.isEmpty())
        return fail(QStringLiteral("it is empty"));
    Joiner j;
    for (const QString& p : pieces)
        j.add(p);
    return j.text();
}

QString checkToRule(const QList<Token>& e, const QString& field) {
    Joiner j;
    bool afterLike = false;
    for (int i = 0; i < e.size(); ++i) {
        const Token& t = e[i];
        const bool isField =
            (t.is(Kind::Name) || t.is(Kind::Word)) && t.text.compare(field, Qt::CaseInsensitive) == 0;
        if (isField && i + 1 < e.size()) {
            const Token& next = e[i + 1];
            const bool notPredicate = next.isWord(QStringLiteral("NOT")) && i + 2 < e.size() &&
                                      startsPredicate(e[i + 2]) && !e[i + 2].isWord(QStringLiteral("Is"));
            if (startsPredicate(next) || notPredicate)
                continue;
        }
        const Keyword* k = nullptr;
        for (const auto& kw : kKeywords)
            if (t.is(Kind::Word) && t.text.compare(QLatin1String(kw.sql), Qt::CaseInsensitive) == 0 &&
                QByteArray(kw.sql) != "1" && QByteArray(kw.sql) != "0")
                k = &kw;
        if (k)
            j.add(QString::fromLatin1(k->rule));
        else if (t.is(Kind::String))
            j.add(u'"' + (afterLike ? likePattern(t.text, false) : t.text) + u'"');
        else if (t.is(Kind::Name))
            j.add(u'[' + t.text + u']');
        else
            j.add(t.text);
        if (t.isCompare())
            j.glueNext();
        afterLike = t.isWord(QStringLiteral("LIKE"));
    }
    return j.text();
}

} // namespace vesk
