#pragma once
// The one way the program asks the user anything: message boxes, file dialogs and input boxes.
// The desktop program installs a service that shows real dialogs; tests install ScriptedPrompts,
// which answers from a script and keeps every text shown, so that tests can read them back.

#include <QList>
#include <QString>
#include <deque>
#include <optional>

namespace vesk {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class Icon { None, Critical, Question, Warning, Information };
enum class Answer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

struct PromptRecord {
    enum class Kind { Message, OpenFile, SaveFile, Folder, Input };
    Kind kind = Kind::Message;
    QString text; // message or prompt text; for file dialogs the title
    QString title;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    QString filter; // file dialogs: the filter; input boxes: the default text
};

enum class FileDialog { Open, Save, Folder };

class PromptService {
public:
    virtual ~PromptService() = default;
    virtual Answer ask(const QString& text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None,
                       const QString& title = QString()) = 0;
    // File and folder dialogs: std::nullopt when the user cancels. A folder dialog has no filter.
    virtual std::optional<QString> fileName(FileDialog dialog, const QString& title, const QString& filter,
                                            const QString& dir) = 0;
    // Input box: std::nullopt on Cancel.
    virtual std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                            const QString& defaultText = QString()) = 0;

    std::optional<QString> openFileName(const QString& title, const QString& filter,
                                        const QString& dir = QString()) {
        return fileName(FileDialog::Open, title, filter, dir);
    }
    std::optional<QString> saveFileName(const QString& title, const QString& filter,
                                        const QString& dir = QString()) {
        return fileName(FileDialog::Save, title, filter, dir);
    }
    std::optional<QString> folderName(const QString& title, const QString& dir = QString()) {
        return fileName(FileDialog::Folder, title, QString(), dir);
    }
};

// The installed service. Before any is installed, a headless one answers: it writes each message
// to standard error and takes the first button, and cancels every dialog.
PromptService& prompts();
// Installs a service (not owned); nullptr goes back to the headless one.
void setPromptService(PromptService* service);

// Scripted answers for tests and for driving the program without a screen.
class ScriptedPrompts : public PromptService {
public:
    ScriptedPrompts() = default;

    // Queue the answers, in the order the program will ask.
    void answer(Answer a) { answers_.push_back(a); }
    void fileAnswer(std::optional<QString> path) { files_.push_back(std::move(path)); }
    void inputAnswer(std::optional<QString> text) { inputs_.push_back(std::move(text)); }

    // Everything shown so far, and the message texts alone.
    const QList<PromptRecord>& shown() const { return shown_; }
    QStringList messages() const;
    void clear();
    // Questions that found no scripted answer (a test usually wants 0).
    int unanswered() const { return unanswered_; }

    Answer ask(const QString& text, Buttons buttons, Icon icon, const QString& title) override;
    std::optional<QString> fileName(FileDialog dialog, const QString& title, const QString& filter,
                                    const QString& dir) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) override;

private:
    std::deque<Answer> answers_;
    std::deque<std::optional<QString>> files_;
    std::deque<std::optional<QString>> inputs_;
    QList<PromptRecord> shown_;
    int unanswered_ = 0;
};

// Installs a service for the life of a scope, and puts the previous one back.
class ScopedPromptService {
public:
    explicit ScopedPromptService(PromptService* service);
    ~ScopedPromptService();
    ScopedPromptService(const ScopedPromptService&) = delete;
    ScopedPromptService& operator=(const ScopedPromptService&) = delete;

private:
    PromptService* previous_;
};

// The answer a message box gives when nobody is there to press: its first button.
Answer defaultAnswer(Buttons buttons);

} // namespace vesk
