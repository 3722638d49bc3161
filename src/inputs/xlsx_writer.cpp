#include "inputs/xlsx_file.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamWriter>
#include <cmath>

namespace vesk {

namespace {

constexpr int kWorksheetTextLimit = 255; // as the worksheet driver cut texts

bool validSheetName(const QString& name) {
    static const QRegularExpression bad(QStringLiteral("[\\[\\]:*?/\\\\]"));
    return !name.isEmpty() && name.size() <= 31 && !name.contains(bad) && !name.startsWith(u'\'') &&
           !name.endsWith(u'\'');
}

// A defined name starts with a letter, "_" or "\", holds no blank, and is no cell reference.
bool validDefinedName(const QString& name) {
    static const QRegularExpression form(QStringLiteral("^[A-Za-z_\\\\][A-Za-z0-9_.\\\\]*$"));
    static const QRegularExpression r1c1(QStringLiteral("^[Rr][0-9]*[Cc][0-9]*$"));
    int r, c;
    return form.match(name).hasMatch() && !parseCellRef(name, &r, &c) && !r1c1.match(name).hasMatch() &&
           name.size() <= 255;
}

QString quotedSheet(const QString& sheet) {
    return u'\'' + QString(sheet).replace(QStringLiteral("'"), QStringLiteral("''")) + u'\'';
}

QString areaFormula(const BufferedTable& t) {
    const int lastCol = t.firstCol + std::max(0, static_cast<int>(t.def.fields.size()) - 1);
    const int lastRow = t.firstRow + static_cast<int>(t.rows.size()) - (t.fieldHeads ? 0 : 1);
    return quotedSheet(t.def.name) + u'!' + cellRef(t.firstRow, t.firstCol, true) + u':' +
           cellRef(std::max(t.firstRow, lastRow), lastCol, true);
}

bool hasTime(double serial) {
    return serial != std::floor(serial);
}

} // namespace

// ---------------------------------------------------------------------------------------------
// Tables added to a workbook that exists

namespace {

// Inserts `text` before the closing tag of `element` (any namespace prefix); false when absent.
bool insertBeforeClose(QString& xml, const QString& element, const QString& text) {
    const QRegularExpression close(QStringLiteral("</(\\w+:)?%1>").arg(element));
    const auto m = close.match(xml);
    if (!m.hasMatch())
        return false;
    xml.insert(m.capturedStart(), text);
    return true;
}

QString prefixOf(const QString& xml, const QString& element) {
    const QRegularExpression open(QStringLiteral("<(\\w+:)?%1[\\s>/]").arg(element));
    return open.match(xml).captured(1);
}

// Appends the cell formats for dates and date-times to cellXfs; returns their indexes.
bool addDateStyles(QString& styles, int* dateXf, int* dateTimeXf) {
    const QRegularExpression block(QStringLiteral("<(\\w+:)?cellXfs([^>]*)>([\\s\\S]*?)</(\\w+:)?cellXfs>"));
    const auto m = block.match(styles);
    if (!m.hasMatch())
        return false;
    const QString prefix = m.captured(1);
    static const QRegularExpression xfOpen(QStringLiteral("<(\\w+:)?xf[\\s>/]"));
    const int existing = static_cast<int>(m.captured(3).count(xfOpen));
    *dateXf = existing;
    *dateTimeXf = existing + 1;
    const QString xf =
        QStringLiteral("<%1xf numFmtId=\"%2\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
                       "applyNumberFormat=\"1\"/>");
    QString attrs = m.captured(2);
    static const QRegularExpression count(QStringLiteral("count=\"\\d+\""));
    attrs.replace(count, QStringLiteral("count=\"%1\"").arg(existing + 2));
    const QString rebuilt =
        QStringLiteral("<%1cellXfs%2>%3%4%5</%1cellXfs>")
            .arg(prefix, attrs, m.captured(3), xf.arg(prefix).arg(14), xf.arg(prefix).arg(22));
    styles.replace(m.capturedStart(), m.capturedLength(), rebuilt);
    return true;
}

QByteArray sheetXml(const BufferedTable& t, int dateXf, int dateTimeXf) {
    QByteArray out;
    QXmlStreamWriter w(&out);
    w.writeStartDocument(QStringLiteral("1.0"), true);
    w.writeStartElement(QStringLiteral("worksheet"));
    w.writeDefaultNamespace(QStringLiteral("http://schemas.openxmlformats.org/spreadsheetml/2006/main"));
    w.writeStartElement(QStringLiteral("sheetData"));
    auto text = [&](int r, int c, const QString& s) {
        w.writeStartElement(QStringLiteral("c"));
        w.writeAttribute(QStringLiteral("r"), cellRef(r, c));
        w.writeAttribute(QStringLiteral("t"), QStringLiteral("inlineStr"));
        w.writeStartElement(QStringLiteral("is"));
        w.writeStartElement(QStringLiteral("t"));
        w.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
        w.writeCharacters(escapeCellText(s));
        w.writeEndElement();
        w.writeEndElement();
        w.writeEndElement();
    };
    auto number = [&](int r, int c, const QString& type, int style, const QString& v) {
        w.writeStartElement(QStringLiteral("c"));
        w.writeAttribute(QStringLiteral("r"), cellRef(r, c));
        if (!type.isEmpty())
            w.writeAttribute(QStringLiteral("t"), type);
        if (style >= 0)
            w.writeAttribute(QStringLiteral("s"), QString::number(style));
        w.writeTextElement(QStringLiteral("v"), v);
        w.writeEndElement();
    };
    const int heads = t.fieldHeads ? 1 : 0;
    for (int i = 0; i < heads + t.rows.size(); ++i) {
        const int r = t.firstRow + i;
        w.writeStartElement(QStringLiteral("row"));
        w.writeAttribute(QStringLiteral("r"), QString::number(r + 1));
        if (i < heads) {
            for (int j = 0; j < t.def.fields.size(); ++j)
                text(r, t.firstCol + j, t.def.fields[j].name);
        } else {
            const QList<Cell>& row = t.rows[i - heads];
            for (int j = 0; j < row.size(); ++j) {
                const Cell& v = row[j];
                const int c = t.firstCol + j;
                if (v.isEmpty() || v.isNull() || (v.isNumber() && !std::isfinite(v.toDouble())))
                    continue;
                const double x = v.toDouble();
                if (!v.isNumber())
                    text(r, c, v.toString());
                else if (v.isBoolean())
                    number(r, c, QStringLiteral("b"), -1,
                           x != 0.0 ? QStringLiteral("1") : QStringLiteral("0"));
                else if (v.isDate() && dateXf >= 0)
                    number(r, c, QString(), hasTime(x) ? dateTimeXf : dateXf,
                           QString::number(excelSerialFromDate(x), 'g', 17));
                else
                    number(r, c, QString(), -1, QString::number(x, 'g', 17));
            }
        }
        w.writeEndElement();
    }
    w.writeEndElement();
    w.writeEndElement();
    w.writeEndDocument();
    return out;
}

bool tableHasDates(const BufferedTable& t) {
    for (const auto& row : t.rows)
        for (const auto& v : row)
            if (v.isDate())
                return true;
    return false;
}

} // namespace

namespace {

const QString kRelNs = QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");

// The parts of a workbook that a new sheet touches, as texts, and what the new sheets need to know.
struct WorkbookParts {
    QString workbookPart, folder, relsPart;
    QString wb, rels, types;
    QString sheetPrefix, relPrefix;
    int nextSheetId = 1;
    int dateXf = -1, dateTimeXf = -1;
};

bool loadParts(const ZipArchive& zip, const QString& workbookPart, WorkbookParts* p, QString* error) {
    const int slash = static_cast<int>(workbookPart.lastIndexOf(u'/'));
    p->workbookPart = workbookPart;
    p->folder = workbookPart.left(slash + 1);
    p->relsPart =
        p->folder + QStringLiteral("_rels/") + workbookPart.mid(slash + 1) + QStringLiteral(".rels");
    const ZipEntry *wb = zip.find(workbookPart), *rels = zip.find(p->relsPart),
                   *types = zip.find(QStringLiteral("[Content_Types].xml"));
    if (!wb || !rels || !types) {
        *error = QStringLiteral("the workbook lacks one of its parts");
        return false;
    }
    p->wb = QString::fromUtf8(wb->data);
    p->rels = QString::fromUtf8(rels->data);
    p->types = QString::fromUtf8(types->data);
    static const QRegularExpression sheetId(QStringLiteral("sheetId=\"(\\d+)\""));
    for (auto it = sheetId.globalMatch(p->wb); it.hasNext();)
        p->nextSheetId = std::max(p->nextSheetId, it.next().captured(1).toInt() + 1);
    p->sheetPrefix = prefixOf(p->wb, QStringLiteral("sheets"));
    return true;
}

// The relationships' prefix declared on the workbook element; "r" declared there when it has none
// (some writers declare it on each sheet element instead, and readers want it at the root).
bool declareRelationshipPrefix(WorkbookParts& p, QString* error) {
    const auto root = QRegularExpression(QStringLiteral("<(\\w+:)?workbook\\b[^>]*>")).match(p.wb);
    if (!root.hasMatch()) {
        *error = QStringLiteral("the workbook part has no workbook element");
        return false;
    }
    const QRegularExpression decl(
        QStringLiteral("xmlns:(\\w+)=\"%1\"").arg(QRegularExpression::escape(kRelNs)));
    p.relPrefix = decl.match(root.captured(0)).captured(1);
    if (p.relPrefix.isEmpty()) {
        p.relPrefix = QStringLiteral("r");
        p.wb.insert(root.capturedEnd() - (root.captured(0).endsWith(QLatin1String("/>")) ? 2 : 1),
                    QStringLiteral(" xmlns:r=\"%1\"").arg(kRelNs));
    }
    return true;
}

// Cell formats for dates, in the styles part the workbook's relations name.
bool addDateFormats(ZipArchive& zip, WorkbookParts& p, QString* error) {
    static const QRegularExpression stylesRel(QStringLiteral(
        "Type=\"[^\"]*/styles\"[^>]*Target=\"([^\"]+)\"|Target=\"([^\"]+)\"[^>]*Type=\"[^\"]*/styles\""));
    const auto m = stylesRel.match(p.rels);
    const QString target = m.captured(1).isEmpty() ? m.captured(2) : m.captured(1);
    const QString part = target.startsWith(u'/') ? target.mid(1) : p.folder + target;
    const ZipEntry* st = target.isEmpty() ? nullptr : zip.find(part);
    QString styles = st ? QString::fromUtf8(st->data) : QString();
    if (!st || !addDateStyles(styles, &p.dateXf, &p.dateTimeXf)) {
        *error = QStringLiteral("the workbook has no cell formats to add a date format to");
        return false;
    }
    zip.put(part, styles.toUtf8());
    return true;
}

bool addSheet(ZipArchive& zip, WorkbookParts& p, const BufferedTable& t, QString* error) {
    int k = 1;
    while (zip.find(p.folder + QStringLiteral("worksheets/sheet%1.xml").arg(k)))
        ++k;
    const QString target = QStringLiteral("worksheets/sheet%1.xml").arg(k);
    QString rid = QStringLiteral("rIdVesk%1").arg(k);
    while (p.rels.contains(u'"' + rid + u'"'))
        rid += u'x';
    zip.put(p.folder + target, sheetXml(t, p.dateXf, p.dateTimeXf));
    insertBeforeClose(p.rels, QStringLiteral("Relationships"),
                      QStringLiteral("<Relationship Id=\"%1\" Type=\"%2/worksheet\" Target=\"%3\"/>")
                          .arg(rid, kRelNs, target));
    insertBeforeClose(p.types, QStringLiteral("Types"),
                      QStringLiteral("<Override PartName=\"/%1%2\" ContentType=\"application/"
                                     "vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>")
                          .arg(p.folder, target));
    const QString sheet = QStringLiteral("<%1sheet name=\"%2\" sheetId=\"%3\" %4:id=\"%5\"/>")
                              .arg(p.sheetPrefix, t.def.name.toHtmlEscaped())
                              .arg(p.nextSheetId++)
                              .arg(p.relPrefix, rid);
    if (!insertBeforeClose(p.wb, QStringLiteral("sheets"), sheet)) {
        *error = QStringLiteral("the workbook part has no list of sheets");
        return false;
    }
    if (!validDefinedName(t.def.name))
        return true;
    const QString name = QStringLiteral("<%1definedName name=\"%2\">%3</%1definedName>")
                             .arg(p.sheetPrefix, t.def.name.toHtmlEscaped(), areaFormula(t).toHtmlEscaped());
    if (!insertBeforeClose(p.wb, QStringLiteral("definedNames"), name)) {
        // The list of names comes right after the list of sheets.
        const auto m = QRegularExpression(QStringLiteral("</(\\w+:)?sheets>")).match(p.wb);
        p.wb.insert(m.capturedEnd(),
                    QStringLiteral("<%1definedNames>%2</%1definedNames>").arg(p.sheetPrefix, name));
    }
    return true;
}

} // namespace

bool addSheetsToWorkbook(ZipArchive& zip, const QString& workbookPart, const QList<BufferedTable>& tables,
                         QString* error) {
    WorkbookParts p;
    if (!loadParts(zip, workbookPart, &p, error) || !declareRelationshipPrefix(p, error))
        return false;
    bool needDates = false;
    for (const auto& t : tables)
        needDates = needDates || tableHasDates(t);
    if (needDates && !addDateFormats(zip, p, error))
        return false;
    for (const auto& t : tables)
        if (!addSheet(zip, p, t, error))
            return false;
    zip.put(p.workbookPart, p.wb.toUtf8());
    zip.put(p.relsPart, p.rels.toUtf8());
    zip.put(QStringLiteral("[Content_Types].xml"), p.types.toUtf8());
    return true;
}

// ---------------------------------------------------------------------------------------------
// New workbooks: an empty workbook of the parts every reader asks for, to which the tables are
// added as to any other. The sheets so written hold every number with the digits it needs to come
// back to the same double, and every text as it was.

namespace {

const char* kMainNs = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const char* kPackageRelNs = "http://schemas.openxmlformats.org/package/2006/relationships";

ZipArchive emptyWorkbook() {
    const QString rel = QStringLiteral("<Relationship Id=\"%1\" Type=\"%2/%3\" Target=\"%4\"/>");
    const QString docRels =
        QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");
    ZipArchive zip;
    zip.put(QStringLiteral("[Content_Types].xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
            "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
            "<Default Extension=\"rels\" "
            "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
            "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
            "<Override PartName=\"/xl/workbook.xml\" ContentType=\"application/"
            "vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
            "<Override PartName=\"/xl/styles.xml\" ContentType=\"application/"
            "vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/></Types>");
    // A relationships part holding the one relationship rId1 of `type` to `target`.
    const auto oneRelationship = [&](const QString& type, const QString& target) {
        return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                              "<Relationships xmlns=\"%1\">%2</Relationships>")
            .arg(QLatin1String(kPackageRelNs), rel.arg(QStringLiteral("rId1"), docRels, type, target))
            .toUtf8();
    };
    zip.put(QStringLiteral("_rels/.rels"),
            oneRelationship(QStringLiteral("officeDocument"), QStringLiteral("xl/workbook.xml")));
    zip.put(QStringLiteral("xl/workbook.xml"),
            QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                           "<workbook xmlns=\"%1\" xmlns:r=\"%2\"><sheets></sheets></workbook>")
                .arg(QLatin1String(kMainNs), docRels)
                .toUtf8());
    zip.put(QStringLiteral("xl/_rels/workbook.xml.rels"),
            oneRelationship(QStringLiteral("styles"), QStringLiteral("styles.xml")));
    zip.put(
        QStringLiteral("xl/styles.xml"),
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                       "<styleSheet xmlns=\"%1\"><fonts count=\"1\"><font><sz val=\"11\"/>"
                       "<name val=\"Calibri\"/></font></fonts><fills count=\"2\"><fill><patternFill "
                       "patternType=\"none\"/></fill><fill><patternFill patternType=\"gray125\"/></fill>"
                       "</fills><borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/>"
                       "</border></borders><cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" "
                       "fillId=\"0\" borderId=\"0\"/></cellStyleXfs><cellXfs count=\"1\"><xf numFmtId=\"0\" "
                       "fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/></cellXfs><cellStyles "
                       "count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
                       "</styleSheet>")
            .arg(QLatin1String(kMainNs))
            .toUtf8());
    return zip;
}

} // namespace

