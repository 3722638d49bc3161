#include "outputs.h"

#include <QStringList>
#include <cmath>

namespace vesk::refgen {

namespace {

const QByteArray kRule27(27, '-');
const QByteArray kRule28(28, '-');
const QByteArray kEol("\r\n");

QByteArray fixed(double v, int decimals) {
    return QByteArray::number(v, 'f', decimals);
}

QByteArray joined(const std::vector<QByteArray>& values) {
    QByteArray line;
    for (size_t i = 0; i < values.size(); ++i)
        line += (i ? "|" : "") + values[i];
    return line;
}

QByteArray ageLine() {
    std::vector<QByteArray> ages;
    for (int a = 0; a <= 100; ++a)
        ages.push_back(QByteArray::number(a));
    return "[BAI]:" + joined(ages);
}

QByteArray valueLine(const char* tag, const std::vector<double>& values, int decimals) {
    std::vector<QByteArray> text;
    for (double v : values)
        text.push_back(fixed(v, decimals));
    return tag + joined(text);
}

// The three lines of a table in the settings file's order: ages, males, females.
QByteArray tableLines(const std::vector<double>& female, const std::vector<double>& male, int decimals) {
    return ageLine() + kEol + valueLine("[EXM]:", male, decimals) + kEol +
           valueLine("[EXF]:", female, decimals) + kEol;
}

QByteArray ltsBlock(const ReferenceProducts& p) {
    return kRule27 + kEol + "[LTS]" + kEol + kRule27 + kEol + "[Standard Life Table-KRO]" + kEol +
           tableLines(p.kro.female, p.kro.male, 4) + "[Standard Life Table-WHO]" + kEol +
           tableLines(p.who.female, p.who.male, 4);
}

QByteArray oaigdBlock(const ReferenceProducts& p) {
    QByteArray text = kRule28 + kEol + "[OAIGD]" + kEol + kRule28 + kEol;
    for (const OaigdFit& f : p.oaigd)
        text += joined({cdFamilyName(f.family).toUpper().toLatin1(), QByteArray::number(f.boai),
                        fixed(f.a, 6), fixed(f.b, 6), fixed(f.c, 6)}) +
                kEol;
    return text + kRule27 + kEol;
}

QByteArray panelsBlock(const ReferenceProducts& p) {
    QByteArray text = "[PANELS]" + kEol + kRule27 + kEol;
    for (int k = 0; k < 5; ++k) {
        text += "[PANEL " + QByteArray::number(k) + "]" + kEol;
        for (const auto& row : p.panels[k])
            text += joined({fixed(row[0], 4), fixed(row[1], 4), fixed(row[2], 4), fixed(row[3], 4),
                            fixed(row[4], 4)}) +
                    kEol;
    }
    return text + kRule27 + kEol;
}

QString num(double v, int decimals) {
    return QString::number(v, 'f', decimals);
}

} // namespace

QByteArray stpBlocks(const ReferenceProducts& p) {
    return ltsBlock(p) + oaigdBlock(p) + panelsBlock(p);
}

std::optional<QByteArray> spliceStp(const QByteArray& settingsFile, const QByteArray& blocks) {
    qsizetype at = settingsFile.startsWith(kLifeTableTypeKey) ? 0 : -1;
    if (at < 0) {
        at = settingsFile.indexOf(QByteArray("\n") + kLifeTableTypeKey);
        if (at < 0)
            return std::nullopt;
        ++at;
    }
    const qsizetype end = settingsFile.indexOf('\n', at);
    QByteArray head = end < 0 ? settingsFile + kEol : settingsFile.left(end + 1);
    if (!head.endsWith(kEol)) // a bare LF: the file's lines end in CR LF
        head.insert(head.size() - 1, '\r');
    return head + blocks;
}

QByteArray userTableText(const std::vector<double>& female, const std::vector<double>& male, int decimals) {
    return "[User Defined Tables]" + kEol + tableLines(female, male, decimals);
}

QString oaigdFitMarkdown(const ReferenceProducts& p) {
    QStringList lines{
        QStringLiteral(
            "| Family | BOAI | a | b | c | R squared | RMSE (years) | largest error (years) | n |"),
        QStringLiteral("|---|---:|---:|---:|---:|---:|---:|---:|---:|")};
    for (const OaigdFit& f : p.oaigd)
        lines << QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 | %9 |")
                     .arg(cdFamilyName(f.family).toUpper())
                     .arg(f.boai)
                     .arg(num(f.a, 6), num(f.b, 6), num(f.c, 6), num(f.r2, 5), num(f.rmse, 4),
                          num(f.maxAbsError, 4))
                     .arg(f.n);
    lines << QString();
    for (size_t i = 0; i < p.oaigd.size(); i += 9)
        lines << QStringLiteral("- %1: Ratio spans %2 to %3 over the 550 stable populations.")
                     .arg(cdFamilyName(p.oaigd[i].family), num(p.oaigd[i].ratioMin, 4),
                          num(p.oaigd[i].ratioMax, 4));
    return lines.join(u'\n') + u'\n';
}

QString closureMarkdown(const ReferenceProducts& p) {
    auto row = [](const QString& what, const GompertzFit& g, double e100, const QString& note) {
        return QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |")
            .arg(what, num(g.A, 6), num(g.B, 6), QString::number(g.rss, 'e', 2), num(e100, 4), note);
    };
    QStringList lines{
        QStringLiteral("| Table | A (hazard at 85) | B | residual sum of squares | e(100) | use |"),
        QStringLiteral("|---|---:|---:|---:|---:|---|")};
    lines << row(QStringLiteral("Standard, females"), p.femaleTail, p.femaleE100,
                 QStringLiteral("shipped e(100)"));
    lines << row(QStringLiteral("Standard, males"), p.maleTailCheck, p.maleTailCheck.expectancy(100),
                 QStringLiteral("check only: shipped e(100) is the model's %1").arg(num(p.maleE100, 4)));
    lines << row(QStringLiteral("GBD 2019 reference"), p.gbd2019Tail, p.gbd2019E100,
                 QStringLiteral("shipped e(100)"));
    lines << QString();
    auto largest = [](const std::vector<double>& a, const std::vector<double>& b) {
        size_t at = 0;
        for (size_t i = 1; i < a.size(); ++i)
            if (std::abs(a[i] - b[i]) > std::abs(a[at] - b[at]))
                at = i;
        return QStringLiteral("%1 years at age %2").arg(num(std::abs(a[at] - b[at]), 4)).arg(at);
    };
    lines
        << QStringLiteral(
               "Largest difference between the KRO (piecewise exponential) and WHO (geometric) single years: "
               "females %1, males %2.")
               .arg(largest(p.kro.female, p.who.female), largest(p.kro.male, p.who.male));
    return lines.join(u'\n') + u'\n';
}

std::optional<QString> replaceSection(const QString& doc, const QString& name, const QString& body) {
    const QString begin = QStringLiteral("<!-- refgen:begin %1 -->\n").arg(name);
    const QString end = QStringLiteral("<!-- refgen:end %1 -->").arg(name);
    const qsizetype b = doc.indexOf(begin);
    const qsizetype e = b < 0 ? -1 : doc.indexOf(end, b);
    if (b < 0 || e < 0)
        return std::nullopt;
    return doc.left(b + begin.size()) + body + doc.mid(e);
}

} // namespace vesk::refgen
