#include "burden/computation.h"

namespace vesk {

void Computation::clear() {
    for (Cell* c : {&MtxDAP, &ArrYld, &ArrYll, &ArrDaly, &ArrDth4D, &ArrPop4D})
        if (c->isArray())
            *c = Cell();
}

Computation& computation() {
    static Computation theComputation;
    return theComputation;
}

} // namespace vesk
