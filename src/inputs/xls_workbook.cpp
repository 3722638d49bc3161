#include "inputs/xls_workbook.h"

#include <QFile>
#include <QRegularExpression>
#include <freexl.h>

namespace vesk {

XlsWorkbook::~XlsWorkbook() {
    close();
}

bool XlsWorkbook::open(const QString& path) {
    close();
    const void* h = nullptr;
    if (freexl_open(QFile::encodeName(path).constData(), &h) != FREEXL_OK) {
        if (h)
            freexl_close(h);
        setForeignError(engine_error::kCannotOpen,
                        QStringLiteral("Cannot open the workbook '%1'.").arg(path));
        return false;
    }
    handle_ = h;
    unsigned count = 0;
    freexl_get_info(handle_, FREEXL_BIFF_SHEET_COUNT, &count);
    for (unsigned i = 0; i < count; ++i) {
        const char* name = nullptr;
        freexl_get_worksheet_name(handle_, static_cast<unsigned short>(i), &name);
        sheets_ << QString::fromUtf8(name ? name : "");
    }
    names_ = readXlsNames(path);
    return true;
}

bool XlsWorkbook::close() {
    if (handle_)
        freexl_close(handle_);
    handle_ = nullptr;
    sheets_.clear();
    names_.clear();
    return true;
}

std::optional<SheetArea> XlsWorkbook::findTable(const QString& name) {
    for (const auto& n : names_)
        if (n.name.compare(name, Qt::CaseInsensitive) == 0 && n.area.sheet >= 0 &&
            n.area.sheet < sheets_.size())
            return n.area;
    QString sheet = name;
    if (sheet.endsWith(u'$'))
        sheet.chop(1);
    const int index = static_cast<int>(
        sheets_.indexOf(QRegularExpression(QStringLiteral("^%1$").arg(QRegularExpression::escape(sheet)),
                                           QRegularExpression::CaseInsensitiveOption)));
    if (index < 0 || freexl_select_active_worksheet(handle_, static_cast<unsigned short>(index)) != FREEXL_OK)
        return std::nullopt;
    unsigned rows = 0;
    unsigned short cols = 0;
    freexl_worksheet_dimensions(handle_, &rows, &cols);
    return SheetArea{index, 0, 0, static_cast<int>(rows) - 1, static_cast<int>(cols) - 1};
}

Cell XlsWorkbook::cellAt(unsigned row, unsigned short col) const {
    FreeXL_CellValue v;
    if (freexl_get_cell_value(handle_, row, col, &v) != FREEXL_OK)
        return Cell::null();
    switch (v.type) {
    case FREEXL_CELL_INT:
        return Cell(v.value.int_value);
    case FREEXL_CELL_DOUBLE:
        return Cell(v.value.double_value);
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT:
        return Cell(QString::fromUtf8(v.value.text_value));
    case FREEXL_CELL_DATE: {
        const QDate day = QDate::fromString(QString::fromLatin1(v.value.text_value), Qt::ISODate);
        return day.isValid() ? Cell::date(dateSerial(day)) : Cell::null();
    }
    case FREEXL_CELL_DATETIME: {
        const QDateTime when = QDateTime::fromString(QString::fromLatin1(v.value.text_value),
                                                     QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        return when.isValid() ? Cell::date(dateSerial(when)) : Cell::null();
    }
    case FREEXL_CELL_TIME: {
        const QTime t =
            QTime::fromString(QString::fromLatin1(v.value.text_value), QStringLiteral("HH:mm:ss"));
        return t.isValid() ? Cell::date(t.msecsSinceStartOfDay() / 86400000.0) : Cell::null();
    }
    default:
        return Cell::null();
    }
}

std::optional<ForeignTable> XlsWorkbook::readTable(const QString& name) {
    if (!handle_)
        return std::nullopt;
    const auto area = findTable(name);
    if (!area ||
        freexl_select_active_worksheet(handle_, static_cast<unsigned short>(area->sheet)) != FREEXL_OK)
        return std::nullopt;
    unsigned rows = 0;
    unsigned short cols = 0;
    freexl_worksheet_dimensions(handle_, &rows, &cols);
    auto at = [&](int r, int c) {
        return r < static_cast<int>(rows) && c < cols
                   ? cellAt(static_cast<unsigned>(r), static_cast<unsigned short>(c))
                   : Cell::null();
    };
    return tableOfRange(name, area->row1, area->col1, area->row2, area->col2, at);
}

} // namespace vesk
