#pragma once
// frmnew, the chart window of Results -> Graphs: the charts of Gph.stp drawn one at a time over the
// data of the five families (results/chart_data.h), with First, Previous, Next and Last ("Begin Of
// Charts", "End Of Charts" past the ends), the data grid shown or hidden, Copy, Print (PDF where no
// printer is attached), Save (an SVG in the working folder named by the chart's title), Save As (BMP,
// SVG, JPG or PNG) and Properties (frmChgPrpty). "3D Bar" charts are drawn as 3D bars where an OpenGL
// context can be made, and as 2D bars otherwise.

#include "platform/grid_model.h"
#include "results/chart_data.h"
#include "results/chart_look.h"
#include "results/graph_props.h"

#include <QWidget>

class Q3DBars;
class QChart;
class QChartView;
class QLabel;
class QPushButton;

namespace vesk {

class FlexGridView;

class frmnew : public QWidget {
public:
    // Reads Gph.stp and the data of the level (pag: PAG1, otherwise BPU), and opens the window; nullptr
    // after the message when either cannot be had.
    static frmnew* procReadGph(bool pag, QWidget* parent);
    frmnew(GraphProps props, ChartData data, QWidget* parent = nullptr);

    QChartView* MSChart1 = nullptr;
    QWidget* MSChart3D = nullptr; // the 3D bars' container, when a 3D chart is on view
    Q3DBars* bars3D = nullptr;    // its bars
    FlexGridView* FlxGrdGph = nullptr;
    QLabel* lblDap = nullptr;
    QPushButton *tbFirst = nullptr, *tbPrev = nullptr, *tbNext = nullptr, *tbLast = nullptr;
    QPushButton *cmdShowData = nullptr, *cmdCopy = nullptr, *cmdPrint = nullptr, *cmdSave = nullptr,
                *cmdSaveAs = nullptr, *cmdProperties = nullptr, *cmdClose = nullptr;

    int current() const { return index_; }
    const ChartLook& look() const { return look_; }
    const GraphProps& props() const { return props_; }
    const GridModel& dataGrid() const { return grid_; }
    // Whether the chart on view is drawn in 3D (false for a 2D chart, or a 3D one drawn flat).
    bool drawn3D() const { return drawn3D_; }

    void procPaintChart(int index);
    void moveFirst();
    void moveNext();
    void movePrevious();
    void moveLast();
    void toggleData();
    void copyChart();
    void printChart();
    void saveChart();
    void saveChartAs();
    void properties();
    // The chart on view as a picture.
    QImage chartImage();
    // Whether 3D bars can be drawn here (an OpenGL context can be made).
    static bool openGlAvailable();

private:
    void draw2D(const ChartTable& table);
    void draw3D(const ChartTable& table);
    void fillGrid(const ChartTable& table);
    bool writeChart(const QString& path);

    GraphProps props_;
    ChartData data_;
    ChartLook look_;
    GridModel grid_;
    int index_ = 0;
    bool drawn3D_ = false;
};

} // namespace vesk
