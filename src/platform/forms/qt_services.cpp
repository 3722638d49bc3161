#include "platform/forms/qt_services.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QSoundEffect>
#include <QUrl>

namespace vesk {

namespace {

QMessageBox::StandardButtons toButtons(Buttons b) {
    switch (b) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::RetryCancel:
        return QMessageBox::Retry | QMessageBox::Cancel;
    case Buttons::AbortRetryIgnore:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::Icon toIcon(Icon i) {
    switch (i) {
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Warning:
        return QMessageBox::Warning;
    case Icon::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

Answer fromButton(int b) {
    switch (b) {
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Retry:
        return Answer::Retry;
    case QMessageBox::Abort:
        return Answer::Abort;
    case QMessageBox::Ignore:
        return Answer::Ignore;
    default:
        return Answer::Ok;
    }
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
    QMessageBox box(toIcon(icon), title.isEmpty() ? QApplication::applicationName() : title, text,
                    toButtons(buttons), parent());
    return fromButton(box.exec());
}

std::optional<QString> QtPromptService::openFileName(const QString& title, const QString& filter,
                                                     const QString& dir) {
    return nonEmpty(QFileDialog::getOpenFileName(parent(), title, dir, filter));
}

std::optional<QString> QtPromptService::saveFileName(const QString& title, const QString& filter,
                                                     const QString& dir) {
    return nonEmpty(QFileDialog::getSaveFileName(parent(), title, dir, filter, nullptr,
                                                 QFileDialog::DontConfirmOverwrite));
}

std::optional<QString> QtPromptService::folderName(const QString& title, const QString& dir) {
    return nonEmpty(QFileDialog::getExistingDirectory(parent(), title, dir));
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
