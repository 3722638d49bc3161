#pragma once
// What the Study Setup tests share: the study-database ground of the tests (a fresh study file, here
// opened as the context's StudyDB from the settings, and scripted prompts), recorded menu switches
// and the database backend behind the Results captions.

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

#include <QSqlQuery>
#include <QSqlRecord>
#include <gtest/gtest.h>

namespace vesk::test {

class SetupTest : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        file = createStudy(QStringLiteral("study.vdb"), &error);
        ASSERT_FALSE(file.isEmpty()) << error.toStdString();
        computation() = Computation{};
        preferences() = PreferencesControls{};
        preferences().txtwklocation = dir.path();
        preferences().txtVESKObj = QStringLiteral("study.vdb");
        db = studyContext().ensureStudyDB(&error);
        ASSERT_TRUE(db) << error.toStdString();
        setMenuSwitch(&menus);
        setStudyBackend(&backend);
        // What Study Setup asks of the frame is done as the frame does it.
        setupRequests().setHandler(applyFrameRequest);
        // The data flags stay set for the life of the program; each test is a fresh start.
        FlagDataADW() = false;
        FlagDataCSM() = false;
    }
    void TearDown() override {
        computation() = Computation{};
        setMenuSwitch(nullptr);
        setStudyBackend(nullptr);
        setupRequests().setHandler({});
    }

    static StudyContext& ctx() { return studyContext(); }
    QStringList columnsOf(const QString& table) {
        return rows(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table));
    }
    void addCause(const QString& code, const QString& disease = QString()) {
        exec(QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, Sqla) VALUES (?, ?, 0)"),
             {code, disease.isEmpty() ? QStringLiteral("Disease ") + code : disease});
    }

    RecordingMenus menus;
    DatabaseStudyBackend backend;
};

} // namespace vesk::test
