#include "shell/forms/frm_splash.h"

#include "platform/sound.h"
#include "shell/forms/shell_resources.h"
#include "shell/frame_texts.h"
#include "foundation/settings.h"

#include <QLabel>
#include <QPixmap>
#include <QTimer>
#include <QVBoxLayout>

namespace vesk {

namespace {
// How long the splash stands before the frame comes up.
constexpr int kSplashInterval = 1500;
} // namespace

frmSplash::frmSplash(std::function<void()> showMain, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint), showMain_(std::move(showMain)) {
    initShellResources();
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QString::fromUtf8(frame_texts::kProductName));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QStringLiteral("#frmSplash { background: #f4f1e8; border: 2px solid #0f3d44; }"));

    auto* logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("imgLogo"));
    logo->setPixmap(QPixmap(QStringLiteral(":/shell/vesk_logo.png")));
    logo->setAlignment(Qt::AlignCenter);

    auto* product = new QLabel(QString::fromUtf8(frame_texts::kProductName), this);
    product->setObjectName(QStringLiteral("lblProductName"));
    product->setAlignment(Qt::AlignCenter);
    QFont big = product->font();
    big.setPointSizeF(big.pointSizeF() * 2);
    big.setBold(true);
    product->setFont(big);
    product->setStyleSheet(QStringLiteral("color: #0f3d44;"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(40, 32, 40, 32);
    layout->setSpacing(18);
    layout->addWidget(logo);
    layout->addWidget(product);

    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setSingleShot(true);
    Timer1->setInterval(kSplashInterval);
    connect(Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
    Timer1->start();
}

void frmSplash::Timer1_Timer() {
    playSound(settings().sLBussy);
    if (showMain_)
        showMain_();
    close();
    stopSound();
}

} // namespace vesk
