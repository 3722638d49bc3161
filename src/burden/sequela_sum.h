#pragma once
// The cause level of a cause with sequelae: the sequelae's values added, a Null or Empty on either side
// counting as 0, so that a cause shows a number as soon as one sequela has one. The kernel loops form
// it so after a run, and the load of stored results forms it again from the stored sequela rows.

#include "foundation/runtime_arithmetic.h"
#include "platform/cell.h"

namespace vesk {

inline Cell sequelaSum(const Cell& base, const Cell& add) {
    const auto value = [](const Cell& c) { return c.isNull() || c.isEmpty() ? 0.0 : runtime_arithmetic::operand(c); };
    return Cell(runtime_arithmetic::finite(value(base) + value(add)));
}

} // namespace vesk
