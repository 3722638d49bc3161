#pragma once
// defpopunits, "Define Population Units": the three levels of the current study's population tree
// on the tabs of SSBPU (the level-2 aggregate, the level-1 aggregates, the basic units) and the map
// of units to level-1 aggregates, each level named by the generic term of the study's scheme.
// The work is done by PopulationUnits (study/population_units.h); the form reads its widgets.

#include "platform/grid_model.h"
#include "platform/cell_array.h"
#include "study/population_units.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace vesk {

class FlexGridView;

class defpopunits : public QWidget {
    Q_OBJECT
public:
    // The form on the current study; nullptr, after a message, when no study is open.
    static defpopunits* open(QWidget* parent = nullptr);
    defpopunits(std::shared_ptr<DbConnection> db, QString study, QWidget* parent = nullptr);

    // The grid's body, from below its fixed row, as a (rows, columns) array of texts.
    static CellArray WriteToArraybpu(const GridModel& grid);
    // The reverse: the array into the grid's body, under the grid's own headings.
    static void WriteOnBPUGrid(const CellArray& values, GridModel& grid);

    const QList<MapPair>& mapPairs() const { return map_; }

private:
    struct Level {
        QRadioButton* fresh = nullptr;
        QRadioButton* pick = nullptr;
        QComboBox* studies = nullptr;
    };
    QWidget* buildPAG2Tab();
    QWidget* buildLevelTab(PopLevel level, GridModel* model, FlexGridView** view, const QString& name);
    QWidget* buildMapTab();
    QWidget* levelHeader(PopLevel level, QWidget* tab);
    void applyTerms();
    void loadStudy();
    QStringList headers(PopLevel level) const;
    void setRows(PopLevel level, const QList<UnitRow>& rows);
    QList<UnitRow> rowsOf(PopLevel level) const;
    void pickClicked(PopLevel level);
    void freshClicked(PopLevel level);
    void sourceChosen(PopLevel level);
    void refreshLists();
    void showMap();
    void cmdSet_Click();
    void cmdApply_Click();
    void deleteBPURow();
    void deletePAG1Row();
    void deleteMapRows();

    std::shared_ptr<DbConnection> db_;
    QString study_;
    PopulationUnits units_;
    LevelTerms terms_;
    QList<MapPair> map_;
    bool loading_ = false;

    QTabWidget* SSBPU = nullptr;
    Level levels_[3];
    QLabel* headings_[3] = {};
    QLineEdit* txtPAG2Id = nullptr;
    QLineEdit* txtPAG2Name = nullptr;
    GridModel* bpuGrid_ = nullptr;
    GridModel* pag1Grid_ = nullptr;
    GridModel* mapGrid_ = nullptr;
    FlexGridView* MSFGBPU = nullptr;
    FlexGridView* MSFLPAG1 = nullptr;
    FlexGridView* MapGrid = nullptr;
    QListWidget* lstbpu = nullptr;
    QListWidget* List1 = nullptr;
    QPushButton* cmdSet = nullptr;
    QPushButton* cmdApply = nullptr;
    QPushButton* cmdClose = nullptr;
};

} // namespace vesk
