#pragma once
// Shared ground of the study-definition tests: a new study file in a temporary folder, opened as
// the context's StudyDB with one current study whose scheme names the levels, and scripted prompts.

#include "database/db_connection.h"
#include "platform/prompts.h"
#include "qt_printers.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>

namespace vesk::test {

class StudyDbTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Adds a study row (and its scheme row when `scheme` is not empty); `current` marks it Slct.
    void addStudy(const QString& id, int year, bool current, const QString& scheme = QString());
    // Runs a statement, failing the test on an error.
    void exec(const QString& sql, const QVariantList& values = {});
    // The rows of a query, each row's columns joined by "|", a Null shown as "<null>".
    QStringList rows(const QString& sql, const QVariantList& values = {});
    // The single value of a query.
    QString value(const QString& sql, const QVariantList& values = {});
    // The messages shown since the last clear.
    QStringList messages() const { return prompts.messages(); }

    QTemporaryDir dir;
    QString file;
    std::shared_ptr<DbConnection> db;
    ScriptedPrompts prompts;

private:
    std::unique_ptr<ScopedPromptService> installed_;
};

} // namespace vesk::test