bool writeNewWorkbook(const QString& path, const QList<BufferedTable>& tables, QString* error) {
    ZipArchive zip = emptyWorkbook();
    return addSheetsToWorkbook(zip, QStringLiteral("xl/workbook.xml"), tables, error) &&
           zip.write(path, error);
}

// ---------------------------------------------------------------------------------------------
// The driver

bool XlsxDriver::open(const QString& path, bool forWriting) {
    path_ = path;
    building_.clear();
    book_.reset();
    return openForeignFile(path, forWriting, [&](QString* error) {
        book_ = XlsxBook::load(path, error);
        return book_.has_value();
    });
}

bool XlsxDriver::fileHasTable(const QString& name) {
    if (!book_)
        return false;
    return book_->hasDefinedName(name) || book_->sheetNames().contains(name, Qt::CaseInsensitive);
}

bool XlsxDriver::createTable(const TableDef& def) {
    if (!validSheetName(def.name)) {
        setForeignError(
            engine_error::kInvalidName,
            QStringLiteral("'%1' is not a valid name: a sheet's name has 1 to 31 characters and none of "
                           "[ ] : * ? / \\.")
                .arg(def.name));
        return false;
    }
    if (!tableIsNew(def.name))
        return false;
    if (def.fields.size() > 16384) {
        setForeignError(engine_error::kTooLarge,
                        QStringLiteral("A worksheet has no more than 16384 columns."));
        return false;
    }
    building_ << BufferedTable{def, {}};
    return true;
}

