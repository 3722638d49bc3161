#include "platform/forms/qt_services.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QSoundEffect>
#include <QUrl>
#include <utility>

namespace vesk {

namespace {

// Indexed by Buttons.
const QMessageBox::StandardButtons kButtons[] = {
    QMessageBox::Ok,
    QMessageBox::Ok | QMessageBox::Cancel,
    QMessageBox::Yes | QMessageBox::No,
    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
    QMessageBox::Retry | QMessageBox::Cancel,
    QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore,
};

// Indexed by Icon.
const QMessageBox::Icon kIcons[] = {QMessageBox::NoIcon, QMessageBox::Critical, QMessageBox::Question,
                                    QMessageBox::Warning, QMessageBox::Information};

// The answer of each button that is not Ok; any other button answers Ok.
const std::pair<int, Answer> kAnswers[] = {
    {QMessageBox::Cancel, Answer::Cancel}, {QMessageBox::Yes, Answer::Yes},
    {QMessageBox::No, Answer::No},         {QMessageBox::Retry, Answer::Retry},
    {QMessageBox::Abort, Answer::Abort},   {QMessageBox::Ignore, Answer::Ignore},
};

Answer fromButton(int b) {
    for (const auto& [button, answer] : kAnswers)
        if (button == b)
            return answer;
    return Answer::Ok;
}

std::optional<QString> nonEmpty(const QString& s) {
    if (s.isEmpty())
        return std::nullopt;
    return s;
}

} // namespace

QWidget* QtPromptService::parent() const {
    if (parent_)
        return parent_();
    return QApplication::activeWindow();
}

Answer QtPromptService::ask(const QString& text, Buttons buttons, Icon icon, const QString& title) {
    QMessageBox box(kIcons[static_cast<int>(icon)], title.isEmpty() ? QApplication::applicationName() : title,
                    text, kButtons[static_cast<int>(buttons)], parent());
    return fromButton(box.exec());
}

std::optional<QString> QtPromptService::fileName(FileDialog dialog, const QString& title, const QString& filter,
                                                 const QString& dir) {
    switch (dialog) {
    case FileDialog::Open:
        return nonEmpty(QFileDialog::getOpenFileName(parent(), title, dir, filter));
    case FileDialog::Save:
        return nonEmpty(QFileDialog::getSaveFileName(parent(), title, dir, filter, nullptr,
                                                     QFileDialog::DontConfirmOverwrite));
    case FileDialog::Folder:
        return nonEmpty(QFileDialog::getExistingDirectory(parent(), title, dir));
    }
    return std::nullopt;
}

std::optional<QString> QtPromptService::inputBox(const QString& prompt, const QString& title,
                                                 const QString& defaultText) {
    bool ok = false;
    const QString s = QInputDialog::getText(parent(), title, prompt, QLineEdit::Normal, defaultText, &ok);
    if (!ok)
        return std::nullopt;
    return s;
}

QtSoundService::QtSoundService() : effect_(new QSoundEffect) {}

QtSoundService::~QtSoundService() {
    delete effect_;
}

void QtSoundService::play(const QString& path) {
    effect_->stop();
    if (path.isEmpty() || !QFileInfo(path).isReadable())
        return;
    effect_->setSource(QUrl::fromLocalFile(path));
    effect_->play();
}

} // namespace vesk
