#pragma once
// What the study-definition form tests share: a new study file with one current study whose
// scheme names the levels "District", "Province" and "Nation", opened as the context's StudyDB;
// scripted prompts; and the user's gestures on a grid (click a cell, Enter, type, Enter).

#include "database/db_connection.h"
#include "inputs/forms/flex_grid_view.h"
#include "platform/prompts.h"

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace vesk::test {

class StudyFixture {
public:
    StudyFixture();
    ~StudyFixture();

    void addStudy(const QString& id, int year, bool current, const QString& scheme = QStringLiteral("SCH"));
    bool exec(const QString& sql, const QVariantList& values = {});
    // The rows of a query, columns joined by "|", Null as "<null>".
    QStringList rows(const QString& sql, const QVariantList& values = {});
    QString value(const QString& sql, const QVariantList& values = {});

    QTemporaryDir dir;
    QString file;
    std::shared_ptr<DbConnection> db;
    ScriptedPrompts prompts;

private:
    std::unique_ptr<ScopedPromptService> installed_;
};

// Clicks the body cell (row, col) (body coordinates, from 0), as the mouse does.
void clickCell(FlexGridView* view, int row, int col);
// Clicks the cell, presses Enter, types `text` into the cell box and presses Enter.
void typeCell(FlexGridView* view, int row, int col, const QString& text);
// Types a whole row from column 0 on.
void typeRow(FlexGridView* view, int row, const QStringList& texts);
// Presses Delete on the grid.
void pressDelete(FlexGridView* view);
// The body texts of a grid, columns joined by "|", blank rows left out.
QStringList gridTexts(const FlexGridView* view);

} // namespace vesk::test
