#pragma once
// The small study of tests/support/small_study.h on a new study file, opened as the computation
// opens it, with the settings the computation reads (the open-interval coefficients, Sprague's
// panels) from the built Vesk.stp.

#include "burden/compute_run.h"
#include "burden/input_loaders.h"
#include "demography/single_year.h"
#include "demography/sprague.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "small_study.h"
#include "study_db_gtest.h"

namespace vesk::test {

class SmallStudyTest : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        ASSERT_TRUE(FnReadOAIGD(settings().MtxOAIGD, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")));
        const auto read = ProcLoadPanels(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"));
        ASSERT_TRUE(read.has_value());
        panels = *read;
        settings().ChoiceFiveYrs = Cell(0);
        settings().StatOutPath = dir.path() + u'/'; // errorsrec.stp and Time.stp stay in the test's folder
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        for (const auto& [sql, values] : smallStudySql())
            exec(sql, values);
        preferences().txtwklocation = dir.path();
        preferences().txtVESKObj = QStringLiteral("study.vdb");
        ASSERT_TRUE(openComputationStudy(studyContext()));
        prompts.clear();
        clearErrorStore();
    }

    // What the loaders read of the study, from the context.
    LoaderStudy loaderStudy() const {
        return computationStudy(studyContext());
    }
    Cell newp(const Cell& basic) const { return Newp(basic, 0, &panels); }

    SpraguePanels panels;
};

} // namespace vesk::test
