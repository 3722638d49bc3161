#include "burden/forms/frm_comp_daly.h"

#include "burden/computation.h"
#include "burden/computation_texts.h"
#include "burden/compute_run.h"
#include "burden/forms/calculator_widgets.h"
#include "database/study_context.h"
#include "demography/standard_life_table.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/time_log.h"
#include "platform/forms/bar_progress.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/sound.h"
#include "platform/texts.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace vesk {

namespace ct = computation_texts;

frmCompDALY* frmCompDALY::open(QWidget* parent, int compMode, std::function<void()> showErrors) {
    const Cell& units = studyContext().VctrBPULst;
    if (!units.isArray() || units.array().count() == 0) {
        prompts().ask(text(ct::kNoUnitsToCompute), Buttons::Ok, Icon::None, QString());
        return nullptr;
    }
    static QPointer<frmCompDALY> single;
    if (single && single->compMode() != compMode && !single->running_)
        single->close();
    return openSingle(single, parent, [&] { return new frmCompDALY(compMode, std::move(showErrors)); });
}

frmCompDALY::frmCompDALY(int compMode, std::function<void()> showErrors, QWidget* parent)
    : QWidget(parent), compMode_(compMode), showErrors_(std::move(showErrors)) {
    setObjectName(QStringLiteral("frmCompDALY"));
    setWindowTitle(text(ct::kFormCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    // On load the chosen sets are emptied and the grid offers the built-in ones.
    computation().MtxDAP = Cell();
    Label1 = new QLabel(text(ct::kChooseDaps), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    flexBuiltInDAP = makeDapGrid(&dap_, this, compMode_);
    ID_COMPUTE = namedButton(this, QStringLiteral("ID_COMPUTE"), text(ct::kComputeButton));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), text(ct::kCloseButton));
    connect(ID_COMPUTE, &QPushButton::clicked, this, [this] { ID_COMPUTE_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);

    fmecompdaly = new QGroupBox(text(ct::kProgressFrame), this);
    fmecompdaly->setObjectName(QStringLiteral("fmecompdaly"));
    PbrCmpDly = new QProgressBar(fmecompdaly);
    PbrCmpDly->setObjectName(QStringLiteral("PbrCmpDly"));
    PbrCmpDly->setTextVisible(false);
    lblInformation = new QLabel(fmecompdaly);
    lblInformation->setObjectName(QStringLiteral("lblInformation"));
    lblInformation->setMinimumWidth(420);
    auto* status = new QVBoxLayout(fmecompdaly);
    status->addWidget(lblInformation);
    status->addWidget(PbrCmpDly);
    fmecompdaly->hide();

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ID_COMPUTE);
    buttons->addWidget(cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(flexBuiltInDAP);
    layout->addWidget(fmecompdaly);
    layout->addLayout(buttons);
    layout->addStretch();
}

void frmCompDALY::ID_COMPUTE_Click() {
    if (running_)
        return;
    if (compMode_ == kCompModeQuick || compMode_ == kCompModeSensitivity) {
        const Cell chosen = dap_.chosenDaps();
        if (!chosen.isArray()) {
            prompts().ask(text(compMode_ == kCompModeQuick ? ct::kSelectDapQuick : ct::kSelectDapSensitivity),
                          Buttons::Ok, Icon::Information, text(ct::kSelectDapTitle));
            return;
        }
        computation().MtxDAP = chosen;
    }
    running_ = true;
    ID_COMPUTE->setEnabled(false);
    cmdClose->setEnabled(false);
    fmecompdaly->show();
    PbrCmpDly->reset();
    BarProgress bar(PbrCmpDly, lblInformation, BarProgress::Refresh::Events);
    TimeLog log;
    playSound(settings().sLBussy);
    const StandardLifeTable table = standardLifeTable();
    const CellArray none;
    const RunOutcome outcome =
        runComputation(studyContext(), computation(), table.table ? *table.table : none, &bar, log);
    PbrCmpDly->setValue(PbrCmpDly->maximum());
    running_ = false;
    switch (outcome.end) {
    case RunEnd::Stored:
        finish(true, outcome.message);
        return;
    case RunEnd::NotComputed:
        finish(false, outcome.message);
        return;
    default:
        prompts().ask(outcome.message, Buttons::Ok, Icon::None, text(ct::kDalyComputationTitle));
        close();
    }
}

// The end of a run that came to storing: the window goes (offering the errors), then the sound and
// the last word.
void frmCompDALY::finish(bool daly, const QString& message) {
    if (daly) {
        fmecompdaly->hide();
        playSound(QString());
        close();
        playSound(settings().sLSuccess);
    } else {
        playSound(settings().sLFailure);
    }
    prompts().ask(message, Buttons::Ok, Icon::None, QString());
    if (!daly)
        close();
}

void frmCompDALY::closeEvent(QCloseEvent* event) {
    if (running_) {
        event->ignore();
        return;
    }
    const int errors = errorStoreCount();
    if (errors > 0) {
        const bool one = errors == 1;
        const bool offer = !one || !ErrStore().array()(ErrStore().array().lbound(0), 1).toString().isEmpty();
        if (offer && prompts().ask(text(one ? ct::kErrorsOne : ct::kErrorsMany), Buttons::YesNo, Icon::None,
                                   text(ct::kErrorsTitle)) == Answer::Yes &&
            showErrors_)
            showErrors_();
        clearErrorStore();
    }
    event->accept();
}

} // namespace vesk
