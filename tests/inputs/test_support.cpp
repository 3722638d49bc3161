#include "test_support.h"

#include <QProcess>
#include <QStandardPaths>
#include <cmath>
#include <cstdio>
#include <sstream>

namespace vesk {

void PrintTo(const Cell& c, std::ostream* os) {
    const char* kind = c.isEmpty()     ? "Empty"
                       : c.isNull()    ? "Null"
                       : c.isText()    ? "Text"
                       : c.isBoolean() ? "Bool"
                       : c.isDate()    ? "Date"
                       : c.isSingle()  ? "Single"
                       : c.isArray()   ? "Array"
                                       : "Number";
    char num[40];
    std::snprintf(num, sizeof num, "%.17g", c.isNumber() ? c.toDouble() : 0.0);
    *os << kind << "(" << c.toString().toStdString() << (c.isNumber() ? std::string(" = ") + num : "") << ")";
}

void PrintTo(const CellArray& a, std::ostream* os) {
    *os << "\n" << test::dump(a);
}

} // namespace vesk

namespace vesk::test {

::testing::AssertionResult sameTable(const CellArray& got, const CellArray& want, double relTol) {
    if (got.bounds() != want.bounds())
        return ::testing::AssertionFailure() << "bounds differ: got\n" << dump(got) << "want\n" << dump(want);
    std::string diffs;
    for (std::size_t k = 0; k < got.count(); ++k) {
        const Cell &g = got.flat(k), &w = want.flat(k);
        bool same = g.kind() == w.kind() && g.subtype() == w.subtype();
        if (same && g.isNumber())
            same = std::fabs(g.toDouble() - w.toDouble()) <= relTol * std::max(1.0, std::fabs(w.toDouble()));
        else if (same)
            same = g == w;
        if (!same) {
            std::ostringstream s;
            s << "cell " << k << ": got ";
            PrintTo(g, &s);
            s << ", want ";
            PrintTo(w, &s);
            diffs += s.str() + "\n";
        }
    }
    if (diffs.empty())
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << diffs;
}

QString fixture(const QString& name) {
    return QStringLiteral(VESK_TEST_DATA "/foreign/") + name;
}

CellArray table(std::initializer_list<std::initializer_list<Cell>> rows) {
    const int n = static_cast<int>(rows.size());
    const int m = n ? static_cast<int>(rows.begin()->size()) : 0;
    CellArray a{n, m};
    int i = 0;
    for (const auto& row : rows) {
        int j = 0;
        for (const auto& c : row)
            a(i, j++) = c;
        ++i;
    }
    return a;
}

std::string dump(const CellArray& a) {
    if (a.rank() != 2)
        return "(rank " + std::to_string(a.rank()) + ", " + std::to_string(a.count()) + " cells)";
    std::string out;
    for (int i = 0; i < a.size(0); ++i) {
        for (int j = 0; j < a.size(1); ++j) {
            const Cell& c = a(a.lbound(0) + i, a.lbound(1) + j);
            const char* kind = c.isEmpty()     ? "E"
                               : c.isNull()    ? "N"
                               : c.isText()    ? "T"
                               : c.isBoolean() ? "B"
                               : c.isDate()    ? "D"
                               : c.isSingle()  ? "S"
                                               : "#";
            out += std::string(kind) + ":" + c.toString().toStdString() + " | ";
        }
        out += "\n";
    }
    return out;
}

std::optional<QString> runProgram(const QString& program, const QStringList& args) {
    if (QStandardPaths::findExecutable(program).isEmpty())
        return std::nullopt;
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace vesk::test
