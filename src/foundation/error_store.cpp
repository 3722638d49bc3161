#include "foundation/error_store.h"

#include "platform/cell_array.h"
#include "platform/runtime.h"
#include "foundation/settings.h"

#include <QDateTime>
#include <QFile>
#include <QTextStream>

namespace vesk {

Cell& ErrStore() {
    static Cell store;
    return store;
}

int errorStoreCount() {
    return ErrStore().isArray() ? ErrStore().array().size(0) : 0;
}

void clearErrorStore() {
    ErrStore() = Cell();
}

QString errorLogPath() {
    return settings().StatOutPath + QStringLiteral("errorsrec.stp");
}

namespace {

bool& logEnabled() {
    static bool enabled = true;
    return enabled;
}

void appendLogBlock(const CellArray& rows) {
    QFile log(errorLogPath());
    if (!log.open(QIODevice::Append))
        return;
    QTextStream out(&log);
    const QDateTime now = QDateTime::currentDateTime();
    out << "[Date : " << now.toString(QStringLiteral("dd/MM/yyyy"))
        << "   Time : " << now.toString(QStringLiteral("HH:mm:ss")) << "]\r\n";
    for (int i = 0; i < rows.size(0); ++i)
        out << "       " << rows(i, 0).toString() << ',' << rows(i, 1).toString() << ','
            << rows(i, 2).toString() << "\r\n";
}

} // namespace

void setErrorLogEnabled(bool enabled) {
    logEnabled() = enabled;
}

void ErrorStore(double number, const QString& description, const QString& source) {
    Cell& store = ErrStore();
    if (!store.isArray())
        store = Cell(CellArray{0, 3});
    CellArray& rows = store.array();
    const int n = rows.size(0);
    rows.redim({{0, n}, {0, 2}}, true);
    rows(n, 0) = Cell(number);
    rows(n, 1) = Cell(description);
    rows(n, 2) = Cell(source);
    if (logEnabled())
        appendLogBlock(rows);
}

} // namespace vesk
