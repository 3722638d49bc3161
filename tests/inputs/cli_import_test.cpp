// vesk-cli import on a study file: a population from a workbook range named after the unit, death
// rates from a text file, a file that fails the sheet's tests refused with the sheet's own message
// and exit code 1, and a sheet whose import is not built yet said as such.

#include "inputs/foreign_file.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

#include <QFile>
#include <QProcess>

namespace vesk::test {
namespace {

namespace t = sheet_texts;

struct CliRun {
    int code = -1;
    QString errors;
};

class CliImport : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 0, 0, 0), ('S1', 5, 15, 1), "
             "('S1', NULL, NULL, 5), ('S1', NULL, NULL, 10)");
        exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty) VALUES ('S1', 'B1', 'One', 1), ('S1', 'B2', 'Two', 2)");
        exec("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (1, 'Communicable')");
        exec("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES ('11', 'Infections', 1)");
        exec("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('1101', 'Diarrhoea', '11')");
        exec("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, S1) VALUES ('11011', 'Cholera', '1101', 0, -1)");
    }
    void writeFile(const QString& name, const QByteArray& bytes) {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    CliRun run(const QStringList& args) {
        QProcess p;
        p.start(QStringLiteral(VESK_BIN_DIR "/vesk-cli"), QStringList{"import", file} + args);
        EXPECT_TRUE(p.waitForFinished(60000));
        return {p.exitCode(), QString::fromUtf8(p.readAllStandardError())};
    }
    void source(const QString& name, const QString& table, const QString& unit, int year, double scale) {
        CellArray a{4, 6};
        const double ages[] = {0, 1, 5, 10};
        for (int k = 0; k < 4; ++k) {
            a(k, 0) = Cell(unit);
            a(k, 1) = Cell(year);
            a(k, 2) = Cell(ages[k]);
            a(k, 3) = Cell((k + 1) * scale);
            a(k, 4) = Cell((k + 2) * scale);
        }
        ASSERT_TRUE(FnWriteArrFile(a, path(name), table, {"BPUID", "Year", "BAI", "M", "F", "UpdDt"}))
            << lastForeignError().words.toStdString();
    }
};

TEST_F(CliImport, APopulationFromAWorkbookRangeIsStored) {
    source("pop.xlsx", "B1", "B1", 2000, 1000);
    const CliRun r = run({"--sheet", "population", "--bpu", "B1", path("pop.xlsx")});
    EXPECT_EQ(r.code, 0) << r.errors.toStdString();
    EXPECT_EQ(rows("SELECT BPUID, YEAR, Bai, M, F FROM DatPOP ORDER BY Bai"),
              (QStringList{"B1|2000|0|1000|2000", "B1|2000|1|2000|3000", "B1|2000|5|3000|4000",
                           "B1|2000|10|4000|5000"}));
    EXPECT_TRUE(r.errors.contains(text(t::kStoredPopulation))) << r.errors.toStdString();
}

TEST_F(CliImport, DeathRatesFromATextFileAreStoredWithTheirPersonsRate) {
    source("pop.xlsx", "B2", "B2", 2000, 100);
    source("rates.txt", QString(), "B2", 2000, 0.001);
    ASSERT_EQ(run({"--sheet", "population", "--bpu", "B2", path("pop.xlsx")}).code, 0);
    const CliRun r = run({"--sheet", "asdr", "--bpu", "b2", "--year", "2000", path("rates.txt")});
    EXPECT_EQ(r.code, 0) << r.errors.toStdString();
    EXPECT_EQ(value("SELECT count(*) FROM DatASDR WHERE BPUID = 'B2'"), "4");
    // (0.002 * 200 + 0.001 * 100) / 300 at age 0.
    EXPECT_DOUBLE_EQ(value("SELECT P FROM DatASDR WHERE Bai = 0").toDouble(), 0.5 / 300.0);
}

TEST_F(CliImport, AFileThatFailsTheTestsIsRefusedWithTheSheetsMessage) {
    source("other.xlsx", "B1", "B1", 1999, 1);
    const CliRun r = run({"--sheet", "population", "--bpu", "B1", path("other.xlsx")});
    EXPECT_EQ(r.code, 1);
    EXPECT_TRUE(r.errors.contains(text(t::kOtherYear))) << r.errors.toStdString();
    EXPECT_EQ(value("SELECT count(*) FROM DatPOP"), "0");
    const CliRun missing = run({"--sheet", "population", "--bpu", "B1", path("nowhere.wk1")});
    EXPECT_EQ(missing.code, 1);
    const CliRun unit = run({"--sheet", "population", "--bpu", "B9", path("other.xlsx")});
    EXPECT_EQ(unit.code, 1);
    EXPECT_TRUE(unit.errors.contains("has no District B9")) << unit.errors.toStdString();
}

