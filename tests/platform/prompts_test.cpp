#include "platform/progress.h"
#include "platform/prompts.h"
#include "platform/sound.h"

#include <gtest/gtest.h>

using namespace vesk;

TEST(Prompts, ScriptedAnswersAndTextsReadBack) {
    ScriptedPrompts script;
    ScopedPromptService scope(&script);
    script.answer(Answer::No);
    script.fileAnswer(QStringLiteral("/tmp/a.vdb"));
    EXPECT_EQ(prompts().ask("Question?", Buttons::YesNo, Icon::Question, "T"), Answer::No);
    EXPECT_EQ(prompts().ask("Note", Buttons::Ok, Icon::Information, "T"), Answer::Ok);
    EXPECT_EQ(prompts().openFileName("Open VESK Database...", "VESK Database (*.vdb)").value(), "/tmp/a.vdb");
    EXPECT_FALSE(prompts().openFileName("again", "").has_value());
    EXPECT_EQ(script.messages(), (QStringList{"Question?", "Note"}));
    EXPECT_EQ(script.shown().at(0).title, "T");
    EXPECT_EQ(script.shown().at(0).icon, Icon::Question);
    EXPECT_EQ(script.unanswered(), 1);
}

TEST(Prompts, EachFileDialogIsRecordedWithItsKindTitleAndFilter) {
    ScriptedPrompts script;
    ScopedPromptService scope(&script);
    script.fileAnswer(QStringLiteral("/tmp/in.xlsx"));
    script.fileAnswer(QStringLiteral("/tmp/out.xlsx"));
    script.fileAnswer(std::nullopt);
    EXPECT_EQ(prompts().openFileName("Import", "*.xlsx", "/tmp").value(), "/tmp/in.xlsx");
    EXPECT_EQ(prompts().saveFileName("Export", "*.xls").value(), "/tmp/out.xlsx");
    EXPECT_FALSE(prompts().folderName("Where", "/tmp").has_value());
    ASSERT_EQ(script.shown().size(), 3);
    const PromptRecord::Kind kinds[] = {PromptRecord::Kind::OpenFile, PromptRecord::Kind::SaveFile,
                                        PromptRecord::Kind::Folder};
    const QString titles[] = {"Import", "Export", "Where"};
    const QString filters[] = {"*.xlsx", "*.xls", ""};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(script.shown().at(i).kind, kinds[i]);
        EXPECT_EQ(script.shown().at(i).text, titles[i]);
        EXPECT_EQ(script.shown().at(i).filter, filters[i]);
        EXPECT_EQ(script.shown().at(i).buttons, Buttons::OkCancel);
    }
    EXPECT_TRUE(script.messages().isEmpty());
    EXPECT_EQ(script.unanswered(), 0);
}

TEST(Prompts, ScopeRestoresThePreviousService) {
    ScriptedPrompts outer, inner;
    ScopedPromptService a(&outer);
    {
        ScopedPromptService b(&inner);
        prompts().ask("x");
    }
    prompts().ask("y");
    EXPECT_EQ(inner.messages(), QStringList{"x"});
    EXPECT_EQ(outer.messages(), QStringList{"y"});
}

TEST(Sound, EmptyNameStops) {
    RecordingSound rec;
    setSoundService(&rec);
    playSound("busy.wav");
    stopSound();
    setSoundService(nullptr);
    EXPECT_EQ(rec.played, (QStringList{"busy.wav", ""}));
}

TEST(Progress, RecordsValues) {
    RecordingProgress p;
    setProgress(&p);
    progress().setRange(0, 7);
    progress().setValue(3);
    setProgress(nullptr);
    EXPECT_EQ(p.max, 7);
    EXPECT_EQ(p.values, QList<int>{3});
}
