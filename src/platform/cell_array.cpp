#include "platform/cell_array.h"

#include <stdexcept>

namespace vesk {

namespace {
std::size_t totalCount(const std::vector<Bound>& bounds) {
    if (bounds.empty())
        return 0;
    std::size_t n = 1;
    for (const auto& b : bounds)
        n *= static_cast<std::size_t>(b.size());
    return n;
}
} // namespace

CellArray::CellArray(std::initializer_list<int> sizes) {
    for (int s : sizes)
        bounds_.push_back({0, s - 1});
    cells_.resize(totalCount(bounds_));
    computeStrides();
}

CellArray::CellArray(std::vector<Bound> bounds) : bounds_(std::move(bounds)) {
    cells_.resize(totalCount(bounds_));
    computeStrides();
}

CellArray CellArray::fromSizes(const std::vector<int>& sizes) {
    std::vector<Bound> b;
    for (int s : sizes)
        b.push_back({0, s - 1});
    return CellArray(std::move(b));
}

void CellArray::subscriptOutOfRange() {
    throw std::out_of_range("Subscript out of range");
}

// Row-major: the last index moves fastest.
void CellArray::computeStrides() {
    strides_.assign(bounds_.size(), 1);
    for (int d = rank() - 2; d >= 0; --d)
        strides_[d] = strides_[d + 1] * static_cast<std::size_t>(bounds_[d + 1].size());
}

Cell& CellArray::at(std::initializer_list<int> index) {
    return cells_[offset(index.begin(), static_cast<int>(index.size()))];
}

const Cell& CellArray::at(std::initializer_list<int> index) const {
    return cells_[offset(index.begin(), static_cast<int>(index.size()))];
}

void CellArray::redim(std::vector<Bound> bounds, bool preserve) {
    CellArray fresh(std::move(bounds));
    if (preserve && fresh.rank() == rank() && !cells_.empty() && !fresh.cells_.empty()) {
        // Walk every index of the overlap and move the cell across.
        const int n = rank();
        std::vector<int> lo(n), hi(n), idx(n);
        for (int d = 0; d < n; ++d) {
            lo[d] = std::max(bounds_[d].lower, fresh.bounds_[d].lower);
            hi[d] = std::min(bounds_[d].upper, fresh.bounds_[d].upper);
            if (hi[d] < lo[d]) {
                *this = std::move(fresh);
                return;
            }
        }
        idx = lo;
        while (true) {
            fresh.cells_[fresh.offset(idx.data(), n)] = std::move(cells_[offset(idx.data(), n)]);
            int d = n - 1;
            while (d >= 0 && ++idx[d] > hi[d]) {
                idx[d] = lo[d];
                --d;
            }
            if (d < 0)
                break;
        }
    }
    *this = std::move(fresh);
}

bool CellArray::operator==(const CellArray& other) const {
    return bounds_ == other.bounds_ && cells_ == other.cells_;
}

} // namespace vesk
