// What the life table tool's buttons and options do; the window's construction is in
// frm_life_table_entry.cpp.

#include "demography/forms/frm_life_table_entry.h"

#include "demography/forms/frm_life_table.h"
#include "demography/life_table.h"
#include "demography/life_table_texts.h"
#include "demography/life_table_tool.h"
#include "foundation/settings.h"
#include "platform/forms/flex_grid_view.h"
#include "platform/forms/window_placement.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

namespace vesk {

namespace lt = life_table_texts;

namespace {

constexpr int kPopulationColumn = 2;

} // namespace

qint16 FrmLifeTableEntry::method() const {
    if (Optkeyfitz->isChecked())
        return kLtKeyfitz;
    if (Optrdmrll->isChecked())
        return kLtReedMerrell;
    if (OptGre->isChecked())
        return kLtGreville;
    return kLtStandard;
}

int FrmLifeTableEntry::decimals() const {
    return std::clamp(int(Val(txtlftdec->text())), 0, 15);
}

void FrmLifeTableEntry::methodChosen(qint16 m) {
    QRadioButton* options[] = {Optnewell, Optkeyfitz, Optrdmrll, OptGre};
    options[m]->setChecked(true);
    settings().LTMethod = m;
    const bool greville = m == kLtGreville, keyfitz = m == kLtKeyfitz;
    Rngval->setEnabled(greville);
    if (greville && Rngval->text().trimmed().isEmpty())
        Rngval->setText(settings().LTGreval.trimmed().isEmpty() ? QString::number(kDefaultGreval, 'g', 10)
                                                                : settings().LTGreval.trimmed());
    txtKFlwrlmt->setEnabled(keyfitz);
    txtKFupprlmt->setEnabled(keyfitz);
    showPopulation(keyfitz);
}

// The population column is there only under Keyfitz; what was typed in it is kept for a return.
void FrmLifeTableEntry::showPopulation(bool on) {
    const bool shown = grid_.cols() > kPopulationColumn;
    if (on == shown)
        return;
    if (!on) {
        keptPopulation_.clear();
        for (int r = 1; r < grid_.rows(); ++r)
            keptPopulation_ << grid_.textMatrix(r, kPopulationColumn);
        grid_.setCols(kPopulationColumn);
    } else {
        grid_.setCols(kPopulationColumn + 1);
        grid_.setTextMatrix(0, kPopulationColumn, text(lt::kHeadPopulation));
        for (int r = 1; r < grid_.rows() && r - 1 < keptPopulation_.size(); ++r)
            grid_.setTextMatrix(r, kPopulationColumn, keptPopulation_[r - 1]);
    }
    datas->syncFromGrid();
}

void FrmLifeTableEntry::cmdGenAgeGrps_Click() {
    const InitialAgeGroups first = optAge2->isChecked()   ? InitialAgeGroups::ZeroOneTwoFour
                                   : optAge3->isChecked() ? InitialAgeGroups::ZeroFive
                                   : optAge4->isChecked() ? InitialAgeGroups::ZeroTen
                                                          : InitialAgeGroups::ZeroOneFour;
    const auto ages = lifeTableAgeLadder(txtLage->text(), first, OptMAge10->isChecked() ? 10 : 5);
    if (!ages)
        return;
    // Column 0 takes the ladder; rates and populations typed stay in their rows.
    grid_.setRows(int(ages->size()) + 1);
    for (size_t i = 0; i < ages->size(); ++i)
        grid_.setTextMatrix(int(i) + 1, 0, QString::number((*ages)[i]));
    datas->syncFromGrid();
}

void FrmLifeTableEntry::cmdLTGen_Click() {
    LifeTableToolInput in;
    in.method = method();
    const int cols = in.method == kLtKeyfitz ? 3 : 2;
    in.grid = CellArray({grid_.rows() - 1, cols});
    for (int r = 1; r < grid_.rows(); ++r)
        for (int c = 0; c < cols; ++c)
            in.grid(r - 1, c) = Cell(grid_.textMatrix(r, c));
    in.imr = txtIMR->text();
    in.imrDenominator = txtImrDnmtr->text();
    in.pgr = txtPGR->text();
    in.asdrDenominator = TxtAsdrDnmtr->text();
    in.greville = Rngval->text();
    in.kfLower = txtKFlwrlmt->text();
    in.kfUpper = txtKFupprlmt->text();
    auto result = generateLifeTable(in, settings());
    if (!result)
        return;
    showResult(new frmLifeTable(std::move(*result), decimals(), text(lt::kResultCaption)));
}

void FrmLifeTableEntry::showResult(QWidget* result) {
    lastResult_ = static_cast<frmLifeTable*>(result);
    placeWindow(result, area_);
}

std::optional<CdLifeTable> FrmLifeTableEntry::chosenModel() {
    if (!model_) {
        QString error;
        model_ = loadCoaleDemenyData(referenceDataFolder(), &error);
        if (!model_) {
            prompts().ask(text(lt::kModelDataMissing) + error, Buttons::Ok, Icon::Critical, text(lt::kGridTitle));
            return std::nullopt;
        }
    }
    return coaleDemenyTable(*model_, CdFamily(cmbCdFamily->currentData().toInt()),
                            CdSex(cmbCdSex->currentData().toInt()), spnCdLevel->value());
}

void FrmLifeTableEntry::cmdCdTable_Click() {
    const auto t = chosenModel();
    if (!t)
        return;
    const QString caption = text(lt::kModelCaption) + cmbCdFamily->currentText() + u' ' + cmbCdSex->currentText() +
                            u' ' + QString::number(spnCdLevel->value());
    showResult(new frmLifeTable(modelLifeTableView(*t), decimals(), caption));
}

void FrmLifeTableEntry::cmdCdRates_Click() {
    const auto t = chosenModel();
    if (!t)
        return;
    const CellArray rates = modelRatesGrid(*t);
    grid_.setRows(rates.size(0) + 1);
    for (int i = 0; i < rates.size(0); ++i) {
        grid_.setTextMatrix(i + 1, 0, rates(i, 0).toString());
        grid_.setTextMatrix(i + 1, 1, rates(i, 1).toString());
    }
    // The model's rates are per person-year: no denominator, and its q0 per 1000 as the IMR.
    TxtAsdrDnmtr->clear();
    txtIMR->setText(QString::number(std::lround(1000 * t->nqx[0])));
    txtImrDnmtr->setText(text(lt::kDefaultImrDenominator));
    datas->syncFromGrid();
}

void FrmLifeTableEntry::cmdHelp_Click() {
    prompts().ask(text(lt::kHelpText), Buttons::Ok, Icon::Information, text(lt::kHelpTitle));
}

} // namespace vesk
