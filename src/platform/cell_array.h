#pragma once
// CellArray: an N-dimensional array of cells with explicit bounds, stored flat in row-major order
// (the last index moves fastest). Arrays of the program are zero-based with rows first, but any
// lower bound is kept, as the old runtime allowed.

#include "platform/cell.h"

#include <initializer_list>
#include <utility>
#include <vector>

namespace vesk {

struct Bound {
    int lower = 0;
    int upper = -1; // upper < lower: the dimension has no element
    int size() const { return upper >= lower ? upper - lower + 1 : 0; }
    bool operator==(const Bound&) const = default;
};

class CellArray {
public:
    CellArray() = default;
    // Zero-based dimensions of the given sizes, all Empty.
    explicit CellArray(std::initializer_list<int> sizes);
    explicit CellArray(std::vector<Bound> bounds);
    static CellArray fromSizes(const std::vector<int>& sizes);

    int rank() const { return static_cast<int>(bounds_.size()); }
    const std::vector<Bound>& bounds() const { return bounds_; }
    int lbound(int dim = 0) const { return bounds_.at(dim).lower; }
    int ubound(int dim = 0) const { return bounds_.at(dim).upper; }
    int size(int dim = 0) const { return bounds_.at(dim).size(); }
    std::size_t count() const { return cells_.size(); }
    bool isEmpty() const { return cells_.empty(); }

    Cell& at(std::initializer_list<int> index);
    const Cell& at(std::initializer_list<int> index) const;
    Cell& operator()(int i) { return at({i}); }
    const Cell& operator()(int i) const { return at({i}); }
    Cell& operator()(int i, int j) { return at({i, j}); }
    const Cell& operator()(int i, int j) const { return at({i, j}); }

    // Flat access in storage order.
    Cell& flat(std::size_t k) { return cells_[k]; }
    const Cell& flat(std::size_t k) const { return cells_[k]; }

    // New bounds; with preserve, every cell whose index lies in both the old and the new bounds
    // keeps its value (more general than the old runtime, which could only move the last bound).
    void redim(std::vector<Bound> bounds, bool preserve);

    bool operator==(const CellArray& other) const;

private:
    std::size_t offset(const int* index, int n) const;

    std::vector<Bound> bounds_;
    std::vector<Cell> cells_;
};

} // namespace vesk
