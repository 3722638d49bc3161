#pragma once
// frmCompDALY, "DALY Computation ": the one place where a whole computation starts. The user chooses
// parameter sets in flexBuiltInDAP (one in Quick mode, any number in Sensitivity mode) and presses
// ID_COMPUTE; the run (burden/compute_run.h) loads the inputs, computes, stores and writes Time.stp,
// showing each step in the frame "Progress Status". The window then closes, offers the errors the
// run stored, and says how the run ended.

#include "burden/calculator_models.h"

#include <QWidget>
#include <functional>

class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace vesk {

class frmCompDALY : public QWidget {
public:
    // The window for CompMode `compMode` (kCompModeQuick by mnu_Daly, kCompModeSensitivity by
    // mnu_sens), made or brought forward; nullptr after "No population units to compute DALYs..."
    // when the study has no units. `showErrors` opens the error viewer when the user asks for it.
    static frmCompDALY* open(QWidget* parent, int compMode, std::function<void()> showErrors = {});
    frmCompDALY(int compMode, std::function<void()> showErrors, QWidget* parent = nullptr);

    QLabel* Label1 = nullptr;
    QTableView* flexBuiltInDAP = nullptr;
    QPushButton *ID_COMPUTE = nullptr, *cmdClose = nullptr;
    QGroupBox* fmecompdaly = nullptr;
    QProgressBar* PbrCmpDly = nullptr;
    QLabel* lblInformation = nullptr;

    DapGridModel& dapModel() { return dap_; }
    int compMode() const { return compMode_; }
    void ID_COMPUTE_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void finish(bool daly, const QString& message);

    int compMode_;
    std::function<void()> showErrors_;
    DapGridModel dap_{DapRowTexts::Computation};
    bool running_ = false;
};

} // namespace vesk
