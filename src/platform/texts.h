#pragma once
// The program's words are kept in one header per subsystem, in one style:
//
//     namespace vesk::<subsystem>_texts { inline constexpr const char* kName = "..."; }
//
// A constant goes wherever a QString is taken, since QString converts from const char*; where two
// of them meet without a QString between them (a + b, a.arg(...)), text() gives the first one as a
// QString. Source files are UTF-8, so the literals are read as UTF-8.

#include <QString>

namespace vesk {

inline QString text(const char* s) {
    return QString::fromUtf8(s);
}

} // namespace vesk
