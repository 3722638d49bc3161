#include "demography/standard_life_table.h"

#include "demography/standard_table_texts.h"
#include "foundation/settings_file.h"
#include "foundation/settings_file_io.h"
#include "foundation/settings_file_keys.h"
#include "platform/runtime.h"
#include "platform/texts.h"

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

Cell GetUsrLifeTable(const PreferencesControls& p) {
    if (!p.userLifeTableLoaded || p.userLifeTable.rank() == 0)
        return Cell();
    return Cell(p.userLifeTable);
}

QString standardLifeTableNote(int lifeTblType) {
    namespace t = standard_table_texts;
    switch (lifeTblType) {
    case 2:
        return text(t::kNoteUser);
    case 3:
        return text(t::kNoteWho);
    default:
        return text(t::kNoteKro);
    }
}

bool readStandardLifeTables(const QString& settingsFile, VeskSettings& s, PreferencesControls& p,
                            QString* error) {
    QStringList lines;
    if (!stp::readLines(settingsFile, lines)) {
        *error = QStringLiteral("cannot read the settings file %1").arg(settingsFile);
        return false;
    }
    const QString typeKey = QString::fromLatin1(stp::kLifeTableTypeKey);
    const QString nameKey = QString::fromLatin1(stp::kUserLifeTableKeys[0].key);
    s.LifeTblType = 0;
    s.UsrLTSTblNm = QString::fromLatin1(settings_defaults::UsrLTSTblNm);
    for (const QString& line : lines) {
        if (line.startsWith(typeKey)) {
            const QString type = stp::Trim(Mid(line, stp::valueColumn(stp::kLifeTableTypeKey)));
            const bool known =
                type == QLatin1String("1") || type == QLatin1String("2") || type == QLatin1String("3");
            s.LifeTblType = known ? type.toInt() : 0;
        } else if (line.startsWith(nameKey) && !stp::Trim(line.mid(nameKey.size())).isEmpty()) {
            s.UsrLTSTblNm = stp::Trim(line.mid(nameKey.size()));
        }
    }
    FnReadLTS(QString::fromLatin1(stp::kLtsKro), s.MtxLTSKRO, settingsFile);
    FnReadLTS(QString::fromLatin1(stp::kLtsWho), s.MtxLTSWHO, settingsFile);
    p.userLifeTableLoaded = FnReadLTS(QString::fromLatin1(stp::kLtsUser), p.userLifeTable, settingsFile);
    return true;
}

} // namespace vesk
