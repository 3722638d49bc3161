#include "demography/life_table_run.h"

#include "demography/life_table_texts.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "platform/runtime.h"

namespace vesk {

using namespace runtime_arithmetic;
namespace col = life_table_col;

namespace {

// ProcCoerceColumns: a rate cell as a number, a text through the lenient parse (no number gives 0).
Cell coerced(const Cell& c) {
    switch (c.kind()) {
    case Cell::Kind::Empty:
        return Cell(0.0);
    case Cell::Kind::Number:
        return Cell(c.toDouble());
    case Cell::Kind::Text:
        return Cell(Val(c.toString()));
    case Cell::Kind::Null:
        fail(runtime_error::kInvalidUseOfNull);
    case Cell::Kind::Array:
        break;
    }
    fail(runtime_error::kTypeMismatch);
}

} // namespace

LifeTableRun::LifeTableRun(const CellArray& input, qint16 IMR, qint16 PGR, qint16 method,
                           const LifeTableSettings& options)
    : input_(input), IMR_(IMR), PGR_(PGR), method_(method), options_(options) {
    copyInput(input);
}

void LifeTableRun::copyInput(const CellArray& input) {
    first_ = input.lbound(0);
    last_ = input.ubound(0);
    const int width = lifeTableWidth(method_);
    t_ = CellArray(std::vector<Bound>{{first_, last_}, {0, width - 1}});
    const int lastInput = std::min(input.ubound(1), width - 1);
    for (int i = first_; i <= last_; ++i) {
        for (int c = std::max(0, input.lbound(1)); c <= lastInput; ++c)
            t_(i, c) = c == 0 ? input(i, c) : coerced(input(i, c));
        if (input.ubound(1) >= 2)
            t_(i, col::n) = Cell(QString());
    }
}

double LifeTableRun::num(int row, int c) const {
    return operand(t_(row, c));
}

bool LifeTableRun::isOpen(int row) const {
    const Cell& n = t_(row, col::n);
    return n.isText() && n.toString().trimmed().toUpper() == QLatin1String(life_table_texts::kOpenInterval);
}

bool LifeTableRun::hasWidth(int row, double width) const {
    const Cell& n = t_(row, col::n);
    return n.isNumber() && n.toDouble() == width;
}

double LifeTableRun::population(int row) const {
    return operand(input_(row, 2));
}

void LifeTableRun::setWidths() {
    for (int i = first_; i < last_; ++i)
        set(i, col::n, finite(age(i + 1) - age(i)));
    if (last_ >= first_)
        t_(last_, col::n) = Cell(QString::fromLatin1(life_table_texts::kOpenInterval));
}

double LifeTableRun::infantQ() const {
    return finite((1 - f_) * ex(-double(PGR_)) + quot(R_, f_));
}

double LifeTableRun::plainQ(int row, double ax) const {
    const double nm = finite(num(row, col::n) * m(row));
    return quot(nm, finite(1 + (1 - ax) * nm));
}

void LifeTableRun::survivors(int row) {
    const double q = num(row, col::qx);
    set(row, col::px, 1 - q);
    const double lx = row == first_ ? options_.radix : finite(l(row - 1) * num(row - 1, col::px));
    set(row, col::lx, lx);
    set(row, col::dx, finite(q * lx));
}

double LifeTableRun::unitAx(int row) const {
    const double nm = finite(num(row, col::n) * m(row));
    return finite(1 - quot(1, num(row, col::qx)) + quot(1, nm));
}

// Tx from the last row up: the last row's Lx, then Lx + Tx(i+1).
void LifeTableRun::backwardTx() {
    for (int i = last_; i >= first_; --i) {
        const double L = num(i, col::Lx);
        set(i, col::Tx, i == last_ ? L : finite(L + num(i + 1, col::Tx)));
    }
}

void LifeTableRun::expectations() {
    for (int i = last_; i >= first_; --i)
        set(i, col::Ex, quot(num(i, col::Tx), l(i)));
}

void LifeTableRun::compute(double R) {
    R_ = R;
    f_ = FnSeparationFactor(R);
    setWidths();
    switch (method_) {
    case kLtKeyfitz:
        keyfitz();
        break;
    case kLtReedMerrell:
        reedMerrell();
        break;
    case kLtGreville:
        greville();
        break;
    default:
        standard();
        break;
    }
}

// Lx and mx of Standard and Keyfitz: the open row lx / m, the others n·(lx·px + ax·dx).
void LifeTableRun::standardLx() {
    for (int i = first_; i <= last_; ++i) {
        const double L = isOpen(i) ? quot(l(i), m(i))
                                   : finite(num(i, col::n) * (l(i) * num(i, col::px) + num(i, col::ax) * num(i, col::dx)));
        set(i, col::Lx, L);
        set(i, col::mx, quot(num(i, col::dx), L));
    }
}

void LifeTableRun::standard() {
    const std::optional<double> imr = double(IMR_);
    for (int i = first_; i <= last_; ++i) {
        const auto ax = FnAxFraction(age(i), imr);
        t_(i, col::ax) = ax ? Cell(*ax) : Cell::null();
        double q;
        if (isFirstAge(i))
            q = quot(R_, finite((1 - f_) * ex(-double(PGR_)) + f_));
        else if (isOpen(i))
            q = 1;
        else
            q = plainQ(i, num(i, col::ax));
        set(i, col::qx, q);
        survivors(i);
    }
    standardLx();
    backwardTx();
    expectations();
}

void LifeTableRun::adjust(const Cell& adjust) {
    if (!adjust.isArray())
        return;
    const CellArray& a = adjust.array();
    const int base = lifeTableWidth(method_) - 3;
    const int from[] = {col::Lx, col::Tx, col::Ex};
    for (int k = 0; k < 3; ++k) {
        for (int i = first_; i <= last_; ++i) {
            const double v = num(i, from[k]);
            set(i, base + k, finite(v - v * operand(a(i))));
        }
    }
}

} // namespace vesk
