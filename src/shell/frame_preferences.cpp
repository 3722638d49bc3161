#include "shell/frame_preferences.h"

namespace vesk {

namespace {
PreferencesForm* installed = nullptr;
} // namespace

PreferencesForm& preferencesForm() {
    static HeadlessPreferences headless;
    return installed ? *installed : headless;
}

void setPreferencesForm(PreferencesForm* form) {
    installed = form;
}

} // namespace vesk
