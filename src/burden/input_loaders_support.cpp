#include "burden/input_loaders_support.h"

#include "foundation/error_store.h"
#include "foundation/runtime_arithmetic.h"
#include "platform/prompts.h"
#include "platform/runtime.h"

#include <QSqlError>
#include <cmath>

namespace vesk::loaders {

void show(const QString& text) {
    prompts().ask(text, Buttons::Ok, Icon::None, QString());
}

QVariant keyNumber(const Cell& year) {
    if (year.isNull())
        return QVariant();
    double v = 0;
    if (year.isNumber())
        v = year.toDouble();
    else if (const auto n = year.isEmpty() ? std::optional<double>(0.0) : runtime_arithmetic::textNumber(year.toString()))
        v = *n;
    else
        return QVariant(year.toString()); // no number: the table refuses it, naming the field
    if (v == std::floor(v) && std::fabs(v) < 1e15)
        return QVariant(static_cast<qlonglong>(v));
    return QVariant(v);
}

int rowsIn(const Cell& a) {
    return a.isArray() && a.array().rank() >= 1 ? a.array().size(0) : 0;
}

const Cell& entry(const Cell& vector, int i) {
    const CellArray& v = vector.array();
    return v(v.lbound(0) + i);
}

Rows readRows(const LoaderStudy& s, const QString& sql, const QVariantList& values, int columns,
              const char* source) {
    QSqlError e;
    auto q = s.db ? s.db->query(sql, values, &e) : std::nullopt;
    if (!q) {
        if (s.db)
            ErrorStore(engineErrorNumber(e), engineDescription(e), QString::fromLatin1(source));
        return {};
    }
    return rowsOf(*q, columns);
}

QHash<QString, Rows> groupedBy(const Rows& rows, int keyColumn) {
    QHash<QString, Rows> out;
    for (const QList<Cell>& row : rows)
        out[row[keyColumn].toString()].push_back(row);
    return out;
}

QString stepText(const char* words, const LoaderProgress& p, const char* tail) {
    const double seconds = p.seconds ? p.seconds() : 0.0;
    return QString::fromLatin1(words) + QStringLiteral("   ") + numberToText(roundHalfEven(seconds, 2)) +
           QString::fromLatin1(tail);
}

} // namespace vesk::loaders
