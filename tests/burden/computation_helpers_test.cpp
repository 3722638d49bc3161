// The computation's small helpers: bounds, rank, a dropped row, the record of the kernel's inputs
// and the labels of the results' axes.

#include "burden/computation_arrays.h"
#include "burden/computation_helpers.h"
#include "foundation/error_store.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

Cell vec(std::initializer_list<const char*> items) {
    CellArray a({int(items.size())});
    int i = 0;
    for (const char* s : items)
        a(i++) = Cell(s);
    return Cell(std::move(a));
}

TEST(ComputationHelpers, BoundsRankAndDroppedRows) {
    const Cell a(CellArray({2, 3, 4}));
    ASSERT_TRUE(FnArrBounds(a).isArray());
    EXPECT_EQ(FnArrBounds(a).array()(2).toDouble(), 3.0);
    EXPECT_EQ(FnNDims(a), 3);
    EXPECT_EQ(FnNDims(Cell(1.0)), 0);
    EXPECT_TRUE(FnArrBounds(Cell()).isEmpty());
    const Cell v = FnDropRow(vec({"a", "b", "c"}), 1, true);
    EXPECT_EQ(v.array().size(0), 2);
    EXPECT_EQ(v.array()(1).toString(), QStringLiteral("c"));
    CellArray m({3, 2});
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 2; ++c)
            m(r, c) = Cell(10 * r + c);
    const Cell d = FnDropRow(Cell(m), 0, false);
    EXPECT_EQ(d.array().size(0), 2);
    EXPECT_EQ(d.array()(0, 1).toDouble(), 11.0);
}

TEST(ComputationHelpers, RecordOfTheKernelsInputs) {
    clearErrorStore();
    KernelInputs in;
    in.ArrADWIP = Cell(CellArray({1, 1, 1, 1, 1, 8}));
    in.ArrAGD = Cell(CellArray({1, 1, 1, 1, 1, 2}));
    in.ArrDBC = Cell(CellArray({1, 1})); // not six dimensions
    in.MtxLTS = Cell(CellArray({101, 3}));
    in.IOrP = Cell("B");
    in.VctrYrLst = vec({"2020"});
    in.VctrBPULst = vec({"007"});
    in.MtxDAP = Cell(CellArray({1, 5}));
    in.MtxCobCd = Cell(CellArray({2, 2}));
    const CellArray t = FnBDNParams(in);
    EXPECT_EQ(t(0, 0).toString(), QStringLiteral("Parameter"));
    EXPECT_EQ(t(3, 0).toString(), QStringLiteral("ArrDBC"));
    EXPECT_EQ(t(5, 0).toString(), QStringLiteral("IOrP"));
    EXPECT_EQ(t(5, 2).toDouble(), 0.0); // no array
    EXPECT_EQ(errorStoreCount(), 1);
    in.IOrP = Cell("X");
    FnBDNParams(in);
    EXPECT_EQ(errorStoreCount(), 3);
    clearErrorStore();
}

TEST(ComputationHelpers, ResultLabels) {
    CellArray dap({2, kDapLastColumn + 1});
    dap(0, kDapId) = Cell("0");
    dap(1, kDapId) = Cell("3");
    CellArray cob({1, 2});
    cob(0, kCobCdCode) = Cell("A01");
    const ResultLabels l = BldResultLabels(vec({"2020"}), vec({"007"}), Cell(dap), Cell(cob), vec({"F0-w"}),
                                           vec({"F0-w", "M0-w"}), Cell());
    EXPECT_EQ(l.yld.array()(kLblDAPs).array()(1).toString(), QStringLiteral("3"));
    EXPECT_EQ(l.yld.array()(kLblCauses).array()(0).toString(), QStringLiteral("A01"));
    EXPECT_EQ(l.yll.array()(kLblAsgs).array().size(0), 2);
    EXPECT_EQ(l.yll.array()(kLblMeasures).array()(2).toString(), QStringLiteral("YLL"));
    EXPECT_TRUE(l.daly.array()(kLblAsgs).isEmpty());
    EXPECT_EQ(l.daly.array()(kLblMeasures).array()(3).toString(), QStringLiteral("PDALY"));
}

} // namespace
