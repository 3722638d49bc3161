// FnOIAGD: its edges, and on the stable populations of Coale-Demeny tables (a family, a level, a
// sex, a growth rate), the age at death it gives against the population's true mean age at death
// above the open age, within the largest error that the fit states for its family and BOAI
// (data/README.md, made with the fit).

#include "demography/coale_demeny.h"
#include "demography/open_interval.h"
#include "foundation/settings_file.h"
#include "oaigd_fit.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <cmath>
#include <map>

using namespace vesk;

namespace {

const CellArray& delivered() {
    static const CellArray t = [] {
        CellArray a;
        EXPECT_TRUE(FnReadOAIGD(a, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")));
        return a;
    }();
    return t;
}

TEST(OpenInterval, BoaiOutsideTheNineIsNull) {
    EXPECT_TRUE(FnOIAGD("West", 90, 0.5, 0.01, delivered()).isNull());
    EXPECT_TRUE(FnOIAGD("West", 40, 0.5, 0.01, delivered()).isNull());
    EXPECT_FALSE(isOaigdBoai(90));
    EXPECT_TRUE(isOaigdBoai(85));
}

TEST(OpenInterval, FamilyInLowerCaseFindsItsRows) {
    EXPECT_EQ(FnOIAGD("west", 45, std::nullopt, std::nullopt, delivered()).toDouble(), -45.612960);
    EXPECT_EQ(FnOIAGD(" South ", 85, std::nullopt, std::nullopt, delivered()).toDouble(), -23.454260);
    EXPECT_TRUE(FnOIAGD("Western", 45, 0.5, 0.01, delivered()).isEmpty()); // no row: empty
}

TEST(OpenInterval, MissingTermsFallAway) {
    const double a = -45.612960, b = 26.081714, c = 49.752657; // WEST 45
    EXPECT_DOUBLE_EQ(FnOIAGD("WEST", 45, std::nullopt, 0.02, delivered()).toDouble(), c * std::exp(0.02) + a);
    EXPECT_DOUBLE_EQ(FnOIAGD("WEST", 45, 0.6, std::nullopt, delivered()).toDouble(), a + 0.6 * b);
    EXPECT_DOUBLE_EQ(FnOIAGD("WEST", 45, 0.6, 0.02, delivered()).toDouble(), c * std::exp(0.02) + (0.6 * b + a));
}

TEST(OpenInterval, GrowthRateIsAFractionWithinTheFit) {
    EXPECT_TRUE(oaigdGrowthRateRefusal(0.02).isEmpty());
    EXPECT_TRUE(oaigdGrowthRateRefusal(-0.01).isEmpty());
    EXPECT_TRUE(oaigdGrowthRateRefusal(0.04).isEmpty());
    EXPECT_TRUE(oaigdGrowthRateRefusal(2).contains("0.02 for 2 per cent"));
    EXPECT_FALSE(oaigdGrowthRateRefusal(-0.02).isEmpty());
}

// The largest error of each fit, as the fit's notes state it: family and BOAI to years.
std::map<std::pair<QString, int>, double> statedLargestErrors() {
    QFile f(QStringLiteral(VESK_SOURCE_DIR "/data/README.md"));
    EXPECT_TRUE(f.open(QIODevice::ReadOnly));
    std::map<std::pair<QString, int>, double> out;
    const QRegularExpression row(QStringLiteral(R"(^\| (WEST|NORTH|EAST|SOUTH) \| (\d+) \|.*\| ([0-9.]+) \| 550 \|$)"));
    for (const QString& line : QString::fromUtf8(f.readAll()).split(u'\n')) {
        const auto m = row.match(line);
        if (m.hasMatch())
            out[{m.captured(1), m.captured(2).toInt()}] = m.captured(3).toDouble();
    }
    EXPECT_EQ(out.size(), 36u);
    return out;
}

TEST(OpenInterval, StablePopulationsWithinTheStatedError) {
    QString error;
    const auto data = loadCoaleDemenyData(QStringLiteral(VESK_BIN_DIR "/refdata"), &error);
    ASSERT_TRUE(data) << error.toStdString();
    const auto largest = statedLargestErrors();
    int checked = 0;
    for (CdFamily f : {CdFamily::West, CdFamily::North, CdFamily::East, CdFamily::South})
        for (CdSex s : {CdSex::Female, CdSex::Male})
            for (int level : {5, 15, 25})
                for (double r : {0.0, 0.0125, 0.03}) { // 0.0125 lies between the design's rates
                    const CdLifeTable t = coaleDemenyTable(*data, f, s, level);
                    const refgen::StableDeaths d = refgen::stableDeaths(t, r, 0.05);
                    const QString family = cdFamilyName(f).toUpper();
                    for (int boai : {45, 65, 85}) {
                        const double truth = d.meanExcessAge(boai);
                        const double fitted = FnOIAGD(family, boai, d.ratio(), r, delivered()).toDouble();
                        EXPECT_LE(std::abs(fitted - truth), largest.at({family, boai}))
                            << family.toStdString() << " " << cdSexLetter(s).toStdString() << " level " << level
                            << " r " << r << " BOAI " << boai << ": " << fitted << " vs " << truth;
                        ++checked;
                    }
                }
    EXPECT_EQ(checked, 4 * 2 * 3 * 3 * 3);
}

} // namespace
