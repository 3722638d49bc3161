// The readers of the numeric blocks: standard life tables, [OAIGD], and the five panels.

#include "settings_test_support.h"

namespace vesk::test {
namespace {

class SettingsBlocks : public StpTest {};

TEST_F(SettingsBlocks, LifeTableLinesAreFoundByTheirTags) {
    QByteArray file = completeFile();
    file.replace("[BAI]:0|1|5\r\n[EXM]:76.1|75.7|71.9\r\n[EXF]:81.6|81|77.1",
                 "[exf]:81.6|81|77.1\r\n[EXM]:76.1|75.7|71.9\r\n[BAI]:0|1|5");
    install(file);
    CellArray who;
    ASSERT_TRUE(FnReadLTS(QStringLiteral("[standard life table-who]"), who));
    ASSERT_EQ(who.size(0), 3);
    EXPECT_EQ(who(2, 0), Cell("5"));
    EXPECT_EQ(who(2, 1), Cell("77.1"));
    EXPECT_EQ(who(2, 2), Cell("71.9"));
}

TEST_F(SettingsBlocks, LifeTableGrowsToTheLongestLine) {
    QByteArray file = completeFile();
    file.replace("[EXF]:82.5|81.84|77.95|72.99", "[EXF]:82.5|81.84|77.95|72.99|68.1");
    install(file);
    CellArray kro;
    ASSERT_TRUE(FnReadLTS(QStringLiteral("[Standard Life Table-KRO]"), kro));
    ASSERT_EQ(kro.size(0), 5);
    EXPECT_EQ(kro(4, 1), Cell("68.1"));
    EXPECT_TRUE(kro(4, 0).isEmpty());
}

TEST_F(SettingsBlocks, AnotherTagEndsTheLifeTable) {
    QByteArray file = completeFile();
    file.replace("[EXM]:80|79.36|75.38|70.4", "[XYZ]:80|79.36|75.38|70.4");
    install(file);
    CellArray kro;
    ASSERT_TRUE(FnReadLTS(QStringLiteral("[Standard Life Table-KRO]"), kro));
    EXPECT_EQ(kro(1, 0), Cell("1"));
    EXPECT_TRUE(kro(1, 2).isEmpty());
    EXPECT_TRUE(kro(1, 1).isEmpty()); // the EXF line after it is not read
}

TEST_F(SettingsBlocks, MissingSectionLeavesTheTableEmpty) {
    install(completeFile());
    CellArray table = CellArray::fromSizes({1, 3});
    EXPECT_FALSE(FnReadLTS(QStringLiteral("[Standard Life Table-XYZ]"), table));
    EXPECT_TRUE(table.isEmpty());
    EXPECT_FALSE(FnReadLTS(QStringLiteral("[Standard Life Table-KRO]"), table, root() + "/none.stp"));
    EXPECT_TRUE(table.isEmpty());
}

TEST_F(SettingsBlocks, OaigdRowsEndAtTheShorterRuleOnly) {
    install(completeFile());
    CellArray oaigd;
    ASSERT_TRUE(FnReadOAIGD(oaigd));
    ASSERT_EQ(oaigd.size(0), 3);
    ASSERT_EQ(oaigd.size(1), 5);
    EXPECT_EQ(oaigd(0, 0), Cell("1"));
    EXPECT_EQ(oaigd(2, 4), Cell("95"));
}

TEST_F(SettingsBlocks, OaigdRulesOfEqualLengthHideTheRows) {
    // With a 27-hyphen rule under the heading, the rows would end before they begin... but the rule
    // under the heading is skipped whatever its length, so only a 27-hyphen rule right after it does.
    QByteArray file = completeFile();
    file.replace("[OAIGD]\r\n----------------------------\r\n1|",
                 "[OAIGD]\r\n----------------------------\r\n---------------------------\r\n1|");
    install(file);
    CellArray oaigd;
    EXPECT_FALSE(FnReadOAIGD(oaigd));
    EXPECT_TRUE(oaigd.isEmpty());
}

TEST_F(SettingsBlocks, EachPanelReadsToTheNextHeadingAndTheLastToTheRule) {
    install(completeFile());
    CellArray p0, p1, p2, p3, p4;
    ASSERT_TRUE(FnReadPanel0(p0));
    ASSERT_TRUE(FnReadPanel1(p1));
    ASSERT_TRUE(FnReadPanel2(p2));
    ASSERT_TRUE(FnReadPanel3(p3));
    ASSERT_TRUE(FnReadPanel4(p4));
    EXPECT_EQ(p0.size(0), 2);
    EXPECT_EQ(p1.size(0), 2);
    EXPECT_EQ(p2.size(0), 2);
    EXPECT_EQ(p3.size(0), 1);
    EXPECT_EQ(p4.size(0), 1);
    EXPECT_EQ(p0.size(1), 5);
    EXPECT_EQ(p1(1, 0), Cell("0.0080")); // texts as they stand
    EXPECT_EQ(p4(0, 4), Cell("0.3616"));
    CellArray none;
    EXPECT_FALSE(FnReadPanel(5, none));
}

TEST_F(SettingsBlocks, MissingPanelLeavesItEmpty) {
    QByteArray file = completeFile();
    file.replace("[PANEL 3]", "[PANEL 9]");
    install(file);
    CellArray p3, p2;
    EXPECT_FALSE(FnReadPanel3(p3));
    EXPECT_TRUE(p3.isEmpty());
    ASSERT_TRUE(FnReadPanel2(p2));
    EXPECT_EQ(p2.size(0), 2); // "[PANEL 9]" is still a heading
}

TEST_F(SettingsBlocks, OneWideRowDoesNotWidenEveryRowBeyondTheFile) {
    // 100,000 values on the panel's first row and 100,000 short rows under it: about 400 KB that
    // would ask for ten thousand million cells if every row took the widest row's width.
    QByteArray rows = QByteArray("1|").repeated(100000) + "1\r\n" + QByteArray("2\r\n").repeated(100000);
    QByteArray file = completeFile();
    const qsizetype at = file.indexOf("[PANEL 4]");
    ASSERT_GE(at, 0);
    file.insert(file.indexOf('\n', at) + 1, rows);
    install(file);
    CellArray p4;
    EXPECT_FALSE(FnReadPanel4(p4));
    EXPECT_TRUE(p4.isEmpty());
    EXPECT_TRUE(settingsBlockRefusal().contains(stpPath())) << settingsBlockRefusal().toStdString();
    CellArray p0;
    ASSERT_TRUE(FnReadPanel0(p0)); // the other blocks still read
    EXPECT_TRUE(settingsBlockRefusal().isEmpty());
}

TEST_F(SettingsBlocks, ReadersTakeTheFileGiven) {
    const QString other = root() + "/other.stp";
    writeFile(other, completeFile());
    settings().AppPath = root() + "/nowhere";
    CellArray p0;
    EXPECT_FALSE(FnReadPanel0(p0));
    EXPECT_TRUE(FnReadPanel0(p0, other));
}

} // namespace
} // namespace vesk::test
