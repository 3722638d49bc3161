#pragma once
// What the frame and its loading chain ask of the preferences form (frmVESKSetup): its two flags,
// which live with its controls in PreferencesControls (settings.h) as `loaded` and `changed`, its
// OK, and showing and hiding it.
//
// The form itself installs its own implementation. Until then a PlainPreferences stands in: its OK
// does what Apply does to the settings (force the recordset names, write the file when the paths
// are filled, set DBFullPath, re-arm the frame's Timer1), and showing it says plainly that the form
// is not built yet.

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

class PlainPreferences : public PreferencesForm {
public:
    void Ok_Click() override;
    void showModal() override;
    void hide() override {}
};

PreferencesForm& preferencesForm();
void setPreferencesForm(PreferencesForm* form); // not owned; nullptr goes back to the plain one

} // namespace vesk
