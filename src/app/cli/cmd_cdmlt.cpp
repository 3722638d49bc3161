// vesk-cli cdmlt: one Coale-Demeny regional model life table as CSV.

#include "app/cli/cli.h"
#include "demography/coale_demeny.h"
#include "platform/csv.h"

#include <cmath>

namespace vesk::cli {

namespace {

const QString kUsage = QStringLiteral(
    "Usage: vesk-cli cdmlt --family FAMILY --sex SEX --level LEVEL [--data FOLDER]\n\n"
    "Writes a Coale-Demeny regional model life table (Coale, Demeny & Vaughan 1983) as CSV with\n"
    "the columns age, n, nqx, lx, ndx, nLx, nmx, nax, Tx, ex: 21 rows, ages 0, 1, 5, ..., 95, the\n"
    "last open (its n empty); lx has the radix 1.\n\n"
    "  --family  West, North, East or South\n"
    "  --sex     F or M\n"
    "  --level   1 to 25 (level 1: female e0 20 years; level 25: female e0 80 years)\n"
    "  --data    folder of the coefficient files (default: refdata beside the program)\n");

QString number(double v) {
    return std::isnan(v) ? QString() : csvNumber(v);
}

QString tableCsv(const CdLifeTable& t) {
    QString text = csvLine({"age", "n", "nqx", "lx", "ndx", "nLx", "nmx", "nax", "Tx", "ex"}) + u'\n';
    for (int i = 0; i < kCdAgeGroups; ++i)
        text += csvLine({number(t.age[i]), number(t.n[i]), number(t.nqx[i]), number(t.lx[i]),
                         number(t.ndx[i]), number(t.nLx[i]), number(t.nmx[i]), number(t.nax[i]),
                         number(t.Tx[i]), number(t.ex[i])}) +
                u'\n';
    return text;
}

int fail(const QString& message) {
    err(QStringLiteral("vesk-cli cdmlt: ") + message);
    return 2;
}

int run(const QStringList& arguments) {
    QStringList args = arguments;
    const auto family = takeOption(args, QStringLiteral("--family"));
    const auto sex = takeOption(args, QStringLiteral("--sex"));
    const auto level = takeOption(args, QStringLiteral("--level"));
    const auto folder = takeOption(args, QStringLiteral("--data"));
    if (!args.isEmpty())
        return fail(
            QStringLiteral("unexpected argument '%1'; see `vesk-cli cdmlt --help`").arg(args.first()));
    if (!family || !sex || !level)
        return fail(
            QStringLiteral("--family, --sex and --level are all required; see `vesk-cli cdmlt --help`"));
    const auto f = cdFamilyFromName(family->trimmed());
    if (!f)
        return fail(QStringLiteral("unknown family '%1': use West, North, East or South").arg(*family));
    const auto s = cdSexFromName(*sex);
    if (!s)
        return fail(QStringLiteral("unknown sex '%1': use F or M").arg(*sex));
    bool ok = false;
    const int l = level->trimmed().toInt(&ok);
    if (!ok || l < 1 || l > kCdLevels)
        return fail(QStringLiteral("level '%1' is not a whole number from 1 to 25").arg(*level));
    QString error;
    const QString dir = folder && !folder->isEmpty() ? *folder : referenceDataFolder();
    const auto data = loadCoaleDemenyData(dir, &error);
    if (!data)
        return fail(QStringLiteral("the model life table coefficients could not be read: ") + error);
    out(tableCsv(coaleDemenyTable(*data, *f, *s, l)));
    return 0;
}

const Registrar registrar(
    {QStringLiteral("cdmlt"),
     QStringLiteral("Coale-Demeny regional model life table (West, North, East, South)"), kUsage, run});

} // namespace

} // namespace vesk::cli
