#pragma once
// The menu items of File -> Import (dictionaries and maps, population units), File -> Export
// (dictionaries and maps, population units, study data) and File -> Zap. Each import asks for its
// file with the dialog's own title, each export with "Save As" (the study data's with its label),
// starting in the import folder and offering the five kinds; a dialog cancelled does nothing. The
// rest is the core's: dictionary_transfer.h, unit_transfer.h, study_data_transfer.h, zap.h.

#include <QList>
#include <functional>

namespace vesk {

struct TransferCommand {
    const char* item;
    // True when the study's definitions may have changed (dictionaries, units, the setup), so that
    // the frame loads the study again.
    std::function<bool()> run;
};

const QList<TransferCommand>& transferCommands();

} // namespace vesk
