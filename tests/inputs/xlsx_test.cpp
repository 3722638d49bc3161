#include "inputs/foreign_file.h"
#include "inputs/xlsx_file.h"
#include "test_support.h"

#include <QFile>
#include <QtEndian>
#include <tuple>

using namespace vesk;
using vesk::test::dump;
using vesk::test::fixture;
using vesk::test::table;

namespace {

const QStringList kCauseNames{"Code", "Description", "Cluster", "Sequela", "Count", "Rate", "Started"};

// The cause table of the fixtures, as both other programs wrote it.
CellArray causes() {
    return table({
        {Cell("A01"), Cell("Tuberculosis"), Cell("C1"), Cell::boolean(true), Cell(12), Cell(0.125),
         Cell::date(dateSerial(QDate(2020, 1, 5)))},
        {Cell("A02"), Cell("Zoë's fever — ünïcode 中文"), Cell("C1"), Cell::boolean(false), Cell(-3),
         Cell(1e-7), Cell::date(dateSerial(QDateTime(QDate(2021, 6, 30), QTime(12, 30))))},
        {Cell("A03"), Cell::null(), Cell("C2"), Cell::null(), Cell(40000), Cell(3.14159265358979),
         Cell::null()},
    });
}

class Xlsx : public vesk::test::ScratchTest {
protected:
    QString copyOf(const QString& name) {
        const QString to = path(name);
        QFile::copy(fixture(name), to);
        QFile(to).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        return to;
    }
};

} // namespace

TEST_F(Xlsx, ReadsAWorkbookWrittenByOpenpyxl) {
    QStringList names;
    const CellArray back = FnReadArrFile(fixture("openpyxl_book.xlsx"), "dcttbl", &names);
    EXPECT_EQ(names, kCauseNames);
    // Times of day are decimal fractions of a day in the file: equal to twelve digits.
    EXPECT_TRUE(vesk::test::sameTable(back, causes(), 1e-12));
}

TEST_F(Xlsx, ReadsAWorkbookWrittenByGnumeric) {
    QStringList names;
    const CellArray back = FnReadArrFile(fixture("gnumeric_book.xlsx"), "DCTTBL", &names);
    EXPECT_EQ(names, kCauseNames);
    EXPECT_TRUE(vesk::test::sameTable(back, causes(), 1e-12));
}

TEST_F(Xlsx, ASheetNameStandsForItsUsedArea) {
    const CellArray life = table({{Cell(0), Cell(82.5), Cell(80)}, {Cell(1), Cell(81.75), Cell(79.25)}});
    QStringList names;
    EXPECT_EQ(FnReadArrFile(fixture("openpyxl_book.xlsx"), "Life", &names), life);
    EXPECT_EQ(names, QStringList({"Age", "EXF", "EXM"}));
    EXPECT_EQ(FnReadArrFile(fixture("gnumeric_book.xlsx"), "LIFE$"), life);
    EXPECT_TRUE(FnReadArrFile(fixture("gnumeric_book.xlsx"), "Death").isEmpty());
}

TEST_F(Xlsx, ANewWorkbookHasASheetAndADefinedNamePerTable) {
    ASSERT_TRUE(FnWriteArrFile(causes(), path("new.xlsx"), "Causes", kCauseNames));
    QString error;
    auto book = XlsxBook::load(path("new.xlsx"), &error);
    ASSERT_TRUE(book) << error.toStdString();
    EXPECT_EQ(book->sheetNames(), QStringList{"Causes"});
    EXPECT_TRUE(book->hasDefinedName("Causes"));
    const ZipEntry* wb = book->archive().find("xl/workbook.xml");
    ASSERT_NE(wb, nullptr);
    EXPECT_TRUE(wb->data.contains("<definedName name=\"Causes\">'Causes'!$A$1:$G$4</definedName>"))
        << wb->data.data();
}

