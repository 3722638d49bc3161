#pragma once
// frmVESKSetup, the preferences form, without its widgets: what it holds, what its controls do, and
// Apply and Close. The window (shell/forms/frm_vesk_setup.h) shows a session and hands it every
// gesture; File -> New and File -> Open press its OK without showing it.
//
// The form is the holder of the settings it edits. The paths, the sample percent and the recordset
// names are the settings' own controls (PreferencesControls): a path typed is the path of the
// settings at once, as the settings file's reader and writer see it. The other fields are texts of
// the form, kept in the settings by Apply (or, for the upper age range and the number of leading
// causes, when the field is left), as each tab says. Every change sets the changed flag of the
// controls; showing the form sets the loaded flag.
//
// Apply:
//   1. by the open tab: the widths tab puts its grids into the widths, the decimals tab into the
//      decimal places, the standard life table's tab its choice and grid into the tables; each then
//      writes the settings file;
//   2. the sample percent is taken, and the recordsets are set to DatADW, DatCSM and IntPopSnglYr;
//   3. with the working, statistical output and temporary paths filled, the settings file is
//      written; with a database named, it is the database of the settings (DBFullPath);
//   4. the frame's Timer1 is armed, so that the loading chain runs again;
//   5. the method's tab keeps the life table's method and its values, the names' tab the names of
//      tables in foreign files, each writing the file once more; the chart export's tab keeps its
//      charts' sheets (they are held in memory only).

#include "foundation/settings.h"
#include "platform/grid_model.h"
#include "shell/preferences_chart_export.h"
#include "shell/preferences_checks.h"
#include "shell/preferences_grids.h"
#include "shell/preferences_life_table.h"

#include <QHash>
#include <QString>
#include <array>

namespace vesk {

enum class PreferencesPage {
    FileLocations,
    ColumnWidths,
    DecimalPlaces,
    LifeTables,
    TableNames,
    Misc,
    GraphExport
};
enum class LifeTablesPage { StandardTable, Method };
enum class EventSound { Success, Busy, Failure };

class PreferencesSession {
public:
    // Form_Load: every field, grid and choice from the settings; the nine charts of the export,
    // their level named `levelLabel` when a study is loaded. The sounds that are empty take their
    // defaults, in the settings as on the form.
    void load(const QString& levelLabel = QString());
    bool isLoaded() const { return loaded_; }

    // The text of a field, by the control's name ("txtwklocation", "Txtradix1", "txtShtName"...).
    QString field(const QString& name) const;
    // A field typed. Returns false for a name the form does not have.
    bool setField(const QString& name, const QString& text);
    // A field left: its check, with its message. False when the field did not pass.
    bool leaveField(const QString& name);
    // The names of the fields the form has.
    static QStringList fieldNames();

    PreferencesPage page = PreferencesPage::FileLocations;         // the open tab of SSTab1
    LifeTablesPage lifeTablesPage = LifeTablesPage::StandardTable; // the open tab of SSTab2

    // The widths and decimals, and the sample. showSample puts the sample for a row of a width
    // (widths true) or decimal grid; samplePixels are then its column widths.
    MenuGrids& widthGrids() { return widths_; }
    MenuGrids& decimalGrids() { return decimals_; }
    GridModel& sample() { return sample_; }
    void showSample(bool widths, int tab, int row);
    std::array<int, 3> samplePixels() const { return samplePixels_; }

    // The standard life table's tab.
    LifeTableTab& lifeTable() { return lifeTable_; }
    void chooseLifeTable(int type);
    Cell GetUsrLifeTable() const;

    // The method's tab: the method chosen (0 Newell, 1 Keyfitz, 2 Reed-Merrell, 3 Greville); the
    // Greville option fills in its constant when the field is empty. UpDown1 steps the constant.
    qint16 method() const { return method_; }
    void chooseMethod(qint16 method);
    void stepGreville(int steps);

    // The chart export's tab.
    QStringList exportCharts() const { return exportCharts_; }
    int exportChart() const { return chartExport_.chart(); }
    void chooseExportChart(int chart);

    // The sounds: the path of each, and a wave file chosen for one (kept and played).
    QString soundPath(EventSound sound) const;
    void chooseSound(EventSound sound, const QString& path);

    // A control changed (a grid edited, an option chosen): the changed flag.
    void markChanged();

    // OK and Apply.
    void Apply();
    // Close (Cancel). On Hide the form is to hide, and what was not applied is dropped; on
    // EndProgram the frame has been asked to end the program.
    CloseOutcome Close();

private:
    bool applyOpenTab();
    void applyAfterTimer();
    void loadTexts();
    void storeMethodValues();
    void keepExportFields();

    bool loaded_ = false;
    QString levelLabel_;
    QHash<QString, QString> texts_;
    MenuGrids widths_, decimals_;
    GridModel sample_;
    std::array<int, 3> samplePixels_{};
    LifeTableTab lifeTable_;
    qint16 method_ = 0;
    ChartExportTab chartExport_;
    QStringList exportCharts_;
};

} // namespace vesk
