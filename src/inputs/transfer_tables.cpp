#include "inputs/transfer_tables.h"

#include "database/bulk_insert.h"
#include "inputs/foreign_file.h"
#include "inputs/text_file.h"
#include "platform/csv.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <cmath>

namespace vesk {

namespace {

// Whether a declared type keeps text (VARCHAR(n), LONGTEXT).
bool isTextType(const QString& declared) {
    const QString t = declared.toUpper();
    return t.contains(QLatin1String("CHAR")) || t.contains(QLatin1String("TEXT"));
}

// The declared types of `fields` in `table`, in their order; std::nullopt when one is missing.
std::optional<QList<bool>> textFields(const DbConnection& db, const QString& table, const QStringList& fields,
                                      QSqlError* error) {
    auto q = db.query(QStringLiteral("SELECT name, type FROM pragma_table_info(?)"), {table}, error);
    if (!q)
        return std::nullopt;
    QHash<QString, bool> declared;
    while (q->next())
        declared.insert(q->value(0).toString().toUpper(), isTextType(q->value(1).toString()));
    QList<bool> out;
    for (const QString& f : fields) {
        const auto it = declared.constFind(f.toUpper());
        if (it == declared.constEnd()) {
            *error = QSqlError(QString(), QStringLiteral("The table %1 has no field %2.").arg(table, f),
                               QSqlError::StatementError);
            return std::nullopt;
        }
        out << *it;
    }
    return out;
}

QVariant boundValue(const Cell& raw, bool textField) {
    if (raw.isEmpty() || raw.isNull())
        return QVariant();
    if (raw.isText()) {
        const QString t = raw.toString().trimmed();
        if (t.isEmpty())
            return QVariant();
        // A number as text (a text file's, a worksheet's text cell) goes to a numeric field as the
        // double it reads as, parsed here rather than by the engine's own conversion.
        bool number = false;
        const double x = textField ? 0 : t.toDouble(&number);
        return number && std::isfinite(x) ? QVariant(x) : QVariant(t);
    }
    if (textField || raw.isDate())
        return QVariant(valueText(raw).trimmed());
    return QVariant(raw.toDouble());
}

QString quoted(const QString& name) {
    return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

// Writes the rows over a dBase table or a text file that is there: the old file steps aside under a
// name of its own in the same folder and comes back when the new one fails.
bool replaceFile(const CellArray& rows, const QString& path, const QString& table, const QStringList& names) {
    const QFileInfo target(path);
    const QString unique = QUuid::createUuid().toString(QUuid::Id128);
    const QString aside =
        target.dir().filePath(QStringLiteral(".%1.%2.aside").arg(target.fileName(), unique));
    if (!QFile::rename(path, aside)) {
        setForeignError(engine_error::kNotWritable, QStringLiteral("'%1' cannot be replaced.").arg(path));
        return false;
    }
    const bool written = FnWriteArrFile(rows, path, table, names);
    if (written)
        QFile::remove(aside);
    else
        QFile::rename(aside, path);
    return written;
}

// A dBase number field is 20 characters wide, and a double whose shortest text is longer would come
// back only to within 1e-15. A column holding such a number goes out as text, each number as its
// shortest text, which an import reads back to the same double.
CellArray exactForDbase(const CellArray& rows) {
    if (rows.rank() != 2)
        return rows;
    CellArray out = rows;
    for (int c = 0; c < rows.size(1); ++c) {
        bool tooLong = false;
        for (int i = 0; i < rows.size(0) && !tooLong; ++i) {
            const Cell& v = rows(rows.lbound(0) + i, rows.lbound(1) + c);
            tooLong =
                v.isNumber() && !v.isDate() && !v.isBoolean() && shortestNumber(v.toDouble()).size() > 20;
        }
        for (int i = 0; i < rows.size(0) && tooLong; ++i) {
            Cell& v = out(out.lbound(0) + i, out.lbound(1) + c);
            if (v.isNumber())
                v = Cell(shortestNumber(v.toDouble()));
        }
    }
    return out;
}

} // namespace

QStringList FnGetFldNames(const DbConnection& db, const QString& table) {
    QStringList names;
    auto q = db.query(QStringLiteral("SELECT name FROM pragma_table_info(?) ORDER BY cid"), {table});
    while (q && q->next())
        names << q->value(0).toString();
    return names;
}

std::optional<TableRows> selectRows(const DbConnection& db, const QString& sql, const QVariantList& values,
                                    QSqlError* error) {
    auto q = db.query(sql, values, error);
    if (!q)
        return std::nullopt;
    TableRows out;
    const QSqlRecord record = q->record();
    for (int c = 0; c < record.count(); ++c)
        out.fieldNames << record.fieldName(c);
    const auto rows = rowsOf(*q, record.count());
    if (rows.isEmpty())
        return out;
    out.rows = CellArray{static_cast<int>(rows.size()), static_cast<int>(record.count())};
    for (int i = 0; i < rows.size(); ++i)
        for (int c = 0; c < record.count(); ++c)
            out.rows(i, c) = rows[i][c];
    return out;
}

bool hasRows(const DbConnection& db, const QString& sql, const QVariantList& values) {
    auto q = db.query(sql, values);
    return q && q->next();
}

bool inOneImport(const DbConnection& db, const std::function<bool(QSqlError*)>& work, QSqlError* error) {
    QSqlDatabase base = db.database();
    if (!base.transaction()) {
        *error = base.lastError();
        return false;
    }
    bool ok = db.exec(QStringLiteral("PRAGMA defer_foreign_keys = ON"), {}, error) && work(error);
    if (ok && !base.commit()) {
        *error = base.lastError();
        ok = false;
    }
    if (!ok)
        base.rollback();
    return ok;
}

bool runStatements(const DbConnection& db, const QStringList& statements, QSqlError* error) {
    for (const QString& sql : statements)
        if (!db.exec(sql, {}, error))
            return false;
    return true;
}

bool appendRows(const DbConnection& db, const QString& table, const QStringList& fields,
                const CellArray& rows, QSqlError* error, const QVariantList& lead,
                const ValueConversion& convert) {
    if (rows.rank() != 2 || rows.size(0) == 0)
        return true;
    const int fromArray = std::min<int>(rows.size(1), static_cast<int>(fields.size() - lead.size()));
    const QStringList used = fields.mid(0, lead.size() + std::max(fromArray, 0));
    const auto text = textFields(db, table, used, error);
    if (!text)
        return false;
    QStringList names, marks;
    for (const QString& f : used) {
        names << quoted(f);
        marks << QStringLiteral("?");
    }
    BulkInsert insert(db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                              .arg(quoted(table), names.join(u','), marks.join(u',')));
    if (!insert.ok()) {
        *error = insert.error();
        return false;
    }
    for (int i = 0; i < rows.size(0); ++i) {
        for (int k = 0; k < lead.size(); ++k)
            insert.bind(k, lead[k]);
        for (int c = 0; c < fromArray; ++c) {
            const Cell& v = rows(rows.lbound(0) + i, rows.lbound(1) + c);
            insert.bind(static_cast<int>(lead.size()) + c,
                        boundValue(convert ? convert(c, v) : v, (*text)[lead.size() + c]));
        }
        if (!insert.insert()) {
            *error = insert.error();
            return false;
        }
    }
    return true;
}

bool writeTableFile(const CellArray& rows, const QString& path, const QString& table,
                    const QStringList& fieldNames, bool replaceWhole) {
    const ForeignKind kind = foreignKind(path);
    const CellArray exact = kind == ForeignKind::Dbf ? exactForDbase(rows) : rows;
    replaceWhole = replaceWhole || kind == ForeignKind::Dbf || kind == ForeignKind::Text;
    if (replaceWhole && QFileInfo::exists(path))
        return replaceFile(exact, path, table, fieldNames);
    return FnWriteArrFile(exact, path, table, fieldNames);
}

std::optional<QString> shortTextRow(const CellArray& rows) {
    if (rows.rank() != 2)
        return std::nullopt;
    for (int i = 0; i < rows.size(0); ++i) {
        int present = rows.size(1);
        while (present > 0 && rows(rows.lbound(0) + i, rows.lbound(1) + present - 1).isEmpty())
            --present;
        if (present < rows.size(1))
            return QStringLiteral("Row %1 of the file has %2 of its %3 fields.")
                .arg(i + 1)
                .arg(present)
                .arg(rows.size(1));
    }
    return std::nullopt;
}

CellArray FnRemCol(const CellArray& array, int col) {
    if (array.rank() != 2 || array.size(1) <= 1 || array.size(0) == 0)
        return CellArray();
    const int rows = array.size(0), cols = array.size(1);
    CellArray out{rows, cols - 1};
    for (int i = 0; i < rows; ++i)
        for (int c = 0, k = 0; c < cols; ++c)
            if (c != col)
                out(i, k++) = array(array.lbound(0) + i, array.lbound(1) + c);
    return out;
}

QString tablePath(const QString& path, const QString& table) {
    if (foreignKind(path) != ForeignKind::Dbf)
        return path;
    return QFileInfo(path).dir().filePath(table + QStringLiteral(".dbf"));
}

bool writeSections(const QString& path, const QList<Section>& sections, QString* error) {
    QString text;
    for (const Section& s : sections)
        text += s.heading + QStringLiteral("\r\n") + textTableLines(s.rows) + QStringLiteral("\r\n");
    const QByteArray bytes = text.toUtf8();
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit()) {
        *error = f.errorString();
        return false;
    }
    return true;
}

namespace {

// The start of the first line at or after `pos` that `accepts`, or the end of the text; `after` is
// where the line after it starts.
qsizetype findLine(const QString& text, qsizetype pos, const std::function<bool(const QString&)>& accepts,
                   qsizetype* after) {
    while (pos < text.size()) {
        qsizetype end = text.indexOf(u'\n', pos);
        if (end < 0)
            end = text.size();
        QString line = text.mid(pos, end - pos);
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (accepts(line)) {
            *after = end + 1;
            return pos;
        }
        pos = end + 1;
    }
    *after = text.size();
    return text.size();
}

} // namespace

std::optional<CellArray> sectionRows(const QString& text, const QString& source,
                                     const std::function<bool(const QString&)>& isHeading,
                                     const std::function<bool(const QString&)>& ends, QString* error) {
    qsizetype first = 0, unused = 0;
    if (findLine(text, 0, isHeading, &first) >= text.size())
        return CellArray();
    const qsizetype stop = findLine(text, first, ends, &unused);
    return parseTextTable(text.mid(first, std::max<qsizetype>(stop - first, 0)), source, error);
}

std::optional<QString> firstBreakingValue(const CellArray& rows,
                                          const std::function<bool(const QString&)>& breaks) {
    if (rows.rank() != 2)
        return std::nullopt;
    for (int i = 0; i < rows.size(0); ++i)
        for (int c = 0; c < rows.size(1); ++c) {
            const QString t = valueText(rows(rows.lbound(0) + i, rows.lbound(1) + c));
            if (breaks(t))
                return t;
        }
    return std::nullopt;
}

} // namespace vesk
