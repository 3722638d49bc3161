#pragma once
// The names of tables in foreign files on the preferences form: the dictionaries and maps, the
// population units and the interpolator's tables ([DCTTBLNM], [POPDCTTBLNM], [INTPLTRTBLNM]:
// GetDctTblNm, AppendDctTblNm), and the user defined standard life table's ([USRLTS]:
// GetUsrLtsTblNm, AppendUsrLtsTblNm). A name that is empty is its default, when shown as when kept.

#include "foundation/settings.h"

#include <QHash>
#include <QString>
#include <array>

namespace vesk {

// The fields of the names, in the order of the settings file: the six of the dictionaries, the three
// of the population units, the three of the interpolator, and the user table's.
inline constexpr std::array<const char*, 13> kNameControls = {
    "txtGrpDctTblNm",      "txtSGrpDctTblNm",     "txtClstrDctTblNm", "txtCOBDctTblNm",  "txtSqlaDctTblNm",
    "txtMapDctTblNm",      "txtBPUDctTblNm",      "txtPAG1DctTblNm",  "txtPAG2DctTblNm", "txtIntpltrPOPTblNm",
    "txtIntpltrDTHSTblNm", "txtIntpltrBOTHTblNm", "txtUsrDefLTS"};

// `texts` holds the fields' texts by their names.
void GetDctTblNm(QHash<QString, QString>& texts, const VeskSettings& s = settings());
void AppendDctTblNm(const QHash<QString, QString>& texts, VeskSettings& s = settings());
void GetUsrLtsTblNm(QHash<QString, QString>& texts, const VeskSettings& s = settings());
void AppendUsrLtsTblNm(const QHash<QString, QString>& texts, VeskSettings& s = settings());

} // namespace vesk
