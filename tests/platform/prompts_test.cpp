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
