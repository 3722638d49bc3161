#include "shell/preferences_session.h"

#include "database/db_paths.h"
#include "demography/life_table.h"
#include "foundation/runtime_error.h"
#include "foundation/settings_file.h"
#include "platform/program_end.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/sound.h"
#include "platform/texts.h"
#include "shell/loading_chain.h"
#include "shell/preferences_names.h"
#include "shell/preferences_texts.h"

#include <algorithm>

namespace vesk {

namespace t = preferences_texts;

namespace {

// The fields that are the settings' own controls.
struct ControlField {
    const char* name;
    QString PreferencesControls::*member;
};
const ControlField kControlFields[] = {
    {"txtwklocation", &PreferencesControls::txtwklocation},
    {"txtVESKObj", &PreferencesControls::txtVESKObj},
    {"txtStatOut", &PreferencesControls::txtStatOut},
    {"txtImpLoc", &PreferencesControls::txtImpLoc},
    {"txtTempArea", &PreferencesControls::txtTempArea},
    {"txtSampPct", &PreferencesControls::txtSampPct},
    {"cmbVESKADW", &PreferencesControls::cmbVESKADW},
    {"cmbVESKCSMP", &PreferencesControls::cmbVESKCSMP},
};

// The form's own fields besides the names of tables (preferences_names.h).
const char* const kFormFields[] = {
    "cmbVESKPSYr",  "Txtradix1",  "txtKFlwrlmt1", "txtKFupprlmt1", "rngval1",    "TxtMinMaxage",
    "TxtMaxMaxage", "txtNLdCuss", "txtFlname",    "txtShtName",    "txtstcolno", "txtstrowno",
};

// The folders whose check is the folder's.
const char* const kFolderFields[] = {"txtwklocation", "txtStatOut", "txtImpLoc", "txtTempArea"};

// The step of UpDown1 on Greville's constant, and the decimals the constant is kept to.
constexpr double kGrevilleStep = 0.001;
constexpr int kGrevilleDecimals = 9;

const ControlField* controlField(const QString& name) {
    for (const ControlField& f : kControlFields)
        if (name == QLatin1String(f.name))
            return &f;
    return nullptr;
}

QString grevilleDefault() {
    return QString::number(kDefaultGreval, 'g', 10);
}

QString shownAge(qint16 age, qint16 fallback) {
    return QString::number(age == 0 ? fallback : age);
}

QString& soundOf(EventSound sound, VeskSettings& s) {
    switch (sound) {
    case EventSound::Success:
        return s.sLSuccess;
    case EventSound::Busy:
        return s.sLBussy;
    case EventSound::Failure:
        break;
    }
    return s.sLFailure;
}

// The defaults of the sounds where they are empty.
void defaultSounds(VeskSettings& s) {
    if (s.sLSuccess.isEmpty())
        s.sLSuccess = QString::fromUtf8(settings_defaults::sLSuccess);
    if (s.sLBussy.isEmpty())
        s.sLBussy = QString::fromUtf8(settings_defaults::sLBussy);
    if (s.sLFailure.isEmpty())
        s.sLFailure = QString::fromUtf8(settings_defaults::sLFailure);
}

} // namespace

QStringList PreferencesSession::fieldNames() {
    QStringList names;
    for (const ControlField& f : kControlFields)
        names << QString::fromLatin1(f.name);
    for (const char* name : kFormFields)
        names << QString::fromLatin1(name);
    for (const char* name : kNameControls)
        names << QString::fromLatin1(name);
    return names;
}

void PreferencesSession::load(const QString& levelLabel) {
    VeskSettings& s = settings();
    levelLabel_ = levelLabel;
    defaultSounds(s);
    DoProcess(widths_, s);
    DoProcess1(decimals_, s);
    lifeTable_.load(s, preferences());
    method_ = std::clamp<qint16>(s.LTMethod, 0, 3);
    chartExport_.load();
    exportCharts_ = chartExportTitles(levelLabel);
    loadTexts();
    showSample(true, kViewTab, 1);
    loaded_ = true;
}

void PreferencesSession::loadTexts() {
    const VeskSettings& s = settings();
    texts_.clear();
    texts_[QStringLiteral("cmbVESKPSYr")] = text(t::kPopSnglYrTable);
    texts_[QStringLiteral("Txtradix1")] = numberToText(s.LTRadix);
    texts_[QStringLiteral("txtKFlwrlmt1")] = s.LTKFlwrLmt.trimmed();
    texts_[QStringLiteral("txtKFupprlmt1")] = s.LTKFupprLmt.trimmed();
    texts_[QStringLiteral("rngval1")] = s.LTGreval.trimmed();
    texts_[QStringLiteral("TxtMinMaxage")] = shownAge(s.MinMaxAge, settings_defaults::MinMaxAge);
    texts_[QStringLiteral("TxtMaxMaxage")] = shownAge(s.MaxMaxAge, settings_defaults::MaxMaxAge);
    texts_[QStringLiteral("txtNLdCuss")] = QString::number(s.NLdCauses);
    GetDctTblNm(texts_, s);
    GetUsrLtsTblNm(texts_, s);
    keepExportFields();
}

// The export's fields as the chart chosen shows them.
void PreferencesSession::keepExportFields() {
    const ChartExportFields f = chartExport_.fields();
    texts_[QStringLiteral("txtFlname")] = f.fileName;
    texts_[QStringLiteral("txtShtName")] = f.sheetName;
    texts_[QStringLiteral("txtstcolno")] = f.startCol;
    texts_[QStringLiteral("txtstrowno")] = f.startRow;
}

QString PreferencesSession::field(const QString& name) const {
    if (const ControlField* f = controlField(name))
        return preferences().*f->member;
    return texts_.value(name);
}

bool PreferencesSession::setField(const QString& name, const QString& value) {
    if (const ControlField* f = controlField(name)) {
        preferences().*f->member = value;
    } else if (texts_.contains(name)) {
        texts_[name] = value;
        if (name == QLatin1String("txtFlname") || name == QLatin1String("txtShtName") ||
            name == QLatin1String("txtstcolno") || name == QLatin1String("txtstrowno"))
            chartExport_.setFields({field(QStringLiteral("txtFlname")), field(QStringLiteral("txtShtName")),
                                    field(QStringLiteral("txtstcolno")),
                                    field(QStringLiteral("txtstrowno"))});
    } else {
        return false;
    }
    markChanged();
    return true;
}

bool PreferencesSession::leaveField(const QString& name) {
    VeskSettings& s = settings();
    for (const char* folder : kFolderFields)
        if (name == QLatin1String(folder))
            return checkFolderLeft(field(name));
    if (name == QLatin1String("txtVESKObj"))
        return checkDatabaseLeft(field(QStringLiteral("txtwklocation")), field(name));
    if (name == QLatin1String("TxtMinMaxage"))
        return checkMinMaxAgeLeft(field(name), s);
    if (name == QLatin1String("TxtMaxMaxage"))
        return checkMaxMaxAgeLeft(field(name), s);
    if (name == QLatin1String("txtNLdCuss"))
        nLeadingCausesLeft(field(name), s);
    return true;
}

void PreferencesSession::showSample(bool widths, int tab, int row) {
    const VeskSettings& s = settings();
    // The detail results' widths and decimals stand in where the row gives none.
    std::array<qint32, 3> twips = {s.ColWdth[ColWdthIndex(QStringLiteral("RDC1"))],
                                   s.ColWdth[ColWdthIndex(QStringLiteral("RDC2"))],
                                   s.ColWdth[ColWdthIndex(QStringLiteral("RDC3"))]};
    int decimals = s.RsltDecPlcs;
    tab = std::clamp(tab, 0, kMenuTabCount - 1);
    GridModel& grid = widths ? widths_[tab] : decimals_[tab];
    if (row >= grid.fixedRows() && row < grid.rows()) {
        try {
            if (widths)
                twips = rowWidths(grid, row);
            else
                decimals = rowDecimals(grid, row);
        } catch (const RuntimeError&) {
            // A width beyond 32 bits: the sample stays as it was until the text reads again.
            return;
        }
    }
    fillSample(sample_, std::clamp(decimals, 0, kMaxDecimals));
    samplePixels_ = vesk::samplePixels(twips, samplePercent(preferences().txtSampPct));
}

void PreferencesSession::chooseLifeTable(int type) {
    lifeTable_.choose(type);
    markChanged();
}

Cell PreferencesSession::GetUsrLifeTable() const {
    return lifeTable_.GetUsrLifeTable(preferences());
}

void PreferencesSession::chooseMethod(qint16 method) {
    method_ = std::clamp<qint16>(method, 0, 3);
    if (method_ == kLtGreville && field(QStringLiteral("rngval1")).trimmed().isEmpty())
        texts_[QStringLiteral("rngval1")] = grevilleDefault();
    markChanged();
}

void PreferencesSession::stepGreville(int steps) {
    const QString current = field(QStringLiteral("rngval1")).trimmed();
    const double c = current.isEmpty() ? kDefaultGreval : Val(current);
    setField(QStringLiteral("rngval1"),
             numberToText(roundHalfEven(c + steps * kGrevilleStep, kGrevilleDecimals)));
}

void PreferencesSession::chooseExportChart(int chart) {
    chartExport_.choose(chart);
    keepExportFields();
}

QString PreferencesSession::soundPath(EventSound sound) const {
    return soundOf(sound, settings());
}

void PreferencesSession::chooseSound(EventSound sound, const QString& path) {
    soundOf(sound, settings()) = path;
    playSound(path);
    markChanged();
}

void PreferencesSession::markChanged() {
    preferences().changed = true;
}

// Step 1. False when the tab's values could not be taken (the message was shown).
bool PreferencesSession::applyOpenTab() {
    VeskSettings& s = settings();
    try {
        if (page == PreferencesPage::ColumnWidths) {
            AppndColumnWidths(widths_, s);
        } else if (page == PreferencesPage::DecimalPlaces) {
            AppndDecimals(decimals_, s);
        } else if (page == PreferencesPage::LifeTables && lifeTablesPage == LifeTablesPage::StandardTable) {
            lifeTable_.apply(s, preferences());
        } else {
            return true;
        }
    } catch (const RuntimeError& e) {
        prompts().ask(e.words);
        return false;
    }
    Write_To_Vesk_Stp();
    return true;
}

void PreferencesSession::storeMethodValues() {
    VeskSettings& s = settings();
    const double radix = Val(field(QStringLiteral("Txtradix1")));
    s.LTRadix = radix == 0 ? settings_defaults::LTRadix : radix;
    s.LTMethod = method_;
    s.LTKFlwrLmt = field(QStringLiteral("txtKFlwrlmt1")).trimmed();
    s.LTKFupprLmt = field(QStringLiteral("txtKFupprlmt1")).trimmed();
    s.LTGreval = field(QStringLiteral("rngval1")).trimmed();
    if (method_ == kLtGreville && s.LTGreval.isEmpty())
        s.LTGreval = grevilleDefault();
}

// Step 5.
void PreferencesSession::applyAfterTimer() {
    if (page == PreferencesPage::LifeTables && lifeTablesPage == LifeTablesPage::Method) {
        storeMethodValues();
        Write_To_Vesk_Stp();
    } else if (page == PreferencesPage::TableNames) {
        AppendDctTblNm(texts_);
        AppendUsrLtsTblNm(texts_);
        Write_To_Vesk_Stp();
    } else if (page == PreferencesPage::GraphExport) {
        chartExport_.apply();
    }
}

void PreferencesSession::Apply() {
    if (!loaded_)
        load(levelLabel_);
    if (!applyOpenTab())
        return;
    VeskSettings& s = settings();
    PreferencesControls& p = preferences();
    // 2. What the writer takes as well: the sample percent, and the recordsets that are fixed.
    s.SampPct = p.txtSampPct.isEmpty() ? 100 : Val(p.txtSampPct);
    p.cmbVESKADW = text(t::kAdwTable);
    p.cmbVESKCSMP = text(t::kCsmpTable);
    texts_[QStringLiteral("cmbVESKPSYr")] = text(t::kPopSnglYrTable);
    // 3.
    if (!p.txtwklocation.isEmpty() && !p.txtStatOut.isEmpty() && !p.txtTempArea.isEmpty())
        Write_To_Vesk_Stp(s, p);
    if (!p.txtVESKObj.isEmpty())
        s.DBFullPath = joinPath(p.txtwklocation, p.txtVESKObj);
    // 4.
    enableTimer1();
    // 5.
    applyAfterTimer();
}

CloseOutcome PreferencesSession::Close() {
    const CloseOutcome outcome = closeAsked(preferences());
    if (outcome == CloseOutcome::EndProgram) {
        if (FrameHost* host = frameHost())
            host->endProgram();
        else
            endTheProgram();
    } else if (outcome == CloseOutcome::Hide) {
        load(levelLabel_);
    }
    return outcome;
}

} // namespace vesk
