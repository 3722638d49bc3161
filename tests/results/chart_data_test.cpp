// The charts' data: Gph.stp read as the program reads it, and the five families on the demonstration
// study computed, against sums of its stored rows and tables made here.

#include "burden/calculator_models.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/compute_run.h"
#include "database/study_context.h"
#include "demography/standard_life_table.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "foundation/time_log.h"
#include "demo_study.h"
#include "query_rows.h"
#include "foundation/chart_export_settings.h"
#include "platform/prompts.h"
#include "results/chart_data.h"
#include "results/chart_export.h"
#include "results/graph_props.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QXmlStreamReader>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vesk;
using namespace vesk::test;

namespace {

QString write(const QTemporaryDir& dir, const QByteArray& bytes) {
    const QString path = dir.filePath("Gph.stp");
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return path;
}

} // namespace

TEST(GraphProps, TheDeliveredFileHoldsTheFiveFamiliesInFullLines) {
    QString error;
    const auto props = readGraphProps(QStringLiteral(VESK_BIN_DIR "/Gph.stp"), &error);
    ASSERT_TRUE(props) << error.toStdString();
    ASSERT_EQ(props->size(), 5u);
    for (const GraphLine& line : *props) {
        EXPECT_EQ(line.size(), kGraphFields);
        EXPECT_TRUE(line[graph_field::Type] == "2D Bar" || line[graph_field::Type] == "3D Bar");
    }
    EXPECT_EQ((*props)[3][graph_field::Stacking], QString("True"));
    EXPECT_EQ(graphLineText((*props)[0]).count('{'), kGraphFields);
}

TEST(GraphProps, MissingShortLongAndDamagedFiles) {
    QTemporaryDir dir;
    QString error;
    EXPECT_FALSE(readGraphProps(dir.filePath("none.stp"), &error));
    EXPECT_EQ(error, QString("Gph.stp is not existing, Graphs cannot be displayed"));
    // Lines before [DisplayGraph] are not charts; two lines are two charts; fields past the 39th are
    // ignored and missing ones are empty.
    QByteArray text = "{not}{a}{chart}\r\n[DisplayGraph]\r\n{1}{2D Bar}{T}\r\n";
    for (int k = 0; k < 45; ++k)
        text += "{f" + QByteArray::number(k) + "}";
    text += "\r\nno braces here\n";
    const auto props = readGraphProps(write(dir, text), &error);
    ASSERT_TRUE(props);
    ASSERT_EQ(props->size(), 2u);
    EXPECT_EQ((*props)[0][1], QString("2D Bar"));
    EXPECT_TRUE((*props)[0][38].isEmpty());
    EXPECT_EQ((*props)[1][38], QString("f38"));
    EXPECT_EQ((*props)[1].size(), kGraphFields);
    // A file larger than any chart list is refused, not read.
    EXPECT_FALSE(readGraphProps(write(dir, QByteArray(2 << 20, '{')), &error));
    EXPECT_TRUE(error.contains("larger"));
}

namespace {

class DemoCharts : public ::testing::Test {
protected:
    void SetUp() override {
        QString error;
        ASSERT_TRUE(openComputedDemo(dir, comp, &error)) << error.toStdString();
    }
    void TearDown() override {
        comp = Computation{};
        studyContext() = StudyContext{};
        setErrorLogEnabled(true);
    }
    double sql(const QString& text, const QVariantList& values = {}) {
        return queryRows(*studyContext().StudyDB, text, values).value(0).toDouble();
    }
    QTemporaryDir dir;
    Computation comp;
};

const ChartTable& family(const ChartData& d, int k) {
    return d.tables[std::size_t(k - 1)];
}

} // namespace

