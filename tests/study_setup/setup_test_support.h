#pragma once
// What the Study Setup tests share: a fresh study file opened as the context's StudyDB, scripted
// prompts, recorded menu switches and the database backend behind the Results captions.

#include "burden/computation.h"
#include "database/db_create.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "platform/prompts.h"
#include "query_rows.h"
#include "shell/loading_chain.h"
#include "shell/menu_state.h"
#include "shell/study_backend.h"
#include "study/asg_data.h"
#include "study_db_gtest.h"

#include <QDir>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace vesk::test {

class SetupTest : public StudyDbGTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        file = dir.filePath(QStringLiteral("study.vdb"));
        QString error;
        ASSERT_TRUE(createStudyFile(file, &error)) << error.toStdString();
        studyContext() = StudyContext{};
        computation() = Computation{};
        preferences() = PreferencesControls{};
        preferences().txtwklocation = dir.path();
        preferences().txtVESKObj = QStringLiteral("study.vdb");
        ASSERT_TRUE(studyContext().ensureStudyDB(&error)) << error.toStdString();
        setPromptService(&prompts);
        setMenuSwitch(&menus);
        setStudyBackend(&backend);
        // What Study Setup asks of the frame is done as the frame does it.
        setupRequests().setHandler(applyFrameRequest);
        clearErrorStore();
        // The data flags stay set for the life of the program; each test is a fresh start.
        FlagDataADW() = false;
        FlagDataCSM() = false;
    }
    void TearDown() override {
        studyContext() = StudyContext{};
        computation() = Computation{};
        setPromptService(nullptr);
        setMenuSwitch(nullptr);
        setStudyBackend(nullptr);
        setupRequests().setHandler({});
        clearErrorStore();
    }

    static StudyContext& ctx() { return studyContext(); }
    const DbConnection& db() const { return *studyContext().StudyDB; }

    void exec(const QString& sql, const QVariantList& values = {}) {
        QSqlError e;
        ASSERT_TRUE(db().exec(sql, values, &e)) << sql.toStdString() << ": " << e.text().toStdString();
    }
    // The rows of a query, each as its values joined by "|" (Null as "<null>").
    QStringList rows(const QString& sql, const QVariantList& values = {}) {
        QString error;
        const QStringList out = queryRows(db(), sql, values, &error);
        EXPECT_TRUE(error.isEmpty()) << error.toStdString();
        return out;
    }
    QString scalar(const QString& sql, const QVariantList& values = {}) {
        const QStringList r = rows(sql, values);
        return r.isEmpty() ? QString() : r.first();
    }
    QStringList columnsOf(const QString& table) {
        return rows(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table));
    }
    void addCause(const QString& code, const QString& disease = QString()) {
        exec(QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, Sqla) VALUES (?, ?, 0)"),
             {code, disease.isEmpty() ? QStringLiteral("Disease ") + code : disease});
    }

    QTemporaryDir dir;
    QString file;
    ScriptedPrompts prompts;
    RecordingMenus menus;
    DatabaseStudyBackend backend;
};

} // namespace vesk::test
