#include "inputs/sheet_bounds.h"
#include "inputs/xlsx_file.h"

#include <QDir>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <cctype>
#include <cmath>

namespace vesk {

double excelSerialFromDate(double dateSerial) {
    return (dateSerial >= 1.0 && dateSerial < 61.0) ? dateSerial - 1.0 : dateSerial;
}

double dateFromExcelSerial(double excelSerial, bool date1904) {
    if (date1904)
        return excelSerial + 1462.0;
    if (excelSerial >= 1.0 && excelSerial < 60.0)
        return excelSerial + 1.0;
    if (excelSerial >= 60.0 && excelSerial < 61.0) // 29 February 1900, a day that never was
        return 61.0;
    return excelSerial;
}

namespace {

bool isHex4(QStringView s) {
    if (s.size() != 4)
        return false;
    for (const QChar c : s)
        if (!isxdigit(c.unicode() < 0x80 ? c.unicode() : 0))
            return false;
    return true;
}

// Whether `s` holds an escape "_xHHHH_" at `i`.
bool escapeAt(const QString& s, qsizetype i) {
    return i + 7 <= s.size() && s[i] == u'_' && s[i + 1] == u'x' && s[i + 6] == u'_' &&
           isHex4(QStringView(s).mid(i + 2, 4));
}

} // namespace

QString escapeCellText(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t u = text[i].unicode();
        const bool unfit = (u < 0x20 && u != 0x09 && u != 0x0A) || u == 0xFFFE || u == 0xFFFF;
        if (unfit || (u == u'_' && escapeAt(text, i)))
            out += QStringLiteral("_x") + QString::number(u, 16).toUpper().rightJustified(4, u'0') + u'_';
        else
            out += text[i];
    }
    return out;
}

QString unescapeCellText(const QString& text) {
    if (!text.contains(QLatin1String("_x")))
        return text;
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (escapeAt(text, i)) {
            out += QChar(static_cast<char16_t>(text.mid(i + 2, 4).toUInt(nullptr, 16)));
            i += 6;
        } else {
            out += text[i];
        }
    }
    return out;
}

bool parseCellRef(const QString& ref, int* row, int* col) {
    static const QRegularExpression re(QStringLiteral("^\\$?([A-Za-z]{1,3})\\$?([0-9]{1,7})$"));
    const auto m = re.match(ref.trimmed());
    if (!m.hasMatch())
        return false;
    int c = 0;
    for (const QChar ch : m.captured(1).toUpper())
        c = c * 26 + (ch.unicode() - 'A' + 1);
    const int r = m.captured(2).toInt();
    if (r < 1)
        return false;
    *row = r - 1;
    *col = c - 1;
    return true;
}

QString cellRef(int row, int col, bool absolute) {
    QString letters;
    for (int c = col + 1; c > 0; c = (c - 1) / 26)
        letters.prepend(QChar(u'A' + (c - 1) % 26));
    const QString d = absolute ? QStringLiteral("$") : QString();
    return d + letters + d + QString::number(row + 1);
}

bool isBuiltInDateFormat(int id) {
    return (id >= 14 && id <= 22) || (id >= 27 && id <= 36) || (id >= 45 && id <= 47) ||
           (id >= 50 && id <= 58);
}

bool isDateFormatCode(const QString& code) {
    // Only the first section decides; quoted text, escapes and colours or locales in brackets do
    // not count, but elapsed-time brackets ([h], [mm], [ss]) do.
    QString bare;
    const QString first = code.section(u';', 0, 0);
    for (int i = 0; i < first.size(); ++i) {
        const QChar c = first[i];
        if (c == u'"') {
            const int close = static_cast<int>(first.indexOf(u'"', i + 1));
            i = close < 0 ? static_cast<int>(first.size()) : close;
        } else if (c == u'\\' || c == u'_' || c == u'*') {
            ++i;
        } else if (c == u'[') {
            const int close = static_cast<int>(first.indexOf(u']', i + 1));
            const QString inside = first.mid(i + 1, close - i - 1).toLower();
            if (!inside.isEmpty() &&
                inside.count(u'h') + inside.count(u'm') + inside.count(u's') == inside.size())
                bare += inside;
            i = close < 0 ? static_cast<int>(first.size()) : close;
        } else {
            bare += c.toLower();
        }
    }
    if (bare.contains(QLatin1String("general")))
        return false;
    for (const QChar c : bare)
        if (c == u'd' || c == u'm' || c == u'y' || c == u'h' || c == u's')
            return true;
    return false;
}

