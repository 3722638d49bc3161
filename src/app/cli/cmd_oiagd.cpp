// vesk-cli oiagd: the mean age at death in an open last age interval.

#include "app/cli/cli.h"
#include "demography/open_interval.h"
#include "foundation/runtime_error.h"
#include "foundation/settings_file.h"

#include <QFileInfo>

namespace vesk::cli {

namespace {

const QString kUsage = QStringLiteral(
    "Usage: vesk-cli oiagd --family F --boai A [--ratio R] [--pgr G] [--settings FILE]\n\n"
    "The mean age at death in an open last age interval starting at A, from the regression of the\n"
    "settings file's [OAIGD] block on the stable populations of the Coale-Demeny model life tables:\n"
    "age at death - A = a + b·R + c·exp(G). Writes CSV: boai, age_at_death_minus_boai, age_at_death.\n\n"
    "  --family   West, North, East or South (any case)\n"
    "  --boai     45, 50, 55, 60, 65, 70, 75, 80 or 85\n"
    "  --ratio    deaths above 45 / deaths above 10, within 0 to 1 (without it the term falls away)\n"
    "  --pgr      the population growth rate a year as a FRACTION: 0.02 for 2 per cent; the fit covers\n"
    "             -0.01 to 0.04 (without it the term falls away)\n"
    "  --settings the settings file (default: Vesk.stp beside vesk-cli)\n");

int fail(const QString& message) {
    err(QStringLiteral("vesk-cli oiagd: ") + message);
    return 2;
}

std::optional<double> number(const std::optional<QString>& text, bool* ok) {
    *ok = true;
    if (!text)
        return std::nullopt;
    const double v = text->trimmed().toDouble(ok);
    return *ok ? std::optional<double>(v) : std::nullopt;
}

int run(const QStringList& arguments) {
    QStringList args = arguments;
    const auto family = takeOption(args, QStringLiteral("--family"));
    const auto boaiText = takeOption(args, QStringLiteral("--boai"));
    const auto ratioText = takeOption(args, QStringLiteral("--ratio"));
    const auto pgrText = takeOption(args, QStringLiteral("--pgr"));
    const auto settingsFile = takeOption(args, QStringLiteral("--settings"));
    if (!args.isEmpty())
        return fail(QStringLiteral("unexpected argument '%1'; see `vesk-cli oiagd --help`").arg(args.first()));
    if (!family || !boaiText)
        return fail(QStringLiteral("--family and --boai are required; see `vesk-cli oiagd --help`"));
    bool ok = false;
    const double boai = boaiText->trimmed().toDouble(&ok);
    if (!ok || !isOaigdBoai(boai))
        return fail(QStringLiteral("--boai '%1': the open interval starts at 45, 50, 55, 60, 65, 70, 75, 80 or 85")
                        .arg(*boaiText));
    const auto ratio = number(ratioText, &ok);
    if (!ok || (ratio && !(*ratio > 0 && *ratio <= 1)))
        return fail(QStringLiteral("--ratio '%1' is no ratio of deaths above 45 to deaths above 10 (0 to 1)")
                        .arg(ratioText.value_or(QString())));
    const auto pgr = number(pgrText, &ok);
    if (!ok)
        return fail(QStringLiteral("--pgr '%1' is no number").arg(pgrText.value_or(QString())));
    if (pgr && !oaigdGrowthRateRefusal(*pgr).isEmpty())
        return fail(oaigdGrowthRateRefusal(*pgr));
    const QString stp = settingsFile.value_or(defaultSettingsPath());
    CellArray table;
    if (!QFileInfo(stp).isFile() || !FnReadOAIGD(table, stp))
        return fail(QStringLiteral("the settings file %1 has no [OAIGD] block of 36 rows").arg(stp));
    try {
        const Cell y = FnOIAGD(*family, int(boai), ratio, pgr, table);
        if (!y.isNumber())
            return fail(QStringLiteral("the settings file has no coefficients for the family '%1' and BOAI %2")
                            .arg(*family)
                            .arg(boai));
        out(QStringLiteral("boai,age_at_death_minus_boai,age_at_death\n%1,%2,%3\n")
                .arg(int(boai))
                .arg(csvNumber(y.toDouble()), csvNumber(boai + y.toDouble())));
        return 0;
    } catch (const RuntimeError& e) {
        return fail(e.words);
    }
}

const Registrar registrar({QStringLiteral("oiagd"), QStringLiteral("mean age at death in an open last age interval"),
                           kUsage, run});

} // namespace

} // namespace vesk::cli
