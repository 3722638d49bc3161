// DEFINESTUDY1: what each control does. Every operation is the session's; the form reads its
// widgets into the session, calls it, and shows the session again.

#include "platform/forms/flex_grid_view.h"
#include "platform/prompts.h"
#include "study/age_quick_fill.h"
#include "study/forms/definestudy1.h"
#include "study/forms/five_yr_ag.h"
#include "study/study_setup_causes.h"
#include "study/study_setup_input.h"
#include "study/study_setup_texts.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabWidget>

namespace vesk {

namespace t = setup_texts;

namespace {

using setup_texts::text;

bool isEnter(const QKeyEvent* e) {
    return e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
}

// Whether the field's check refuses a character typed at the cursor, or over the selection: its
// message is shown and the key cancelled.
bool refusedKey(QChar typed, const QLineEdit& field, QString (*check)(QChar, int)) {
    const int position = field.hasSelectedText() ? field.selectionStart() : field.cursorPosition();
    const QString message = check(typed, position);
    if (message.isEmpty())
        return false;
    prompts().ask(message, Buttons::Ok, Icon::Warning);
    return true;
}

} // namespace

void DEFINESTUDY1::markDirty() {
    if (!showing_)
        session_->dirty = true;
}

void DEFINESTUDY1::showSession() {
    showing_ = true;
    const StudySetupSession& s = *session_;
    {
        const QSignalBlocker b1(OptNewStudy), b2(OptPickStudy);
        OptPickStudy->setChecked(s.pickExisting);
        OptNewStudy->setChecked(!s.pickExisting);
    }
    txtBDSId->setText(s.study.id);
    txtBDSId->setReadOnly(s.pickExisting);
    txtYear->setText(s.study.years);
    txtBDSTi->setText(s.study.title);
    lstYear->clear();
    const GridModel& g = s.dbgrid2;
    for (int r = 1; r < g.rows(); ++r)
        lstYear->addItem(g.textMatrix(r, 1) + QStringLiteral("  ") + g.textMatrix(r, 2) +
                         QStringLiteral("  ") + g.textMatrix(r, 3));
    fitGrids();
    Txtpagsch->setText(s.scheme.scheme);
    TXTBPU->setText(s.scheme.bpu);
    tXTPAG1->setText(s.scheme.pag1);
    TXTPAG2->setText(s.scheme.pag2);
    showing_ = false;
}

void DEFINESTUDY1::fitGrids() {
    if (!dbgrid2 || !DbGridCauseGrps)
        return; // not built yet
    // The study grid: the widths of the old screen in twips, never narrower than a heading.
    const QFontMetrics head(dbgrid2->horizontalHeader()->font());
    for (int c = 0; c < 5; ++c)
        dbgrid2->setColumnWidth(c, std::max(kStudyColumnWidths[c + 1] / 15,
                                            head.horizontalAdvance(text(t::kStudyColumns[c])) + 16));
    for (FlexGridView* v : {flexBuiltInDAP, flexAddlDAP})
        for (int c = 0; c < 6; ++c)
            v->setColumnWidth(c, std::max(52, head.horizontalAdvance(QStringLiteral("0.1658")) + 16));
    // The causes: code and choice fitted, the description takes the rest.
    ProcAutoFitCols(*DbGridCauseGrps, 16);
    const int rest = DbGridCauseGrps->viewport()->width() - DbGridCauseGrps->columnWidth(0) -
                     DbGridCauseGrps->columnWidth(2);
    DbGridCauseGrps->setColumnWidth(1, std::max(DbGridCauseGrps->columnWidth(1), rest));
    MsflxdtCobcd->setColumnWidth(0, std::max(70, head.horizontalAdvance(QStringLiteral("A0000")) + 16));
}

void DEFINESTUDY1::connectStudyTab() {
    connect(OptNewStudy, &QRadioButton::clicked, this, [this] { studyOptionClicked(false); });
    connect(OptPickStudy, &QRadioButton::clicked, this, [this] { studyOptionClicked(true); });
    txtBDSId->installEventFilter(this);
    txtBDSTi->installEventFilter(this);
    connect(txtBDSId, &QLineEdit::textEdited, this, [this](const QString& v) {
        session_->study.id = v;
        markDirty();
    });
    connect(txtYear, &QLineEdit::textEdited, this, [this](const QString& v) {
        session_->study.years = v;
        markDirty();
    });
    connect(txtBDSTi, &QLineEdit::textEdited, this, [this](const QString& v) {
        session_->study.title = v;
        markDirty();
    });
    connect(txtYear, &QLineEdit::editingFinished, this, [this] { yearLeft(); });
    connect(cmdApply, &QPushButton::clicked, this, [this] { applyClicked(); });
    connect(cmdClose, &QPushButton::clicked, this, [this] { close(); });
    connect(SSTabDstudy, &QTabWidget::currentChanged, this, [this](int i) { tabChanged(i); });
    // The study grid: a click on "Slct" makes the row current; Delete deletes the study.
    dbgrid2->installEventFilter(this);
    connect(dbgrid2, &QAbstractItemView::clicked, this, [this](const QModelIndex& i) {
        if (i.column() == 4 && session_->markCurrentAt(i.row() + 1))
            showSession();
    });
    connect(lstYear, &QListWidget::itemDoubleClicked, this, [this] {
        if (session_->markCurrentAt(lstYear->currentRow() + 1))
            showSession();
    });
    connect(flexBuiltInDAP, &QAbstractItemView::clicked, this, [this](const QModelIndex& i) {
        if (i.column() == kDapChoiceColumn)
            toggleBuiltInDap(session_->chosenSets, session_->flexBuiltInDAP, i.row() + 1);
    });
    connect(flexAddlDAP, &QAbstractItemView::pressed, this,
            [] { prompts().ask(text(t::kYetToBeDeveloped), Buttons::Ok, Icon::Information); });
}

void DEFINESTUDY1::connectAgeGroupsTab() {
    FlexGridView* grids[3] = {RPTGrid, Rptgrid2, Rptgrid3};
    for (int c = 0; c < 3; ++c) {
        connect(grids[c], &FlexGridView::cellEdited, this,
                [this, c](int row, int) { ageGridEdited(c, row); });
        connect(grids[c], &QWidget::customContextMenuRequested, this, [this, c, grids](const QPoint& at) {
            popupFor(c)->popup(grids[c]->viewport()->mapToGlobal(at));
        });
    }
    const auto fill = [this](int which) { quickFill(popupTarget_, which); };
    connect(popupAges_->actions()[0], &QAction::triggered, this, [fill] { fill(0); });
    connect(popupAges_->actions()[1], &QAction::triggered, this, [fill] { fill(1); });
    connect(popupPnd_->actions()[0], &QAction::triggered, this, [fill] { fill(2); });
    connect(OptAfresh, &QRadioButton::clicked, this, [this] {
        markDirty();
        session_->ages.defineAfresh(session_->context);
    });
    connect(OptPickAges, &QRadioButton::clicked, this, [this] {
        markDirty();
        Combo1->clear();
        if (session_->context.StudyDB)
            Combo1->addItems(session_->ages.pickSources(*session_->context.StudyDB));
        Combo1->setCurrentIndex(-1);
    });
    connect(Combo1, &QComboBox::activated, this, [this](int index) {
        if (index >= 0 && session_->context.StudyDB)
            session_->ages.pickFrom(*session_->context.StudyDB, Combo1->itemText(index));
    });
    connect(OptDisplayAges, &QRadioButton::clicked, this, [this] {
        markDirty();
        if (session_->context.StudyDB)
            session_->ages.displayExisting(*session_->context.StudyDB, session_->context.CurBDSId);
    });
}

void DEFINESTUDY1::connectSchemeTab() {
    const auto bind = [this](QLineEdit* edit, QString SchemeFields::*field) {
        connect(edit, &QLineEdit::textEdited, this, [this, field](const QString& v) {
            session_->scheme.*field = v;
            markDirty();
        });
    };
    bind(Txtpagsch, &SchemeFields::scheme);
    bind(TXTBPU, &SchemeFields::bpu);
    bind(tXTPAG1, &SchemeFields::pag1);
    bind(TXTPAG2, &SchemeFields::pag2);
    connect(Txtpagsch, &QLineEdit::editingFinished, this, [this] { schemeIdLeft(); });
    connect(OptNewSchema, &QRadioButton::clicked, this, [this] {
        markDirty();
        session_->scheme = {};
        CMBPAGSCH->clear();
        showSession();
    });
    connect(OptPickSchema, &QRadioButton::clicked, this, [this] {
        markDirty();
        CMBPAGSCH->clear();
        if (session_->context.StudyDB)
            CMBPAGSCH->addItems(schemeIds(*session_->context.StudyDB));
        CMBPAGSCH->setCurrentIndex(-1);
    });
    connect(CMBPAGSCH, &QComboBox::activated, this, [this](int index) {
        if (index < 0 || !session_->context.StudyDB)
            return;
        if (const auto picked = pickScheme(*session_->context.StudyDB, CMBPAGSCH->itemText(index))) {
            session_->scheme = *picked;
            showSession();
        }
    });
    connect(OptDisplaySchema, &QRadioButton::clicked, this, [this] {
        markDirty();
        if (!session_->context.StudyDB)
            return;
        if (const auto shown = studyScheme(*session_->context.StudyDB, session_->context.CurBDSId)) {
            session_->scheme = *shown;
            showSession();
        }
    });
}

void DEFINESTUDY1::connectCausesTab() {
    StudySetupSession& s = *session_;
    connect(DbGridCauseGrps, &QAbstractItemView::clicked, this, [this](const QModelIndex& i) {
        StudySetupSession& s = *session_;
        if (i.column() == kCauseChoiceColumn && s.context.StudyDB &&
            toggleCause(*s.context.StudyDB, s.context.CurBDSId, s.DbGridCauseGrps, i.row() + 1))
            markDirty();
    });
    const auto bulk = [this](std::function<bool(const DbConnection&, const QString&)> run) {
        StudySetupSession& s = *session_;
        if (!s.context.StudyDB)
            return;
        run(*s.context.StudyDB, s.context.CurBDSId);
        fillCauseGrid(*s.context.StudyDB, s.context.CurBDSId, s.DbGridCauseGrps);
        markDirty();
        fitGrids();
    };
    connect(cmdSelectAll, &QPushButton::clicked, this, [bulk] {
        bulk([](const DbConnection& db, const QString& id) { return setAllCauses(db, id, true); });
    });
    connect(cmdUnselectAll, &QPushButton::clicked, this, [bulk] {
        bulk([](const DbConnection& db, const QString& id) { return setAllCauses(db, id, false); });
    });
    connect(cmdSwap, &QPushButton::clicked, this, [bulk] { bulk(swapCauses); });
    connect(LstSqlacd, &QListWidget::currentRowChanged, this, [this] { sequelaChosen(); });
    connect(MsflxdtCobcd, &FlexGridView::cellEdited, this,
            [this](int row, int col) { sequelaCauseEntered(row, col); });
    (void)s;
}

void DEFINESTUDY1::applyClicked() {
    StudySetupSession& s = *session_;
    const bool done = s.apply();
    if (s.tabInForce == StudySetupSession::TabStudy && !done) {
        QLineEdit* target = s.focus == StudyField::Id      ? txtBDSId
                            : s.focus == StudyField::Years ? txtYear
                            : s.focus == StudyField::Title ? txtBDSTi
                                                           : nullptr;
        if (target)
            target->setFocus();
    }
    if (s.tabInForce == StudySetupSession::TabCauses && s.context.StudyDB)
        fillCauseGrid(*s.context.StudyDB, s.context.CurBDSId, s.DbGridCauseGrps);
    showSession();
}

void DEFINESTUDY1::tabChanged(int index) {
    session_->changeTab(index);
    if (index == StudySetupSession::TabCauses) {
        const auto list = session_->enterCausesTab();
        const QSignalBlocker block(LstSqlacd);
        LstSqlacd->clear();
        for (const auto& [code, name] : list)
            LstSqlacd->addItem(code + QStringLiteral(" - ") + name);
        LstSqlacd->setCurrentRow(list.isEmpty() ? -1 : 0);
    }
    showSession();
}

void DEFINESTUDY1::studyOptionClicked(bool pick) {
    StudySetupSession& s = *session_;
    markDirty();
    if (pick) {
        s.showCurrentStudy();
        if (!s.pickExisting)
            prompts().ask(text(t::kNothingCurrent));
        s.pickExisting = true;
    } else {
        s.pickExisting = false;
        s.study = {};
    }
    showSession();
}

void DEFINESTUDY1::ageGridEdited(int column, int row) {
    session_->ages.gridChanged = true;
    markDirty();
    if (enterPressed_[column]) {
        enterPressed_[column] = false;
        ageGridKey(column, row);
    }
}

void DEFINESTUDY1::ageGridKey(int, int row) {
    // Enter leaves a row: its figures must agree across the three sets.
    if (!session_->ages.checkRowRule(row)) {
        session_->ages.RPTGrid.setCurrent(row, 0);
        RPTGrid->syncFromGrid();
        RPTGrid->setFocus();
    }
}

void DEFINESTUDY1::quickFill(int column, int which) {
    QList<int> ages;
    if (which == 0) {
        ages = FiveAgeGroupList();
    } else if (which == 1) {
        ages = SevenAgeGroupList();
    } else {
        const auto chosen = FiveYrAg::chooseAges(this);
        if (!chosen)
            return;
        ages = *chosen;
    }
    session_->ages.quickFill(column, ages);
    markDirty();
}

void DEFINESTUDY1::sequelaChosen() {
    StudySetupSession& s = *session_;
    const QString item = LstSqlacd->currentItem() ? LstSqlacd->currentItem()->text() : QString();
    s.sequela = item.section(QStringLiteral(" - "), 0, 0);
    if (s.context.StudyDB)
        fillSequelaCauseGrid(*s.context.StudyDB, s.sequela, s.MsflxdtCobcd);
}

void DEFINESTUDY1::sequelaCauseEntered(int row, int col) {
    if (!cobcdEnter_ || col != 0)
        return;
    cobcdEnter_ = false;
    StudySetupSession& s = *session_;
    const QString code = s.MsflxdtCobcd.textMatrix(row, 0).trimmed();
    if (code.isEmpty() || s.sequela.isEmpty() || !s.context.StudyDB)
        return;
    mapCauseToSequela(*s.context.StudyDB, s.sequela, code);
    fillSequelaCauseGrid(*s.context.StudyDB, s.sequela, s.MsflxdtCobcd);
}

bool DEFINESTUDY1::filterStudyIdKey(QKeyEvent* e) {
    const QString typed = e->text();
    if (typed.isEmpty() || !typed[0].isPrint() || txtBDSId->isReadOnly())
        return false;
    return refusedKey(typed[0], *txtBDSId, studyIdKeyMessage);
}

bool DEFINESTUDY1::filterTitleKey(QKeyEvent* e) {
    const QString typed = e->text();
    return !typed.isEmpty() && refusedKey(typed[0], *txtBDSTi, studyTitleKeyMessage);
}

void DEFINESTUDY1::studyIdLeft() {
    if (session_->pickExisting || !txtBDSId->text().trimmed().isEmpty() || !isVisible())
        return;
    if (prompts().ask(text(t::kIdBlankOnLeave), Buttons::OkCancel, Icon::Warning, text(t::kIdBlankTitle)) ==
        Answer::Ok)
        txtBDSId->setFocus();
}

void DEFINESTUDY1::yearLeft() {
    const QString years = txtYear->text();
    if (years.trimmed().isEmpty() || parseStudyYears(years))
        return;
    prompts().ask(text(t::kBadYear), Buttons::Ok, Icon::Warning);
    txtYear->clear(); // the field is cancelled
    session_->study.years.clear();
}

void DEFINESTUDY1::schemeIdLeft() {
    if (!OptNewSchema->isChecked() || !session_->context.StudyDB || Txtpagsch->text().trimmed().isEmpty())
        return;
    if (!checkNewSchemeId(*session_->context.StudyDB, Txtpagsch->text())) {
        Txtpagsch->clear();
        session_->scheme.scheme.clear();
    }
}

bool DEFINESTUDY1::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && watched == txtBDSId) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            studyIdLeft();
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (watched == txtBDSId)
        return filterStudyIdKey(key);
    if (watched == txtBDSTi)
        return filterTitleKey(key);
    FlexGridView* grids[3] = {RPTGrid, Rptgrid2, Rptgrid3};
    for (int c = 0; c < 3; ++c) {
        if (watched != grids[c])
            continue;
        if (key->key() == Qt::Key_Delete) {
            const GridModel& g = session_->ages.grid(c);
            if (session_->ages.deleteRow(c, g.row()))
                markDirty();
            grids[c]->syncFromGrid();
            return true;
        }
        enterPressed_[c] = isEnter(key);
        return false;
    }
    if (watched == dbgrid2 && key->key() == Qt::Key_Delete) {
        if (session_->deleteStudyAt(session_->dbgrid2.row()))
            showSession();
        return true;
    }
    if (watched == MsflxdtCobcd) {
        StudySetupSession& s = *session_;
        if (key->key() == Qt::Key_Delete && s.context.StudyDB) {
            const QString code = s.MsflxdtCobcd.textMatrix(s.MsflxdtCobcd.row(), 0).trimmed();
            if (!code.isEmpty() && !s.sequela.isEmpty())
                unmapCauseFromSequela(*s.context.StudyDB, s.sequela, code);
            fillSequelaCauseGrid(*s.context.StudyDB, s.sequela, s.MsflxdtCobcd);
            return true;
        }
        cobcdEnter_ = isEnter(key);
    }
    return QDialog::eventFilter(watched, event);
}

void DEFINESTUDY1::closeEvent(QCloseEvent* event) {
    bool abandoned = false;
    if (!session_->closeRequested(&abandoned)) {
        event->ignore();
        return;
    }
    // Accepted here and not passed on: the dialog's own close would reject(), which closes again.
    event->accept();
}

void DEFINESTUDY1::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    fitGrids();
}

void DEFINESTUDY1::reject() {
    close();
}

} // namespace vesk
