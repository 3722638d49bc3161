// The one computation of the program, and what a change of study empties of it, by itself and
// through the study context.

#include "burden/computation.h"
#include "database/study_context.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {
class ComputationTest : public ::testing::Test {
protected:
    void SetUp() override { computation() = Computation{}; }
    void TearDown() override { computation() = Computation{}; }
};

std::vector<Cell*> everyArray(Computation& c) {
    return {&c.MtxDAP,  &c.ArrADWIP, &c.ArrDBC,   &c.ArrAGD,    &c.ArrYld,    &c.ArrYll,
            &c.ArrDaly, &c.ArrPop4D, &c.ArrDth4D, &c.ArrYldLbl, &c.ArrYllLbl, &c.ArrDalyLbl};
}
} // namespace

TEST_F(ComputationTest, OneComputationForTheProgram) {
    EXPECT_EQ(&computation(), &computation());
    computation().ArrYld = Cell(CellArray{1, 1, 1, 1, 1, 4});
    EXPECT_TRUE(computation().ArrYld.isArray());
}

TEST_F(ComputationTest, StartsWithNothingLoaded) {
    for (Cell* c : everyArray(computation()))
        EXPECT_TRUE(c->isEmpty());
}

TEST_F(ComputationTest, ClearEmptiesWhatAChangeOfStudyEmpties) {
    Computation& c = computation();
    for (Cell* cell : everyArray(c))
        *cell = Cell(CellArray{1, 1});
    c.clear();
    for (Cell* emptied : {&c.MtxDAP, &c.ArrYld, &c.ArrYll, &c.ArrDaly, &c.ArrDth4D, &c.ArrPop4D})
        EXPECT_TRUE(emptied->isEmpty());
    // The inputs and the labels wait for the next computation to replace them.
    for (Cell* kept : {&c.ArrADWIP, &c.ArrDBC, &c.ArrAGD, &c.ArrYldLbl, &c.ArrYllLbl, &c.ArrDalyLbl})
        EXPECT_TRUE(kept->isArray());
}

TEST_F(ComputationTest, ClearLeavesACellThatHoldsNoArray) {
    Computation& c = computation();
    c.ArrYld = Cell::null();
    c.ArrYll = Cell(0.0);
    c.clear();
    EXPECT_TRUE(c.ArrYld.isNull());
    EXPECT_TRUE(c.ArrYll.isNumber());
}

TEST_F(ComputationTest, ClearingTheStudyContextEmptiesTheComputation) {
    Computation& c = computation();
    for (Cell* cell : everyArray(c))
        *cell = Cell(CellArray{2});
    studyContext().ClearStudyContext();
    for (Cell* emptied : {&c.MtxDAP, &c.ArrYld, &c.ArrYll, &c.ArrDaly, &c.ArrDth4D, &c.ArrPop4D})
        EXPECT_TRUE(emptied->isEmpty());
    for (Cell* kept : {&c.ArrADWIP, &c.ArrDBC, &c.ArrAGD, &c.ArrYldLbl, &c.ArrYllLbl, &c.ArrDalyLbl})
        EXPECT_TRUE(kept->isArray());
}

TEST_F(ComputationTest, AContextMadeAnewStillEmptiesTheComputation) {
    Computation& c = computation();
    studyContext() = StudyContext{};
    c.MtxDAP = Cell(CellArray{1, 5});
    c.ArrDaly = Cell(CellArray{2});
    studyContext().ClearStudyContext();
    EXPECT_TRUE(c.MtxDAP.isEmpty());
    EXPECT_TRUE(c.ArrDaly.isEmpty());
}
