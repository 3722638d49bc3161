#pragma once
// Excel workbooks (.xlsx): read with minizip and QXmlStreamReader; a table is written as a new
// sheet part, and the workbook, its relations, content types and styles are patched, so that what
// the file held stays as it was (a new file starts as an empty workbook). Numbers go down with the
// digits that bring the same double back, texts whole.
//
// A defined name serves as a table (its first row the field names); a sheet's name stands for
// its used area when no defined name matches ("Sheet1" or "Sheet1$"). A new table becomes a sheet
// of its own name with a defined name of the same name over the written range.

#include "inputs/foreign_driver.h"
#include "inputs/zip_archive.h"

#include <QHash>
#include <QMap>

namespace vesk {

// Worksheet serials count days from 1900 with the fictitious 29 February 1900; cell dates count
// from 30 December 1899. The two agree from 1 March 1900 on.
double excelSerialFromDate(double dateSerial);
double dateFromExcelSerial(double excelSerial, bool date1904 = false);
// Text as a cell of a workbook holds it: a character that XML cannot carry, or a carriage return
// that XML folds into a line feed, as "_xHHHH_", and an underscore that would start such an escape
// as "_x005F_". unescapeCellText() reads both back.
QString escapeCellText(const QString& text);
QString unescapeCellText(const QString& text);
// "B3" or "$B$3" to a zero-based (row, column); false when it is no cell reference.
bool parseCellRef(const QString& ref, int* row, int* col);
QString cellRef(int row, int col, bool absolute = false);
// Whether a number format code shows a date or a time ("yyyy-mm-dd", "h:mm", "[h]:mm"...).
bool isDateFormatCode(const QString& code);
bool isBuiltInDateFormat(int numFmtId);

// A rectangle of a sheet, zero-based and inclusive.
struct SheetArea {
    int sheet = -1;
    int row1 = 0, col1 = 0, row2 = -1, col2 = -1;
};

// "Sheet1!$A$1:$C$4", "'My sheet'!A1:C4" or "Sheet1!$A$1": the sheet's name and the area.
bool parseAreaReference(const QString& text, QString* sheetName, SheetArea* area);

class XlsxBook {
public:
    static std::optional<XlsxBook> load(const QString& path, QString* error);

    QStringList sheetNames() const;
    // The area a table name stands for: a defined name (see boxToRead), else a sheet's used area.
    std::optional<SheetArea> findTable(const QString& name) const;
    // The cells of a sheet, keyed by (row, column).
    const QMap<QPair<int, int>, Cell>& sheetCells(int sheet) const;
    const ZipArchive& archive() const { return zip_; }
    const QString& workbookPart() const { return workbookPart_; }
    bool hasDefinedName(const QString& name) const;

private:
    struct Sheet {
        QString name;
        QString part;
        bool loaded = false;
        QMap<QPair<int, int>, Cell> cells;
        qint64 bytes = 0; // of its part, what its cells must be accounted for by
    };
    struct DefinedName {
        QString name;
        int localSheet = -1;
        QString formula;
    };
    bool readWorkbook(QString* error);
    void readSharedStrings(const QString& part);
    void readStyles(const QString& part);
    bool readSheet(Sheet& sheet, QString* error);
    bool checkBounds(QString* error) const;
    int sheetIndex(const QString& name) const;
    static SheetArea usedArea(const Sheet& sheet);
    Cell cellValue(const QString& type, int style, const QString& v, const QString& inlineText) const;

    ZipArchive zip_;
    QString workbookPart_;
    QList<Sheet> sheets_;
    QList<DefinedName> names_;
    QStringList sharedStrings_;
    QList<bool> dateStyles_; // per cell format index
    bool date1904_ = false;
};

class XlsxDriver : public BufferingDriver {
public:
    XlsxDriver() : BufferingDriver(QStringLiteral("range")) {}
    bool open(const QString& path, bool forWriting) override;
    bool createTable(const TableDef& def) override;
    std::optional<ForeignTable> readTable(const QString& name) override;
    bool close() override;

protected:
    bool fileHasTable(const QString& name) override;
    bool bufferRows(BufferedTable& table, const CellArray& rows) override;

private:
    QString path_;
    std::optional<XlsxBook> book_;
};

// Writes the tables as the sheets of a new workbook, each with its defined name.
bool writeNewWorkbook(const QString& path, const QList<BufferedTable>& tables, QString* error);
// Adds the tables as new sheets to the archive of an existing workbook.
bool addSheetsToWorkbook(ZipArchive& zip, const QString& workbookPart, const QList<BufferedTable>& tables,
                         QString* error);

} // namespace vesk
