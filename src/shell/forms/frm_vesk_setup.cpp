#include "shell/forms/frm_vesk_setup.h"

#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "shell/loading_chain.h"
#include "shell/preferences_texts.h"
#include "shell/study_backend.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

namespace vesk {

namespace t = preferences_texts;

namespace {

// The pixels a column of the sample keeps at the least, so that a width of 0 still shows a line.
constexpr int kLeastSampleColumn = 2;

bool isMenuPage(PreferencesPage page) {
    return page == PreferencesPage::ColumnWidths || page == PreferencesPage::DecimalPlaces;
}

// A field shown anew; one that is not being typed in shows the start of its text, where a path
// says most.
void showText(QLineEdit* e, const QString& value) {
    if (e->text() == value)
        return;
    e->setText(value);
    if (!e->hasFocus())
        e->setCursorPosition(0);
}

} // namespace

UpDownArrows::UpDownArrows(QWidget* parent) : QAbstractSpinBox(parent) {
    setButtonSymbols(QAbstractSpinBox::UpDownArrows);
    setReadOnly(true);
    setFocusPolicy(Qt::NoFocus);
    // The arrows alone: the width of the spin box's buttons and its frame, no room for a text.
    setFixedWidth(style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this) + 12);
}

void UpDownArrows::stepBy(int steps) {
    if (onStep)
        onStep(steps);
}

frmVESKSetup::frmVESKSetup(PreferencesSession& session, QWidget* parent)
    : QDialog(parent), session_(session) {
    setObjectName(QStringLiteral("frmVESKSetup"));
    setWindowTitle(text(t::kCaption));
    setModal(true);
    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    SSTab1->addTab(buildFileLocations(), text(t::kPages[0]));
    SSTab1->addTab(buildMenuGrids(true), text(t::kPages[1]));
    SSTab1->addTab(buildMenuGrids(false), text(t::kPages[2]));
    SSTab1->addTab(buildLifeTables(), text(t::kPages[3]));
    SSTab1->addTab(buildTableNames(), text(t::kPages[4]));
    SSTab1->addTab(buildMisc(), text(t::kPages[5]));
    SSTab1->addTab(buildGraphExport(), text(t::kPages[6]));
    buildSample();
    sampleFrame->hide();
    connect(SSTab1, &QTabWidget::currentChanged, this, [this] { pageChanged(); });
    connect(SSTab2, &QTabWidget::currentChanged, this,
            [this](int tab) { session_.lifeTablesPage = static_cast<LifeTablesPage>(tab); });
    connectGrids();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1, 1);
    layout->addWidget(buildFoot());
    resize(880, 540);
    refresh();
    pageChanged();
}

void frmVESKSetup::connectGrids() {
    for (bool widths : {true, false}) {
        auto& grids = widths ? FlexColumnWdth : FlexDecPlcs;
        for (FlexGridView* g : grids) {
            connect(g, &FlexGridView::cellEdited, this, [this] {
                session_.markChanged();
                resample();
            });
            connect(g->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { resample(); });
        }
        connect(widths ? SSTabColWth : SSTabDecPlcs, &QTabWidget::currentChanged, this,
                [this] { resample(); });
    }
    connect(FlexLftTable, &FlexGridView::cellEdited, this, [this] { session_.markChanged(); });
}

void frmVESKSetup::pageChanged() {
    session_.page = static_cast<PreferencesPage>(SSTab1->currentIndex());
    // Until the pointer says otherwise, the hint line says what the tab is for.
    const char* pageHints[] = {t::kHintPaths, t::kHintWidths, t::kHintDecimals, t::kHintLifeTable,
                               t::kHintNames, t::kHintMisc,   t::kHintExport};
    Hint->setText(text(pageHints[SSTab1->currentIndex()]));
    if (!isMenuPage(session_.page)) {
        sampleFrame->hide();
        return;
    }
    // One sample serves both tabs: it goes below the grids of the tab that is open.
    QWidget* page = SSTab1->currentWidget();
    if (sampleFrame->parentWidget() != page) {
        sampleFrame->setParent(page);
        page->layout()->addWidget(sampleFrame);
    }
    sampleFrame->show();
    resample();
}

void frmVESKSetup::resample() {
    const bool widths = session_.page != PreferencesPage::DecimalPlaces;
    const int tab = (widths ? SSTabColWth : SSTabDecPlcs)->currentIndex();
    const GridModel& model = widths ? session_.widthGrids()[tab] : session_.decimalGrids()[tab];
    session_.showSample(widths, tab, model.row());
    if (!widths) {
        // The decimals change the texts alone: the columns fit them.
        ProcAutoFitCols(*FlxTstGrdEft, -1);
        return;
    }
    const std::array<int, 3> pixels = session_.samplePixels();
    for (int c = 0; c < 3; ++c)
        FlxTstGrdEft->setColumnWidth(c, std::max(pixels[c], kLeastSampleColumn));
}

void frmVESKSetup::refresh() {
    refreshing_ = true;
    refreshFields();
    refreshOptions();
    refreshLabels();
    for (auto& grids : {FlexColumnWdth, FlexDecPlcs})
        for (FlexGridView* g : grids)
            ProcAutoFitCols(*g, -1);
    if (SSTab1->currentIndex() != static_cast<int>(session_.page))
        SSTab1->setCurrentIndex(static_cast<int>(session_.page));
    refreshing_ = false;
    if (isMenuPage(session_.page))
        resample();
}