bool parseAreaReference(const QString& text, QString* sheetName, SheetArea* area) {
    QString t = text.trimmed();
    if (t.startsWith(u'='))
        t.remove(0, 1);
    const int bang = static_cast<int>(t.lastIndexOf(u'!'));
    if (bang <= 0)
        return false;
    QString sheet = t.left(bang);
    if (sheet.size() >= 2 && sheet.startsWith(u'\'') && sheet.endsWith(u'\''))
        sheet = sheet.mid(1, sheet.size() - 2).replace(QStringLiteral("''"), QStringLiteral("'"));
    const QStringList corners = t.mid(bang + 1).split(u':');
    if (corners.isEmpty() || corners.size() > 2)
        return false;
    int r1, c1, r2, c2;
    if (!parseCellRef(corners[0], &r1, &c1))
        return false;
    if (corners.size() == 2 && !parseCellRef(corners[1], &r2, &c2))
        return false;
    if (corners.size() == 1) {
        r2 = r1;
        c2 = c1;
    }
    *sheetName = sheet;
    area->row1 = std::min(r1, r2);
    area->row2 = std::max(r1, r2);
    area->col1 = std::min(c1, c2);
    area->col2 = std::max(c1, c2);
    return true;
}

namespace {

const QString kRelNs = QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");

QString resolvePart(const QString& fromPart, const QString& target) {
    if (target.startsWith(u'/'))
        return target.mid(1);
    const int slash = static_cast<int>(fromPart.lastIndexOf(u'/'));
    const QString base = slash < 0 ? QString() : fromPart.left(slash + 1);
    return QDir::cleanPath(base + target);
}

QString relsPartOf(const QString& part) {
    const int slash = static_cast<int>(part.lastIndexOf(u'/'));
    return part.left(slash + 1) + QStringLiteral("_rels/") + part.mid(slash + 1) + QStringLiteral(".rels");
}

struct Relation {
    QString type, target;
};

QHash<QString, Relation> readRelations(const ZipArchive& zip, const QString& part) {
    QHash<QString, Relation> out;
    const ZipEntry* e = zip.find(relsPartOf(part));
    if (!e)
        return out;
    QXmlStreamReader xml(e->data);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement() || xml.name() != u"Relationship")
            continue;
        const auto a = xml.attributes();
        if (a.value(QLatin1String("TargetMode")) != u"External")
            out.insert(a.value(QLatin1String("Id")).toString(),
                       {a.value(QLatin1String("Type")).toString(),
                        resolvePart(part, a.value(QLatin1String("Target")).toString())});
    }
    return out;
}

// All text of <t> elements under the current element (rich runs joined, phonetic runs skipped).
QString readRichText(QXmlStreamReader& xml) {
    QString text;
    const QString end = xml.name().toString();
    int phonetic = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == u"rPh")
            ++phonetic;
        else if (xml.isEndElement() && xml.name() == u"rPh")
            --phonetic;
        else if (xml.isStartElement() && xml.name() == u"t" && phonetic == 0)
            text += unescapeCellText(xml.readElementText());
        else if (xml.isEndElement() && xml.name() == end)
            break;
    }
    return text;
}

} // namespace

std::optional<XlsxBook> XlsxBook::load(const QString& path, QString* error) {
    auto zip = ZipArchive::read(path, error);
    if (!zip)
        return std::nullopt;
    XlsxBook book;
    book.zip_ = std::move(*zip);
    if (!book.readWorkbook(error))
        return std::nullopt;
    for (auto& sheet : book.sheets_)
        if (!book.readSheet(sheet, error))
            return std::nullopt;
    if (!book.checkBounds(error))
        return std::nullopt;
    return book;
}

bool XlsxBook::readWorkbook(QString* error) {
    workbookPart_ = QStringLiteral("xl/workbook.xml");
    for (const auto& r : readRelations(zip_, QString()))
        if (r.type.endsWith(QLatin1String("/officeDocument")))
            workbookPart_ = r.target;
    const ZipEntry* wb = zip_.find(workbookPart_);
    if (!wb) {
        *error = QStringLiteral("the archive holds no workbook");
        return false;
    }
    const auto rels = readRelations(zip_, workbookPart_);
    QXmlStreamReader xml(wb->data);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const auto a = xml.attributes();
        if (xml.name() == u"workbookPr") {
            const auto v = a.value(QLatin1String("date1904"));
            date1904_ = v == u"1" || v == u"true";
        } else if (xml.name() == u"sheet") {
            const QString id = a.value(kRelNs, QLatin1String("id")).toString();
            sheets_ << Sheet{a.value(QLatin1String("name")).toString(), rels.value(id).target, false, {}};
        } else if (xml.name() == u"definedName") {
            const auto local = a.value(QLatin1String("localSheetId"));
            const QString name = a.value(QLatin1String("name")).toString();
            names_ << DefinedName{name, local.isEmpty() ? -1 : local.toInt(), xml.readElementText()};
        }
    }
    if (xml.hasError()) {
        *error = QStringLiteral("the workbook part is not well-formed: %1").arg(xml.errorString());
        return false;
    }
    for (const auto& r : rels) {
        if (r.type.endsWith(QLatin1String("/sharedStrings")))
            readSharedStrings(r.target);
        else if (r.type.endsWith(QLatin1String("/styles")))
            readStyles(r.target);
    }
    return true;
}

