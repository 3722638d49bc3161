#pragma once
// CellArray: an N-dimensional array of cells with explicit bounds, stored flat in row-major order
// (the last index moves fastest). Arrays of the program are zero-based with rows first, but any
// lower bound is kept, as the old runtime allowed.

#include "platform/cell.h"

#include <array>
#include <concepts>
#include <cstddef>
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

    // The most dimensions an element is reached by directly; the computation's arrays have six.
    static constexpr int kMaxDirectRank = 6;

    Cell& at(std::initializer_list<int> index);
    const Cell& at(std::initializer_list<int> index) const;

    // a(i), a(i, j) ... a(i, j, k, l, m, n): the same checks as at(), without an index list, so that
    // the loops over the six-dimensional working arrays cost no more than the arithmetic.
    template <std::convertible_to<int>... I>
    requires(sizeof...(I) >= 1 && sizeof...(I) <= kMaxDirectRank) Cell& operator()(I... index) {
        const std::array<int, sizeof...(I)> idx{static_cast<int>(index)...};
        return cells_[offset(idx.data(), static_cast<int>(idx.size()))];
    }
    template <std::convertible_to<int>... I>
    requires(sizeof...(I) >= 1 && sizeof...(I) <= kMaxDirectRank) const Cell& operator()(I... index) const {
        const std::array<int, sizeof...(I)> idx{static_cast<int>(index)...};
        return cells_[offset(idx.data(), static_cast<int>(idx.size()))];
    }

    // Flat access in storage order.
    Cell& flat(std::size_t k) { return cells_[k]; }
    const Cell& flat(std::size_t k) const { return cells_[k]; }

    // New bounds; with preserve, every cell whose index lies in both the old and the new bounds
    // keeps its value (more general than the old runtime, which could only move the last bound).
    void redim(std::vector<Bound> bounds, bool preserve);

    bool operator==(const CellArray& other) const;

private:
    // Inline so that a call with a fixed number of indices unrolls; the throw stays out of line.
    std::size_t offset(const int* index, int n) const {
        if (n != rank())
            subscriptOutOfRange();
        std::size_t k = 0;
        for (int d = 0; d < n; ++d) {
            const Bound& b = bounds_[d];
            if (index[d] < b.lower || index[d] > b.upper)
                subscriptOutOfRange();
            k += static_cast<std::size_t>(index[d] - b.lower) * strides_[d];
        }
        return k;
    }
    [[noreturn]] static void subscriptOutOfRange();
    void computeStrides();

    std::vector<Bound> bounds_;
    std::vector<std::size_t> strides_; // cells between neighbours in each dimension
    std::vector<Cell> cells_;
};

} // namespace vesk
