// Direct element access a(i, j, ...) against the reference at({i, j, ...}): the same cell, the same
// bounds checks and the same error, for every rank from one to six and for lower bounds other than 0.

#include "platform/cell_array.h"

#include <array>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>

using namespace vesk;

namespace {

// Bounds of up to six dimensions with mixed lower bounds, negative ones and a single-element one.
const std::vector<Bound> kMixedBounds{{-1, 1}, {2, 4}, {0, 1}, {5, 5}, {1, 2}, {-3, -2}};

CellArray numbered(int rank) {
    CellArray a(std::vector<Bound>(kMixedBounds.begin(), kMixedBounds.begin() + rank));
    for (std::size_t k = 0; k < a.count(); ++k)
        a.flat(k) = Cell(static_cast<double>(k));
    return a;
}

template <std::size_t N> std::array<int, N> lowerCorner(const CellArray& a) {
    std::array<int, N> idx{};
    for (std::size_t d = 0; d < N; ++d)
        idx[d] = a.lbound(static_cast<int>(d));
    return idx;
}

// Next index in storage order; false after the last.
template <std::size_t N> bool nextIndex(const CellArray& a, std::array<int, N>& idx) {
    for (int d = static_cast<int>(N) - 1; d >= 0; --d) {
        if (++idx[d] <= a.ubound(d))
            return true;
        idx[d] = a.lbound(d);
    }
    return false;
}

template <std::size_t N> const Cell* direct(const CellArray& a, const std::array<int, N>& idx) {
    return std::apply([&](auto... i) { return &a(i...); }, idx);
}
template <std::size_t N> const Cell* reference(const CellArray& a, const std::array<int, N>& idx) {
    return std::apply([&](auto... i) { return &a.at({i...}); }, idx);
}

// Every index reaches the cell at() reaches, in storage order, and each cell once.
template <std::size_t N> void expectSameCellsAsAt() {
    CellArray a = numbered(static_cast<int>(N));
    ASSERT_EQ(a.rank(), static_cast<int>(N));
    auto idx = lowerCorner<N>(a);
    std::size_t k = 0;
    std::set<const Cell*> seen;
    do {
        const Cell* cell = direct(a, idx);
        EXPECT_EQ(cell, reference(a, idx)) << "rank " << N << ", cell " << k;
        EXPECT_EQ(cell, &a.flat(k)) << "rank " << N << ", cell " << k;
        seen.insert(cell);
        ++k;
    } while (nextIndex(a, idx));
    EXPECT_EQ(k, a.count());
    EXPECT_EQ(seen.size(), a.count());
}

template <std::size_t N> void expectOutOfRangeInEachPosition() {
    const CellArray a = numbered(static_cast<int>(N));
    for (std::size_t d = 0; d < N; ++d) {
        for (int outside : {a.lbound(static_cast<int>(d)) - 1, a.ubound(static_cast<int>(d)) + 1}) {
            auto idx = lowerCorner<N>(a);
            idx[d] = outside;
            EXPECT_THROW(direct(a, idx), std::out_of_range) << "rank " << N << ", position " << d;
            EXPECT_THROW(reference(a, idx), std::out_of_range) << "rank " << N << ", position " << d;
        }
    }
}

std::string messageOf(auto&& access) {
    try {
        access();
    } catch (const std::out_of_range& e) {
        return e.what();
    }
    return "no exception";
}

} // namespace

TEST(CellArrayIndex, EveryRankReachesTheCellsOfAt) {
    expectSameCellsAsAt<1>();
    expectSameCellsAsAt<2>();
    expectSameCellsAsAt<3>();
    expectSameCellsAsAt<4>();
    expectSameCellsAsAt<5>();
    expectSameCellsAsAt<6>();
}

TEST(CellArrayIndex, OutOfRangeInEveryPositionOfEveryRank) {
    expectOutOfRangeInEachPosition<1>();
    expectOutOfRangeInEachPosition<2>();
    expectOutOfRangeInEachPosition<3>();
    expectOutOfRangeInEachPosition<4>();
    expectOutOfRangeInEachPosition<5>();
    expectOutOfRangeInEachPosition<6>();
}

TEST(CellArrayIndex, ErrorTextIsThatOfAt) {
    CellArray a{2, 2, 2, 2, 2, 2};
    EXPECT_EQ(messageOf([&] { a(0, 0, 0, 0, 0, 2); }), "Subscript out of range");
    EXPECT_EQ(messageOf([&] { a.at({0, 0, 0, 0, 0, 2}); }), "Subscript out of range");
    EXPECT_EQ(messageOf([&] { a(0, 0, 0); }), "Subscript out of range");
}

TEST(CellArrayIndex, RankMismatchThrows) {
    CellArray six{2, 2, 2, 2, 2, 2};
    EXPECT_THROW(six(0, 0, 0), std::out_of_range);
    EXPECT_THROW(six(0, 0, 0, 0), std::out_of_range);
    EXPECT_THROW(six(0, 0, 0, 0, 0), std::out_of_range);
    const CellArray three{2, 2, 2};
    EXPECT_THROW(three(0, 0, 0, 0, 0, 0), std::out_of_range);
    EXPECT_THROW(three(0, 0), std::out_of_range);
    const CellArray none;
    EXPECT_THROW(none(0, 0, 0), std::out_of_range);
}

TEST(CellArrayIndex, WritesLandWhereAtReadsAndSurviveARedim) {
    CellArray a{3, 2, 1, 4, 2, 3};
    a(2, 1, 0, 3, 1, 2) = Cell(42.0);
    a(1, 0, 0, 2, 0, 1) = Cell(QStringLiteral("M05-14"));
    EXPECT_DOUBLE_EQ(a.at({2, 1, 0, 3, 1, 2}).toDouble(), 42.0);
    EXPECT_EQ(a.at({1, 0, 0, 2, 0, 1}).toString(), "M05-14");

    // New strides after a preserving redim: the kept cells are still found under their indices.
    a.redim({{0, 2}, {0, 1}, {0, 1}, {0, 4}, {0, 1}, {0, 3}}, true);
    EXPECT_DOUBLE_EQ(a(2, 1, 0, 3, 1, 2).toDouble(), 42.0);
    EXPECT_EQ(a(1, 0, 0, 2, 0, 1).toString(), "M05-14");
    EXPECT_TRUE(a(2, 1, 1, 4, 1, 3).isEmpty());
}

TEST(CellArrayIndex, EmptyDimensionHasNoElement) {
    CellArray a(std::vector<Bound>{{0, 1}, {0, -1}, {0, 2}});
    EXPECT_EQ(a.count(), 0u);
    EXPECT_THROW(a(0, 0, 0), std::out_of_range);
}
