#include "burden/forms/frm_load_status.h"

#include "burden/computation.h"
#include "burden/computation_texts.h"
#include "burden/forms/calculator_widgets.h"
#include "burden/stored_results.h"
#include "database/study_context.h"
#include "foundation/settings.h"
#include "platform/forms/bar_progress.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/sound.h"
#include "platform/texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace vesk {

namespace ct = computation_texts;

frmLoadStatus* frmLoadStatus::open(QWidget* parent) {
    static QPointer<frmLoadStatus> single;
    return openSingle(single, parent, [] { return new frmLoadStatus; });
}

frmLoadStatus::frmLoadStatus(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmLoadStatus"));
    setWindowTitle(text(ct::kLoadCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    Label2 = new QLabel(text(ct::kLoadChoose), this);
    Label2->setObjectName(QStringLiteral("Label2"));
    flexBuiltInDAP = makeDapGrid(&dap_, this, kCompModeSensitivity);
    CmdOk = namedButton(this, QStringLiteral("CmdOk"), QStringLiteral("OK"));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), text(ct::kCloseButton));
    connect(CmdOk, &QPushButton::clicked, this, [this] { CmdOk_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    List1 = new QListWidget(this);
    List1->setObjectName(QStringLiteral("List1"));
    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setRange(0, 0);
    Label1 = new QLabel(this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setMinimumWidth(420);
    for (QWidget* w : {static_cast<QWidget*>(List1), static_cast<QWidget*>(ProgressBar1),
                       static_cast<QWidget*>(Label1)})
        w->hide();
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setSingleShot(true);
    Timer1->setInterval(0);
    connect(Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(CmdOk);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label2);
    layout->addWidget(flexBuiltInDAP);
    layout->addWidget(List1);
    layout->addWidget(Label1);
    layout->addWidget(ProgressBar1);
    layout->addLayout(buttons);
}

void frmLoadStatus::CmdOk_Click() {
    const Cell chosen = dap_.chosenDaps();
    if (!chosen.isArray()) {
        prompts().ask(text(ct::kLoadSelectDap), Buttons::Ok, Icon::None, QString());
        return;
    }
    computation().MtxDAP = chosen;
    flexBuiltInDAP->hide();
    Label2->hide();
    CmdOk->hide();
    List1->show();
    ProgressBar1->show();
    Label1->show();
    // The load blocks the window: it starts once the window has painted.
    Timer1->start();
}

void frmLoadStatus::Timer1_Timer() {
    Timer1->stop();
    playSound(settings().sLBussy);
    const ResultStudy study = computationStudy(studyContext());
    BarProgress bar(ProgressBar1, Label1, BarProgress::Refresh::Events);
    LoadedResults loaded;
    const LoadEnd end = LoadStroedResults(
        study, computation().MtxDAP, [this](const QString& entry) { List1->addItem(entry); }, &bar, loaded);
    playSound(QString());
    ProgressBar1->setRange(0, 1);
    ProgressBar1->setValue(1);
    if (end != LoadEnd::Loaded) {
        close();
        return;
    }
    adoptLoadedResults(std::move(loaded), computation());
    prompts().ask(text(ct::kLoadedAll), Buttons::Ok, Icon::None, QString());
}

} // namespace vesk