void frmVESKSetup::refreshFields() {
    for (auto it = fields_.cbegin(); it != fields_.cend(); ++it)
        showText(it.value(), session_.field(it.key()));
    for (auto it = combos_.cbegin(); it != combos_.cend(); ++it)
        if (it.value()->currentText() != session_.field(it.key()))
            it.value()->setEditText(session_.field(it.key()));
    const QStringList charts = session_.exportCharts();
    QStringList shown;
    for (int i = 0; i < CmbExportList->count(); ++i)
        shown << CmbExportList->itemText(i);
    if (shown != charts) {
        CmbExportList->clear();
        CmbExportList->addItems(charts);
    }
    CmbExportList->setCurrentIndex(session_.exportChart());
}

void frmVESKSetup::refreshOptions() {
    QRadioButton* tables[] = {OptBltStd, OptUsrdf, optBltWHO};
    tables[session_.lifeTable().choice() - 1]->setChecked(true);
    QRadioButton* methods[] = {Optnewell1, OptKeyfitz1, Optrdmrll1, Optgre1};
    methods[session_.method()]->setChecked(true);
    // The limits serve Keyfitz's correction alone, the constant Greville's method alone.
    const bool keyfitz = session_.method() == 1, greville = session_.method() == 3;
    txtKFlwrlmt1->setEnabled(keyfitz);
    txtKFupprlmt1->setEnabled(keyfitz);
    rngval1->setEnabled(greville);
    UpDown1->setEnabled(greville);
}

void frmVESKSetup::refreshLabels() {
    lblSuccess->setText(session_.soundPath(EventSound::Success));
    lblBusy->setText(session_.soundPath(EventSound::Busy));
    lblfail->setText(session_.soundPath(EventSound::Failure));
    lblLifeTableNote->setText(session_.lifeTable().note());
}

void frmVESKSetup::chooseSound(EventSound sound, QPushButton* source) {
    const auto chosen =
        prompts().openFileName(source->text().remove(u'&'), text(t::kSoundFilter), text(t::kSoundFolder));
    if (!chosen || chosen->isEmpty())
        return;
    session_.chooseSound(sound, *chosen);
    refreshLabels();
}

void frmVESKSetup::bubblehlp(QWidget* control) {
    Hint->setText(control->property("bubblehlp").toString());
}

void frmVESKSetup::fieldLeft(QLineEdit* left, QWidget* next) {
    // Close leaves without a check: it asks about the paths itself.
    if (refreshing_ || !isVisible() || next == cmdClose)
        return;
    session_.leaveField(left->objectName());
}

// A key that would edit, or a double click, on the caption column of the widths and decimals: that
// column is not edited. The keys that move pass.
bool frmVESKSetup::captionCell(QObject* watched, QEvent* event) const {
    bool key = false;
    if (event->type() == QEvent::KeyPress) {
        const auto* k = static_cast<QKeyEvent*>(event);
        key = k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter ||
              (!k->text().isEmpty() && k->text()[0].isPrint());
    }
    const bool click = event->type() == QEvent::MouseButtonDblClick;
    if (!key && !click)
        return false;
    for (const auto& grids : {FlexColumnWdth, FlexDecPlcs})
        for (FlexGridView* g : grids) {
            if (key && watched == g)
                return g->grid()->col() == 0;
            if (click && watched == g->viewport())
                return g->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint()).column() == 0;
        }
    return false;
}

bool frmVESKSetup::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Enter) {
        auto* w = qobject_cast<QWidget*>(watched);
        if (w && w->property("bubblehlp").isValid())
            bubblehlp(w);
    }
    if (captionCell(watched, event))
        return true;
    auto* e = qobject_cast<QLineEdit*>(watched);
    if (!e || fields_.value(e->objectName()) != e)
        return QDialog::eventFilter(watched, event);
    if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            fieldLeft(e, QApplication::focusWidget());
    } else if (event->type() == QEvent::KeyPress && e == txtNLdCuss) {
        // A number key only: other characters are dropped; the keys that move or edit, and the
        // shortcuts, pass.
        const auto* key = static_cast<QKeyEvent*>(event);
        const QString typed = key->text();
        const bool shortcut = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
        if (!shortcut && !typed.isEmpty() && typed[0].isPrint() && !isNumberKey(typed[0].unicode()))
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmVESKSetup::showEvent(QShowEvent* event) {
    preferences().loaded = true;
    QDialog::showEvent(event);
}

void frmVESKSetup::okPressed() {
    cmdApply_Click();
    Cancel_Click();
}

void frmVESKSetup::cmdApply_Click() {
    if (isVisible())
        if (auto* focused = qobject_cast<QLineEdit*>(focusWidget());
            focused && fields_.value(focused->objectName()) == focused)
            session_.leaveField(focused->objectName());
    session_.Apply();
    refresh();
}

void frmVESKSetup::Cancel_Click() {
    const CloseOutcome outcome = session_.Close();
    if (outcome == CloseOutcome::Stay)
        return;
    refresh();
    QDialog::done(QDialog::Rejected);
}

void frmVESKSetup::reject() {
    Cancel_Click();
}

namespace {

QString levelLabel() {
    StudyBackend& b = studyBackend();
    return b.CurBDSId().isEmpty() ? QString() : b.LblBPU();
}

} // namespace

void VeskSetupForm::Ok_Click() {
    if (window_) {
        window_->cmdApply_Click();
        return;
    }
    session_.Apply();
}

void VeskSetupForm::showModal() {
    if (!window_)
        window_ = new frmVESKSetup(session_, dynamic_cast<QWidget*>(frameHost()));
    session_.load(levelLabel());
    window_->refresh();
    window_->exec();
}

void VeskSetupForm::hide() {
    if (window_)
        window_->hide();
}

VeskSetupForm& veskSetupForm() {
    static VeskSetupForm form;
    return form;
}

void installPreferencesForm() {
    setPreferencesForm(&veskSetupForm());
}

} // namespace vesk
