#pragma once
// Shared ground of the database tests: a fresh temporary folder, scripted prompts, settings whose
// output folder is that temporary folder, and a new study file on demand.

#include "database/db_connection.h"
#include "platform/prompts.h"
#include "qt_printers.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vesk::test {

class DbTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A path in the temporary folder.
    QString path(const QString& name) const;
    // A new study file made from the definition; fails the test when it cannot be made.
    QString newStudyFile(const QString& name = QStringLiteral("study.vdb"));
    // An open connection to a file, failing the test when it cannot be opened.
    std::shared_ptr<DbConnection> openDb(const QString& file);
    // Runs a statement with bound values, failing the test on an error.
    void exec(DbConnection& db, const QString& sql, const QVariantList& values = {});
    // The text of a file ("" when missing).
    static QString readText(const QString& file);

    QTemporaryDir dir;
    ScriptedPrompts prompts;

private:
    std::unique_ptr<ScopedPromptService> installed_;
};

} // namespace vesk::test
