#pragma once
// Readable failure output for Qt texts in GoogleTest, shared by the core tests.

#include <QString>
#include <QStringList>
#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList& l, std::ostream* os) {
    *os << '{';
    for (qsizetype i = 0; i < l.size(); ++i)
        *os << (i ? ", \"" : "\"") << l[i].toStdString() << '"';
    *os << '}';
}
QT_END_NAMESPACE
