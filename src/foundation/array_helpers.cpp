#include "foundation/array_helpers.h"

#include "platform/runtime.h"

#include <utility>

namespace vesk {

namespace {

int sign(double d) {
    return d < 0 ? -1 : (d > 0 ? 1 : 0);
}

int compareText(const QString& a, const QString& b) {
    return sign(QString::compare(a, b, Qt::CaseSensitive));
}

void swapRows(CellArray& array, int i, int j) {
    if (array.rank() == 1) {
        std::swap(array(i), array(j));
        return;
    }
    for (int c = array.lbound(1); c <= array.ubound(1); ++c)
        std::swap(array(i, c), array(j, c));
}

} // namespace

std::optional<int> CompareCells(const Cell& a, const Cell& b) {
    if (a.isArray() || b.isArray())
        throw RuntimeError(runtime_error::kTypeMismatch);
    if (a.isNull() || b.isNull())
        return std::nullopt;
    if (a.isEmpty() && b.isEmpty())
        return 0;
    if (a.isNumber() && b.isNumber())
        return sign(a.toDouble() - b.toDouble());
    if (a.isText() && b.isText())
        return compareText(a.toString(), b.toString());
    if (a.isEmpty())
        return b.isNumber() ? sign(0.0 - b.toDouble()) : compareText(QString(), b.toString());
    if (b.isEmpty())
        return a.isNumber() ? sign(a.toDouble()) : compareText(a.toString(), QString());
    // One number, one text: the number is the lesser.
    return a.isNumber() ? -1 : 1;
}

bool cellEquals(const Cell& a, const Cell& b) {
    const auto c = CompareCells(a, b);
    return c && *c == 0;
}

bool cellLess(const Cell& a, const Cell& b) {
    const auto c = CompareCells(a, b);
    return c && *c < 0;
}

bool cellGreater(const Cell& a, const Cell& b) {
    const auto c = CompareCells(a, b);
    return c && *c > 0;
}

bool isNumericCell(const Cell& value) {
    if (value.isNumber())
        return true;
    if (!value.isText())
        return false;
    const QString t = value.toString().trimmed();
    if (t.isEmpty())
        return false;
    bool ok = false;
    t.toDouble(&ok);
    return ok;
}

bool isBlankCell(const Cell& value) {
    if (value.isEmpty() || value.isNull())
        return true;
    return value.isText() && value.toString().trimmed().isEmpty();
}

bool isArrayCell(const Cell& value) {
    return value.isArray() && value.array().rank() > 0;
}

void FnSortArr(CellArray& array, int column, int order) {
    if (array.rank() == 0)
        return;
    const int lo = array.lbound(0);
    const int hi = array.ubound(0);
    auto key = [&](int i) -> const Cell& { return column < 0 ? array(i) : array(i, column); };
    for (int i = lo; i < hi; ++i) {
        for (int j = i + 1; j <= hi; ++j) {
            const bool outOfOrder = order != 0 ? cellGreater(key(i), key(j)) : cellLess(key(i), key(j));
            if (outOfOrder)
                swapRows(array, i, j);
        }
    }
}

CellArray FnArrDelRow(const CellArray& array, int index, int dimensions) {
    if (array.rank() == 0 || index < array.lbound(0) || index > array.ubound(0))
        throw RuntimeError(runtime_error::kSubscriptOutOfRange);
    const int rows = array.size(0) - 1;
    if (rows <= 0)
        return CellArray();
    if (dimensions == 1 || array.rank() == 1) {
        CellArray out({rows});
        int k = 0;
        for (int i = array.lbound(0); i <= array.ubound(0); ++i)
            if (i != index)
                out(k++) = array(i);
        return out;
    }
    const int cols = array.size(1);
    CellArray out({rows, cols});
    int k = 0;
    for (int i = array.lbound(0); i <= array.ubound(0); ++i) {
        if (i == index)
            continue;
        for (int c = 0; c < cols; ++c)
            out(k, c) = array(i, array.lbound(1) + c);
        ++k;
    }
    return out;
}

Cell FnCompactArr(const Cell& value, int dimensions) {
    if (!isArrayCell(value))
        return Cell(QString());
    const CellArray& array = value.array();
    std::vector<int> keep;
    const bool rows = dimensions == 2 && array.rank() == 2;
    for (int i = array.lbound(0); i <= array.ubound(0); ++i) {
        bool blank = true;
        if (rows) {
            for (int c = array.lbound(1); c <= array.ubound(1) && blank; ++c)
                blank = isBlankCell(array(i, c));
        } else {
            blank = isBlankCell(array.rank() == 1 ? array(i) : array(i, array.lbound(1)));
        }
        if (!blank)
            keep.push_back(i);
    }
    if (keep.empty())
        return Cell(QString());
    if (!rows) {
        CellArray out({static_cast<int>(keep.size())});
        for (std::size_t k = 0; k < keep.size(); ++k)
            out(static_cast<int>(k)) = array.rank() == 1 ? array(keep[k]) : array(keep[k], array.lbound(1));
        return Cell(std::move(out));
    }
    const int cols = array.size(1);
    CellArray out({static_cast<int>(keep.size()), cols});
    for (std::size_t k = 0; k < keep.size(); ++k)
        for (int c = 0; c < cols; ++c)
            out(static_cast<int>(k), c) = array(keep[k], array.lbound(1) + c);
    return Cell(std::move(out));
}

} // namespace vesk