void XlsxBook::readSharedStrings(const QString& part) {
    const ZipEntry* e = zip_.find(part);
    if (!e)
        return;
    QXmlStreamReader xml(e->data);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == u"si")
            sharedStrings_ << readRichText(xml);
    }
}

void XlsxBook::readStyles(const QString& part) {
    const ZipEntry* e = zip_.find(part);
    if (!e)
        return;
    QHash<int, QString> codes;
    QXmlStreamReader xml(e->data);
    bool inCellXfs = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == u"cellXfs")
            inCellXfs = false;
        if (!xml.isStartElement())
            continue;
        const auto a = xml.attributes();
        if (xml.name() == u"numFmt") {
            codes.insert(a.value(QLatin1String("numFmtId")).toInt(),
                         a.value(QLatin1String("formatCode")).toString());
        } else if (xml.name() == u"cellXfs") {
            inCellXfs = true;
        } else if (inCellXfs && xml.name() == u"xf") {
            const int id = a.value(QLatin1String("numFmtId")).toInt();
            dateStyles_ << (codes.contains(id) ? isDateFormatCode(codes.value(id)) : isBuiltInDateFormat(id));
        }
    }
}

Cell XlsxBook::cellValue(const QString& type, int style, const QString& v, const QString& inlineText) const {
    if (type == u"s") {
        const int i = v.toInt();
        return i >= 0 && i < sharedStrings_.size() ? Cell(sharedStrings_[i]) : Cell::null();
    }
    if (type == u"inlineStr")
        return Cell(inlineText);
    if (type == u"str")
        return Cell(v);
    if (v.isEmpty() || type == u"e")
        return Cell::null();
    if (type == u"b")
        return Cell::boolean(v.trimmed() == u"1" || v.trimmed().compare(u"true", Qt::CaseInsensitive) == 0);
    if (type == u"d") {
        const QDateTime when = QDateTime::fromString(v.trimmed(), Qt::ISODateWithMs);
        return when.isValid() ? Cell::date(dateSerial(when)) : Cell(v);
    }
    bool ok = false;
    const double x = v.toDouble(&ok);
    if (!ok)
        return Cell(v);
    if (style >= 0 && style < dateStyles_.size() && dateStyles_[style])
        return Cell::date(dateFromExcelSerial(x, date1904_));
    return Cell(x);
}

namespace {

// The zero-based row of a <row> element: its number, else the row after `previous`; -1 with
// `error` set when it lies outside the sheet.
int rowOf(const QXmlStreamReader& xml, int previous, const QString& part, QString* error) {
    const auto r = xml.attributes().value(QLatin1String("r"));
    bool ok = true;
    const qint64 number = r.isEmpty() ? previous + 2 : r.toLongLong(&ok);
    if (ok && number >= 1 && number <= kSheetMaxRows)
        return static_cast<int>(number - 1);
    *error = QStringLiteral("the row %1 of %2 lies beyond the sheet's %3 rows")
                 .arg(r.isEmpty() ? QString::number(number) : r.toString(), part)
                 .arg(kSheetMaxRows);
    return -1;
}

} // namespace

