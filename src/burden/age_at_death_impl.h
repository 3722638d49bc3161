#pragma once
// AGDARR's loop; included by age_at_death.h.

#include "burden/computation_arrays.h"

namespace vesk {

template <class Parameters>
Cell AGDARR(const Cell& labels, const Cell& pop, const Cell& deaths, Parameters&& parameters) {
    if (!labels.isArray() || !pop.isArray() || pop.array().rank() != kAgeArrRank)
        return Cell();
    const CellArray& p = pop.array();
    const CellArray& l = labels.array();
    const CellArray none;
    const CellArray& d = deaths.isArray() ? deaths.array() : none;
    CellArray out({p.size(kAgeDimYear), p.size(kAgeDimBPU), 1, 1, l.size(0), kAgdLastSlot + 1});
    for (int y = 0; y < p.size(kAgeDimYear); ++y)
        for (int b = 0; b < p.size(kAgeDimBPU); ++b) {
            const Cell& first = p(y, b, 0, kAgeBai);
            if (first.isEmpty() || first.isNull()) {
                for (int m = 0; m < l.size(0); ++m) {
                    out(y, b, 0, 0, m, kAgdAsg) = l(l.lbound(0) + m);
                    out(y, b, 0, 0, m, kAgdAge) = Cell::null();
                }
                continue;
            }
            const CellArray ages = FnAgeAtDeath(labels, p, d, y, b, parameters(b));
            for (int m = 0; m < l.size(0); ++m) {
                out(y, b, 0, 0, m, kAgdAsg) = ages(m, 0);
                out(y, b, 0, 0, m, kAgdAge) = ages(m, 1);
            }
        }
    return Cell(std::move(out));
}

} // namespace vesk
