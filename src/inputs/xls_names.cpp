// The defined names of a BIFF8 workbook, read from the "Workbook" stream of its compound file
// (inputs/compound_file.h). The workbook globals run to the first EOF record: BOUNDSHEET gives the
// sheet order, EXTERNSHEET maps reference indexes to sheets, and NAME holds each name with its
// formula, of which a single ptgArea3d or ptgRef3d token is a table's area.

#include "inputs/xls_file.h"

#include "inputs/compound_file.h"

#include <QFile>

namespace vesk {

namespace {

quint16 u16(const QByteArray& b, qsizetype at) {
    if (at < 0 || at + 2 > b.size())
        return 0;
    return static_cast<quint16>(static_cast<unsigned char>(b[at]) | static_cast<unsigned char>(b[at + 1]) << 8);
}

// A BIFF8 unicode string without a length prefix: the option byte, then the characters.
QString biffString(const QByteArray& b, qsizetype at, int chars) {
    if (at < 0 || at + 1 > b.size())
        return QString();
    const bool wide = (static_cast<unsigned char>((at < b.size() ? b[at] : 0)) & 0x01) != 0;
    if (wide)
        return QString::fromUtf16(reinterpret_cast<const char16_t*>(b.constData() + at + 1),
                                  std::min<qsizetype>(chars, (b.size() - at - 1) / 2));
    return QString::fromLatin1(b.mid(at + 1, chars));
}

} // namespace

namespace {

struct Globals {
    QList<int> externSheets;                 // the first sheet of each reference
    QList<QPair<QString, QByteArray>> names; // each user name with its formula
};

// The records of the workbook globals up to their EOF; std::nullopt for an older BIFF.
std::optional<Globals> readGlobals(const QByteArray& wb) {
    Globals g;
    for (qsizetype at = 0; at + 4 <= wb.size();) {
        const quint16 type = u16(wb, at), len = u16(wb, at + 2);
        const QByteArray body = wb.mid(at + 4, len);
        at += 4 + len;
        if (type == 0x000A) // EOF of the globals
            break;
        if (type == 0x0809 && u16(body, 0) != 0x0600) // BOF of an older BIFF: its names differ
            return std::nullopt;
        if (type == 0x0017) { // EXTERNSHEET: supporting book, first sheet, last sheet
            const int n = u16(body, 0);
            for (int i = 0; i < n; ++i)
                g.externSheets << u16(body, 2 + 6 * i + 2);
        } else if (type == 0x0018 && body.size() >= 15) { // NAME
            const quint16 options = u16(body, 0);
            const int chars = static_cast<unsigned char>(body[3]);
            const int formulaSize = u16(body, 4);
            if (options & 0x0020) // built-in names: print areas and the like
                continue;
            const bool wide = (static_cast<unsigned char>(body[14]) & 0x01) != 0;
            const qsizetype formulaAt = 14 + 1 + chars * (wide ? 2 : 1);
            g.names << qMakePair(biffString(body, 14, chars), body.mid(formulaAt, formulaSize));
        }
    }
    return g;
}

// The area of a formula that is one ptgArea3d or ptgRef3d token, whatever its class bits.
std::optional<SheetArea> areaOf(const QByteArray& formula, const QList<int>& externSheets) {
    const int first = formula.isEmpty() ? 0 : static_cast<unsigned char>(formula[0]);
    const int token = first >= 0x20 ? first & 0x1F : -1;
    SheetArea area;
    if (token == 0x1B && formula.size() >= 11) { // ptgArea3d
        area.row1 = u16(formula, 3);
        area.row2 = u16(formula, 5);
        area.col1 = u16(formula, 7) & 0x3FFF;
        area.col2 = u16(formula, 9) & 0x3FFF;
    } else if (token == 0x1A && formula.size() >= 7) { // ptgRef3d
        area.row1 = area.row2 = u16(formula, 3);
        area.col1 = area.col2 = u16(formula, 5) & 0x3FFF;
    } else {
        return std::nullopt;
    }
    const int ixti = u16(formula, 1);
    if (ixti >= externSheets.size())
        return std::nullopt;
    area.sheet = externSheets[ixti];
    return area;
}

} // namespace

QList<XlsName> readXlsNames(const QString& path) {
    QList<XlsName> out;
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return out;
    const auto wb = readCompoundStream(f.readAll(), QStringLiteral("Workbook"));
    if (!wb)
        return out;
    const auto globals = readGlobals(*wb);
    if (!globals)
        return out;
    for (const auto& [name, formula] : globals->names)
        if (const auto area = areaOf(formula, globals->externSheets))
            out << XlsName{name, *area};
    return out;
}

} // namespace vesk
