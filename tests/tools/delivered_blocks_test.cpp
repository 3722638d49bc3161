// The numeric blocks of the delivered settings file (the build's copy beside the programs), read by
// the program's own block readers: what the program will see at start-up.

#include "demography/life_table_check.h"
#include "platform/csv.h"
#include "foundation/settings_file.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace vesk;

namespace {

const QString kDelivered = QStringLiteral(VESK_BIN_DIR "/../delivered/Vesk.stp");

} // namespace

TEST(DeliveredBlocks, StandardTablesAreSingleYearsTo100AndPassTheCheck) {
    for (const char* name : {"[Standard Life Table-KRO]", "[Standard Life Table-WHO]"}) {
        CellArray t;
        ASSERT_TRUE(FnReadLTS(QString::fromLatin1(name), t, kDelivered)) << name;
        ASSERT_EQ(t.size(0), 101) << name;
        EXPECT_TRUE(DoChk(t)) << name;
        EXPECT_EQ(t(0, 1).toDouble(), 82.5) << name; // female e0, West level 26
        EXPECT_EQ(t(0, 2).toDouble(), 80.0) << name; // male e0, West female level 25
        EXPECT_EQ(t(100, 2).toDouble(), 1.4611) << name;
    }
}

TEST(DeliveredBlocks, OpenIntervalTableHas36RowsOfFive) {
    CellArray t;
    ASSERT_TRUE(FnReadOAIGD(t, kDelivered));
    ASSERT_EQ(t.size(0), 36);
    ASSERT_EQ(t.size(1), 5);
    EXPECT_EQ(t(0, 0).toString(), "WEST");
    EXPECT_EQ(t(35, 0).toString(), "SOUTH");
    EXPECT_EQ(t(35, 1).toDouble(), 85);
}

TEST(DeliveredBlocks, PanelsAreThePublishedOnes) {
    QFile f(QStringLiteral(VESK_SOURCE_DIR "/data/refdata/sprague_panels.csv"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const auto csv = parseCsv(QString::fromUtf8(f.readAll()));
    ASSERT_TRUE(csv.has_value());
    CellArray panels[5];
    for (int k = 0; k < 5; ++k) {
        ASSERT_TRUE(FnReadPanel(k, panels[k], kDelivered)) << k;
        ASSERT_EQ(panels[k].size(0), 5) << k;
        ASSERT_EQ(panels[k].size(1), 5) << k;
    }
    for (const QStringList& r : csv->rows) {
        const int k = r[csv->column("settings_block")].mid(7, 1).toInt();
        const int year = r[csv->column("year_in_group")].toInt();
        for (int g = 0; g < 5; ++g)
            EXPECT_EQ(panels[k](year, g).toDouble(),
                      r[csv->column(QStringLiteral("G%1").arg(g + 1))].toDouble())
                << k << " " << year << " " << g;
    }
}
