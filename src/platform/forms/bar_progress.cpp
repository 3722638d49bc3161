#include "platform/forms/bar_progress.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>

namespace vesk {

BarProgress::BarProgress(QProgressBar* bar, QLabel* label, Refresh refresh, Label labelMode)
    : bar_(bar), label_(label), refresh_(refresh), labelMode_(labelMode) {}

void BarProgress::setRange(int minimum, int maximum) {
    bar_->setRange(minimum, maximum);
}

void BarProgress::setValue(int value) {
    bar_->setValue(value);
    if (refresh_ == Refresh::Repaint)
        bar_->repaint();
    else if (refresh_ == Refresh::Events)
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void BarProgress::setText(const QString& text) {
    if (!label_)
        return;
    label_->setText(text);
    if (labelMode_ == Label::ShownForText)
        label_->setVisible(!text.isEmpty());
    if (refresh_ == Refresh::Repaint)
        label_->repaint();
}

void BarProgress::setVisible(bool visible) {
    bar_->setVisible(visible);
}

} // namespace vesk
