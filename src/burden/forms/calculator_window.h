#pragma once
// What the two calculator windows share: the parameter grid, the head of user, cause and decimals,
// the File and Help menus with print, save and help, and the way their buttons, titles and data
// grids are made.

#include "burden/calculator.h"
#include "burden/calculator_output.h"

#include <QMainWindow>
#include <functional>

class QAction;
class QComboBox;
class QFormLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace vesk {

class CalculatorWindow : public QMainWindow {
public:
    DapGridModel& dapModel() { return dap_; }

    // Applies the chosen decimals to the data grids.
    virtual void SetOutputData() = 0;
    // The sheet that print and save send out.
    virtual CalculatorSheet sheet() const = 0;
    // File > Print, File > Save and Help, and their handlers.
    QAction* mnu_File_Print = nullptr;
    QAction* mnu_File_Save = nullptr;
    QAction* mnu_Help = nullptr;
    void mnu_File_Print_Click();
    void mnu_File_Save_Click();
    void mnu_Help_Click();

    QTableView* flexBuiltInDAP = nullptr;
    // The head, made by addDapAndHead().
    QLineEdit* txtUserIden = nullptr;
    QComboBox* cbCOBLst = nullptr;
    QComboBox* ID_DecPlcs = nullptr;
    QPushButton* ID_BUILD = nullptr;
    QPushButton* cmdClose = nullptr; // made by buttonRow()

protected:
    // `dalyRowTexts` as DapGridModel takes it; `helpText` is the text Help shows.
    CalculatorWindow(bool dalyRowTexts, const char* helpText, QWidget* parent);

    // The parameter grid and, right of it, the head, added to `row`; the head is returned so that
    // a window can add rows of its own.
    QFormLayout* addDapAndHead(QHBoxLayout* row, QWidget* parent);
    // A push button of that caption and object name whose click calls `onClick`.
    QPushButton* makeButton(const char* caption, const QString& name, QWidget* parent,
                            std::function<void()> onClick);
    // A row of buttons: `left`, a gap, then `right` and cmdClose, which closes the window.
    QHBoxLayout* buttonRow(const QList<QPushButton*>& left, const QList<QPushButton*>& right,
                           QWidget* parent);
    // The bold title over a data grid.
    static QLabel* makeTitle(const QString& name, QWidget* parent);
    // A data grid over `model`, taking digits, "." and "W".
    static QTableView* makeDataGrid(const QString& name, CalcDataModel* model, QWidget* parent);

    DapGridModel dap_;

private:
    const char* helpText_;
};

} // namespace vesk
