#pragma once
// Shared ground of the study-definition tests: the study-database fixture with its current study
// S1 of the scheme SCH, opened as the context's StudyDB.

#include "qt_printers.h"
#include "study_db_gtest.h"

#include <ostream>

namespace vesk::test {

class StudyDbTest : public StudyDbGTest {
protected:
    void SetUp() override;

    // Adds a study row (and its scheme row when `scheme` is not empty); `current` marks it Slct.
    void addStudy(const QString& id, int year, bool current, const QString& scheme = QString());
    // The messages shown since the last clear.
    QStringList messages() const { return prompts.messages(); }
};

} // namespace vesk::test
