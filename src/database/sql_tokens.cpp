#include "database/sql_tokens.h"

namespace vesk::sql {

bool Token::isWord(const QString& word) const {
    return (kind == Kind::Word || kind == Kind::Name) && text.compare(word, Qt::CaseInsensitive) == 0;
}

bool Token::isCompare() const {
    return kind == Kind::Op &&
           (text == u"=" || text == u"<>" || text == u"<" || text == u"<=" || text == u">" || text == u">=");
}

namespace {

bool isWordChar(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$';
}

// Reads a quoted run closed by `close`, where a doubled closer stands for itself.
bool readQuoted(const QString& s, int& i, QChar close, QString& out) {
    ++i;
    while (i < s.size()) {
        if (s[i] == close) {
            if (i + 1 < s.size() && s[i + 1] == close) {
                out += close;
                i += 2;
                continue;
            }
            ++i;
            return true;
        }
        out += s[i++];
    }
    return false;
}

// Operators, longest first; != and == are read as <> and =.
bool readOp(const QString& s, int& i, QString& op) {
    static const char* const ops[] = {"<>", "<=", ">=", "!=", "==", "||", "<<", ">>", "<", ">",
                                      "=",  "+",  "-",  "*",  "/",  "%",  "&",  "|",  "~"};
    for (const char* o : ops) {
        const QString t = QString::fromLatin1(o);
        if (s.mid(i, t.size()) == t) {
            op = t == u"!=" ? QStringLiteral("<>") : t == u"==" ? QStringLiteral("=") : t;
            i += t.size();
            return true;
        }
    }
    return false;
}

bool skipBlankOrComment(const QString& s, int& i) {
    if (s[i].isSpace()) {
        ++i;
        return true;
    }
    if (s.mid(i, 2) == u"--") {
        while (i < s.size() && s[i] != u'\n')
            ++i;
        return true;
    }
    if (s.mid(i, 2) == u"/*") {
        const int end = s.indexOf(QStringLiteral("*/"), i + 2);
        i = end < 0 ? s.size() : end + 2;
        return true;
    }
    return false;
}

} // namespace

QList<Token> tokenize(const QString& s, Dialect dialect, bool* ok) {
    QList<Token> out;
    bool good = true;
    int i = 0;
    while (i < s.size()) {
        if (skipBlankOrComment(s, i))
            continue;
        const QChar c = s[i];
        Token t;
        if (c == u'\'' || c == u'"' || c == u'`' || c == u'[') {
            const bool jetString = dialect == Dialect::Jet && c == u'"';
            t.kind = (c == u'\'' || jetString) ? Token::Kind::String : Token::Kind::Name;
            good = readQuoted(s, i, c == u'[' ? QChar(u']') : c, t.text) && good;
        } else if (c == u'#' && dialect == Dialect::Jet) {
            t.kind = Token::Kind::Date;
            good = readQuoted(s, i, u'#', t.text) && good;
        } else if (c.isDigit() || (c == u'.' && i + 1 < s.size() && s[i + 1].isDigit())) {
            t.kind = Token::Kind::Number;
            while (i < s.size() &&
                   (s[i].isLetterOrNumber() || s[i] == u'.' ||
                    ((s[i] == u'+' || s[i] == u'-') && (s[i - 1] == u'e' || s[i - 1] == u'E'))))
                t.text += s[i++];
        } else if (isWordChar(c)) {
            t.kind = Token::Kind::Word;
            while (i < s.size() && isWordChar(s[i]))
                t.text += s[i++];
        } else if (c == u'(' || c == u')' || c == u',') {
            t.kind = c == u'(' ? Token::Kind::Open : c == u')' ? Token::Kind::Close : Token::Kind::Comma;
            t.text = c;
            ++i;
        } else if (readOp(s, i, t.text)) {
            t.kind = Token::Kind::Op;
        } else {
            t.kind = Token::Kind::Other;
            t.text = c;
            ++i;
        }
        out.push_back(t);
    }
    if (ok)
        *ok = good;
    return out;
}

QString quoteName(const QString& name) {
    QString q = name;
    q.replace(u'"', QStringLiteral("\"\""));
    return u'"' + q + u'"';
}

QString quoteString(const QString& text) {
    QString q = text;
    q.replace(u'\'', QStringLiteral("''"));
    return u'\'' + q + u'\'';
}

} // namespace vesk::sql
