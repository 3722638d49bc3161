#include "inputs/xls_file.h"

#include "inputs/child_reader.h"
#include "inputs/compound_file.h"
#include "inputs/table_stream.h"

#include <QFile>

namespace vesk {

namespace {

// The exit code of `vesk-cli xls-table` for a workbook without a table of that name.
constexpr int kNoSuchTable = 3;

bool refuse(const QString& path, const QString& why) {
    setForeignError(engine_error::kCannotOpen,
                    QStringLiteral("The workbook '%1' cannot be read: %2.").arg(path, why));
    return false;
}

} // namespace

bool XlsDriver::open(const QString& path, bool forWriting) {
    close();
    if (forWriting) {
        setForeignError(engine_error::kNotWritable,
                        QStringLiteral("Legacy Excel workbooks (.xls) can be read but not written; save the "
                                       "table as an Excel workbook (.xlsx) instead."));
        return false;
    }
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return refuse(path, f.errorString());
    // BIFF8 keeps its cells in the stream "Workbook", BIFF5 in "Book".
    QString why;
    if (!readCompoundStream(f.readAll(), QStringLiteral("Workbook"), &why)) {
        f.seek(0);
        QString whyBook;
        if (!readCompoundStream(f.readAll(), QStringLiteral("Book"), &whyBook))
            return refuse(path, why);
    }
    path_ = path;
    return true;
}

const std::optional<ForeignTable>& XlsDriver::childTable(const QString& name) {
    if (failed_ || name.compare(lastName_, Qt::CaseInsensitive) == 0)
        return lastTable_;
    lastName_ = name;
    lastTable_.reset();
    const ChildResult r = runReaderChild({QStringLiteral("xls-table"), path_, name});
    if (r.ran && r.exitCode == kNoSuchTable)
        return lastTable_;
    QString error;
    if (r.ran && r.exitCode == 0)
        lastTable_ = decodeTable(r.output, &error);
    else
        error = r.errorText.isEmpty() ? QStringLiteral("the reader ended with code %1").arg(r.exitCode)
                                      : r.errorText;
    if (!lastTable_) {
        failed_ = true;
        refuse(path_, error);
    }
    return lastTable_;
}

bool XlsDriver::hasTable(const QString& name) {
    return !path_.isEmpty() && childTable(name).has_value();
}

bool XlsDriver::createTable(const TableDef&) {
    setForeignError(engine_error::kNotWritable,
                    QStringLiteral("Legacy Excel workbooks (.xls) are read only."));
    return false;
}

bool XlsDriver::appendRows(const QString&, const CellArray&) {
    return createTable({});
}

std::optional<ForeignTable> XlsDriver::readTable(const QString& name) {
    if (path_.isEmpty())
        return std::nullopt;
    return childTable(name);
}

bool XlsDriver::close() {
    path_.clear();
    lastName_.clear();
    lastTable_.reset();
    failed_ = false;
    return true;
}

} // namespace vesk
