#pragma once
// What the study-definition form tests share: the study-database fixture with one current study
// whose scheme names the levels "District", "Province" and "Nation", opened as the context's
// StudyDB and named by the preferences; and the user's gestures on a grid (click a cell, Enter,
// type, Enter).

#include "grid_gestures.h"
#include "study_db_fixture.h"

namespace vesk::test {

class StudyFixture : public StudyDbFixture {
public:
    StudyFixture();
    ~StudyFixture() override;

    void addStudy(const QString& id, int year, bool current, const QString& scheme = QStringLiteral("SCH"));
    bool exec(const QString& sql, const QVariantList& values = {});
    // The rows of a query, columns joined by "|", Null as "<null>".
    QStringList rows(const QString& sql, const QVariantList& values = {});
    QString value(const QString& sql, const QVariantList& values = {});
};

} // namespace vesk::test