TEST_F(Xlsx, ATableAddedToAnExistingWorkbookLeavesTheRestAsItWas) {
    const QString file = copyOf("openpyxl_book.xlsx");
    const CellArray extra =
        table({{Cell("x & <y>"), Cell::date(dateSerial(QDate(1999, 12, 31))), Cell::boolean(true)},
               {Cell("  spaced  "), Cell::date(36526.25), Cell::boolean(false)}});
    ASSERT_TRUE(FnWriteArrFile(extra, file, "DATPOP", {"Unit", "When", "Value"}))
        << lastForeignError().words.toStdString();
    ASSERT_TRUE(FnWriteArrFile(extra, file, "DATASDR", {"Unit", "When", "Value"}));
    QStringList names;
    EXPECT_EQ(FnReadArrFile(file, "DATPOP", &names), extra);
    EXPECT_EQ(names, QStringList({"Unit", "When", "Value"}));
    EXPECT_EQ(FnReadArrFile(file, "DATASDR"), extra);
    EXPECT_TRUE(vesk::test::sameTable(FnReadArrFile(file, "DCTTBL"), causes(), 1e-12));
    QString error;
    auto book = XlsxBook::load(file, &error);
    ASSERT_TRUE(book);
    EXPECT_EQ(book->sheetNames(), QStringList({"Causes", "Life", "DATPOP", "DATASDR"}));
    // The parts the table did not touch are byte for byte the same.
    QString e2;
    auto original = ZipArchive::read(fixture("openpyxl_book.xlsx"), &e2);
    ASSERT_TRUE(original);
    for (const auto& e : original->entries()) {
        if (e.name.contains("worksheets/") || e.name.contains("sharedStrings") ||
            e.name.contains("docProps")) {
            EXPECT_EQ(book->archive().find(e.name)->data, e.data) << e.name.toStdString();
        }
    }
}

