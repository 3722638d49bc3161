#include "shell/forms/frm_about.h"

#include "shell/forms/shell_resources.h"
#include "shell/frame_texts.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace vesk {

namespace t = frame_texts;

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    initShellResources();
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QString::fromUtf8(t::kAboutTitle));
    setModal(true);

    auto* logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("imgLogo"));
    logo->setPixmap(QPixmap(QStringLiteral(":/shell/vesk_logo.png"))
                        .scaled(96, 96, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    logo->setAlignment(Qt::AlignTop);

    auto* product = new QLabel(QString::fromUtf8(t::kProductName), this);
    product->setObjectName(QStringLiteral("lblProductName"));
    QFont big = product->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    product->setFont(big);

    auto* version =
        new QLabel(QStringLiteral("Version %1").arg(QCoreApplication::applicationVersion()), this);
    version->setObjectName(QStringLiteral("lblVersion"));
    auto* about = new QLabel(QString::fromUtf8(t::kAboutText), this);
    about->setObjectName(QStringLiteral("lblDescription"));
    about->setWordWrap(true);

    auto* cmdClose = new QPushButton(QStringLiteral("&Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    cmdClose->setDefault(true);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);

    auto* words = new QVBoxLayout;
    words->addWidget(product);
    words->addWidget(version);
    words->addWidget(about);
    words->addStretch();
    auto* top = new QHBoxLayout;
    top->addWidget(logo);
    top->addLayout(words, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
    setMinimumWidth(460);
}

} // namespace vesk
