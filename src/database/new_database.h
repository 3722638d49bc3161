#pragma once
// File -> New: the save dialog, the replacement question, the creation of the study file from the
// schema definition, and the hand-over of the new file to the settings' paths. What makes the new
// database the current one (the preferences' OK) is the frame's: it presses it when this reports a
// new file.

#include "database/db_paths.h"

#include <QString>

namespace vesk {

// Runs File -> New's dialogue through the prompt service. studyContext().NewDBDone comes in True;
// Cancel and a refused replacement set it False. A failure of the creation shows "Error from New
// Database Creation:" with the engine's description and leaves the file as far as it was built and
// the settings as they were; NewDBDone then stays as it came in. After a hand-over StudyDB is open
// on the new file. Returns whether a new file was made and handed over.
bool CreateNewDatabase();

// Hands a study file to the settings: its folder into txtwklocation, its file title into
// txtVESKObj. A file on a mapped drive goes under its network path, and the share is kept in
// DBFullPath.
DatabaseLocation handOverToSettings(const QString& path);

} // namespace vesk
