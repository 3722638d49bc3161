#pragma once
// frmoiagd, "Calculator for the Open Age Intervals (OIAGD)": the mean age at death in open last
// age intervals (FnOIAGD, demography/open_interval.h) for the starts typed in its grid, from a
// family of model life tables, a growth rate and, where given, the deaths above 45 and above 10.

#include "platform/grid_model.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vesk {

class FlexGridView;

class frmoiagd : public QWidget {
public:
    // The one calculator, made or brought forward; `parent` the frame's area.
    static frmoiagd* open(QWidget* parent = nullptr);
    explicit frmoiagd(QWidget* parent = nullptr);

    FlexGridView* MsGrdOiagd = nullptr;
    QComboBox* cb_cdml = nullptr;
    QLineEdit *tb_pgr = nullptr, *tbsum45 = nullptr, *tbsum10 = nullptr;
    QPushButton *cmd_calculate = nullptr, *cmd_Close = nullptr;

    GridModel& grid() { return grid_; }
    void cmd_calculate_Click();

private:
    void boaiTyped(int row, int col);
    bool deathsTyped(QLineEdit* box);

    GridModel grid_;
};

} // namespace vesk
