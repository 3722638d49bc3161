#pragma once
// frmPopDthAS, the population or deaths of any age intervals (Reports -> Population by age and sex,
// Deaths by age and sex), and frmShowRsltpopdth, which shows the sums unit by unit. The intervals are
// typed into msflgAGM (BAI, EAI; "w" an open end) or filled from the grid's pop-up (mnu_5, mnu_7,
// mnu_5Yr); an option of sex checks them and opens the result. The sums are the core's
// (demography/pop_death_views.h), over the computation's single-year population or deaths.

#include "demography/pop_death_views.h"
#include "platform/grid_model.h"

#include <QWidget>

class QAction;
class QLabel;
class QMenu;
class QPushButton;
class QRadioButton;

namespace vesk {

class FlexGridView;

class frmShowRsltpopdth : public QWidget {
public:
    frmShowRsltpopdth(std::vector<UnitTable> tables, const QString& caption, QWidget* parent = nullptr);

    QLabel* lblUnit = nullptr;
    FlexGridView* msflgAsgPopDth = nullptr;
    QPushButton *cmdFirst = nullptr, *cmdPrev = nullptr, *cmdNext = nullptr, *cmdLast = nullptr, *cmdSavAs = nullptr,
                *CmdPrint = nullptr, *cmdclose = nullptr;

    void showUnit(int unit);
    int unit() const { return unit_; }
    const GridModel& grid() const { return grid_; }

private:
    std::vector<UnitTable> tables_;
    GridModel grid_;
    int unit_ = 0;
};

class frmPopDthAS : public QWidget {
public:
    enum Mode { Population = 1, Deaths = 2 };
    // The window over `array4D` (ArrPop4D or ArrDth4D) and the study's units; nullptr after "NO BPU values
    // are exist for the current study" when the study has none.
    static frmPopDthAS* open(Mode mode, const Cell& array4D, const Cell& units, QWidget* parent = nullptr);
    frmPopDthAS(Mode mode, const Cell& array4D, const Cell& units, QWidget* parent = nullptr);

    FlexGridView* msflgAGM = nullptr;
    QMenu* mnu_ASG = nullptr;
    QAction *mnu_5 = nullptr, *mnu_7 = nullptr, *mnu_5Yr = nullptr;
    QRadioButton *OptMale = nullptr, *OptFemale = nullptr, *OptPersons = nullptr, *OptMaleFemale = nullptr,
                 *OptAll = nullptr;

    GridModel& grid() { return grid_; }
    void fillLadder(const std::vector<AgeInterval>& rows);
    // The intervals checked and summed for the sex code; the result window, or nullptr after a message.
    frmShowRsltpopdth* showFor(const QString& sex);

private:
    std::vector<AgeInterval> intervals() const;

    Mode mode_;
    Cell array_, units_;
    GridModel grid_;
};

} // namespace vesk
