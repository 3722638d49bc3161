// vesk-refgen: writes the shipped numbers made from the published reference data.
//
//   vesk-refgen [--source FOLDER] [--check]
//
// From FOLDER/data/refdata (FOLDER defaults to the source tree this program was built from) it
// makes the numeric blocks of FOLDER/data/Vesk.stp.in (everything after the "[LIFE TABLE TYPE]="
// line), the importable standard tables of FOLDER/data/standard_tables/, and the generated tables of
// FOLDER/data/README.md. With --check it writes nothing and fails when a file differs from what it
// would write.

#include "outputs.h"
#include "reference_products.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <cstdio>

using namespace vesk;
using namespace vesk::refgen;

namespace {

struct Target {
    QString path;
    QByteArray content;
};

void say(const QString& text) {
    std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

std::optional<QByteArray> readFile(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    return f.readAll();
}

bool writeFile(const QString& path, const QByteArray& content) {
    QSaveFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(content) == content.size() && f.commit();
}

// The files and their intended contents; false with a message when a source file is unusable.
bool buildTargets(const QString& source, const ReferenceProducts& p, std::vector<Target>& targets) {
    const QString data = QDir(source).filePath(QStringLiteral("data"));
    const QString stpPath = data + QStringLiteral("/Vesk.stp.in");
    const auto stp = readFile(stpPath);
    const auto spliced = stp ? spliceStp(*stp, stpBlocks(p)) : std::nullopt;
    if (!spliced) {
        say(QStringLiteral("vesk-refgen: %1 is missing or has no \"[LIFE TABLE TYPE]=\" line").arg(stpPath));
        return false;
    }
    targets.push_back({stpPath, *spliced});

    const QString tables = data + QStringLiteral("/standard_tables/");
    targets.push_back(
        {tables + "who_ghe_frontier.txt", userTableText(p.whoFrontierSingle, p.whoFrontierSingle, 2)});
    targets.push_back({tables + "gbd2021_reference.txt", userTableText(p.gbd2021Single, p.gbd2021Single, 7)});
    targets.push_back({tables + "gbd2019_reference.txt", userTableText(p.gbd2019Single, p.gbd2019Single, 4)});

    const QString readmePath = data + QStringLiteral("/README.md");
    const auto readme = readFile(readmePath);
    std::optional<QString> doc = readme ? std::optional(QString::fromUtf8(*readme)) : std::nullopt;
    if (doc)
        doc = replaceSection(*doc, QStringLiteral("oaigd-fits"), oaigdFitMarkdown(p));
    if (doc)
        doc = replaceSection(*doc, QStringLiteral("tail-closures"), closureMarkdown(p));
    if (!doc) {
        say(QStringLiteral("vesk-refgen: %1 is missing or lacks the refgen section markers").arg(readmePath));
        return false;
    }
    targets.push_back({readmePath, doc->toUtf8()});
    return true;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool check = args.removeAll(QStringLiteral("--check")) > 0;
    QString source = QStringLiteral(VESK_SOURCE_DIR);
    const qsizetype i = args.indexOf(QStringLiteral("--source"));
    if (i >= 0 && i + 1 < args.size()) {
        source = args[i + 1];
        args.remove(i, 2);
    }
    if (!args.isEmpty()) {
        say(QStringLiteral("usage: vesk-refgen [--source FOLDER] [--check]"));
        return 2;
    }
    QString error;
    const auto inputs = readReferenceInputs(QDir(source).filePath(QStringLiteral("data/refdata")), &error);
    const auto products = inputs ? makeReferenceProducts(*inputs, &error) : std::nullopt;
    if (!products) {
        say(QStringLiteral("vesk-refgen: ") + error);
        return 1;
    }
    std::vector<Target> targets;
    if (!buildTargets(source, *products, targets))
        return 1;
    int differing = 0;
    for (const Target& t : targets) {
        const auto current = readFile(t.path);
        if (current && *current == t.content)
            continue;
        ++differing;
        if (check) {
            say(QStringLiteral("differs from the generated content: ") + t.path);
        } else if (!writeFile(t.path, t.content)) {
            say(QStringLiteral("vesk-refgen: cannot write ") + t.path);
            return 1;
        } else {
            say(QStringLiteral("written: ") + t.path);
        }
    }
    if (check && differing)
        return 1;
    say(QStringLiteral("vesk-refgen: %1 files %2").arg(targets.size()).arg(check ? "checked" : "up to date"));
    return 0;
}