TEST_F(DemoCharts, EachFamilyOfTheDistrictsAgainstTheStoredRows) {
    QString error;
    const auto data = procBPUGraphs(comp, studyContext(), &error);
    ASSERT_TRUE(data) << error.toStdString();
    ASSERT_EQ(data->tables.size(), 5u);
    EXPECT_EQ(family(*data, 1).title, QString("YLD & YLL Rates by Region"));
    EXPECT_EQ(family(*data, 4).title, QString("Group I,II,III as a Percentage of Total IDALY by Region"));
    EXPECT_EQ(family(*data, 1).categories.size(), 8);
    EXPECT_EQ(family(*data, 1).head, QStringList({"BPUID", "YLD Rate", "YLL Rate"}));
    EXPECT_TRUE(data->dapLine.endsWith(" R: (0.03) K: (1.00) B: (0.04) C: (0.17)"));
    for (int u = 0; u < 8; ++u) {
        const QString bpu = family(*data, 1).categories[u];
        // Rates per 1,000 people: the stored totals over the population as entered (Sprague keeps each
        // five-year total); the chart's three decimals bound the difference.
        const double people = sql("SELECT SUM(M + F) FROM DatPOP WHERE BPUID = ?", {bpu});
        const double yld = sql("SELECT SUM(IYLD) FROM RsltYLD WHERE BPUID = ? AND DAPID = 1", {bpu});
        const double yll = sql("SELECT SUM(IYLL) FROM RsltYLL WHERE BPUID = ? AND DAPID = 1", {bpu});
        EXPECT_NEAR(family(*data, 1).values[0][std::size_t(u)], 1000 * yld / people, 6e-4) << bpu.toStdString();
        EXPECT_NEAR(family(*data, 1).values[1][std::size_t(u)], 1000 * yll / people, 6e-4) << bpu.toStdString();
        // Male to female ratios of the stored rows.
        const double m = sql("SELECT SUM(IYLL) FROM RsltYLL WHERE BPUID = ? AND DAPID = 1 AND ASG LIKE 'M%'", {bpu});
        const double f = sql("SELECT SUM(IYLL) FROM RsltYLL WHERE BPUID = ? AND DAPID = 1 AND ASG LIKE 'F%'", {bpu});
        EXPECT_NEAR(family(*data, 3).values[1][std::size_t(u)], m / f, 6e-4);
        // The groups of causes add to 100 and group I is its causes' share.
        double sum = 0;
        for (const auto& series : family(*data, 4).values)
            sum += series[std::size_t(u)];
        EXPECT_NEAR(sum, 100, 3 * 5e-4);
        const double all = sql("SELECT SUM(IDALY) FROM RsltDALY WHERE BPUID = ? AND DAPID = 1", {bpu});
        const double first = sql("SELECT SUM(r.IDALY) FROM RsltDALY r JOIN _DctBDM d ON d.CobCd = r.COBCd JOIN "
                                 "_DctBDMClstr c ON c.ClstrCd = d.ClstrCd JOIN _DctBDMSGrps s ON s.SGrpCd = c.SGrpCd "
                                 "WHERE r.BPUID = ? AND r.DAPID = 1 AND s.GrpCd = (SELECT MIN(GrpCd) FROM _DctBDMGrps)",
                                 {bpu});
        EXPECT_NEAR(family(*data, 4).values[0][std::size_t(u)], 100 * first / all, 6e-4);
        // The age groups of both sexes add to 100, less what rounding each of the 19 shares to two
        // places may take (half a hundredth each).
        double ages = 0;
        for (const auto& series : family(*data, 2).values)
            ages += series[std::size_t(u)];
        ASSERT_EQ(family(*data, 2).series.size(), 19);
        EXPECT_NEAR(ages, 100, 19 * 0.005);
    }
    EXPECT_TRUE(family(*data, 2).series.startsWith("P0"));
    EXPECT_TRUE(family(*data, 5).stacked);
}

TEST_F(DemoCharts, TheRegionsSumTheirDistricts) {
    QString error;
    const auto data = procPagGraphs(comp, studyContext(), &error);
    ASSERT_TRUE(data) << error.toStdString();
    EXPECT_EQ(family(*data, 1).categories, QStringList({"CEN", "CST", "NTH"}));
    EXPECT_EQ(family(*data, 1).title, QString("YLD & YLL Rates by PAG1"));
    EXPECT_EQ(family(*data, 1).head.first(), QString("PAG1"));
    const double people = sql("SELECT SUM(M + F) FROM DatPOP WHERE BPUID IN (SELECT BPUID FROM _DctBPU WHERE PAG1Id = 'NTH')");
    const double yll = sql("SELECT SUM(IYLL) FROM RsltYLL WHERE DAPID = 1 AND BPUID IN (SELECT BPUID FROM _DctBPU "
                           "WHERE PAG1Id = 'NTH')");
    EXPECT_NEAR(family(*data, 1).values[1][2], 1000 * yll / people, 6e-4);
}

