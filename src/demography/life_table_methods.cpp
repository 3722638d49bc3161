// The passes of Keyfitz, Reed-Merrell and Greville over the widened table (life_table.h holds the
// formulas and their sources; Standard and the shared steps are in life_table_run.cpp).

#include "demography/life_table_run.h"

#include "demography/life_table_texts.h"
#include "foundation/runtime_arithmetic.h"

namespace vesk {

using namespace runtime_arithmetic;
namespace col = life_table_col;

namespace {

const Cell& notApplicable() {
    static const Cell na(QString::fromLatin1(life_table_texts::kNotApplicable));
    return na;
}

bool isBlank(const Cell& c) {
    return c.isEmpty() || (c.isText() && c.toString().isEmpty());
}

} // namespace

// Keyfitz's correction: q from the rates and populations of the neighbouring groups. Nothing
// guards the ends: the first row has no row before it, the open row none after it and no width.
void LifeTableRun::keyfitzQ(int i) {
    const double before = population(i - 1), after = population(i + 1);
    const double slope = finite(m(i + 1) - m(i - 1));
    const double here = population(i);
    const double n = num(i, col::n);
    const double correction = quot(finite((before - after) * slope), finite(48 * here));
    set(i, col::qx, finite(1 - ex(finite(-n * finite(m(i) + correction)))));
}

void LifeTableRun::keyfitz() {
    const auto lower = options_.kfLower, upper = options_.kfUpper;
    const std::optional<double> imr = double(IMR_);
    for (int i = first_; i <= last_; ++i) {
        const auto ax = FnAxFraction(age(i), imr);
        t_(i, col::ax) = isOpen(i) ? notApplicable() : (ax ? Cell(*ax) : Cell::null());
        const double a = age(i);
        if (lower && upper && *lower <= a && a <= *upper)
            keyfitzQ(i);
        else if (isFirstAge(i))
            set(i, col::qx, infantQ());
        else if (isOpen(i))
            set(i, col::qx, 1);
        else
            set(i, col::qx, plainQ(i, num(i, col::ax)));
        survivors(i);
    }
    standardLx();
    for (int i = first_; i <= last_; ++i) {
        const double a = age(i);
        if (!isOpen(i) && ((lower && a > *lower) || (upper && a <= *upper)))
            set(i, col::ax, unitAx(i));
        t_(i, col::Extra) = input_(i, 2);
    }
    backwardTx();
    expectations();
}

void LifeTableRun::reedMerrell() {
    for (int i = first_; i <= last_; ++i) {
        double q = 1;
        if (!isOpen(i)) {
            const double mm = m(i), a = age(i);
            if (a == 0 && hasWidth(i, 1))
                q = 1 - ex(finite(-mm * finite(0.9539 - 0.5509 * mm)));
            else if (a == 1 && hasWidth(i, 1))
                q = 1 - ex(finite(-mm * finite(0.951 - 1.921 * mm)));
            else if (a == 1 && hasWidth(i, 4))
                q = 1 - ex(finite(-mm * finite(0.9086 - 2.079 * mm)));
            else {
                const double n = num(i, col::n);
                q = 1 - ex(finite(-n * mm - 0.008 * n * n * n * sq(mm)));
            }
        }
        set(i, col::qx, q);
        survivors(i);
    }
    for (int i = first_; i <= last_; ++i)
        reedMerrellLx(i);
    set(last_, col::Tx, quot(l(last_), m(last_)));
    for (int i = last_; i >= first_; --i)
        reedMerrellBackward(i);
}

// Reed and Merrell's person-years of the young ages from the survivors around them; each rule
// reads only rows that exist, and leaves the cell empty otherwise.
void LifeTableRun::reedMerrellLx(int i) {
    if (isOpen(i)) {
        set(i, col::Lx, quot(l(i), m(i)));
        return;
    }
    const double a = age(i);
    const bool beforeLast = i < last_;
    if (a == 0 && hasWidth(i, 1)) {
        if (beforeLast)
            set(i, col::Lx, finite(f_ * l(i) + (1 - f_) * l(i + 1)));
    } else if (a == 1 && hasWidth(i, 1)) {
        if (beforeLast)
            set(i, col::Lx, finite(0.41 * l(i) + 0.592 * l(i + 1)));
    } else if (a == 1 && hasWidth(i, 4)) {
        if (i > first_ && beforeLast)
            set(i, col::Lx, finite(0.034 * l(i - 1) + 1.184 * l(i) + 2.782 * l(i + 1)));
    } else if (a == 2 && hasWidth(i, 3)) {
        if (i > first_ + 1 && beforeLast)
            set(i, col::Lx, finite(0.21 * l(i - 2) + 1.384 * l(i) + 1.637 * l(i + 1)));
    } else if (a == 5 && hasWidth(i, 5)) {
        if (beforeLast)
            set(i, col::Lx, finite(0.21 * l(first_) + 1.384 * l(i) + 1.637 * l(i + 1)));
    } else {
        // n·(lx·px + ax·dx) with ax not yet known: the term in ax falls away.
        set(i, col::Lx, finite(num(i, col::n) * l(i) * num(i, col::px)));
    }
}

// Tx of a row that is not the open one, by the first rule that fits; false where a rule fits and its
// guard fails, so that Tx stays as it was.
bool LifeTableRun::reedMerrellTx(int i) {
    const double a = age(i);
    const double n = num(i, col::n);
    const bool beforeLast = i < last_;
    const double rs = num(i, col::Extra);
    if (a >= 5 && n == 5) {
        if (!(i > first_ && beforeLast))
            return false;
        set(i, col::Tx, finite(0.20833 * l(i - 1) + 2.5 * l(i) + 0.20833 * l(i + 1) + 5 * rs));
    } else if (a >= 5 && n == 10) {
        if (!beforeLast)
            return false;
        set(i, col::Tx, finite(4.16667 * l(i) + 0.83333 * l(i + 1) + 10 * rs));
    } else if (a <= 5 && n < 5) {
        if (!beforeLast)
            return false;
        set(i, col::Tx, finite(num(i + 1, col::Tx) + num(i, col::Lx)));
    } else {
        set(i, col::Tx, double(FnSumColumn(t_, col::Lx, i, 1)));
    }
    return true;
}

void LifeTableRun::reedMerrellBackward(int i) {
    set(i, col::Extra, i == last_ ? l(i) : finite(l(i) + num(i + 1, col::Extra)));
    const bool open = isOpen(i);
    if (!open)
        reedMerrellTx(i);
    const double a = age(i);
    if (!open && ((a >= 5 && hasWidth(i, 10)) || (a >= 10 && hasWidth(i, 5))))
        set(i, col::Lx, finite(num(i, col::Tx) - num(i + 1, col::Tx)));
    set(i, col::Ex, quot(num(i, col::Tx), l(i)));
    if (!open) {
        set(i, col::ax, unitAx(i));
        if (!isBlank(t_(i, col::Lx)) && !isBlank(t_(i, col::dx)))
            set(i, col::mx, quot(num(i, col::dx), num(i, col::Lx)));
    }
}

void LifeTableRun::greville() {
    const double lnC = ln(options_.greval);
    for (int i = first_; i <= last_; ++i) {
        double q = 1;
        if (isFirstAge(i)) {
            q = infantQ();
        } else if (!isOpen(i)) {
            const double n = num(i, col::n), mm = m(i);
            q = quot(mm, finite(quot(1, n) + mm * finite(0.5 + (n / 12) * (mm - lnC))));
        }
        set(i, col::qx, q);
        survivors(i);
    }
    for (int i = first_; i <= last_; ++i) {
        double L;
        if (i == last_ || isOpen(i))
            L = quot(l(i), m(i));
        else if (isFirstAge(i))
            L = finite(f_ * l(i) + (1 - f_) * l(i + 1));
        else
            L = quot(num(i, col::dx), m(i));
        set(i, col::Lx, L);
        set(i, col::mx, quot(num(i, col::dx), L));
    }
    for (int i = last_; i >= first_; --i) {
        set(i, col::Tx, i == last_ ? num(i, col::Lx) : finite(num(i + 1, col::Tx) + num(i, col::Lx)));
        t_(i, col::ax) = isOpen(i) ? notApplicable() : Cell(unitAx(i));
    }
    expectations();
}

} // namespace vesk
