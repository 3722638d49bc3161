// The layers of the source tree, bottom to top: every `#include "folder/..."` of src/ points to its
// own folder or to a folder below it, a file outside a forms/ folder includes no window, and a
// sideways or upward step is allowed only where the table below says so, with why.

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <gtest/gtest.h>
#include <vector>

namespace {

// Bottom to top. A folder's forms/ stand above every core folder: they may include any core folder
// below their own and the forms/ of the folders below.
const QStringList kLayers = {QStringLiteral("platform"), QStringLiteral("foundation"),
                             QStringLiteral("database"), QStringLiteral("study"),
                             QStringLiteral("inputs"),   QStringLiteral("demography"),
                             QStringLiteral("burden"),   QStringLiteral("results"),
                             QStringLiteral("shell"),    QStringLiteral("app")};

struct Allowed {
    const char* from; // folder (or folder/forms) that includes
    const char* to;   // folder (or folder/forms) it may reach although not below it
    const char* why;
};

// The sideways steps the house allows, each with its reason. None today: keep it that way, or short.
const std::vector<Allowed> kAllowed = {};

// "study" or "study/forms" for a path below src/; app/main.cpp is the desktop program's and counts
// as forms, app/cli/ is the command-line tool's and counts as core.
QString placeOf(const QString& relative) {
    const QStringList parts = relative.split(u'/');
    const bool forms = parts.contains(QStringLiteral("forms")) || relative == QStringLiteral("app/main.cpp");
    return forms ? parts[0] + QStringLiteral("/forms") : parts[0];
}

bool allowed(const QString& from, const QString& to) {
    for (const Allowed& a : kAllowed) {
        const QString f = QString::fromLatin1(a.from), t = QString::fromLatin1(a.to);
        if (f == from && t == to)
            return true;
    }
    return false;
}

// Why `from` may not include `to`, or "" when it may.
QString fault(const QString& from, const QString& to) {
    const QString fromFolder = from.section(u'/', 0, 0), toFolder = to.section(u'/', 0, 0);
    const bool fromForms = from.endsWith(QStringLiteral("/forms")), toForms = to.endsWith(QStringLiteral("/forms"));
    const qsizetype a = kLayers.indexOf(fromFolder), b = kLayers.indexOf(toFolder);
    if (a < 0 || b < 0)
        return QStringLiteral("a folder that is not a layer");
    if (allowed(from, to))
        return {};
    if (toForms && !fromForms)
        return QStringLiteral("a window in the core");
    if (b > a)
        return QStringLiteral("up a layer");
    return {};
}

struct Include {
    QString file;   // below src/
    QString target; // folder/file as written
};

QList<Include> includesOfSource() {
    const QString src = QStringLiteral(VESK_SOURCE_DIR "/src");
    const QRegularExpression include(QStringLiteral(R"re(^\s*#\s*include\s+"([a-z_]+/[^"]+)")re"));
    QList<Include> found;
    QDirIterator it(src, {QStringLiteral("*.h"), QStringLiteral("*.cpp"), QStringLiteral("*.c")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            continue;
        const QString relative = QDir(src).relativeFilePath(path);
        while (!file.atEnd()) {
            const auto m = include.match(QString::fromUtf8(file.readLine()));
            if (m.hasMatch())
                found.push_back({relative, m.captured(1)});
        }
    }
    return found;
}

TEST(Layers, TheTreeIsReadAndItsFoldersAreLayers) {
    const QList<Include> all = includesOfSource();
    ASSERT_GT(all.size(), 200) << "src/ was not found at " VESK_SOURCE_DIR;
    for (const Include& inc : all) {
        const QString folder = inc.file.section(u'/', 0, 0);
        EXPECT_TRUE(kLayers.contains(folder)) << inc.file.toStdString() << " lies in no layer";
    }
}

TEST(Layers, NoIncludePointsUpOrSidewaysUnlessTheTableAllowsIt) {
    for (const Include& inc : includesOfSource()) {
        const QString why = fault(placeOf(inc.file), placeOf(inc.target));
        if (!why.isEmpty())
            ADD_FAILURE() << inc.file.toStdString() << " includes " << inc.target.toStdString() << ": "
                          << why.toStdString();
    }
}

TEST(Layers, TheRuleRefusesWhatItShould) {
    EXPECT_EQ(fault(QStringLiteral("database"), QStringLiteral("shell")), QStringLiteral("up a layer"));
    EXPECT_EQ(fault(QStringLiteral("study"), QStringLiteral("inputs")), QStringLiteral("up a layer"));
    EXPECT_EQ(fault(QStringLiteral("burden"), QStringLiteral("platform/forms")),
              QStringLiteral("a window in the core"));
    EXPECT_EQ(fault(QStringLiteral("study/forms"), QStringLiteral("shell/forms")), QStringLiteral("up a layer"));
    EXPECT_TRUE(fault(QStringLiteral("burden/forms"), QStringLiteral("study/forms")).isEmpty());
    EXPECT_TRUE(fault(QStringLiteral("burden"), QStringLiteral("foundation")).isEmpty());
    EXPECT_TRUE(fault(QStringLiteral("app/forms"), QStringLiteral("shell/forms")).isEmpty());
    EXPECT_EQ(placeOf(QStringLiteral("app/main.cpp")), QStringLiteral("app/forms"));
    EXPECT_EQ(placeOf(QStringLiteral("app/cli/main.cpp")), QStringLiteral("app"));
}

} // namespace
