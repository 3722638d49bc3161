#pragma once
// The core's Progress drawn on a QProgressBar and, where a window has one, a label beside it: the
// one implementation that the frame's foot and the forms with a bar of their own share.

#include "platform/progress.h"

class QLabel;
class QProgressBar;

namespace vesk {

class BarProgress : public Progress {
public:
    // How a window lets the display catch up while the core keeps the event loop waiting.
    enum class Refresh {
        None,    // the bar is drawn when the loop runs again
        Repaint, // the bar and the label are repainted at once (the frame's foot)
        Events,  // pending events but user input are processed at each value (a form's own bar)
    };
    // What a text does to the label.
    enum class Label {
        TextOnly,     // the text is set, the label stays as it is
        ShownForText, // a text shows the label with it; an empty text hides it
    };

    // `label` may be nullptr: a bar without a status line ignores the texts.
    explicit BarProgress(QProgressBar* bar, QLabel* label = nullptr, Refresh refresh = Refresh::None,
                         Label labelMode = Label::TextOnly);

    void setRange(int minimum, int maximum) override;
    void setValue(int value) override;
    void setText(const QString& text) override;
    void setVisible(bool visible) override;

private:
    QProgressBar* bar_;
    QLabel* label_;
    Refresh refresh_;
    Label labelMode_;
};

} // namespace vesk