TEST_F(DemoCharts, AUnitWithoutPeopleHasARateOfZero) {
    CellArray& p = comp.ArrPop4D.array();
    for (int r = 0; r < p.size(kAgeDimRow); ++r)
        p(0, 2, r, kAgeBoth) = Cell(0.0);
    QString error;
    const auto data = procBPUGraphs(comp, studyContext(), &error);
    ASSERT_TRUE(data);
    EXPECT_EQ(family(*data, 1).values[0][2], 0.0);
    EXPECT_EQ(family(*data, 1).values[1][2], 0.0);
    EXPECT_GT(family(*data, 1).values[1][3], 0.0);
}

TEST_F(DemoCharts, WithoutResultsTheChartsSaySo) {
    Computation none;
    QString error;
    EXPECT_FALSE(procBPUGraphs(none, studyContext(), &error));
    EXPECT_EQ(error, QString("Input Arrays ArrDaly,ArrYll and ArrYld may not be properley built. Graphs cannot be shown"));
}

namespace {

// The cells of a workbook as another program reads them: gnumeric's ssconvert writes its own file,
// whose cells carry their sheet, row and column (zero-based); the text of each by "sheet!row,col".
QHash<QString, QString> cellsOf(const QString& workbook, const QTemporaryDir& dir) {
    QProcess convert;
    convert.start("ssconvert", {workbook, dir.filePath("book.gnumeric")});
    EXPECT_TRUE(convert.waitForFinished(60000));
    QProcess unzip;
    unzip.start("gzip", {"-dc", dir.filePath("book.gnumeric")});
    EXPECT_TRUE(unzip.waitForFinished(60000));
    QXmlStreamReader xml(unzip.readAllStandardOutput());
    QHash<QString, QString> cells;
    QString sheet;
    bool inName = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("Name") && sheet.isNull())
            inName = true;
        else if (xml.isStartElement() && xml.name() == QLatin1String("Sheet"))
            sheet = QString();
        if (inName && xml.isCharacters()) {
            sheet = xml.text().toString();
            inName = false;
        }
        if (xml.isStartElement() && xml.name() == QLatin1String("Cell")) {
            const QString key = QStringLiteral("%1!%2,%3")
                                    .arg(sheet, xml.attributes().value("Row").toString(),
                                         xml.attributes().value("Col").toString());
            cells.insert(key, xml.readElementText());
        }
    }
    return cells;
}

} // namespace

TEST_F(DemoCharts, TheExportPutsEachTableOnItsSheetFromItsStart) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    chartExportSettings() = ChartExportSettings{};
    prompts.answer(Answer::No); // no sheet names: the defaults
    EXPECT_FALSE(procCheckSheetNames());
    EXPECT_EQ(chartExportSettings().sheetNames[8], QString("Sheet 9"));
    EXPECT_EQ(chartExportSettings().fileName, QString("GphData"));
    // The rates table starts at row 5, column 2; the two IDALY and PDALY group tables share a sheet.
    chartExportSettings().startRows[4] = 5;
    chartExportSettings().startCols[4] = 2;
    chartExportSettings().sheetNames[3] = "Sheet 3";
    chartExportSettings().startCols[3] = 5;
    prompts.clear();
    const auto path = exportChartData(false, comp, studyContext());
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, dir.filePath("DEM/Data/GphData.xlsx"));
    EXPECT_EQ(prompts.messages(), QStringList{"The data are stored in the file path :" + dir.filePath("DEM/Data")});
    QString error;
    const auto data = procBPUGraphs(comp, studyContext(), &error);
    QTemporaryDir out;
    const QHash<QString, QString> cells = cellsOf(*path, out);
    ASSERT_FALSE(cells.isEmpty());
    // Sheet 5: rows 1 to 4 empty, the rates table from B5.
    for (auto it = cells.cbegin(); it != cells.cend(); ++it) {
        if (it.key().startsWith("Sheet 5!")) {
            EXPECT_GE(it.key().section('!', 1).section(',', 0, 0).toInt(), 4) << it.key().toStdString();
        }
    }
    EXPECT_EQ(cells.value("Sheet 5!4,1"), QString("BPUID"));
    EXPECT_EQ(cells.value("Sheet 5!4,2"), QString("YLD Rate"));
    EXPECT_EQ(cells.value("Sheet 5!5,1"), QString("CAP"));
    EXPECT_EQ(cells.value("Sheet 5!5,2").toDouble(), data->tables[0].values[0][0]);
    EXPECT_EQ(cells.value("Sheet 5!12,3").toDouble(), data->tables[0].values[1][7]);
    // Sheet 3 holds the IDALY groups from A1 and the PDALY groups from E1; sheet 4 is no sheet.
    EXPECT_EQ(cells.value("Sheet 3!0,2"), QString("IDaly Percent"));
    EXPECT_EQ(cells.value("Sheet 3!0,6"), QString("PDaly Percent"));
    EXPECT_EQ(cells.value("Sheet 1!0,2"), QString("IYLD Percent"));
    EXPECT_EQ(cells.value("Sheet 9!0,3"), QString("Group III"));
    for (auto it = cells.cbegin(); it != cells.cend(); ++it)
        EXPECT_FALSE(it.key().startsWith("Sheet 4!"));
    // Once more: the question, and No leaves the file as it was.
    const QDateTime before = QFileInfo(*path).lastModified();
    prompts.clear();
    prompts.answer(Answer::No);
    EXPECT_FALSE(exportChartData(false, comp, studyContext()));
    EXPECT_EQ(prompts.messages(), QStringList{"File Already Exists! Do you want to replace it?"});
    EXPECT_EQ(QFileInfo(*path).lastModified(), before);
    // The regions go to PagData.
    prompts.clear();
    EXPECT_EQ(exportChartData(true, comp, studyContext()).value_or(""), dir.filePath("DEM/Data/PagData.xlsx"));
    // Without results.
    prompts.clear();
    EXPECT_FALSE(exportChartData(false, Computation{}, studyContext()));
    EXPECT_EQ(prompts.messages(), QStringList{"Please Load Results from Load Results"});
}

