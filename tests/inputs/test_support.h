#pragma once
// Shared helpers of the foreign-file tests: a scratch folder, the fixtures, and arrays built from
// literal rows.

#include "platform/cell_array.h"

#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <initializer_list>

namespace vesk {
// Readable cells and arrays in failure messages.
void PrintTo(const Cell& c, std::ostream* os);
void PrintTo(const CellArray& a, std::ostream* os);
} // namespace vesk

namespace vesk::test {

// Equal kinds and subtypes, texts equal, numbers within a relative tolerance.
::testing::AssertionResult sameTable(const CellArray& got, const CellArray& want, double relTol = 1e-12);

QString fixture(const QString& name);
CellArray table(std::initializer_list<std::initializer_list<Cell>> rows);
// The array as text, one row a line, each cell as kind:value, for readable failures.
std::string dump(const CellArray& a);
// Runs a program and gives its standard output; std::nullopt when it is not installed or fails.
std::optional<QString> runProgram(const QString& program, const QStringList& args);

class ScratchTest : public ::testing::Test {
protected:
    QString path(const QString& name) const { return dir_.filePath(name); }
    QTemporaryDir dir_;
};

} // namespace vesk::test
