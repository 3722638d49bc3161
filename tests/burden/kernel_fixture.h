#pragma once
// A clean error store for each test, its log kept in a temporary folder.

#include "foundation/error_store.h"
#include "foundation/settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <tuple>
#include <vector>

namespace vesk::test {

using StoredError = std::tuple<int, QString, QString>; // number, description, source

inline std::vector<StoredError> storedErrors() {
    std::vector<StoredError> out;
    for (int i = 0; i < errorStoreCount(); ++i) {
        const CellArray& rows = ErrStore().array();
        out.emplace_back(static_cast<int>(rows(i, 0).toDouble()), rows(i, 1).toString(),
                         rows(i, 2).toString());
    }
    return out;
}

class KernelTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        settings().StatOutPath = dir_.path() + QStringLiteral("/");
        clearErrorStore();
    }
    void TearDown() override { clearErrorStore(); }

private:
    QTemporaryDir dir_;
};

} // namespace vesk::test
