#pragma once
// What the frame and its loading chain ask of the preferences form (frmVESKSetup): its two flags,
// which live with its controls in PreferencesControls (settings.h) as `loaded` and `changed`, its
// OK, and showing and hiding it.
//
// The program installs the form's window (shell/forms/frm_vesk_setup.h). Without it, as for the
// core's own tests, a HeadlessPreferences stands in: the same preferences (a PreferencesSession),
// whose OK runs the same Apply, and nothing to show.

#include "shell/preferences_session.h"

namespace vesk {

class PreferencesForm {
public:
    virtual ~PreferencesForm() = default;
    // Ok_Click: runs Apply. File -> Open calls it after putting the chosen database into
    // txtwklocation and txtVESKObj.
    virtual void Ok_Click() = 0;
    // File -> Preferences and the toolbar's "Setup": the form, modally.
    virtual void showModal() = 0;
    // Hides the form (the chain does so when a modeless form was asked for over it).
    virtual void hide() = 0;
};

class HeadlessPreferences : public PreferencesForm {
public:
    void Ok_Click() override { session_.Apply(); }
    void showModal() override {}
    void hide() override {}

private:
    PreferencesSession session_;
};

PreferencesForm& preferencesForm();
void setPreferencesForm(PreferencesForm* form); // not owned; nullptr goes back to the headless one

} // namespace vesk
