#include "shell/settings.h"

namespace vesk {

VeskSettings& settings() {
    static VeskSettings s;
    return s;
}

PreferencesControls& preferences() {
    static PreferencesControls p;
    return p;
}

} // namespace vesk
