#pragma once
// The compound file of legacy Office documents (an .xls workbook's container): a little FAT file
// system in sectors of 512 or 4096 bytes. The header holds the first 109 sectors of the allocation
// table (the rest chain through DIFAT sectors) and the start of the directory; the directory names
// each stream; streams under the cutoff (4096 bytes) live in 64-byte mini sectors inside the root
// entry's stream.
//
// Nothing here trusts the file: every sector number is checked against the sectors the file really
// has, every chain is followed at most once through each sector (a cycle ends it as damage), and
// nothing is allocated beyond what the file holds, so a damaged or hostile file is refused in time
// and memory proportional to its length.

#include <QByteArray>
#include <QString>
#include <optional>

namespace vesk {

// The stream `name` (compared without case) of the compound file `file`. std::nullopt, with the
// reason in `why` when it is given, when `file` is no compound file, is damaged, or has no such stream.
std::optional<QByteArray> readCompoundStream(const QByteArray& file, const QString& name, QString* why = nullptr);

} // namespace vesk
