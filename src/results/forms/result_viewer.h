#pragma once
// The viewers of the Results menu over results/result_tables.h: frmDetails (summaries of PAG1 and
// PAG2), frmDetailsForBpu (summaries of BPUs) and Frm6DResults (detail tables by age, sex and cause).
// One window shape serves the three; each keeps its own object names and captions. The window holds a
// ResultSource and asks the core for the table of the unit, year and set on view at each move; the grid
// shows it with the heads in row 0. Save As writes the table's values (not the screen's text) in any of
// the five kinds; Print sends the grid (to PDF where no printer is attached) and says "Printed
// Succesfully".

#include "platform/grid_model.h"
#include "results/result_tables.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vesk {

class FlexGridView;

class ResultViewer : public QWidget {
public:
    // The viewer of `entry` over the program's computation and study; nullptr after the entry's message
    // when its arrays are not there.
    static ResultViewer* open(const ResultEntry& entry, QWidget* parent);
    ResultViewer(ResultSource source, QWidget* parent = nullptr);

    QComboBox* cmbDap = nullptr;
    QComboBox* cmbYear = nullptr;
    QComboBox* Combo1 = nullptr; // the unit on view
    QLineEdit* nBox = nullptr;   // txtnldCausDts / txtnldCausDtsBpu: N of an N-leading entry
    QLabel* lblUnit = nullptr;
    FlexGridView* grid = nullptr; // MSFlexGrid1 / msflgADW
    QPushButton *cmdTop = nullptr, *cmdPrev = nullptr, *cmdNxt = nullptr, *cmdlast = nullptr;
    QPushButton *cmdShow = nullptr, *cmdSavAs = nullptr, *CmdPrint = nullptr, *cmdClose = nullptr;
    QPushButton* cmdCauses = nullptr; // detail tables: the cause grid with sequelae (frmShowRslt)

    // The unit on view (the page index).
    int page() const { return page_; }
    void showPage(int page);
    void ShowReport();
    const GridModel& gridModel() const { return grid_; }
    const std::optional<ResultTable>& table() const { return table_; }
    void save();
    void print();
    // The cause grid with sequelae of the unit, year and set on view.
    QWidget* openCauseGrid();

private:
    void buildControls();
    void layOut();
    void updateMoves();

    ResultSource source_;
    GridModel grid_;
    std::optional<ResultTable> table_;
    int page_ = 0;
};

} // namespace vesk