bool XlsxDriver::bufferRows(BufferedTable& t, const CellArray& rows) {
    const int n = rows.rank() == 2 ? rows.size(0) : 0;
    if (t.rows.size() + n >= 1048576) {
        setForeignError(engine_error::kTooLarge,
                        QStringLiteral("A worksheet has no more than 1048576 rows."));
        return false;
    }
    for (int i = 0; i < n; ++i)
        t.rows << storedRow(t.def, rows, i, kWorksheetTextLimit);
    return true;
}

std::optional<ForeignTable> XlsxDriver::readTable(const QString& name) {
    if (!book_)
        return std::nullopt;
    const auto area = book_->findTable(name);
    if (!area)
        return std::nullopt;
    const auto& cells = book_->sheetCells(area->sheet);
    auto at = [&](int r, int c) { return cells.value({r, c}, Cell::null()); };
    return tableOfRange(name, area->row1, area->col1, area->row2, area->col2, at);
}

bool XlsxDriver::close() {
    if (building_.isEmpty())
        return true;
    QString error;
    bool ok;
    if (!book_) {
        ok = writeNewWorkbook(path_, building_, &error);
    } else {
        ZipArchive zip = book_->archive();
        ok = addSheetsToWorkbook(zip, book_->workbookPart(), building_, &error) && zip.write(path_, &error);
    }
    building_.clear();
    if (!ok)
        setForeignError(engine_error::kCannotOpen,
                        QStringLiteral("Cannot write '%1': %2.").arg(path_, error));
    return ok;
}

} // namespace vesk
