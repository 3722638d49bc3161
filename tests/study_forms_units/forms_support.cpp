#include "forms_support.h"

#include "foundation/settings.h"

#include <QtTest>

namespace vesk::test {

StudyFixture::StudyFixture() {
    QString error;
    if (!openCurrentStudy(&error))
        qFatal("%s", qPrintable(error));
    // The preferences name the file, as the program's own settings would.
    preferences().txtwklocation = dir.path();
    preferences().txtVESKObj = QStringLiteral("study.vdb");
    settings().StatOutPath = dir.path() + u'/';
}

StudyFixture::~StudyFixture() {
    preferences() = PreferencesControls{};
    settings() = VeskSettings{};
}

void StudyFixture::addStudy(const QString& id, int year, bool current, const QString& scheme) {
    QString error;
    if (!StudyDbFixture::addStudy(id, year, current, scheme, &error))
        qWarning("%s", qPrintable(error));
}

bool StudyFixture::exec(const QString& sql, const QVariantList& values) {
    QString error;
    const bool ok = StudyDbFixture::exec(*db, sql, values, &error);
    if (!ok)
        qWarning("%s", qPrintable(error));
    return ok;
}

QStringList StudyFixture::rows(const QString& sql, const QVariantList& values) {
    QString error;
    const QStringList out = queryRows(*db, sql, values, &error);
    if (!error.isEmpty())
        qWarning("%s", qPrintable(error));
    return out;
}

QString StudyFixture::value(const QString& sql, const QVariantList& values) {
    const QStringList r = rows(sql, values);
    return r.isEmpty() ? QString() : r.first();
}

} // namespace vesk::test
