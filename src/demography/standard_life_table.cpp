#include "demography/standard_life_table.h"

#include "foundation/settings_file_keys.h"

namespace vesk {

namespace {

StandardLifeTable fixedTable(const CellArray& table, const char* block) {
    const auto lack = table.rank() == 0 ? StandardLifeTableLack::MissingBlock : StandardLifeTableLack::None;
    return {&table, lack, block};
}

} // namespace

StandardLifeTable standardLifeTable(const VeskSettings& s, const PreferencesControls& p) {
    switch (s.LifeTblType) {
    case 2:
        if (!p.userLifeTableLoaded || p.userLifeTable.rank() == 0)
            return {nullptr, StandardLifeTableLack::NoUserTable, stp::kLtsUser};
        return {&p.userLifeTable, StandardLifeTableLack::None, stp::kLtsUser};
    case 3:
        return fixedTable(s.MtxLTSWHO, stp::kLtsWho);
    default:
        return fixedTable(s.MtxLTSKRO, stp::kLtsKro);
    }
}

} // namespace vesk
