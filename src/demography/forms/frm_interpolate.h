#pragma once
// frmInterpolate, "Interpolation": population or deaths (or both) in five-year groups to single years
// by Sprague's multipliers, then summed again into the output age groups the user types. The work is
// the core's (demography/interpolator.h); the window reads its grids and shows what comes back.

#include "platform/cell_array.h"
#include "platform/grid_model.h"

#include <QList>
#include <QPointer>
#include <QWidget>
#include <optional>

class QLabel;
class QPushButton;
class QRadioButton;

namespace vesk {

class FlexGridView;

class frmInterpolate : public QWidget {
public:
    // The one tool, made or brought forward; `parent` the frame's area.
    static frmInterpolate* open(QWidget* parent = nullptr);
    explicit frmInterpolate(QWidget* area = nullptr);

    QRadioButton *Option1 = nullptr, *Option2 = nullptr, *Optboth = nullptr;
    QRadioButton *Optfvnaggrp = nullptr, *OptTnaggrp = nullptr;
    QRadioButton *optAgeInt = nullptr, *optExactAge = nullptr;
    QLabel* lblOutput = nullptr;
    FlexGridView *flexSource = nullptr, *FlexOPAgGrps = nullptr, *FlexDest = nullptr;
    QPushButton *Cmdupplmt = nullptr, *Command2 = nullptr, *CmdBuiltSngyr = nullptr, *CmdSv = nullptr;
    QPushButton *CmdClr = nullptr, *Cmdclose = nullptr;

    GridModel& source() { return source_; }
    GridModel& output() { return output_; }
    GridModel& dest() { return dest_; }
    // The chart window drawn on a sudden change, when the user asked for it.
    QWidget* lastChart() const { return chart_; }

    void Cmdupplmt_Click();
    void Command2_Click();
    void CmdBuiltSngyr_Click();
    void CmdSv_Click();
    void CmdClr_Click();

private:
    QWidget* buildOptions();
    QWidget* buildButtons();
    void dataChosen();
    void outputModeChosen();
    QStringList dataHeads() const;
    void setSourceAges(const QStringList& ages);
    void sourceEdited(int row, int col);
    void outputEdited(int row, int col);
    QStringList column(const GridModel& g, int col) const;
    void showChart(const QStringList& ages, const QList<QStringList>& columns);

    GridModel source_, output_, dest_;
    QWidget* area_ = nullptr;
    std::optional<double> upperLimit_;
    CellArray collapsed_;
    QPointer<QWidget> chart_;
};

} // namespace vesk
