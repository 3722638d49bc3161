#include "foundation/settings.h"

namespace vesk {

VeskSettings& settings() {
    static VeskSettings s;
    return s;
}

PreferencesControls& preferences() {
    static PreferencesControls p;
    return p;
}

int ColWdthIndex(const QString& key) {
    for (int i = 0; i < kColumnWidthCount; ++i)
        if (key.compare(QLatin1String(kColumnWidthKeys[i]), Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

void loadChainDefaultWidths(VeskSettings& s) {
    for (int i = 0; i < kColumnWidthCount; ++i)
        s.ColWdth[i] = kChainColumnWidthDefaults[i];
}

} // namespace vesk
