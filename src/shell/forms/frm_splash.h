#pragma once
// frmSplash: the first window, the product's name and logo. Its timer's tick plays the busy sound,
// shows the main frame, closes the splash and stops the sounds; the busy sound's path is still empty
// then, so the first play is silent.

#include <QWidget>
#include <functional>

class QTimer;

namespace vesk {

class frmSplash : public QWidget {
    Q_OBJECT
public:
    // `showMain` shows the main frame (FRMMAINMENU::showFrame).
    explicit frmSplash(std::function<void()> showMain, QWidget* parent = nullptr);

    QTimer* Timer1 = nullptr;

private:
    void Timer1_Timer();

    std::function<void()> showMain_;
};

} // namespace vesk
