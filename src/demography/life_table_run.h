#pragma once
// One computation of FnLifeTable (life_table.h holds the formulas and their sources): the widened
// copy of the rates and the passes of each method over it. Every fault throws, as a RuntimeError
// or the array's own out-of-range error; FnLifeTable catches it.

#include "demography/life_table.h"

namespace vesk {

class LifeTableRun {
public:
    LifeTableRun(const CellArray& input, qint16 IMR, qint16 PGR, qint16 method,
                 const LifeTableSettings& options);

    // The method's passes, with R = IMR / IMRDenominator.
    void compute(double R);
    // The three adjusted columns, where `adjust` holds an array of disability fractions.
    void adjust(const Cell& adjust);
    CellArray take() { return std::move(t_); }

private:
    // Reading the table.
    double num(int row, int col) const;
    double age(int row) const { return num(row, life_table_col::X); }
    double m(int row) const { return num(row, life_table_col::Mx); }
    double l(int row) const { return num(row, life_table_col::lx); }
    bool isOpen(int row) const;
    bool hasWidth(int row, double width) const; // n numeric and equal to width
    bool isFirstAge(int row) const { return age(row) == 0 && hasWidth(row, 1); }
    double population(int row) const; // of the input, never of the copy
    void set(int row, int col, double v) { t_(row, col) = Cell(v); }

    void copyInput(const CellArray& input);
    void setWidths();
    double infantQ() const; // (1 - f)·exp(-PGR) + R / f, Keyfitz and Greville
    double plainQ(int row, double ax) const;
    void survivors(int row); // px, lx, dx from qx
    void standardLx();
    void backwardTx();
    void expectations();
    double unitAx(int row) const; // 1 - 1/qx + 1/(n·m)

    void standard();
    void keyfitz();
    void keyfitzQ(int row);
    void reedMerrell();
    void reedMerrellLx(int row);
    void reedMerrellBackward(int row);
    bool reedMerrellTx(int row);
    void greville();

    const CellArray& input_;
    CellArray t_;
    qint16 IMR_, PGR_, method_;
    LifeTableSettings options_;
    double R_ = 0, f_ = 0;
    int first_ = 0, last_ = -1;
};

} // namespace vesk
