// The life expectancy of the standard table feeds the loss of a death.

#include "burden/kernel.h"
#include "kernel_fixture.h"
#include "platform/cell_array.h"

using namespace vesk;

namespace {

// Ages 0..100 in single years, as the settings file keeps them.
CellArray singleYearTable() {
    CellArray t{101, 3};
    for (int age = 0; age <= 100; ++age) {
        t(age, 0) = Cell(QString::number(age));
        t(age, 1) = Cell(QString::number(82.5 - 0.79 * age, 'g', 10));
        t(age, 2) = Cell(QString::number(80.0 - 0.77 * age, 'g', 10));
    }
    return t;
}

class LifeExpAt : public vesk::test::KernelTest {};

} // namespace

TEST_F(LifeExpAt, FeedsTheLossOfAFemaleDeathAtBirth) {
    const CellArray t = singleYearTable();
    const float L = FnLifeExpAt(t, 0, "F");
    EXPECT_NEAR(FnYLLF(0, L, 0.03f, 1, Cell(0.04), Cell(0.1658)), 33.13, 0.005);
}
