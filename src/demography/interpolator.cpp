#include "demography/interpolator.h"

#include "demography/sprague_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <QFile>
#include <QRegularExpression>
#include <cmath>

namespace vesk {

namespace st = sprague_texts;

namespace {

constexpr int kMinimumClosedGroups = 5;
const QLatin1String kOpenMark("-w");

void say(const char* words, const QString& title = QString()) {
    prompts().ask(text(words), Buttons::Ok, Icon::Warning, title);
}

// The lower age of an output row: its leading number ("65-w" is 65).
std::optional<double> lowerAge(const QString& label) {
    const QString t = label.trimmed();
    if (t.isEmpty() || !(t[0].isDigit()))
        return std::nullopt;
    return Val(t);
}

CellArray columnVector(const QStringList& texts) {
    CellArray v({int(texts.size())});
    for (int i = 0; i < texts.size(); ++i)
        v(i) = Cell(texts[i].trimmed());
    return v;
}

// The value a column holds for the years from..to (inclusive), or nothing when a year is missing.
std::optional<double> sumYears(const CellArray& years, int from, int to) {
    double sum = 0;
    for (int y = from; y <= to; ++y) {
        if (y < 0 || y > years.ubound(0) || !years(y).isNumber())
            return std::nullopt;
        sum += years(y).toDouble();
    }
    return sum;
}

} // namespace

std::optional<QStringList> interpolatorAgeLadder(const QString& limit) {
    const auto v = runtime_arithmetic::textNumber(limit);
    if (!v || *v < 0 || *v > 1000) {
        say(st::kValidData);
        return std::nullopt;
    }
    if (std::fmod(*v, 5) != 0) {
        say(st::kDivisibleByFive);
        return std::nullopt;
    }
    QStringList ages;
    const int last = int(*v);
    for (int a = 0; a < last; a += 5)
        ages << QString::number(a);
    ages << QString::number(last) + kOpenMark;
    return ages;
}

qint16 interpolatorKeepOpen(const QString& lastAge) {
    return Like(lastAge.trimmed(), QStringLiteral("*-w")) ? 1 : 0;
}

InterpolatorRun runInterpolator(const QStringList& ages, const QList<QStringList>& columns,
                                const SpraguePanels* panels) {
    InterpolatorRun run;
    bool any = false;
    for (const QStringList& c : columns)
        for (const QString& v : c)
            any = any || !v.trimmed().isEmpty();
    if (ages.isEmpty() || !any) {
        say(st::kFillData);
        return run;
    }
    if (ages.size() - 1 < kMinimumClosedGroups) {
        run.outcome = InterpolatorOutcome::TooFewRows;
        say(st::kMinimumRows);
        return run;
    }
    const qint16 keepOpen = interpolatorKeepOpen(ages.last());
    for (const QStringList& c : columns) {
        CellArray single;
        const CellArray groups = columnVector(c);
        const Cell r = panels ? FnSprague(groups, keepOpen, single, *panels) : FnSprague(groups, keepOpen, single);
        if (r.isNumber() && r.toDouble() == 1) {
            const Answer a = prompts().ask(text(st::kSuddenChange) + u'\r' + text(st::kSuddenChangeChart),
                                           Buttons::YesNo, Icon::Question, text(st::kSuddenTitle));
            run.outcome = a == Answer::Yes ? InterpolatorOutcome::NegativeChart : InterpolatorOutcome::Negative;
            run.singleYears.clear();
            return run;
        }
        if (!r.isArray()) {
            run.outcome = InterpolatorOutcome::NoData; // the routine said why
            run.singleYears.clear();
            return run;
        }
        run.singleYears << single;
    }
    run.outcome = InterpolatorOutcome::Done;
    return run;
}

CellArray collapseToOutputGroups(const QList<CellArray>& singleYears, const QStringList& outputGroups,
                                 bool exactAges) {
    CellArray out({int(outputGroups.size()), int(singleYears.size()) + 1});
    for (int r = 0; r < outputGroups.size(); ++r) {
        const QString label = outputGroups[r].trimmed();
        out(r, 0) = Cell(label);
        const auto from = lowerAge(label);
        if (!from)
            continue;
        int to = int(*from);
        if (!exactAges) {
            const bool open = label.endsWith(kOpenMark, Qt::CaseInsensitive);
            const auto next = r + 1 < outputGroups.size() ? lowerAge(outputGroups[r + 1]) : std::nullopt;
            if (open)
                to = singleYears.isEmpty() ? to : singleYears.first().ubound(0);
            else if (next)
                to = int(*next) - 1;
        }
        for (int c = 0; c < singleYears.size(); ++c) {
            const auto sum = sumYears(singleYears[c], int(*from), to);
            if (!sum) {
                prompts().ask(text(st::kDataFor) + u' ' + label + u' ' + text(st::kNotAvailable), Buttons::Ok,
                              Icon::Warning, QString());
                break;
            }
            out(r, c + 1) = Cell(*sum);
        }
    }
    return out;
}

bool ProcChkNegRslt(const CellArray& collapsed) {
    QStringList lines;
    for (int r = 0; r < collapsed.size(0); ++r)
        for (int c = 1; c < collapsed.size(1); ++c)
            if (collapsed(r, c).isNumber() && collapsed(r, c).toDouble() <= 0)
                lines << collapsed(r, 0).toString() + u'\t' + collapsed(r, c).toString();
    if (lines.isEmpty())
        return true;
    prompts().ask(text(st::kSuddenChangeGroups) + u'\r' + text(st::kSuddenChangeCheck) + QStringLiteral("\n\n") +
                      text(st::kHeadAgeGroups) + u'\t' + text(st::kHeadData) + u'\n' + lines.join(u'\n'),
                  Buttons::Ok, Icon::Warning, QString());
    return false;
}

QString TKdecimals(double value, int decimals) {
    if (decimals > 0)
        return formatNumber(value, QStringLiteral("#.") + QString(decimals, u'#'));
    return numberToText(vbFix(value));
}

QString outputGroupRefusal(const QString& typed, std::optional<double> previous, std::optional<double> upperLimit) {
    const auto age = lowerAge(typed);
    if (!age)
        return text(st::kValidData);
    if (previous && *age <= *previous)
        return text(st::kNotAscending);
    if (upperLimit && *age > *upperLimit)
        return text(st::kAboveLimit);
    return QString();
}

namespace {

// A text source: the values after each marker line ([pop], [Dths]) up to the next marker, ";" apart.
std::optional<QList<QStringList>> readMarkedText(const QString& path, const QStringList& fields) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly) || f.size() > 64 * 1024 * 1024)
        return std::nullopt;
    const QStringList lines = QString::fromUtf8(f.readAll()).split(QRegularExpression(QStringLiteral("\r\n|\n|\r")));
    QList<QStringList> out;
    for (const QString& field : fields) {
        const QString marker = u'[' + field + u']';
        QStringList values;
        bool in = false, found = false;
        for (const QString& line : lines) {
            const QString t = line.trimmed();
            if (t.startsWith(u'[')) {
                in = t.startsWith(marker, Qt::CaseInsensitive);
                found = found || in;
                if (!in)
                    continue;
                for (const QString& v : t.mid(marker.size()).split(u';', Qt::SkipEmptyParts))
                    if (!v.trimmed().isEmpty() && v.trimmed() != QLatin1String(":"))
                        values << v.trimmed();
            } else if (in) {
                for (const QString& v : t.split(u';', Qt::SkipEmptyParts))
                    if (!v.trimmed().isEmpty())
                        values << v.trimmed();
            }
        }
        if (!found)
            return std::nullopt;
        out << values;
    }
    return out;
}

} // namespace

std::optional<QList<QStringList>> readInterpolatorSource(const QString& path, const QStringList& fields) {
    std::optional<QList<QStringList>> out;
    if (foreignKind(path) == ForeignKind::Text) {
        out = readMarkedText(path, fields);
    } else {
        QStringList names;
        const CellArray t = FnReadArrFile(path, text(st::kSourceTable), &names);
        QList<QStringList> columns;
        for (const QString& field : fields) {
            int c = -1;
            for (int i = 0; i < names.size(); ++i)
                if (names[i].trimmed().compare(field, Qt::CaseInsensitive) == 0)
                    c = i;
            if (c < 0 || t.rank() != 2)
                break;
            QStringList values;
            for (int r = t.lbound(0); r <= t.ubound(0); ++r)
                values << t(r, t.lbound(1) + c).toString();
            columns << values;
        }
        if (columns.size() == fields.size() && !fields.isEmpty())
            out = columns;
    }
    if (!out)
        say(st::kUnableToReadFile);
    return out;
}

} // namespace vesk
