// File -> Export -> Study Data on the demonstration study, and the way back: each of the five and
// all of them through each kind of file, zapped and read back row for row; the cross tables of the
// proportions and weights against their rows; failures midway that leave every table as it was.

#include "inputs/foreign_file.h"
#include "inputs/study_data_transfer.h"
#include "inputs/text_file.h"
#include "inputs/transfer_texts.h"
#include "inputs/zap.h"
#include "transfer_fixture.h"

#include <QDir>
#include <QFile>

namespace vesk::test {
namespace {

namespace t = transfer_texts;

const QStringList kDataTables = {QStringLiteral("DatPOP"),         QStringLiteral("DatASDR"),
                                 QStringLiteral("DatCSM"),         QStringLiteral("DatADW"),
                                 QStringLiteral("DatDwt"),         QStringLiteral("DatADWSqla"),
                                 QStringLiteral("DatDmgphyPrmtrs")};

// The five of the menu and the two that only an export of all writes.
const QList<StudyData> kAllKinds = {StudyData::Population, StudyData::DeathRates, StudyData::Proportions,
                                    StudyData::Epi,        StudyData::Weights,    StudyData::SequelaEpi,
                                    StudyData::Demography};

using StudyDataTransferTest = TransferTest;

TEST_F(StudyDataTransferTest, EachKindGoesOutAndComesBackRowForRowThroughEveryKindOfFile) {
    for (const QString& kind : transferKinds()) {
        for (StudyData data : kAllKinds) {
            const QString table = studyDataTable(data);
            const std::string before = sorted(table);
            ASSERT_FALSE(before.empty());
            const QString folder = path(kind + u'_' + table);
            ASSERT_TRUE(QDir().mkpath(folder));
            const QString file = folder + QStringLiteral("/export.") + kind;
            prompts.clear();
            ASSERT_EQ(exportStudyData(studyContext(), data, file), TransferResult::Done)
                << kind.toStdString() << ' ' << table.toStdString() << ' ' << lastMessage().toStdString();
            exec(QStringLiteral("DELETE FROM ") + table);
            ASSERT_EQ(importStudyData(studyContext(), data, file), TransferResult::Done)
                << kind.toStdString() << ' ' << table.toStdString() << ' ' << lastMessage().toStdString();
            EXPECT_EQ(sorted(table), before) << kind.toStdString() << ' ' << table.toStdString();
            EXPECT_EQ(prompts.unanswered(), 0);
        }
    }
}

TEST_F(StudyDataTransferTest, AllStudyDataGoesOutZapAndComesBack) {
    QMap<QString, std::string> before;
    for (const QString& table : kDataTables)
        before.insert(table, sorted(table));
    for (const QString& kind : transferKinds()) {
        const QString folder = path(QStringLiteral("all_") + kind);
        ASSERT_TRUE(QDir().mkpath(folder));
        const QString file = folder + QStringLiteral("/backup.") + kind;
        ASSERT_EQ(exportStudyData(studyContext(), std::nullopt, file), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        // Eight units for the six tables of a unit, and the weights of the year.
        EXPECT_TRUE(lastMessage().endsWith(QStringLiteral(": 49 tables written")))
            << lastMessage().toStdString();
        answer({Answer::Yes});
        ASSERT_EQ(zapStudyData(db()), ZapResult::Purged);
        for (const char* table : {"DatPOP", "DatASDR", "DatCSM", "DatADW", "DatADWSqla", "DatDmgphyPrmtrs"})
            ASSERT_EQ(sorted(table), "");
        // The weights are the study's, not the zapped data's: their rows are replaced after the question.
        answer({Answer::Yes});
        ASSERT_EQ(importStudyData(studyContext(), std::nullopt, file), TransferResult::Done)
            << kind.toStdString() << ' ' << lastMessage().toStdString();
        EXPECT_EQ(prompts.unanswered(), 0);
        for (const QString& table : kDataTables)
            EXPECT_EQ(sorted(table), before[table]) << kind.toStdString() << ' ' << table.toStdString();
    }
}

TEST_F(StudyDataTransferTest, TheProportionsGoOutAsACrossTableOfTheirAgeSexGroups) {
    QSqlError error;
    const auto rows = studyDataRows(db(), QStringLiteral("DEM"), StudyData::Proportions,
                                    QStringLiteral("CAP"), 2020, &error);
    ASSERT_TRUE(rows);
    ASSERT_GE(rows->fieldNames.size(), 4);
    EXPECT_EQ(rows->fieldNames.mid(0, 3).join(u',').toStdString(), "BPUID,COBCD,YEAR");
    // A row for each cause, a column for each group; each cell the stored proportion.
    const QStringList causes =
        queryRows(db(), QStringLiteral("SELECT DISTINCT COBCd FROM DatCSM WHERE BPUID = 'CAP'"));
    const QStringList groups =
        queryRows(db(), QStringLiteral("SELECT DISTINCT ASG FROM DatCSM WHERE BPUID = 'CAP'"));
    ASSERT_EQ(rows->rowCount(), causes.size());
    ASSERT_EQ(rows->fieldNames.size(), 3 + groups.size());
    int checked = 0;
    for (int i = 0; i < rows->rowCount(); ++i)
        for (int c = 3; c < rows->fieldNames.size(); ++c) {
            const QStringList stored =
                queryRows(db(),
                          QStringLiteral("SELECT CSMP FROM DatCSM WHERE BPUID = 'CAP' AND "
                                         "YEAR = 2020 AND COBCd = ? AND ASG = ?"),
                          {rows->rows(i, 1).toString(), rows->fieldNames[c]});
            ASSERT_EQ(stored.size(), 1);
            EXPECT_EQ(rows->rows(i, c).toDouble(), stored[0].toDouble());
            ++checked;
        }
    EXPECT_EQ(checked, 950); // 25 causes, 38 groups
}

TEST_F(StudyDataTransferTest, TheWeightsKeepTheCausesWithoutSequelaeAndNameTheSequelae) {
    QSqlError error;
    const auto rows = studyDataRows(db(), QStringLiteral("DEM"), StudyData::Weights, QString(), 2020, &error);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->fieldNames.mid(0, 2).join(u',').toStdString(), "SQLACD,SEQUELA");
    const QStringList codes = queryRows(db(), QStringLiteral("SELECT DISTINCT COBCd FROM DatDwt"));
    EXPECT_EQ(rows->rowCount(), codes.size());
    bool cause = false, sequela = false;
    for (int i = 0; i < rows->rowCount(); ++i) {
        if (rows->rows(i, 0).toString() == QLatin1String("11011"))
            cause = rows->rows(i, 1).isNull();
        if (rows->rows(i, 0).toString() == QLatin1String("15011WS"))
            sequela = rows->rows(i, 1).toString() == QLatin1String("Wasting");
    }
    EXPECT_TRUE(cause);
    EXPECT_TRUE(sequela);
}

TEST_F(StudyDataTransferTest, TextDbaseAndLotusTablesAreFilesOfTheirOwnBesideTheChosenFile) {
    const QString file = path(QStringLiteral("out/backup.txt"));
    ASSERT_EQ(exportStudyData(studyContext(), std::nullopt, file), TransferResult::Done)
        << lastMessage().toStdString();
    for (const char* name : {"Population_CAP_2020.txt", "ASDR_SLO_2020.txt", "CSMP_MER_2020.txt",
                             "EpiEst_KER_2020.txt", "CSMP_2020.txt"})
        EXPECT_TRUE(QFile::exists(path(QStringLiteral("out/") + QString::fromLatin1(name)))) << name;
    // A cross table in a text file names its fields on its first line.
    EXPECT_TRUE(readBytes(path(QStringLiteral("out/CSMP_CAP_2020.txt"))).startsWith("BPUID;COBCD;YEAR;"));
    EXPECT_TRUE(readBytes(path(QStringLiteral("out/CSMP_2020.txt"))).startsWith("SQLACD;SEQUELA;"));
    // A Lotus worksheet, one sheet of 8192 rows, is a file of each table too, its range named by the
    // unit and year.
    ASSERT_EQ(exportStudyData(studyContext(), StudyData::SequelaEpi, path(QStringLiteral("lotus/b.WK1"))),
              TransferResult::Done);
    EXPECT_EQ(
        FnReadArrFile(path(QStringLiteral("lotus/SqlaEpiEst_TAM_2020.WK1")), QStringLiteral("SEPI_TAM_2020"))
            .size(0),
        494);
    // A workbook takes every table, each named by its unit and year.
    const QString book = path(QStringLiteral("backup.xlsx"));
    ASSERT_EQ(exportStudyData(studyContext(), StudyData::Population, book), TransferResult::Done);
    QStringList names;
    const CellArray pop = FnReadArrFile(book, QStringLiteral("POP_SLO_2020"), &names);
    ASSERT_EQ(pop.rank(), 2);
    EXPECT_EQ(names.join(u',').toStdString(), "BPUID,YEAR,Bai,M,F,UpdDt");
    EXPECT_EQ(pop(0, 0).toString().toStdString(), "SLO");
}

TEST_F(StudyDataTransferTest, OneUnitAndYearAlone) {
    const QString file = path(QStringLiteral("one.vdb"));
    ASSERT_EQ(exportStudyData(studyContext(), StudyData::Population, file, {QStringLiteral("SLO"), 2020}),
              TransferResult::Done);
    EXPECT_TRUE(lastMessage().endsWith(QStringLiteral(": 1 tables written")));
    EXPECT_EQ(FnReadArrFile(file, QStringLiteral("POP_CAP_2020")).rank(), 0);
    EXPECT_EQ(FnReadArrFile(file, QStringLiteral("POP_SLO_2020")).size(0), 19);
}

TEST_F(StudyDataTransferTest, NoToReplacingLeavesEveryTableAsItWas) {
    const QString file = path(QStringLiteral("pop.xlsx"));
    ASSERT_EQ(exportStudyData(studyContext(), StudyData::Population, file), TransferResult::Done);
    const std::string before = dumpAll();
    answer({Answer::No});
    EXPECT_EQ(importStudyData(studyContext(), StudyData::Population, file), TransferResult::Declined);
    EXPECT_EQ(lastMessage().toStdString(), text(t::kDataHasRows).arg(QStringLiteral("DatPOP")).toStdString());
    EXPECT_EQ(dumpAll(), before);
}

TEST_F(StudyDataTransferTest, ABadRowMidwayLeavesEveryTableAsItWas) {
    const QString file = path(QStringLiteral("data/backup.txt"));
    ASSERT_EQ(exportStudyData(studyContext(), std::nullopt, file), TransferResult::Done);
    // A rate that is no number, in the fifth unit's file: four units' rates are written before it.
    const QString rates = path(QStringLiteral("data/ASDR_HIL_2020.txt"));
    QByteArray bytes = readBytes(rates);
    const qsizetype at = bytes.indexOf("\r\n", bytes.size() / 2);
    bytes.insert(at, "x");
    ASSERT_TRUE(writeBytes(rates, bytes));
    const std::string before = dumpAll();
    answer({Answer::Yes});
    EXPECT_EQ(importStudyData(studyContext(), std::nullopt, file), TransferResult::Failed);
    EXPECT_TRUE(lastMessage().startsWith(text(t::kDataNotImported) + QStringLiteral("DatASDR\n")))
        << lastMessage().toStdString();
    EXPECT_EQ(dumpAll(), before);
}

TEST_F(StudyDataTransferTest, AFileCutShortLeavesEveryTableAsItWas) {
    const std::string before = dumpAll();
    for (const QString& kind : transferKinds()) {
        const QString folder = path(QStringLiteral("cut_") + kind);
        ASSERT_TRUE(QDir().mkpath(folder));
        const QString file = folder + QStringLiteral("/backup.") + kind;
        ASSERT_EQ(exportStudyData(studyContext(), std::nullopt, file), TransferResult::Done)
            << kind.toStdString();
        const bool own = kind != QLatin1String("xlsx") && kind != QLatin1String("vdb");
        const QString cut = own ? folder + QStringLiteral("/EpiEst_TAM_2020.") + kind : file;
        QByteArray bytes = readBytes(cut);
        bytes.truncate(bytes.size() * 2 / 3 + 7);
        ASSERT_TRUE(writeBytes(cut, bytes));
        answer({Answer::Yes});
        EXPECT_EQ(importStudyData(studyContext(), std::nullopt, file), TransferResult::Failed)
            << kind.toStdString();
        EXPECT_TRUE(lastMessage().startsWith(text(t::kDataNotImported))) << lastMessage().toStdString();
        EXPECT_EQ(dumpAll(), before) << kind.toStdString();
    }
}

TEST_F(StudyDataTransferTest, AFileOfNoTableOfTheStudyIsRefused) {
    const QString file = path(QStringLiteral("other.xlsx"));
    CellArray rows{1, 1};
    rows(0, 0) = Cell(1.0);
    ASSERT_TRUE(FnWriteArrFile(rows, file, QStringLiteral("Other"), {QStringLiteral("A")}));
    const std::string before = dumpAll();
    EXPECT_EQ(importStudyData(studyContext(), std::nullopt, file), TransferResult::Failed);
    EXPECT_EQ(lastMessage().toStdString(),
              (text(t::kDataNotImported) + text(t::kNoDataTables).arg(file)).toStdString());
    EXPECT_EQ(dumpAll(), before);
}

} // namespace
} // namespace vesk::test
