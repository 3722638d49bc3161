#include "burden/forms/calculators_open.h"

#include "burden/forms/frm_daly_cal.h"
#include "burden/forms/frm_yll_cal.h"
#include "platform/forms/window_placement.h"

#include <QPointer>

namespace vesk {

namespace {

frmYLLCal* openTask(CalculatorTask task, QWidget* parent) {
    static QPointer<frmYLLCal> open[3];
    return openSingle(open[static_cast<int>(task)], parent, [task] { return new frmYLLCal(task); });
}

} // namespace

frmYLLCal* openYllCalculator(QWidget* parent) {
    return openTask(CalculatorTask::Yll, parent);
}

frmYLLCal* openIyldCalculator(QWidget* parent) {
    return openTask(CalculatorTask::Iyld, parent);
}

frmYLLCal* openPyldCalculator(QWidget* parent) {
    return openTask(CalculatorTask::Pyld, parent);
}

frmDALYCal* openDalyCalculator(QWidget* parent) {
    static QPointer<frmDALYCal> open;
    return openSingle(open, parent, [] { return new frmDALYCal(); });
}

} // namespace vesk
