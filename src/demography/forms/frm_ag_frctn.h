#pragma once
// FrmAGFrctn, "Fraction Of AgeInterval.": a fraction typed beside each age-sex group label gives the
// exact age at which a death of that group is taken to occur (demography/age_fraction.h); OK hands
// each one to the grid that opened the form, for its exact-age field.

#include "platform/grid_model.h"

#include <QStringList>
#include <QWidget>
#include <functional>

class QPushButton;

namespace vesk {

class FlexGridView;

class FrmAGFrctn : public QWidget {
public:
    // `write(row, exactAge)` for each label's row with a fraction, on OK.
    using Writer = std::function<void(int row, double exactAge)>;
    FrmAGFrctn(const QStringList& labels, Writer write, QWidget* parent = nullptr);

    FlexGridView* grdFrction = nullptr;
    QPushButton *cmdOK = nullptr, *cmdCancel = nullptr;
    GridModel& grid() { return grid_; }
    void cmdOK_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    GridModel grid_;
    Writer write_;
};

} // namespace vesk
