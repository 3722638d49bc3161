#include "study/study_setup_session.h"

#include "platform/prompts.h"
#include "foundation/array_helpers.h"
#include "study/study_setup_causes.h"
#include "study/study_setup_input.h"
#include "study/study_setup_report.h"
#include "study/study_setup_texts.h"

namespace vesk {

namespace t = setup_texts;

namespace {

using setup_texts::text;

// The scheme of a study without a word when it has none.
std::optional<SchemeFields> quietScheme(const DbConnection& db, const QString& studyId) {
    auto q = db.query(QStringLiteral("SELECT PAGSch, BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs WHERE PAGSch IN "
                                     "(SELECT PAGSch FROM _DctBDS WHERE BDSId = ?)"),
                      {studyId});
    if (!q || !q->next())
        return std::nullopt;
    return SchemeFields{q->value(0).toString(), q->value(1).toString(), q->value(2).toString(),
                        q->value(3).toString()};
}

} // namespace

StudySetupSession::StudySetupSession(bool newDb, Cell& sets, StudyContext& ctx)
    : context(ctx), chosenSets(sets), newDatabase(newDb) {}

void StudySetupSession::load() {
    if (!context.StudyDB)
        return;
    refreshStudies();
    showCurrentStudy();
    fillBuiltInDapGrid(context, chosenSets, flexBuiltInDAP);
}

void StudySetupSession::refreshStudies() {
    if (context.StudyDB)
        fillStudyGrid(studyRows(*context.StudyDB), dbgrid2);
}

void StudySetupSession::showCurrentStudy() {
    const DbConnection& db = *context.StudyDB;
    const auto current = currentStudyRow(db);
    pickExisting = current.has_value();
    if (!current) {
        study = {};
        yearList.clear();
        // A database without a current study (a new one above all): nothing of another stays current.
        context.ClearStudyContext();
        for (Cell* c : {&context.VctrYLLAsg, &context.VctrYLDAsg, &context.VctrPNDAge, &context.MtxCobCd,
                        &context.VctrPAGLst, &context.VctrYrLst})
            *c = Cell();
        context.CurBDSId.clear();
        context.CurBDSTi.clear();
        context.CurPAGSch.clear();
        return;
    }
    QList<int> years;
    for (const StudyRow& row : studyRows(db))
        if (row.id == current->id)
            years << row.year;
    std::sort(years.begin(), years.end());
    yearList = years;
    study = {current->id, formatStudyYears(years), current->title};
    // The other tabs follow the study: its scheme and its age definitions, or blanks.
    const auto s = quietScheme(db, current->id);
    scheme = s ? *s : SchemeFields{};
    QList<QList<Cell>> rows;
    auto q = db.query(QStringLiteral("SELECT YLL, YLD, PND FROM _DfnAgeGrps WHERE BDSId = ? ORDER BY rowid"),
                      {current->id});
    while (q && q->next())
        rows.push_back(
            {cellFromVariant(q->value(0)), cellFromVariant(q->value(1)), cellFromVariant(q->value(2))});
    if (rows.isEmpty())
        ages.clearGrids();
    else
        ages.fillGrids(rows, false);
}

bool StudySetupSession::apply() {
    return applyTab(tabInForce);
}

bool StudySetupSession::applyTab(int tab) {
    dirty = false;
    if (!context.StudyDB)
        return false;
    bool done = false;
    try {
        switch (tab) {
        case TabStudy:
            done = applyStudyTab();
            break;
        case TabAgeGroups:
            done = applyAgeGroupsTab();
            break;
        case TabPopUnits:
            done = applyScheme(context, scheme, study.id.trimmed().isEmpty() ? context.CurBDSId : study.id);
            break;
        case TabCauses:
            done = applyCauses(context, context.CurBDSId) >= 0;
            break;
        default:
            return false;
        }
    } catch (const RuntimeError& e) {
        prompts().ask(QString::number(e.number) + QLatin1Char(' ') + QString::fromLocal8Bit(e.what()));
        return false;
    }
    if (done)
        applied[static_cast<std::size_t>(tab)] = true;
    return done;
}

bool StudySetupSession::applyStudyTab() {
    const StudyApplyResult result =
        pickExisting ? applyExistingStudy(context, study) : applyNewStudy(context, study);
    focus = result.focus;
    if (!result.applied)
        return false;
    yearList = result.years;
    refreshStudies();
    return true;
}

bool StudySetupSession::applyAgeGroupsTab() {
    if (!ages.apply(context))
        return false;
    if (context.NewDBDone && FnChkMinStdParameter())
        newDatabaseComplete();
    return true;
}

void StudySetupSession::newDatabaseComplete() {
    prompts().ask(text(t::kNewDatabaseCreated1) + QLatin1Char('\n') + text(t::kNewDatabaseCreated2) +
                      QLatin1Char('\n') + text(t::kNewDatabaseCreated3),
                  Buttons::Ok, Icon::Information, text(t::kNewDatabaseCreatedTitle));
    setupRequests().ask(FrameRequest::plain(FrameRequest::Kind::StudyComplete));
    context.NewDBDone = false;
}

bool StudySetupSession::askApplyChanges(int tab) {
    if (!dirty)
        return false;
    if (prompts().ask(text(t::kApplyChanges), Buttons::YesNo, Icon::Question, text(t::kApplyChangesTitle)) !=
        Answer::Yes)
        return false;
    if (!applied[static_cast<std::size_t>(tab)])
        applyTab(tab);
    return true;
}

void StudySetupSession::changeTab(int newTab) {
    if (newTab == tabInForce)
        return;
    askApplyChanges(tabInForce);
    tabInForce = newTab;
}

QList<std::pair<QString, QString>> StudySetupSession::enterCausesTab() {
    if (!context.StudyDB)
        return {};
    fillCauseGrid(*context.StudyDB, context.CurBDSId, DbGridCauseGrps);
    auto list = sequelaList(*context.StudyDB);
    sequela = list.isEmpty() ? QString() : list.first().first;
    fillSequelaCauseGrid(*context.StudyDB, sequela, MsflxdtCobcd);
    return list;
}

bool StudySetupSession::FnChkMinStdParameter() const {
    return vesk::FnChkMinStdParameter({study.id, study.years, study.title, ages.RPTGrid.rows(),
                                       ages.Rptgrid2.rows(), ages.Rptgrid3.rows(), scheme.scheme, scheme.bpu,
                                       scheme.pag1, scheme.pag2});
}

bool StudySetupSession::closeRequested(bool* abandoned) {
    if (abandoned)
        *abandoned = false;
    askApplyChanges(tabInForce);
    if (!newDatabase || !context.NewDBDone)
        return true;
    if (FnChkMinStdParameter()) {
        context.NewDBDone = false;
        return true;
    }
    const QString question =
        text(t::kMinimum1) + QLatin1Char('\n') + text(t::kMinimum2) + QLatin1Char('\n') + text(t::kMinimum3);
    if (prompts().ask(question, Buttons::YesNo, Icon::Question, text(t::kMinimumTitle)) == Answer::Yes)
        return false;
    QString error;
    if (!abandonNewDatabase(context, &error))
        prompts().ask(error, Buttons::Ok, Icon::Critical);
    ages.clearGrids();
    if (abandoned)
        *abandoned = true;
    return true;
}

bool StudySetupSession::markCurrentAt(int row) {
    if (!context.StudyDB || row < dbgrid2.fixedRows() || row >= dbgrid2.rows())
        return false;
    const QString id = dbgrid2.textMatrix(row, 1);
    const int year = dbgrid2.textMatrix(row, 2).toInt();
    if (!markCurrentStudy(context, id, year))
        return false;
    refreshStudies();
    showCurrentStudy();
    return true;
}

bool StudySetupSession::deleteStudyAt(int row) {
    if (!context.StudyDB || row < dbgrid2.fixedRows() || row >= dbgrid2.rows())
        return false;
    const QString id = dbgrid2.textMatrix(row, 1);
    const int year = dbgrid2.textMatrix(row, 2).toInt();
    if (prompts().ask(text(t::kDeleteQuestion), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    if (id.compare(context.CurBDSId, Qt::CaseInsensitive) == 0) {
        prompts().ask(text(t::kDeleteCurrent), Buttons::Ok, Icon::Warning, text(t::kDeleteCurrentTitle));
        return false;
    }
    const bool deleted = DeleteStudy(context, id, year);
    refreshStudies();
    return deleted;
}

} // namespace vesk