TEST_F(Xlsx, ReadsInlineAndRichStringsErrorsAndThe1904DateSystem) {
    ZipArchive zip;
    zip.put("[Content_Types].xml",
            "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"/>");
    zip.put(
        "_rels/.rels",
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
        "<Relationship Id=\"r1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
        "officeDocument\" Target=\"/xl/book.xml\"/></Relationships>");
    zip.put("xl/book.xml",
            "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
            "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
            "<workbookPr date1904=\"1\"/><sheets><sheet name=\"S\" sheetId=\"1\" r:id=\"a\"/></sheets>"
            "<definedNames><definedName name=\"T\" localSheetId=\"0\">'S'!B2:C4</definedName></definedNames>"
            "</workbook>");
    zip.put(
        "xl/_rels/book.xml.rels",
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
        "<Relationship Id=\"a\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
        "worksheet\" Target=\"sheets/one.xml\"/>"
        "<Relationship Id=\"b\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
        "styles\" Target=\"st.xml\"/></Relationships>");
    zip.put("xl/st.xml",
            "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
            "<numFmts count=\"1\"><numFmt numFmtId=\"170\" formatCode=\"[h]:mm\"/></numFmts>"
            "<cellXfs count=\"3\"><xf numFmtId=\"0\"/><xf numFmtId=\"170\"/><xf numFmtId=\"2\"/></cellXfs>"
            "</styleSheet>");
    zip.put("xl/sheets/one.xml",
            "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetData>"
            "<row r=\"2\"><c r=\"B2\" t=\"inlineStr\"><is><t>Head</t></is></c>"
            "<c t=\"inlineStr\"><is><r><t>Ri</t></r><r><t>ch</t></r><rPh><t>ignored</t></rPh></is></c></row>"
            "<row r=\"3\"><c r=\"B3\" s=\"1\"><v>0</v></c><c r=\"C3\" t=\"e\"><v>#N/A</v></c></row>"
            "<row r=\"4\"><c r=\"B4\" t=\"str\"><f>A1</f><v>formula text</v></c>"
            "<c r=\"C4\" s=\"2\"><v>1.5</v></c></row>"
            "</sheetData></worksheet>");
    QString error;
    ASSERT_TRUE(zip.write(path("hand.xlsx"), &error)) << error.toStdString();
    QStringList names;
    const CellArray back = FnReadArrFile(path("hand.xlsx"), "T", &names);
    EXPECT_EQ(names, QStringList({"Head", "Rich"}));
    EXPECT_EQ(back, table({{Cell::date(1462), Cell::null()}, {Cell("formula text"), Cell(1.5)}}))
        << dump(back);
    EXPECT_EQ(back(0, 0).toString(), "1904-01-01");
}

TEST(XlsxHelpers, DateFormatsAreToldFromNumberFormats) {
    for (const char* code :
         {"yyyy-mm-dd", "dd/mm/yyyy hh:mm", "m/d/yy", "[h]:mm:ss", "mmm-yy", "[$-409]d-mmm;@"})
        EXPECT_TRUE(isDateFormatCode(code)) << code;
    for (const char* code : {"General", "0.00", "#,##0", "0.00E+00", "\"days\" 0", "[Red]0.0", "0\\d"})
        EXPECT_FALSE(isDateFormatCode(code)) << code;
    EXPECT_TRUE(isBuiltInDateFormat(14));
    EXPECT_TRUE(isBuiltInDateFormat(22));
    EXPECT_FALSE(isBuiltInDateFormat(2));
}

TEST(XlsxHelpers, CellReferencesAndAreas) {
    int r, c;
    ASSERT_TRUE(parseCellRef("$AB$12", &r, &c));
    EXPECT_EQ(r, 11);
    EXPECT_EQ(c, 27);
    EXPECT_FALSE(parseCellRef("A0", &r, &c));
    EXPECT_FALSE(parseCellRef("Name", &r, &c));
    EXPECT_EQ(cellRef(11, 27, true), "$AB$12");
    EXPECT_EQ(cellRef(0, 0), "A1");
    QString sheet;
    SheetArea area;
    ASSERT_TRUE(parseAreaReference("='It''s here'!$C$5:$A$1", &sheet, &area));
    EXPECT_EQ(sheet, "It's here");
    EXPECT_EQ(area.row1, 0);
    EXPECT_EQ(area.col1, 0);
    EXPECT_EQ(area.row2, 4);
    EXPECT_EQ(area.col2, 2);
    EXPECT_FALSE(parseAreaReference("#REF!", &sheet, &area));
}

TEST(XlsxHelpers, WorksheetSerialsSkipTheDayThatNeverWas) {
    EXPECT_EQ(excelSerialFromDate(dateSerial(QDate(1900, 1, 1))), 1.0);
    EXPECT_EQ(excelSerialFromDate(dateSerial(QDate(1900, 3, 1))), 61.0);
    EXPECT_EQ(dateFromExcelSerial(1.0), dateSerial(QDate(1900, 1, 1)));
    EXPECT_EQ(dateFromExcelSerial(43835.5), 43835.5);
    EXPECT_EQ(dateFromExcelSerial(0.0, true), dateSerial(QDate(1904, 1, 1)));
}

namespace {

// A workbook of one sheet "S" with the given rows of sheetData and, when given, the defined name T.
QString hostileBook(const QString& file, const QByteArray& rows, const QByteArray& definedName = {}) {
    ZipArchive zip;
    zip.put("xl/workbook.xml",
            "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
            "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
            "<sheets><sheet name=\"S\" sheetId=\"1\" r:id=\"a\"/></sheets>" +
                (definedName.isEmpty() ? QByteArray()
                                       : "<definedNames><definedName name=\"T\">" + definedName +
                                             "</definedName></definedNames>") +
                "</workbook>");
    zip.put("xl/_rels/workbook.xml.rels",
            "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
            "<Relationship Id=\"a\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/"
            "relationships/worksheet\" Target=\"worksheets/sheet1.xml\"/></Relationships>");
    zip.put("xl/worksheets/sheet1.xml",
            "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><sheetData>" +
                rows + "</sheetData></worksheet>");
    QString error;
    EXPECT_TRUE(zip.write(file, &error)) << error.toStdString();
    return file;
}

const QByteArray kTwoRows = "<row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>K</t></is></c>"
                            "<c r=\"B1\" t=\"inlineStr\"><is><t>V</t></is></c></row>"
                            "<row r=\"2\"><c r=\"A2\"><v>1</v></c><c r=\"B2\"><v>2</v></c></row>";

::testing::AssertionResult refusedNaming(const QString& file) {
    if (!FnReadArrFile(file, "T").isEmpty())
        return ::testing::AssertionFailure() << "the table was read";
    if (lastForeignError().number != 3051 || !lastForeignError().words.contains(file))
        return ::testing::AssertionFailure()
               << lastForeignError().number << " " << lastForeignError().words.toStdString();
    return ::testing::AssertionSuccess();
}

// Patches the uncompressed size that the local header and the central directory declare for
// every entry whose name holds `name`.
QByteArray declareSize(QByteArray zip, const QByteArray& name, quint32 size) {
    uchar raw[4];
    qToLittleEndian(size, raw);
    const QByteArray le(reinterpret_cast<const char*>(raw), 4);
    for (const auto& [signature, sizeAt, nameAt] :
         {std::tuple{QByteArray("PK\x03\x04"), 22, 30}, std::tuple{QByteArray("PK\x01\x02"), 24, 46}}) {
        for (qsizetype at = zip.indexOf(signature); at >= 0; at = zip.indexOf(signature, at + 4)) {
            const int nameLen = qFromLittleEndian<quint16>(zip.constData() + at + sizeAt + 4);
            if (zip.mid(at + nameAt, nameLen).contains(name))
                zip.replace(at + sizeAt, 4, le);
        }
    }
    return zip;
}

} // namespace

TEST_F(Xlsx, ADefinedNameOverTheWholeSheetIsReadFromTheCellsItHolds) {
    const QString file = hostileBook(path("name.xlsx"), kTwoRows, "S!$A$1:$XFD$1048576");
    QStringList names;
    EXPECT_EQ(FnReadArrFile(file, "T", &names), table({{Cell(1), Cell(2)}}));
    EXPECT_EQ(names, QStringList({"K", "V"}));
}

TEST_F(Xlsx, ADefinedNameBeyondTheSheetIsRefused) {
    EXPECT_TRUE(refusedNaming(hostileBook(path("rows.xlsx"), kTwoRows, "S!$A$1:$B$9999999")));
    EXPECT_TRUE(refusedNaming(hostileBook(path("cols.xlsx"), kTwoRows, "S!$A$1:$ZZZ$2")));
}

TEST_F(Xlsx, OneFarCellIsRefused) {
    const QByteArray far = kTwoRows + "<row r=\"1048576\"><c r=\"XFD1048576\"><v>9</v></c></row>";
    EXPECT_TRUE(refusedNaming(hostileBook(path("far.xlsx"), far, "S!$A$1:$XFD$1048576")));
    EXPECT_TRUE(FnReadArrFile(path("far.xlsx"), "S").isEmpty()) << "the sheet's used area";
    const QByteArray beyond = kTwoRows + "<row r=\"3\"><c r=\"XFE3\"><v>9</v></c></row>";
    EXPECT_TRUE(refusedNaming(hostileBook(path("beyond.xlsx"), beyond, "S!$A$1:$B$2")));
}

TEST_F(Xlsx, RowNumbersAtTheLimitsOfAnIntegerAreRefused) {
    for (const char* r :
         {"2147483647", "2147483648", "-2147483648", "0", "1048577", "99999999999999999999"}) {
        const QByteArray rows = kTwoRows + "<row r=\"" + QByteArray(r) + "\"><c><v>9</v></c></row>";
        EXPECT_TRUE(refusedNaming(hostileBook(path(QString("r%1.xlsx").arg(r)), rows, "S!$A$1:$B$2"))) << r;
    }
    // A row without its number follows the row before it: after the last row there is none.
    const QByteArray last = kTwoRows + "<row r=\"1048576\"><c><v>9</v></c></row><row><c><v>9</v></c></row>";
    EXPECT_TRUE(refusedNaming(hostileBook(path("after.xlsx"), last, "S!$A$1:$B$2")));
}

TEST_F(Xlsx, AZipEntryThatDeclaresFourGigabytesIsRefused) {
    const QString file = hostileBook(path("big.xlsx"), kTwoRows, "S!$A$1:$B$2");
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray patched = declareSize(f.readAll(), "sheet1.xml", 0xFFFFFFF0u);
    f.close();
    QFile out(path("declared.xlsx"));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(patched);
    out.close();
    EXPECT_TRUE(refusedNaming(path("declared.xlsx")));
    EXPECT_TRUE(lastForeignError().words.contains("sheet1.xml")) << lastForeignError().words.toStdString();
}
