// The text the generator writes: the layout of the settings blocks, the Sprague panels as published,
// the splice into the settings file, and the generated sections of the notes.

#include "outputs.h"
#include "platform/csv.h"
#include "reference_products.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace vesk;
using namespace vesk::refgen;

namespace {

const ReferenceProducts& products() {
    static const ReferenceProducts p = [] {
        QString error;
        auto in = readReferenceInputs(QStringLiteral(VESK_SOURCE_DIR "/data/refdata"), &error);
        auto r = in ? makeReferenceProducts(*in, &error) : std::nullopt;
        if (!r)
            ADD_FAILURE() << error.toStdString();
        return r.value_or(ReferenceProducts{});
    }();
    return p;
}

QList<QByteArray> blockLines() {
    QByteArray text = stpBlocks(products());
    EXPECT_TRUE(text.endsWith("\r\n"));
    text.chop(2);
    return text.split('\n');
}

} // namespace

TEST(StpBlocks, EveryLineEndsInCrLfAndNoValueListEndsInABar) {
    const QByteArray text = stpBlocks(products());
    ASSERT_TRUE(text.endsWith("\r\n"));
    const QList<QByteArray> lines = text.split('\n'); // the last element is the empty rest
    ASSERT_EQ(lines.last(), "");
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        EXPECT_TRUE(lines[i].endsWith('\r')) << i;
        const QByteArray l = lines[i].left(lines[i].size() - 1);
        EXPECT_FALSE(l.endsWith('|')) << l.constData();
        EXPECT_FALSE(l.contains('\r')) << "stray CR in line " << i;
    }
}

TEST(StpBlocks, LayoutOfTheThreeBlocks) {
    QList<QByteArray> lines;
    for (const QByteArray& l : blockLines())
        lines << (l.endsWith('\r') ? l.left(l.size() - 1) : l);
    const QByteArray r27(27, '-'), r28(28, '-');
    ASSERT_EQ(lines.size(), 3 + 8 + 3 + 36 + 1 + 2 + 5 * 6 + 1);
    EXPECT_EQ(lines[0], r27);
    EXPECT_EQ(lines[1], "[LTS]");
    EXPECT_EQ(lines[2], r27);
    EXPECT_EQ(lines[3], "[Standard Life Table-KRO]");
    EXPECT_TRUE(lines[4].startsWith("[BAI]:0|1|2|"));
    EXPECT_TRUE(lines[4].endsWith("|99|100"));
    EXPECT_TRUE(lines[5].startsWith("[EXM]:80.0000|79.3600|"));
    EXPECT_TRUE(lines[5].endsWith("|1.4611"));
    EXPECT_TRUE(lines[6].startsWith("[EXF]:82.5000|81.8400|"));
    EXPECT_EQ(lines[7], "[Standard Life Table-WHO]");
    EXPECT_EQ(lines[8], lines[4]);
    EXPECT_TRUE(lines[9].startsWith("[EXM]:80.0000|"));
    EXPECT_TRUE(lines[10].startsWith("[EXF]:82.5000|"));
    for (int i : {4, 5, 6, 8, 9, 10})
        EXPECT_EQ(lines[i].count('|'), 100) << i;
    EXPECT_EQ(lines[11], r28);
    EXPECT_EQ(lines[12], "[OAIGD]");
    EXPECT_EQ(lines[13], r28);
    for (int i = 0; i < 36; ++i) {
        const QList<QByteArray> f = lines[14 + i].split('|');
        ASSERT_EQ(f.size(), 5) << i;
        EXPECT_EQ(f[0], QByteArrayList({"WEST", "NORTH", "EAST", "SOUTH"})[i / 9]);
        EXPECT_EQ(f[1].toInt(), 45 + 5 * (i % 9));
    }
    EXPECT_EQ(lines[50], r27); // closes the rows: the only 27-hyphen line after [OAIGD]
    EXPECT_EQ(lines[51], "[PANELS]");
    EXPECT_EQ(lines[52], r27);
    for (int k = 0; k < 5; ++k) {
        EXPECT_EQ(lines[53 + 6 * k], "[PANEL " + QByteArray::number(k) + "]");
        for (int j = 1; j <= 5; ++j)
            EXPECT_EQ(lines[53 + 6 * k + j].split('|').size(), 5);
    }
    EXPECT_EQ(lines.last(), r27);
}

