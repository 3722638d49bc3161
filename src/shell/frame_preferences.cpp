#include "shell/frame_preferences.h"

#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "shell/frame_texts.h"
#include "shell/loading_chain.h"

#include <QDir>

namespace vesk {

namespace {
PlainPreferences plain;
PreferencesForm* installed = nullptr;
} // namespace

PreferencesForm& preferencesForm() {
    return installed ? *installed : plain;
}

void setPreferencesForm(PreferencesForm* form) {
    installed = form;
}

void PlainPreferences::Ok_Click() {
    PreferencesControls& p = preferences();
    VeskSettings& s = settings();
    // The sample percent, and the recordsets, which are fixed whatever was chosen.
    s.SampPct = p.txtSampPct.trimmed().isEmpty() ? 100 : Val(p.txtSampPct);
    p.cmbVESKADW = QStringLiteral("DatADW");
    p.cmbVESKCSMP = QStringLiteral("DatCSM");
    if (!p.txtwklocation.isEmpty() && !p.txtStatOut.isEmpty() && !p.txtTempArea.isEmpty())
        Write_To_Vesk_Stp(s, p);
    if (!p.txtVESKObj.isEmpty())
        s.DBFullPath = p.txtwklocation + QDir::separator() + p.txtVESKObj;
    enableTimer1();
}

void PlainPreferences::showModal() {
    prompts().ask(QString::fromUtf8(frame_texts::kPreferencesNotBuilt), Buttons::Ok, Icon::Information,
                  QString::fromUtf8(frame_texts::kNotBuiltTitle));
}

} // namespace vesk