TEST_F(CliImport, CauseOfDeathProportionsFromATextFileAreStored) {
    writeFile("csm.txt", "BPUID;Year;COBCd;F0-4;F5-w;M0-4;M5-w\r\nB1;2000;11011;1;1;1;1\r\n");
    const CliRun r = run({"--sheet", "csm", "--bpu", "B1", path("csm.txt")});
    EXPECT_EQ(r.code, 0) << r.errors.toStdString();
    EXPECT_EQ(rows("SELECT COBCd, ASG, CSMP FROM DatCSM ORDER BY ASG"),
              (QStringList{"11011|F0-4|1", "11011|F5-w|1", "11011|M0-4|1", "11011|M5-w|1"}));
}

TEST_F(CliImport, EpidemiologyOfEveryCauseInTheFileIsStored) {
    writeFile("epi.txt", "B1;2000;11011;F15-w;0.0015;0.2;30;5.5;34\r\nB1;2000;11011;M0-14;0.001;;2;1;3\r\n");
    const CliRun r = run({"--sheet", "epi", "--bpu", "B1", path("epi.txt")});
    EXPECT_EQ(r.code, 0) << r.errors.toStdString();
    EXPECT_EQ(rows("SELECT COBCd, ASG, i, P, ago, DURN, agp FROM DatADW WHERE i IS NOT NULL ORDER BY ASG"),
              (QStringList{"11011|F15-w|0.0015|0.2|30|5.5|34", "11011|M0-14|0.001|<null>|2|1|3"}));
    EXPECT_EQ(value("SELECT count(*) FROM DatADW"), "4");
    const CliRun none = run({"--sheet", "sequela-epi", "--bpu", "B1", path("epi.txt")});
    EXPECT_EQ(none.code, 1);
}

TEST_F(CliImport, SequelaEstimatesAreStoredUnderTheirSequela) {
    exec("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES ('SQ1', 'Dehydration')");
    exec("INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES ('SQ1', '11011')");
    exec("UPDATE _DctBDM SET Sqla = -1 WHERE CobCd = '11011'");
    writeFile("sq.txt", "B1;2000;11011;SQ1;M15-w;0.004;0.05;20;2;25\r\n");
    const CliRun r = run({"--sheet", "sequela-epi", "--bpu", "B1", path("sq.txt")});
    EXPECT_EQ(r.code, 0) << r.errors.toStdString();
    EXPECT_EQ(rows("SELECT COBCd, SqlaCd, ASG, i, P, ago, DURN, agp FROM DatADWSqla WHERE i IS NOT NULL"),
              QStringList{"11011|SQ1|M15-w|0.004|0.05|20|2|25"});
}

TEST_F(CliImport, ParametersAndWeightsAreStoredAndAnUnknownSheetIsRefused) {
    writeFile("dp.txt", "B2;2000;North;0.03;61.5\r\n");
    const CliRun r = run({"--sheet", "demography", "--bpu", "B2", path("dp.txt")});
    EXPECT_EQ(r.code, 0) << r.errors.toStdString();
    EXPECT_EQ(rows("SELECT BPUID, Cdmdl, PGR, IMR FROM DatDmgphyPrmtrs"), QStringList{"B2|North|0.03|61.5"});
    writeFile("dwt.txt", "S1;11011;Cholera;0.1;0.2;0.3;0.4;0.5\r\n");
    const CliRun w = run({"--sheet", "weights", "--bpu", "B1", path("dwt.txt")});
    EXPECT_EQ(w.code, 0) << w.errors.toStdString();
    EXPECT_EQ(value("SELECT group_concat(Dwt, ';') FROM (SELECT Dwt FROM DatDwt ORDER BY ASG)"), "0.1;0.2;0.3;0.4;0.5");
    EXPECT_EQ(run({"--sheet", "nonsense", "--bpu", "B1", path("dwt.txt")}).code, 2);
}

} // namespace
} // namespace vesk::test
