#include "study_units_support.h"

#include <QCoreApplication>

namespace vesk::test {

namespace {
// The SQL driver is a plugin; an application object makes its loading the same as in the program.
int argc = 1;
char arg0[] = "test_study_units";
char* argv[] = {arg0, nullptr};
QCoreApplication app(argc, argv);
} // namespace

void StudyDbTest::SetUp() {
    StudyDbGTest::SetUp();
    QString error;
    ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
}

void StudyDbTest::addStudy(const QString& id, int year, bool current, const QString& scheme) {
    QString error;
    EXPECT_TRUE(StudyDbFixture::addStudy(id, year, current, scheme, &error)) << error.toStdString();
}

} // namespace vesk::test
