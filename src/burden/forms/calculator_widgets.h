#pragma once
// The pieces both calculator windows are made of: grid views with their key rules, the parameter
// grid, the age grid's pop-up of quick-fill lists, the decimals box, and print and save.

#include "burden/calculator_models.h"
#include "burden/calculator_output.h"

#include <QAction>
#include <QString>
#include <QStyledItemDelegate>
#include <functional>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QPrinter;
class QTableView;
class QWidget;

class QAction;
class QMainWindow;

namespace vesk {

class AgeDefModel;
class DapGridModel;

// The editor of a grid cell takes only digits and "." (and "W"/"w" when allowed). Any other key
// shows `refusal` (when not empty) and is not taken. Cells that cannot be edited are shaded.
class CalcCellDelegate : public QStyledItemDelegate {
public:
    CalcCellDelegate(bool allowW, QString refusal, QObject* parent);
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    bool allowW_;
    QString refusal_;
};

// A grid view as the calculators show them: compact rows, edit on a key or a double click.
QTableView* makeCalcGrid(const QString& objectName, QWidget* parent);
// flexBuiltInDAP over its model: a click in "Select" chooses the row as `compMode` says (the
// calculators and Sensitivity toggle it, Quick makes it the one chosen).
QTableView* makeDapGrid(DapGridModel* model, QWidget* parent, int compMode = kCompModeSensitivity);

// The File (Print, Save, Close) and Help menus the calculator windows share.
struct CalculatorMenuActions {
    QAction* print = nullptr;
    QAction* save = nullptr;
    QAction* help = nullptr;
};
CalculatorMenuActions addCalculatorMenus(QMainWindow* window);
// The same menus on a calculator window, each item kept in the window's mnu_File_Print,
// mnu_File_Save or mnu_Help and wired to its handler of the same name.
template <typename Window> void wireCalculatorMenus(Window* window) {
    const CalculatorMenuActions menus = addCalculatorMenus(window);
    window->mnu_File_Print = menus.print;
    window->mnu_File_Save = menus.save;
    window->mnu_Help = menus.help;
    QObject::connect(menus.print, &QAction::triggered, window, &Window::mnu_File_Print_Click);
    QObject::connect(menus.save, &QAction::triggered, window, &Window::mnu_File_Save_Click);
    QObject::connect(menus.help, &QAction::triggered, window, &Window::mnu_Help_Click);
}
// AgeDef over its model, with the pop-up "Five Age Group", "Seven Age Group", "Five Year Age Group".
QTableView* makeAgeDefGrid(const QString& objectName, AgeDefModel* model, QWidget* parent);
// ID_DecPlcs: 0 to 10, starting at the tools' decimal places of the settings.
QComboBox* makeDecimalsBox(QWidget* parent);
// The rows of a calculator's head, in `parent`: txtUserIden, cbCOBLst (editable) and ID_DecPlcs,
// whose change calls `onDecimals` while `receiver` lives.
QFormLayout* makeCalculatorHead(QWidget* parent, QObject* receiver, std::function<void()> onDecimals,
                                QLineEdit*& user, QComboBox*& cause, QComboBox*& decimals);

// mnu_File_Print: to the printer the user chooses, or, where no printer is attached, to a PDF file.
void printCalculatorSheet(QWidget* parent, const CalculatorSheet& sheet);
// Lays the sheet out on a printer (or a PDF printer).
void printSheetTo(QPrinter& printer, const CalculatorSheet& sheet);
// mnu_File_Save: a text file with ";" between fields, at the name the user gives.
void saveCalculatorSheet(const CalculatorSheet& sheet);

} // namespace vesk
