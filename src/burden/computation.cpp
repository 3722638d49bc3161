#include "burden/computation.h"

#include "database/study_context.h"

namespace vesk {

void Computation::clear() {
    for (Cell* c : {&MtxDAP, &ArrYld, &ArrYll, &ArrDaly, &ArrDth4D, &ArrPop4D})
        if (c->isArray())
            *c = Cell();
}

namespace {

// The one computation, made on first use; from then on a change of study empties it with the study
// context. Until it is made there is nothing in it to empty.
Computation& madeComputation() {
    static Computation theComputation;
    StudyContext::onClear([] { theComputation.clear(); });
    return theComputation;
}

} // namespace

Computation& computation() {
    static Computation& theComputation = madeComputation();
    return theComputation;
}

} // namespace vesk
