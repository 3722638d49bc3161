#pragma once
// The screen side of the core's services: real message boxes and dialogs, and QSoundEffect.

#include "platform/prompts.h"
#include "platform/sound.h"

#include <QObject>
#include <functional>

class QSoundEffect;
class QWidget;

namespace vesk {

class QtPromptService : public PromptService {
public:
    // Dialogs are parented to the window that `parent` returns at the time of asking.
    explicit QtPromptService(std::function<QWidget*()> parent = {}) : parent_(std::move(parent)) {}
    Answer ask(const QString& text, Buttons buttons, Icon icon, const QString& title) override;
    std::optional<QString> fileName(FileDialog dialog, const QString& title, const QString& filter,
                                    const QString& dir) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) override;

private:
    QWidget* parent() const;
    std::function<QWidget*()> parent_;
};

// Fire and forget: a new play replaces the running one, an empty name stops it, a file that
// cannot be played is passed over in silence.
class QtSoundService : public SoundService {
public:
    QtSoundService();
    ~QtSoundService() override;
    void play(const QString& path) override;

private:
    QSoundEffect* effect_;
};

} // namespace vesk
