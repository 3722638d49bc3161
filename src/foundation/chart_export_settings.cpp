#include "foundation/chart_export_settings.h"

namespace vesk {

ChartExportSettings& chartExportSettings() {
    static ChartExportSettings s;
    return s;
}

} // namespace vesk
