#include "db_test_support.h"

#include "foundation/settings.h"

#include <QCoreApplication>
#include <QFile>

namespace vesk::test {

namespace {
// The SQL driver is a plugin; an application object makes its loading the same as in the program.
int argc = 1;
char arg0[] = "test_database";
char* argv[] = {arg0, nullptr};
QCoreApplication app(argc, argv);
} // namespace

void DbTest::SetUp() {
    StudyDbGTest::SetUp();
    settings() = VeskSettings{};
    preferences() = PreferencesControls{};
    settings().StatOutPath = dir.path() + u'/';
}

QString DbTest::newStudyFile(const QString& name) {
    QString error;
    const QString made = createStudy(name, &error);
    EXPECT_FALSE(made.isEmpty()) << error.toStdString();
    return made.isEmpty() ? path(name) : made;
}

std::shared_ptr<DbConnection> DbTest::openDb(const QString& file) {
    QString error;
    auto db = DbConnection::open(file, &error);
    EXPECT_TRUE(db) << error.toStdString();
    return db;
}

void DbTest::exec(DbConnection& db, const QString& sql, const QVariantList& values) {
    QString error;
    EXPECT_TRUE(StudyDbFixture::exec(db, sql, values, &error)) << error.toStdString();
}

QString DbTest::readText(const QString& file) {
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll());
}

} // namespace vesk::test
