#pragma once
// The study-database ground for GoogleTest: StudyDbFixture, with a statement's or a query's
// failure failing the test.

#include "study_db_fixture.h"

#include <gtest/gtest.h>

namespace vesk::test {

class StudyDbGTest : public ::testing::Test, public StudyDbFixture {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }

    // Runs a statement on `db`, failing the test on an error.
    void exec(const QString& sql, const QVariantList& values = {}) {
        QString error;
        EXPECT_TRUE(StudyDbFixture::exec(*db, sql, values, &error)) << error.toStdString();
    }
    // The rows of a query on `db`, each row's columns joined by "|", a Null shown as "<null>".
    QStringList rows(const QString& sql, const QVariantList& values = {}) {
        QString error;
        const QStringList out = queryRows(*db, sql, values, &error);
        EXPECT_TRUE(error.isEmpty()) << error.toStdString();
        return out;
    }
    // The single value of a query.
    QString value(const QString& sql, const QVariantList& values = {}) {
        const QStringList r = rows(sql, values);
        return r.isEmpty() ? QString() : r.first();
    }
};

} // namespace vesk::test