// Each panel holds the published multipliers, row = year within the group split, column = group of
// the window; the column of the group being split sums to 1 and the others to 0.
TEST(StpBlocks, PanelsAreThePublishedMultipliers) {
    QFile f(QStringLiteral(VESK_SOURCE_DIR "/data/refdata/sprague_panels.csv"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const auto csv = parseCsv(QString::fromUtf8(f.readAll()));
    ASSERT_TRUE(csv.has_value());
    ASSERT_EQ(csv->rows.size(), 25);
    for (const QStringList& r : csv->rows) {
        const int k = r[csv->column("settings_block")].mid(7, 1).toInt();
        const int year = r[csv->column("year_in_group")].toInt();
        for (int g = 0; g < 5; ++g)
            EXPECT_DOUBLE_EQ(products().panels[k][year][g],
                             r[csv->column(QStringLiteral("G%1").arg(g + 1))].toDouble());
    }
    // The group split: first interval G1, second G2, middle G3, last G5 ([PANEL 3]), next-to-last G4 ([PANEL
    // 4]).
    const int split[5] = {0, 1, 2, 4, 3};
    for (int k = 0; k < 5; ++k)
        for (int g = 0; g < 5; ++g) {
            double sum = 0;
            for (int j = 0; j < 5; ++j)
                sum += products().panels[k][j][g];
            EXPECT_NEAR(sum, g == split[k] ? 1.0 : 0.0, 1e-12) << "panel " << k << " column " << g;
        }
    EXPECT_DOUBLE_EQ(products().panels[0][0][0], 0.3616);
    EXPECT_DOUBLE_EQ(products().panels[3][4][4], 0.3616); // last interval, last year
    EXPECT_DOUBLE_EQ(products().panels[4][4][4], 0.0336); // next-to-last interval
}

TEST(StpBlocks, SpliceKeepsTheHeaderAndReplacesTheRest) {
    const QByteArray head = "[VESK]\r\nPATH  =x\r\n[LIFE TABLE]\r\n[LIFE TABLE TYPE]=3\r\n";
    EXPECT_EQ(spliceStp(head + "old blocks\r\n", "NEW\r\n"), head + "NEW\r\n");
    EXPECT_EQ(spliceStp(head, "NEW\r\n"), head + "NEW\r\n");
    EXPECT_EQ(spliceStp("[LIFE TABLE TYPE]=1", "B"), QByteArray("[LIFE TABLE TYPE]=1\r\nB"));
    EXPECT_EQ(spliceStp("[A]\n[LIFE TABLE TYPE]=1\nold", "B"), QByteArray("[A]\n[LIFE TABLE TYPE]=1\r\nB"));
    EXPECT_FALSE(spliceStp("[VESK]\r\n[LIFE TABLE]\r\n", "B").has_value());
}

TEST(StpBlocks, UserTableLayout) {
    const std::vector<double> f(101, 2.0), m(101, 1.0);
    const QList<QByteArray> lines = userTableText(f, m, 2).split('\n');
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0], "[User Defined Tables]\r");
    EXPECT_TRUE(lines[1].startsWith("[BAI]:0|1|"));
    EXPECT_TRUE(lines[2].startsWith("[EXM]:1.00|1.00|"));
    EXPECT_TRUE(lines[3].startsWith("[EXF]:2.00|"));
    EXPECT_TRUE(lines[3].endsWith("|2.00\r"));
    EXPECT_EQ(lines[4], "");
}

TEST(Notes, SectionsAreReplacedBetweenTheirMarkers) {
    const QString doc = "a\n<!-- refgen:begin x -->\nold\n<!-- refgen:end x -->\nb\n";
    EXPECT_EQ(replaceSection(doc, "x", "new\n"),
              QString("a\n<!-- refgen:begin x -->\nnew\n<!-- refgen:end x -->\nb\n"));
    EXPECT_FALSE(replaceSection(doc, "y", "new\n").has_value());
    const QString table = oaigdFitMarkdown(products());
    EXPECT_EQ(table.count(u'\n'), 38 + 1 + 4);
    EXPECT_TRUE(table.contains("| WEST | 45 |"));
    EXPECT_TRUE(table.contains("| 550 |"));
}
