#pragma once
// frmToolsPP, Tools -> Population Pyramid: a population typed into flexSource (BAI, Males, Females),
// its ages filled from an upper age limit or the whole table imported from a foreign file (the table
// "POP"), checked row by row and drawn in frmPopPrymd.

#include "demography/pyramid.h"
#include "platform/grid_model.h"

#include <QWidget>

class QPushButton;

namespace vesk {

class FlexGridView;
class frmPopPrymd;

class frmToolsPP : public QWidget {
public:
    explicit frmToolsPP(QWidget* parent = nullptr);

    FlexGridView* flexSource = nullptr;
    QPushButton *Cmdupplmt = nullptr, *cmdImport = nullptr, *cmdClearAll = nullptr, *cmdShowChart = nullptr,
                *cmdClose = nullptr;

    GridModel& grid() { return grid_; }
    void upperLimit();
    void importData();
    void clearAll();
    // The checked table drawn in a new frmPopPrymd (returned; nullptr after the message of a bad row).
    frmPopPrymd* showChart();

private:
    void setRows(int rows);
    GridModel grid_;
};

} // namespace vesk
