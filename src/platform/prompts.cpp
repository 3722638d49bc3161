#include "platform/prompts.h"

#include "platform/service_slot.h"

#include <cstdio>

namespace vesk {

namespace {

class HeadlessPrompts : public PromptService {
public:
    Answer ask(const QString& text, Buttons buttons, Icon, const QString& title) override {
        std::fprintf(stderr, "%s%s%s\n", qPrintable(title), title.isEmpty() ? "" : ": ", qPrintable(text));
        return defaultAnswer(buttons);
    }
    std::optional<QString> fileName(FileDialog, const QString&, const QString&, const QString&) override {
        return std::nullopt;
    }
    std::optional<QString> inputBox(const QString&, const QString&, const QString&) override {
        return std::nullopt;
    }
};

ServiceSlot<PromptService, HeadlessPrompts> current;

// The next scripted answer, or `none` when the script has run out (the question is counted).
template <typename T> T takeNext(std::deque<T>& script, T none, int& unanswered) {
    if (script.empty()) {
        ++unanswered;
        return none;
    }
    T next = std::move(script.front());
    script.pop_front();
    return next;
}

} // namespace

PromptService& prompts() {
    return current.get();
}

void setPromptService(PromptService* service) {
    current.installed = service;
}

Answer defaultAnswer(Buttons buttons) {
    switch (buttons) {
    case Buttons::YesNo:
    case Buttons::YesNoCancel:
        return Answer::Yes;
    case Buttons::RetryCancel:
        return Answer::Retry;
    case Buttons::AbortRetryIgnore:
        return Answer::Abort;
    default:
        return Answer::Ok;
    }
}

QStringList ScriptedPrompts::messages() const {
    QStringList out;
    for (const auto& r : shown_)
        if (r.kind == PromptRecord::Kind::Message)
            out << r.text;
    return out;
}

void ScriptedPrompts::clear() {
    shown_.clear();
    answers_.clear();
    files_.clear();
    inputs_.clear();
    unanswered_ = 0;
}

Answer ScriptedPrompts::ask(const QString& text, Buttons buttons, Icon icon, const QString& title) {
    shown_.push_back({PromptRecord::Kind::Message, text, title, buttons, icon, QString()});
    if (buttons == Buttons::Ok)
        return Answer::Ok; // nothing to choose: no script needed
    return takeNext(answers_, defaultAnswer(buttons), unanswered_);
}

std::optional<QString> ScriptedPrompts::fileName(FileDialog dialog, const QString& title, const QString& filter,
                                                 const QString&) {
    static constexpr PromptRecord::Kind kinds[] = {PromptRecord::Kind::OpenFile, PromptRecord::Kind::SaveFile,
                                                   PromptRecord::Kind::Folder};
    shown_.push_back({kinds[static_cast<int>(dialog)], title, title, Buttons::OkCancel, Icon::None, filter});
    return takeNext(files_, std::optional<QString>(), unanswered_);
}

std::optional<QString> ScriptedPrompts::inputBox(const QString& prompt, const QString& title,
                                                 const QString& defaultText) {
    shown_.push_back({PromptRecord::Kind::Input, prompt, title, Buttons::OkCancel, Icon::None, defaultText});
    return takeNext(inputs_, std::optional<QString>(), unanswered_);
}

ScopedPromptService::ScopedPromptService(PromptService* service) : previous_(current.installed) {
    setPromptService(service);
}

ScopedPromptService::~ScopedPromptService() {
    setPromptService(previous_);
}

} // namespace vesk
