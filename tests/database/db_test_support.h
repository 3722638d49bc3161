#pragma once
// Shared ground of the database tests: the study-database fixture, settings whose output folder is
// its temporary folder, and a new study file on demand.

#include "database/db_connection.h"
#include "qt_printers.h"
#include "study_db_gtest.h"

namespace vesk::test {

class DbTest : public StudyDbGTest {
protected:
    void SetUp() override;

    // A new study file made from the definition; fails the test when it cannot be made.
    QString newStudyFile(const QString& name = QStringLiteral("study.vdb"));
    // An open connection to a file, failing the test when it cannot be opened.
    std::shared_ptr<DbConnection> openDb(const QString& file);
    // Runs a statement with bound values, failing the test on an error.
    void exec(DbConnection& db, const QString& sql, const QVariantList& values = {});
    // The text of a file ("" when missing).
    static QString readText(const QString& file);
};

} // namespace vesk::test
