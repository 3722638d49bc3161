#pragma once
// What the study-definition form tests share: a new study file with one current study whose
// scheme names the levels "District", "Province" and "Nation", opened as the context's StudyDB;
// scripted prompts; and the user's gestures on a grid (click a cell, Enter, type, Enter).

#include "database/db_connection.h"
#include "grid_gestures.h"
#include "platform/prompts.h"

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace vesk::test {

class StudyFixture {
public:
    StudyFixture();
    ~StudyFixture();

    void addStudy(const QString& id, int year, bool current, const QString& scheme = QStringLiteral("SCH"));
    bool exec(const QString& sql, const QVariantList& values = {});
    // The rows of a query, columns joined by "|", Null as "<null>".
    QStringList rows(const QString& sql, const QVariantList& values = {});
    QString value(const QString& sql, const QVariantList& values = {});

    QTemporaryDir dir;
    QString file;
    std::shared_ptr<DbConnection> db;
    ScriptedPrompts prompts;

private:
    std::unique_ptr<ScopedPromptService> installed_;
};

} // namespace vesk::test