TEST(ChartExport, NamedSheetsAskNothing) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    chartExportSettings() = ChartExportSettings{};
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(procCheckSheetNames()); // Yes: the caller opens Preferences
    EXPECT_TRUE(chartExportSettings().sheetNames[0].isEmpty());
    chartExportSettings().sheetNames[0] = "Rates";
    prompts.clear();
    EXPECT_FALSE(procCheckSheetNames());
    EXPECT_TRUE(prompts.shown().isEmpty());
    chartExportSettings() = ChartExportSettings{};
}

TEST_F(DemoCharts, TheCommandDrawsTheChartTheWindowDraws) {
    const QString study = dir.filePath("demo.vdb");
    const QString svg = dir.filePath("rates.svg");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    QProcess p;
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"),
            {"chart", study, "--family", "4", "--level", "PAG1", "--out", svg, "--settings", QStringLiteral(VESK_BIN_DIR "/Vesk.stp")});
    ASSERT_TRUE(p.waitForFinished(120000));
    ASSERT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    QFile f(svg);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(f.readAll());
    EXPECT_TRUE(text.contains("Group I,II,III as a Percentage of Total IDALY by PAG1"));
    for (const char* word : {"Group I", "Group II", "Group III", "CEN", "CST", "NTH"})
        EXPECT_TRUE(text.contains(QLatin1String(word))) << word;
    // One unit, as an image.
    const QString png = dir.filePath("cap.png");
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"),
            {"chart", study, "--family", "1", "--unit", "CAP", "--out", png, "--settings", QStringLiteral(VESK_BIN_DIR "/Vesk.stp")});
    ASSERT_TRUE(p.waitForFinished(120000));
    ASSERT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    QFile image(png);
    ASSERT_TRUE(image.open(QIODevice::ReadOnly));
    EXPECT_TRUE(image.read(8).startsWith("\x89PNG"));
    EXPECT_GT(image.size(), 5000);
    // Refusals.
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"), {"chart", study, "--family", "6", "--out", png});
    ASSERT_TRUE(p.waitForFinished(120000));
    EXPECT_EQ(p.exitCode(), 2);
}

TEST_F(DemoCharts, ThePyramidCommandDrawsAUnitsPopulation) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("DISPLAY");
    QProcess p;
    p.setProcessEnvironment(env);
    const QString svg = dir.filePath("ker.svg");
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"), {"pyramid", dir.filePath("demo.vdb"), "--unit", "KER", "--out", svg,
                                                       "--settings", QStringLiteral(VESK_BIN_DIR "/Vesk.stp")});
    ASSERT_TRUE(p.waitForFinished(120000));
    ASSERT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    QFile f(svg);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(f.readAll());
    for (const char* word : {"Population in", "Male", "Female", "85+"})
        EXPECT_TRUE(text.contains(QLatin1String(word))) << word;
    p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"), {"pyramid", dir.filePath("demo.vdb"), "--unit", "NONE", "--out", svg});
    ASSERT_TRUE(p.waitForFinished(120000));
    EXPECT_EQ(p.exitCode(), 2);
}
