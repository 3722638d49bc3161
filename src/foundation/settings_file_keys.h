#pragma once
// The keyed lines of Vesk.stp, in writing order, as the reader and the writer share them: the
// literal the writer puts before the value, the key the reader compares the start of a line with,
// the 1-based column the reader takes the value from, and the default for an empty value.

#include "foundation/settings.h"

#include <array>
#include <span>

namespace vesk::stp {

// [Prefer]: seven integers, then the three sound paths. Exactly one of the members is set.
struct PreferKey {
    const char* literal; // written before the value
    const char* key;     // what the reader compares the line's start with
    int column;          // where the reader takes the value from
    int VeskSettings::*number;
    QString VeskSettings::*text;
    int numberDefault;
    const char* textDefault;
};

namespace d = settings_defaults;

// "RsltDecPlcs = " ends in a blank and its value is read from column 14, the blank included.
inline const std::array<PreferKey, 11> kPreferKeys = {{
    {"NleadingCauses =", "NleadingCauses =", 17, &VeskSettings::NLdCauses, nullptr, d::NLdCauses, nullptr},
    {"ToolDecPlcs =", "ToolDecPlcs =", 14, &VeskSettings::ToolDecPlcs, nullptr, d::ToolDecPlcs, nullptr},
    {"RsltDecPlcs = ", "RsltDecPlcs =", 14, &VeskSettings::RsltDecPlcs, nullptr, d::RsltDecPlcs, nullptr},
    {"RptDecPlcs =", "RptDecPlcs =", 13, &VeskSettings::RptDecPlcs, nullptr, d::RptDecPlcs, nullptr},
    {"LfTbDecPlcs =", "LfTbDecPlcs =", 14, &VeskSettings::LfTbDecPlcs, nullptr, d::LfTbDecPlcs, nullptr},
    {"LSumDecPlcs =", "LSumDecPlcs =", 14, &VeskSettings::LSumDecPlcs, nullptr, d::LSumDecPlcs, nullptr},
    {"LDthDecPlcs =", "LDthDecPlcs =", 14, &VeskSettings::LDthDecPlcs, nullptr, d::LDthDecPlcs, nullptr},
    {"LDaleDecPlcs =", "LDaleDecPlcs =", 15, &VeskSettings::LDaleDecPlcs, nullptr, d::LDaleDecPlcs, nullptr},
    {"sLSuccess =", "sLSuccess =", 12, nullptr, &VeskSettings::sLSuccess, 0, d::sLSuccess},
    {"sLBussy =", "sLBussy =", 10, nullptr, &VeskSettings::sLBussy, 0, d::sLBussy},
    {"sLFailure =", "sLFailure =", 12, nullptr, &VeskSettings::sLFailure, 0, d::sLFailure},
}};

// [DCTTBLNM], [POPDCTTBLNM], [INTPLTRTBLNM], [USRLTS]: names of tables in foreign files, each
// section with its keys. The value starts right after the "=".
struct NameKey {
    const char* key; // literal and reader key alike
    QString VeskSettings::*member;
    const char* textDefault;
};

inline const std::array<NameKey, 6> kDictionaryTableKeys = {{
    {"GrpDctTblNm=", &VeskSettings::GrpDctTblNm, d::GrpDctTblNm},
    {"SGrpDctTblNm=", &VeskSettings::SGrpDctTblNm, d::SGrpDctTblNm},
    {"ClstrDctTblNm=", &VeskSettings::ClstrDctTblNm, d::ClstrDctTblNm},
    {"COBDctTblNm=", &VeskSettings::COBDctTblNm, d::COBDctTblNm},
    {"SqlaDctTblNm=", &VeskSettings::SqlaDctTblNm, d::SqlaDctTblNm},
    {"MapDctTblNm=", &VeskSettings::MapDctTblNm, d::MapDctTblNm},
}};

inline const std::array<NameKey, 3> kPopulationTableKeys = {{
    {"BPUTblNm=", &VeskSettings::BPUTblNm, d::BPUTblNm},
    {"PAG1TblNm=", &VeskSettings::PAG1TblNm, d::PAG1TblNm},
    {"PAG2TblNm=", &VeskSettings::PAG2TblNm, d::PAG2TblNm},
}};

inline const std::array<NameKey, 3> kInterpolatorTableKeys = {{
    {"POPTblNm=", &VeskSettings::POPTblNm, d::POPTblNm},
    {"DTHSTblNm=", &VeskSettings::DTHSTblNm, d::DTHSTblNm},
    {"BOTHTblNm=", &VeskSettings::BOTHTblNm, d::BOTHTblNm},
}};

inline const std::array<NameKey, 1> kUserLifeTableKeys = {{
    {"UsrLTSTblNm=", &VeskSettings::UsrLTSTblNm, d::UsrLTSTblNm},
}};

struct NameSection {
    const char* heading;
    std::span<const NameKey> keys;
};

inline const std::array<NameSection, 4> kNameSections = {{
    {"[DCTTBLNM]", kDictionaryTableKeys},
    {"[POPDCTTBLNM]", kPopulationTableKeys},
    {"[INTPLTRTBLNM]", kInterpolatorTableKeys},
    {"[USRLTS]", kUserLifeTableKeys},
}};

// The other literals.
inline constexpr char kPathKey[] = "PATH  =";
inline constexpr char kObjectKey[] = "OBJECT=";
inline constexpr char kAdwKey[] = "ADW   =";
inline constexpr char kCsmKey[] = "CSM   =";
inline constexpr char kMinMaxAgeKey[] = "[IMINMAXAGE] =";
inline constexpr char kMaxMaxAgeKey[] = "[IMAXMAXAGE] =";
inline constexpr char kRadixKey[] = "Radix =";
inline constexpr char kMethodKey[] = "Method=";
inline constexpr char kKFlwrlmtKey[] = "KFlwrlmt=";
inline constexpr char kKFupprlmtKey[] = "KFupprlmt=";
inline constexpr char kGrevalKey[] = "Greval=";
inline constexpr char kChoiceFiveYrsKey[] = "[Choice For Five Years] =";
inline constexpr char kUpperAgeIntvlKey[] = "[Upper Age Interval] =";
inline constexpr char kLifeTableTypeKey[] = "[LIFE TABLE TYPE]=";
inline constexpr char kLtsKro[] = "[Standard Life Table-KRO]";
inline constexpr char kLtsWho[] = "[Standard Life Table-WHO]";
inline constexpr char kLtsUser[] = "[User Defined Life Table]";

// Column of the value after a literal: the one right after it.
inline int valueColumn(const char* literal) {
    return static_cast<int>(qstrlen(literal)) + 1;
}

} // namespace vesk::stp