// Reads the cells of a sheet; false when its part is damaged or a cell lies beyond the sheet.
bool XlsxBook::readSheet(Sheet& sheet, QString* error) {
    sheet.loaded = true;
    const ZipEntry* e = zip_.find(sheet.part);
    if (!e)
        return true;
    sheet.bytes = e->data.size();
    QXmlStreamReader xml(e->data);
    int row = -1, col = -1;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"row") {
            if ((row = rowOf(xml, row, sheet.part, error)) < 0)
                return false;
            col = -1;
            continue;
        }
        if (xml.name() != u"c")
            continue;
        const auto a = xml.attributes();
        const QString type = a.value(QLatin1String("t")).toString();
        const int style = a.value(QLatin1String("s")).isEmpty() ? -1 : a.value(QLatin1String("s")).toInt();
        int r = row, c = col + 1;
        if (!a.value(QLatin1String("r")).isEmpty())
            parseCellRef(a.value(QLatin1String("r")).toString(), &r, &c);
        if (r < 0 || r >= kSheetMaxRows || c < 0 || c >= kSheetMaxCols) {
            *error = QStringLiteral("the cell %1 of %2 lies beyond the sheet's %3 rows and %4 columns")
                         .arg(a.value(QLatin1String("r")).toString(), sheet.part)
                         .arg(kSheetMaxRows)
                         .arg(kSheetMaxCols);
            return false;
        }
        row = r;
        col = c;
        QString v, inlineText;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isEndElement() && xml.name() == u"c")
                break;
            if (xml.isStartElement() && xml.name() == u"v")
                v = xml.readElementText();
            else if (xml.isStartElement() && xml.name() == u"is")
                inlineText = readRichText(xml);
        }
        const Cell value = cellValue(type, style, v, inlineText);
        if (!value.isNull())
            sheet.cells.insert({r, c}, value);
    }
    if (xml.hasError()) {
        *error = QStringLiteral("the part %1 is not well-formed: %2").arg(sheet.part, xml.errorString());
        return false;
    }
    return true;
}

namespace {

CellBox boxOf(const SheetArea& a) {
    return {a.row1, a.col1, a.row2, a.col2};
}

} // namespace

// Every defined name and every sheet's used area a table that its sheet can account for.
bool XlsxBook::checkBounds(QString* error) const {
    for (const auto& n : names_) {
        QString sheetName;
        SheetArea area;
        const int sheet = parseAreaReference(n.formula, &sheetName, &area) ? sheetIndex(sheetName) : -1;
        if (sheet < 0)
            continue;
        *error = rangeRefusal(boxOf(area), sheets_[sheet].cells, kSheetMaxRows, kSheetMaxCols,
                              sheets_[sheet].bytes, QStringLiteral("the defined name '%1'").arg(n.name));
        if (!error->isEmpty())
            return false;
    }
    for (const auto& s : sheets_) {
        *error = rangeRefusal(boxOf(usedArea(s)), s.cells, kSheetMaxRows, kSheetMaxCols, s.bytes,
                              QStringLiteral("the sheet '%1'").arg(s.name));
        if (!error->isEmpty())
            return false;
    }
    return true;
}

int XlsxBook::sheetIndex(const QString& name) const {
    for (int i = 0; i < sheets_.size(); ++i)
        if (sheets_[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

SheetArea XlsxBook::usedArea(const Sheet& sheet) {
    SheetArea area{-1, 0, 0, -1, -1};
    bool first = true;
    for (auto it = sheet.cells.constBegin(); it != sheet.cells.constEnd(); ++it) {
        const int r = it.key().first, c = it.key().second;
        area.row1 = first ? r : std::min(area.row1, r);
        area.col1 = first ? c : std::min(area.col1, c);
        area.row2 = std::max(area.row2, r);
        area.col2 = std::max(area.col2, c);
        first = false;
    }
    return area;
}

QStringList XlsxBook::sheetNames() const {
    QStringList out;
    for (const auto& s : sheets_)
        out << s.name;
    return out;
}

const QMap<QPair<int, int>, Cell>& XlsxBook::sheetCells(int sheet) const {
    return sheets_[sheet].cells;
}

bool XlsxBook::hasDefinedName(const QString& name) const {
    for (const auto& n : names_)
        if (n.name.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

std::optional<SheetArea> XlsxBook::findTable(const QString& name) const {
    for (const auto& n : names_) {
        if (n.name.compare(name, Qt::CaseInsensitive) != 0)
            continue;
        QString sheetName;
        SheetArea area;
        if (!parseAreaReference(n.formula, &sheetName, &area))
            continue;
        if ((area.sheet = sheetIndex(sheetName)) < 0)
            continue;
        const CellBox present = boxToRead(boxOf(area), sheets_[area.sheet].cells, sheets_[area.sheet].bytes);
        area.row2 = present.row2;
        area.col2 = present.col2;
        return area;
    }
    QString sheetName = name;
    if (sheetName.endsWith(u'$'))
        sheetName.chop(1);
    const int i = sheetIndex(sheetName);
    if (i < 0)
        return std::nullopt;
    SheetArea area = usedArea(sheets_[i]);
    area.sheet = i;
    return area;
}

} // namespace vesk
