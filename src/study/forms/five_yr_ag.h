#pragma once
// FiveYrAg, "Define Age Interval": fills an age grid's column with a ladder of five-year lower ages.
// The field "Upper/Last Age Group" offers 45, 50, ... 85 (85 preset); whatever is typed is tested at
// once against IMINMAXAGE and IMAXMAXAGE (both limits included) and for a multiple of 5, and cleared
// when it fails. The first years ("0 , 1 -4 ", "0 , 1 , 2-4 ", "0 - 4") and the choice "Open" or
// "Close" under "Upper Age Interval" are remembered in the settings; the choice changes no list.

#include "study/age_quick_fill.h"

#include <QDialog>
#include <QList>
#include <optional>

class QComboBox;
class QRadioButton;
class QPushButton;

namespace vesk {

class FiveYrAg : public QDialog {
    Q_OBJECT
public:
    explicit FiveYrAg(QWidget* parent = nullptr);

    // Runs the dialog; the ages chosen, or std::nullopt when the user cancels.
    static std::optional<QList<int>> chooseAges(QWidget* parent);

    // The ages of the last accepted apply.
    const QList<int>& ages() const { return ages_; }
    // The test of the typed upper age; false (the field cleared, the message shown) when it fails.
    bool checkTypedUpperAge();
    // OK: the apply checks, the choices stored in the settings, the list built and the dialog closed.
    bool apply();

    QComboBox* cmbUpperAge = nullptr;
    QRadioButton* OptFirstYears[3] = {nullptr, nullptr, nullptr};
    QRadioButton* OptOpen = nullptr;
    QRadioButton* OptClose = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    FirstYears choice() const;
    QList<int> ages_;
    bool checking_ = false;
};

} // namespace vesk
