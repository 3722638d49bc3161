#pragma once
// A study small enough to compute by hand, as SQL on a study file made by the program (the study
// S1 of 2000 with the scheme SCH, as StudyDbFixture::openCurrentStudy leaves it, or any study file
// with that study current):
//
//   units      U1 with population, death rates, causes and epidemiology; U2 with death rates and
//              shares of death but no population
//   ages       PND 0, 5, ..., 80 (80 the open group); YLL 0, 60: F0-59, F60-w, M0-59, M60-w;
//              YLD 0, 15, 30, 45, 60: F0-14 ... F60-w, M0-14 ... M60-w (five a sex, so that the
//              two sexes share the five weights)
//   U1         population 500 women and 400 men in every five-year group and in 80+; death rates
//              0.01 (F) and 0.02 (M) in every group; West model, growth 0.01, IMR 30
//   causes     A0001 with data; B0001 with the sequelae SQ1 (data) and SQ2 (none); C0001 no data
//   CSMP       A0001 0.5, 0.25 (F60-w), 0.5, 0.5; B0001 0.25 in every group; on U2 A0001 0.5
//   weights    A0001 0.1, 0.2, 0.3, 0.4, 0.5 by age; SQ1 0.5; SQ2 0.25
//   DatADW     A0001 on U1: i 0.001, P 0.01, ago 20, DURN 2, agp 40 in every YLD group
//   DatADWSqla B0001 / SQ1 on U1: i 0.002, P 0.02, ago 20, DURN 1, agp 40
//
// The figures these give are worked out where the tests use them.

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <utility>
#include <vector>

namespace vesk::test {

using SqlStep = std::pair<QString, QVariantList>;

inline const QStringList kSmallYllLabels = {"F0-59", "F60-w", "M0-59", "M60-w"};
inline const QStringList kSmallYldLabels = {"F0-14", "F15-29", "F30-44", "F45-59", "F60-w",
                                            "M0-14", "M15-29", "M30-44", "M45-59", "M60-w"};
inline const QStringList kSmallCauses = {"A0001", "B0001", "C0001"};

// The small study leaves the death rates of both sexes together at 0, which no life table can close
// (DALE runs one for both sexes): this fills them, U1's population weighing the sexes.
inline const QString kSmallPersonsRates = QStringLiteral("UPDATE DatASDR SET P = (F * 500 + M * 400) / 900");

inline std::vector<SqlStep> smallStudySql(const QString& study = QStringLiteral("S1"), int year = 2000) {
    std::vector<SqlStep> s;
    const auto add = [&s](const char* sql, QVariantList values) { s.emplace_back(QString::fromLatin1(sql), values); };
    add("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES (?, ?)", {"SQ1", "Sequela one"});
    add("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES (?, ?)", {"SQ2", "Sequela two"});
    s.emplace_back(QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, Sqla, \"%1\") VALUES (?, ?, ?, 1)").arg(study),
                   QVariantList{"A0001", "Plain cause", 0});
    s.emplace_back(QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, Sqla, \"%1\") VALUES (?, ?, ?, 1)").arg(study),
                   QVariantList{"B0001", "Cause with sequelae", -1});
    s.emplace_back(QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, Sqla, \"%1\") VALUES (?, ?, ?, 1)").arg(study),
                   QVariantList{"C0001", "Cause without data", 0});
    add("INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES (?, ?)", {"SQ1", "B0001"});
    add("INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES (?, ?)", {"SQ2", "B0001"});
    add("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES (?, ?, ?)", {study, "N1", "Nation"});
    add("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES (?, ?, ?, ?)", {study, "R1", "Region", "N1"});
    add("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES (?, ?, ?, ?, ?)",
        {study, "U1", "Unit one", 1, "R1"});
    add("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES (?, ?, ?, ?, ?)",
        {study, "U2", "Unit two", 2, "R1"});
    for (int age = 0; age <= 80; age += 5) {
        const QVariant yll = age == 0 || age == 60 ? QVariant(age) : QVariant();
        const QVariant yld = age % 15 == 0 && age <= 60 ? QVariant(age) : QVariant();
        add("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)", {study, yll, yld, age});
        add("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES (?, ?, ?, ?, ?)", {"U1", year, age, 400, 500});
        add("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES (?, ?, ?, ?, ?, ?)",
            {"U1", year, age, 0.01, 0.02, 0});
        add("INSERT INTO DatASDR (BPUID, YEAR, Bai, F, M, P) VALUES (?, ?, ?, ?, ?, ?)",
            {"U2", year, age, 0.01, 0.02, 0});
    }
    add("INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES (?, ?, ?, ?, ?)",
        {"U1", year, "West", 0.01, 30});
    const QList<double> aShares = {0.5, 0.25, 0.5, 0.5};
    for (int g = 0; g < kSmallYllLabels.size(); ++g) {
        add("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES (?, ?, ?, ?, ?)",
            {"U1", year, "A0001", kSmallYllLabels[g], aShares[g]});
        add("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES (?, ?, ?, ?, ?)",
            {"U1", year, "B0001", kSmallYllLabels[g], 0.25});
        add("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES (?, ?, ?, ?, ?)",
            {"U2", year, "A0001", kSmallYllLabels[g], 0.5});
    }
    const QStringList unisex = {"U0-14", "U15-29", "U30-44", "U45-59", "U60-w"};
    for (int g = 0; g < unisex.size(); ++g) {
        add("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES (?, ?, ?, ?, ?)",
            {study, year, "A0001", unisex[g], 0.1 * (g + 1)});
        add("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES (?, ?, ?, ?, ?)",
            {study, year, "SQ1", unisex[g], 0.5});
        add("INSERT INTO DatDwt (BDSId, YEAR, COBCd, ASG, Dwt) VALUES (?, ?, ?, ?, ?)",
            {study, year, "SQ2", unisex[g], 0.25});
    }
    for (const QString& g : kSmallYldLabels) {
        add("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P, ago, DURN, agp) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
            {"U1", year, "A0001", g, 0.001, 0.01, 20, 2, 40});
        add("INSERT INTO DatADWSqla (BPUID, YEAR, COBCd, SqlaCd, ASG, i, P, ago, DURN, agp) "
            "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            {"U1", year, "B0001", "SQ1", g, 0.002, 0.02, 20, 1, 40});
    }
    return s;
}

} // namespace vesk::test
