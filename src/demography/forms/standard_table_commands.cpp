#include "demography/forms/standard_table_commands.h"

#include "demography/standard_life_table.h"
#include "demography/standard_table_export.h"
#include "demography/standard_table_texts.h"
#include "demography/user_life_table_import.h"
#include "foundation/settings.h"
#include "inputs/messages.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace {

namespace t = standard_table_texts;

void exportWithDialog(FixedStandardTable which) {
    const auto path =
        prompts().saveFileName(text(t::kSaveAsTitle), text(texts::kForeignFileFilter), settings().ImportPath);
    if (path && !path->trimmed().isEmpty())
        exportStandardTable(which, path->trimmed());
}

} // namespace

void Mnu_SubMnu_UsrStdLftbl_Click() {
    const auto path =
        prompts().openFileName(text(t::kImportTitle), text(texts::kForeignFileFilter), settings().ImportPath);
    if (path && !path->trimmed().isEmpty())
        importUserLifeTable(path->trimmed());
}

void mnu_expKROLTS_Click() {
    exportWithDialog(FixedStandardTable::Kro);
}

void mnu_expWHOLTS_Click() {
    exportWithDialog(FixedStandardTable::Who);
}

void mnu_expUstrLTS_Click() {
    if (!GetUsrLifeTable().isArray())
        return;
    const auto path =
        prompts().saveFileName(text(t::kSaveAsTitle), text(texts::kForeignFileFilter), settings().ImportPath);
    if (path && !path->trimmed().isEmpty())
        exportUserTable(path->trimmed());
}

const std::array<StandardTableCommand, 4>& standardTableCommands() {
    static const std::array<StandardTableCommand, 4> commands{{
        {"Mnu_SubMnu_UsrStdLftbl", Mnu_SubMnu_UsrStdLftbl_Click},
        {"mnu_expKROLTS", mnu_expKROLTS_Click},
        {"mnu_expWHOLTS", mnu_expWHOLTS_Click},
        {"mnu_expUstrLTS", mnu_expUstrLTS_Click},
    }};
    return commands;
}

} // namespace vesk
