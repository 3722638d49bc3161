#pragma once
// The text layouts the generator writes: the numeric blocks of the delivered settings file, the
// importable user defined standard tables, and the generated sections of data/README.md.
//
// Settings blocks (lines end in CR LF; values separated by "|", none after the last):
//   27 hyphens / [LTS] / 27 hyphens /
//   [Standard Life Table-KRO] / [BAI]:ages / [EXM]:male e(x) / [EXF]:female e(x) /
//   [Standard Life Table-WHO] / [BAI]: / [EXM]: / [EXF]: /
//   28 hyphens / [OAIGD] / 28 hyphens / 36 rows FAMILY|BOAI|a|b|c / 27 hyphens /
//   [PANELS] / 27 hyphens / [PANEL 0] and 5 rows / ... / [PANEL 4] and 5 rows / 27 hyphens.
// The rule above the [OAIGD] rows is one hyphen longer than the one that closes them: the reader of
// the rows stops at the first line of 27 hyphens, so the two must stay different.

#include "reference_products.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace vesk::refgen {

inline constexpr char kLifeTableTypeKey[] = "[LIFE TABLE TYPE]=";

QByteArray stpBlocks(const ReferenceProducts& p);

// The settings file with everything after its "[LIFE TABLE TYPE]=" line replaced by `blocks`;
// std::nullopt when the file has no such line.
std::optional<QByteArray> spliceStp(const QByteArray& settingsFile, const QByteArray& blocks);

// A user defined standard table in the text layout of the import: the title "[User Defined Tables]"
// and the lines [BAI]:, [EXM]:, [EXF]:, ages 0..100, values with `decimals` decimals.
QByteArray userTableText(const std::vector<double>& female, const std::vector<double>& male, int decimals);

// Markdown tables for data/README.md.
QString oaigdFitMarkdown(const ReferenceProducts& p);
QString closureMarkdown(const ReferenceProducts& p);

// `doc` with the text between "<!-- refgen:begin NAME -->" and "<!-- refgen:end NAME -->" replaced
// by `body`; std::nullopt when the markers are missing.
std::optional<QString> replaceSection(const QString& doc, const QString& name, const QString& body);

} // namespace vesk::refgen
