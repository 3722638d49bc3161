#pragma once
// How the main menu opens the calculators (Tools -> YLL, IYLD, PYLD, DALY Calculator). Each window is
// a single instance: a second call brings the open one forward. With a QMdiArea as parent the window
// becomes one of its sub-windows; with any other parent (or none) it is a window of its own.

class QWidget;

namespace vesk {

class frmDALYCal;
class frmYLLCal;

frmYLLCal* openYllCalculator(QWidget* parent);   // mnu_yllcal
frmYLLCal* openIyldCalculator(QWidget* parent);  // mnu_yldcal
frmYLLCal* openPyldCalculator(QWidget* parent);  // mnu_pyldcal
frmDALYCal* openDalyCalculator(QWidget* parent); // mnu_dcal

} // namespace vesk
