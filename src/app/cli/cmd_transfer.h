#pragma once
// vesk-cli import with --what: the import of a whole export (dictionaries, units, study data, the user
// life table), beside the import of an input sheet that vesk-cli import does without it.

#include <QString>
#include <QStringList>

namespace vesk::cli {

bool isTransferImport(const QStringList& args);
int transferImport(const QStringList& args);
// The usage lines of the import with --what, for vesk-cli import --help.
QString transferImportUsage();

} // namespace vesk::cli
