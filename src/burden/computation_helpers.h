#pragma once
// The small helpers of a computation: the bounds and the rank of an array, a row dropped from a
// vector or matrix, the record of the kernel's inputs (FnBDNParams) and the labels of the results'
// axes (BldResultLabels).

#include "platform/cell.h"
#include "platform/cell_array.h"

namespace vesk {

// FnArrBounds: the upper bound of each dimension; Empty for no array.
Cell FnArrBounds(const Cell& a);
// FnNDims: the number of dimensions; 0 for no array.
int FnNDims(const Cell& a);
// FnDropRow: a copy without row `row`, of a vector (`isVector`) or of a two-dimensional matrix.
Cell FnDropRow(const Cell& a, int row, bool isVector);

// The inputs of the kernel, in the order of the rows of ArrBDNParams.
struct KernelInputs {
    Cell ArrADWIP, ArrAGD, ArrDBC, MtxLTS, IOrP, VctrYrLst, VctrBPULst, MtxDAP, MtxCobCd;
};

// FnBDNParams: the table of what the orchestrator was given (a head row "Parameter", "Parameter
// Address", "IsArray", "Dimensions", "DNLblMatch", "Remarks", then one row an input), and its checks:
// an input that should be an array and is not, or of the wrong number of dimensions, and a mode that
// is not "B", "P" or "I", each go to the error store as -2147221484 and stop nothing.
CellArray FnBDNParams(const KernelInputs& in);
inline constexpr double kBdnParamsError = -2147221484.0;

// BldResultLabels: the six entries of ArrYldLbl, ArrYllLbl and ArrDalyLbl (years, units, DAP ids,
// causes, age-sex labels, measure names); the DALY labels are those ArrDaly holds.
struct ResultLabels {
    Cell yld, yll, daly;
};
ResultLabels BldResultLabels(const Cell& VctrYrLst, const Cell& VctrBPULst, const Cell& MtxDAP, const Cell& MtxCobCd,
                             const Cell& VctrYLDAsg, const Cell& VctrYLLAsg, const Cell& ArrDaly);

} // namespace vesk
