#include "inputs/foreign_file.h"
#include "inputs/xlsx_file.h"
#include "test_support.h"

#include <QFile>

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
