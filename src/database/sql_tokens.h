#pragma once
// A small tokenizer for the two expression languages the schema meets: the validation rules of the
// old engine (where "..." is a string and [..] a name) and SQLite's own DDL (where "..." is a name
// and '...' a string). Comments and blanks are dropped.

#include <QList>
#include <QString>

namespace vesk::sql {

struct Token {
    enum class Kind { Word, Name, String, Number, Date, Op, Open, Close, Comma, Other };
    Kind kind = Kind::Other;
    QString text; // Word: as written; Name/String/Date: the content without quotes; Op: normalised
    bool is(Kind k) const { return kind == k; }
    // A Word or Name equal to `word`, case-blind.
    bool isWord(const QString& word) const;
    bool isCompare() const; // = <> < <= > >=
};

enum class Dialect { Jet, Sqlite };

// Tokens of `text`; `ok` is set false on an unterminated string or name.
QList<Token> tokenize(const QString& text, Dialect dialect, bool* ok = nullptr);

// An identifier quoted for SQLite ("a""b").
QString quoteName(const QString& name);
// A string literal quoted for SQLite ('it''s').
QString quoteString(const QString& text);

} // namespace vesk::sql
