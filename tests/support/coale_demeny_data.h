#pragma once
// The Coale-Demeny coefficients the tests share, read once from the reference data beside the built
// program; a read that fails is a test failure, and the empty data that follows fails the test's
// own checks.

#include "demography/coale_demeny.h"

#include <gtest/gtest.h>

namespace vesk::test {

inline const CoaleDemenyData& coaleDemenyData() {
    static const CoaleDemenyData d = [] {
        QString error;
        auto loaded = loadCoaleDemenyData(QStringLiteral(VESK_BIN_DIR "/refdata"), &error);
        if (!loaded)
            ADD_FAILURE() << error.toStdString();
        return loaded.value_or(CoaleDemenyData{});
    }();
    return d;
}

} // namespace vesk::test
