#include "study/study_setup_ages.h"

#include "foundation/settings.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "foundation/array_helpers.h"
#include "study/asg_data.h"
#include "study/asg_labels.h"
#include "study/asg_map.h"
#include "study/study_setup.h"
#include "study/study_setup_texts.h"

#include <QFileInfo>
#include <QSqlQuery>

namespace vesk {

namespace t = setup_texts;

namespace {

using setup_texts::text;

void setUp(GridModel& grid, const char* heading, int bodyRows) {
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(0);
    grid.setCols(1);
    grid.setRows(bodyRows + 1);
    grid.clear();
    grid.setTextMatrix(0, 0, text(heading));
    grid.setCurrent(1, 0);
    grid.setRedraw(true);
}

const char* const kHeadings[3] = {t::kYllHeading, t::kYldHeading, t::kPndHeading};

// The text of a stored age: blank for Null.
QString ageText(const Cell& c) {
    return c.isNull() || c.isEmpty() ? QString() : c.toString();
}

QStringList studyUnits(const StudyContext& context) {
    QStringList units;
    if (context.VctrBPULst.isArray()) {
        const CellArray& v = context.VctrBPULst.array();
        for (int i = v.lbound(0); i <= v.ubound(0); ++i)
            units << v(i).toString();
    }
    return units;
}

// An age as the Integer field takes it.
QVariant storedAge(const Cell& c) {
    if (isBlankCell(c))
        return QVariant();
    return static_cast<int>(roundHalfEven(Val(c.toString())));
}

} // namespace

AgeGroupsEditor::AgeGroupsEditor() {
    clearGrids();
}

GridModel& AgeGroupsEditor::grid(int column) {
    return column == 0 ? RPTGrid : column == 1 ? Rptgrid2 : Rptgrid3;
}

const GridModel& AgeGroupsEditor::grid(int column) const {
    return column == 0 ? RPTGrid : column == 1 ? Rptgrid2 : Rptgrid3;
}

void AgeGroupsEditor::clearGrids() {
    for (int c = 0; c < 3; ++c)
        setUp(grid(c), kHeadings[c], 1);
}

void AgeGroupsEditor::fillGrids(const QList<QList<Cell>>& rows, bool closeUp) {
    for (int c = 0; c < 3; ++c) {
        QStringList entries;
        for (const auto& row : rows)
            if (!closeUp || !isBlankCell(row[c]))
                entries << ageText(row[c]);
        GridModel& g = grid(c);
        setUp(g, kHeadings[c], std::max<int>(1, static_cast<int>(entries.size())));
        for (int r = 0; r < entries.size(); ++r)
            g.setTextMatrix(r + 1, 0, entries[r]);
    }
}

bool AgeGroupsEditor::checkRowRule(int row) {
    Cell cells[3];
    for (int c = 0; c < 3; ++c)
        if (row >= 1 && row < grid(c).rows())
            cells[c] = Cell(grid(c).textMatrix(row, 0));
    if (FnChkAsgRowRule(cells[0], cells[1], cells[2]))
        return true;
    for (int c = 0; c < 3; ++c)
        if (row >= 1 && row < grid(c).rows())
            grid(c).setTextMatrix(row, 0, QString());
    rowRuleFired = true;
    return false;
}

bool AgeGroupsEditor::deleteRow(int column, int row) {
    GridModel& g = grid(column);
    if (row < g.fixedRows() || row >= g.rows())
        return false;
    if (prompts().ask(text(t::kDeleteRow), Buttons::OkCancel, Icon::Question, text(t::kDeleteRowTitle)) !=
        Answer::Ok)
        return false;
    if (g.rows() <= 2) {
        g.setTextMatrix(row, 0, QString());
    } else {
        for (int r = row; r + 1 < g.rows(); ++r)
            g.setTextMatrix(r, 0, g.textMatrix(r + 1, 0));
        g.setRows(g.rows() - 1);
        g.setCurrent(std::min(row, g.rows() - 1), 0);
    }
    gridChanged = true;
    return true;
}

void AgeGroupsEditor::quickFill(int column, const QList<int>& ages) {
    GridModel& g = grid(column);
    setUp(g, kHeadings[column], static_cast<int>(ages.size()) + 1);
    for (int i = 0; i < ages.size(); ++i)
        g.setTextMatrix(i + 1, 0, QString::number(ages[i]));
    gridChanged = true;
}

bool AgeGroupsEditor::defineAfresh(StudyContext& context) {
    if (context.ArrAgeDfn.isArray() && context.StudyDB) {
        const CellArray check =
            canModifyAsg(context.StudyDB->database(), context.ArrAgeDfn.array(), studyUnits(context));
        if (check(0).toDouble() != 0 || check(1).toDouble() != 0) {
            const QString question = text(t::kRedefine1) + context.CurBDSId.toUpper() + text(t::kRedefine2);
            if (prompts().ask(question, Buttons::YesNo, Icon::Question) != Answer::Yes ||
                prompts().ask(text(t::kRedefineSure), Buttons::OkCancel, Icon::Question) != Answer::Ok) {
                gridChanged = false;
                return false;
            }
        }
    }
    clearGrids();
    return true;
}

QStringList AgeGroupsEditor::pickSources(const DbConnection& db) const {
    QStringList ids;
    auto q =
        db.query(QStringLiteral("SELECT DISTINCT BDSId FROM _DfnAgeGrps WHERE BDSId IS NOT NULL ORDER BY 1"));
    while (q && q->next())
        ids << q->value(0).toString();
    if (ids.isEmpty())
        prompts().ask(text(t::kNoAgeDefinitionsBefore));
    return ids;
}

void AgeGroupsEditor::pickFrom(const DbConnection& db, const QString& id) {
    QList<QList<Cell>> rows;
    auto q = db.query(QStringLiteral("SELECT YLL, YLD, PND FROM _DfnAgeGrps WHERE BDSId = ? ORDER BY rowid"),
                      {id});
    while (q && q->next())
        rows.push_back(
            {cellFromVariant(q->value(0)), cellFromVariant(q->value(1)), cellFromVariant(q->value(2))});
    fillGrids(rows, true);
    gridChanged = true;
}

bool AgeGroupsEditor::displayExisting(const DbConnection& db, const QString& id) {
    QList<QList<Cell>> rows;
    auto q =
        db.query(QStringLiteral("SELECT YLL, YLD, PND FROM _DfnAgeGrps WHERE BDSId = ? ORDER BY PND"), {id});
    while (q && q->next())
        rows.push_back(
            {cellFromVariant(q->value(0)), cellFromVariant(q->value(1)), cellFromVariant(q->value(2))});
    if (rows.isEmpty()) {
        prompts().ask(text(t::kNoCurrentRecords));
        return false;
    }
    fillGrids(rows, false);
    return true;
}

Cell AgeGroupsEditor::compactedColumn(int column) const {
    const GridModel& g = grid(column);
    const int body = g.rows() - g.fixedRows();
    if (body <= 0)
        return Cell(QString());
    CellArray values{body};
    for (int r = 0; r < body; ++r)
        values(r) = Cell(g.textMatrix(r + g.fixedRows(), 0).trimmed());
    return FnCompactArr(Cell(std::move(values)), 1);
}

bool AgeGroupsEditor::warnBeforeRedefining(StudyContext& context) {
    if (rowRuleFired)
        return false;
    if (!gridChanged)
        return true;
    const CellArray check =
        canModifyAsg(context.StudyDB->database(), context.ArrAgeDfn.array(), studyUnits(context));
    if (check(0).toDouble() != 0) {
        // The table word would follow the grid last touched; nothing records it, so the third shows.
        const QString table = text(t::kAsgTableOther);
        const QString warning = text(t::kDataUnderAsg1) + context.CurBDSId + text(t::kDataUnderAsg2) + table +
                                QLatin1Char('\n') + text(t::kDataUnderAsg3) + table +
                                text(t::kDataUnderAsg4) + context.StudyDB->path() + QLatin1Char('.');
        if (prompts().ask(warning, Buttons::YesNo, Icon::Warning, text(t::kDataUnderAsgTitle)) != Answer::Yes)
            return false;
    }
    if (prompts().ask(text(t::kRedefineAgeSure), Buttons::OkCancel, Icon::Question) != Answer::Ok) {
        gridChanged = false;
        return false;
    }
    return true;
}

bool AgeGroupsEditor::writeRows(StudyContext& context, const CellArray& rows) {
    const DbConnection& db = *context.StudyDB;
    QSqlError e;
    if (!db.exec(QStringLiteral("DELETE FROM _DfnAgeGrps WHERE BDSId = ?"), {context.CurBDSId}, &e)) {
        showStudySetupDbError(e);
        return false;
    }
    for (int r = 0; r < rows.size(0); ++r)
        if (!db.exec(QStringLiteral("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)"),
                     {context.CurBDSId, storedAge(rows(r, 0)), storedAge(rows(r, 1)), storedAge(rows(r, 2))},
                     &e)) {
            showStudySetupDbError(e);
            return false;
        }
    return true;
}

bool AgeGroupsEditor::apply(StudyContext& context) {
    // 1. Each grid below its fixed row, blanks dropped.
    const Cell yll = compactedColumn(0), yld = compactedColumn(1), pnd = compactedColumn(2);
    if (!isArrayCell(yll) || !isArrayCell(yld) || !isArrayCell(pnd)) {
        prompts().ask(text(t::kEnterAgeGroups));
        return false;
    }
    if (context.CurBDSId.isEmpty() || !context.StudyDB) {
        prompts().ask(text(t::kNothingCurrent));
        return false;
    }
    // 2. As many rows as the PND list: a longer YLL or YLD list is cut here.
    const int n = pnd.array().size(0);
    CellArray matrix{n, 3};
    for (int i = 0; i < n; ++i)
        for (int c = 0; c < 3; ++c) {
            const CellArray& list = (c == 0 ? yll : c == 1 ? yld : pnd).array();
            matrix(i, c) = i < list.size(0) ? Cell(Val(list(i).toString())) : Cell(QString());
        }
    // 3. Rows blank in every column go.
    const Cell compact = FnCompactArr(Cell(matrix), 2);
    if (!isArrayCell(compact)) {
        prompts().ask(text(t::kNoRecordsOnGrid), Buttons::Ok, Icon::None, text(t::kNoRecordsOnGridTitle));
        return false;
    }
    // 4-5. The labels of the YLL and YLD sets must map onto each other.
    CellArray yllLabels, yldLabels;
    if (!ASGDfn(compact.array(), kAsgYll, yllLabels) || !ASGDfn(compact.array(), kAsgYld, yldLabels))
        return false;
    if (!FnChkAsgFeasible(Cell(yldLabels), Cell(yllLabels)))
        return false;
    // 6. Definitions that exist are replaced only after the warnings.
    if (context.ArrAgeDfn.isArray() && !warnBeforeRedefining(context))
        return false;
    // 7-9.
    if (!writeRows(context, compact.array()))
        return false;
    reloadAgeGroups(context);
    return true;
}

} // namespace vesk
