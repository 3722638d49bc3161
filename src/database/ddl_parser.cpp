#include "database/ddl_parser.h"

namespace vesk {

using sql::Token;
using Kind = Token::Kind;

namespace {

// A bare keyword: a quoted name never is one.
bool isKeyword(const Token& t, const char* word) {
    return t.is(Kind::Word) && t.text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

bool startsTableConstraint(const Token& t) {
    return isKeyword(t, "CONSTRAINT") || isKeyword(t, "PRIMARY") || isKeyword(t, "UNIQUE") ||
           isKeyword(t, "CHECK") || isKeyword(t, "FOREIGN");
}

// The items between the outer parentheses, split at the commas of depth 1.
QList<QList<Token>> items(const QList<Token>& tokens) {
    QList<QList<Token>> out;
    int depth = 0;
    QList<Token> current;
    for (const Token& t : tokens) {
        if (t.is(Kind::Open) && ++depth == 1)
            continue;
        if (t.is(Kind::Close) && --depth == 0) {
            if (!current.isEmpty())
                out.push_back(current);
            return out;
        }
        if (depth == 0)
            continue;
        if (depth == 1 && t.is(Kind::Comma)) {
            out.push_back(current);
            current.clear();
            continue;
        }
        current.push_back(t);
    }
    return {}; // never closed
}

// The tokens inside the parentheses that open at `i`; `i` ends after the closing one.
QList<Token> parenthesised(const QList<Token>& item, int& i) {
    QList<Token> inner;
    int depth = 0;
    for (; i < item.size(); ++i) {
        const Token& t = item[i];
        if (t.is(Kind::Open) && depth++ == 0)
            continue;
        if (t.is(Kind::Close) && --depth == 0) {
            ++i;
            break;
        }
        inner.push_back(t);
    }
    return inner;
}

ColumnDdl column(const QList<Token>& item) {
    ColumnDdl c;
    c.name = item.front().text;
    QString pendingName;
    int i = 1;
    while (i < item.size()) {
        const Token& t = item[i];
        if (isKeyword(t, "CONSTRAINT") && i + 1 < item.size()) {
            pendingName = item[i + 1].text;
            i += 2;
        } else if (isKeyword(t, "CHECK") && i + 1 < item.size() && item[i + 1].is(Kind::Open)) {
            ++i;
            c.checks.push_back({pendingName, parenthesised(item, i)});
            pendingName.clear();
        } else if (t.is(Kind::Open)) {
            parenthesised(item, i); // a type size, a default expression, a reference's columns
        } else {
            ++i;
        }
    }
    return c;
}

} // namespace

QList<ColumnDdl> parseCreateTable(const QString& text) {
    bool ok = true;
    const QList<Token> tokens = sql::tokenize(text, sql::Dialect::Sqlite, &ok);
    QList<ColumnDdl> out;
    if (!ok)
        return out;
    for (const QList<Token>& item : items(tokens)) {
        if (item.isEmpty() || startsTableConstraint(item.front()))
            continue;
        out.push_back(column(item));
    }
    return out;
}

} // namespace vesk
