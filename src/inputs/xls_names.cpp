// The defined names of a BIFF8 workbook, read from its compound file.
//
// A compound file is a little FAT file system in sectors of 512 (or 4096) bytes: the header holds
// the first 109 sectors of the allocation table and the start of the directory; the directory
// names the "Workbook" stream; streams under 4096 bytes live in 64-byte mini sectors inside the
// root entry's stream. The workbook globals run to the first EOF record: BOUNDSHEET gives the
// sheet order, EXTERNSHEET maps reference indexes to sheets, and NAME holds each name with its
// formula, of which a single ptgArea3d or ptgRef3d token is a table's area.

#include "inputs/xls_file.h"

#include <QFile>

namespace vesk {

namespace {

constexpr quint32 kEndOfChain = 0xFFFFFFFE;
constexpr quint32 kFree = 0xFFFFFFFF;

quint32 bytesAt(const QByteArray& b, qsizetype at, int n) {
    quint32 v = 0;
    for (int k = n - 1; k >= 0; --k)
        v = v << 8 | static_cast<unsigned char>(b.at(at + k));
    return v;
}
quint16 u16(const QByteArray& b, qsizetype at) {
    return at >= 0 && at + 2 <= b.size() ? static_cast<quint16>(bytesAt(b, at, 2)) : 0;
}
quint32 u32(const QByteArray& b, qsizetype at) {
    return at >= 0 && at + 4 <= b.size() ? bytesAt(b, at, 4) : kEndOfChain;
}

class CompoundFile {
public:
    explicit CompoundFile(QByteArray data) : d_(std::move(data)) {}

    bool readStream(const QString& wanted, QByteArray* out) {
        static const QByteArray magic("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
        if (!d_.startsWith(magic))
            return false;
        sector_ = 1 << u16(d_, 0x1E);
        if (sector_ != 512 && sector_ != 4096)
            return false;
        readFat();
        const QByteArray dir = chain(u32(d_, 0x30), fat_, sector_, [&](quint32 s) { return sectorAt(s); });
        QByteArray root;
        for (qsizetype at = 0; at + 128 <= dir.size(); at += 128) {
            const int nameBytes = std::min<int>(u16(dir, at + 0x40), 64);
            const QString name = QString::fromUtf16(reinterpret_cast<const char16_t*>(dir.constData() + at),
                                                    std::max(0, nameBytes / 2 - 1));
            const int type = static_cast<unsigned char>(dir[at + 0x42]);
            const quint32 start = u32(dir, at + 0x74), size = u32(dir, at + 0x78);
            if (type == 5) {
                root = chain(start, fat_, sector_, [&](quint32 s) { return sectorAt(s); });
                miniCutoff_ = u32(d_, 0x38);
                readMiniFat();
            } else if (type == 2 && name.compare(wanted, Qt::CaseInsensitive) == 0) {
                QByteArray data;
                if (size < miniCutoff_)
                    data = chain(start, miniFat_, 64,
                                 [&](quint32 s) { return root.mid(qsizetype(s) * 64, 64); });
                else
                    data = chain(start, fat_, sector_, [&](quint32 s) { return sectorAt(s); });
                *out = data.left(size);
                return true;
            }
        }
        return false;
    }

private:
    QByteArray sectorAt(quint32 s) const { return d_.mid((qsizetype(s) + 1) * sector_, sector_); }

    template <typename Fetch>
    QByteArray chain(quint32 start, const QList<quint32>& table, int unit, Fetch fetch) const {
        QByteArray out;
        for (quint32 s = start, guard = 0;
             s != kEndOfChain && s != kFree && s < quint32(table.size()) && guard <= quint32(table.size());
             s = table[s], ++guard) {
            const QByteArray piece = fetch(s);
            if (piece.size() < unit)
                break;
            out += piece;
        }
        return out;
    }

    void readFat() {
        QList<quint32> fatSectors;
        for (int i = 0; i < 109; ++i)
            fatSectors << u32(d_, 0x4C + 4 * i);
        quint32 difat = u32(d_, 0x44);
        for (int guard = 0; difat != kEndOfChain && difat != kFree && guard < 1000; ++guard) {
            const QByteArray s = sectorAt(difat);
            if (s.size() < sector_)
                break;
            for (int i = 0; i < sector_ / 4 - 1; ++i)
                fatSectors << u32(s, 4 * i);
            difat = u32(s, sector_ - 4);
        }
        const quint32 count = u32(d_, 0x2C);
        for (quint32 i = 0; i < count && i < quint32(fatSectors.size()); ++i) {
            const QByteArray s = sectorAt(fatSectors[i]);
            for (int k = 0; k + 4 <= s.size(); k += 4)
                fat_ << u32(s, k);
        }
    }

    void readMiniFat() {
        const QByteArray mf = chain(u32(d_, 0x3C), fat_, sector_, [&](quint32 s) { return sectorAt(s); });
        for (int k = 0; k + 4 <= mf.size(); k += 4)
            miniFat_ << u32(mf, k);
    }

    QByteArray d_;
    int sector_ = 512;
    quint32 miniCutoff_ = 4096;
    QList<quint32> fat_, miniFat_;
};

// A BIFF8 unicode string without a length prefix: the option byte, then the characters.
QString biffString(const QByteArray& b, qsizetype at, int chars) {
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
    CompoundFile cf(f.readAll());
    QByteArray wb;
    if (!cf.readStream(QStringLiteral("Workbook"), &wb))
        return out;
    const auto globals = readGlobals(wb);
    if (!globals)
        return out;
    for (const auto& [name, formula] : globals->names)
        if (const auto area = areaOf(formula, globals->externSheets))
            out << XlsName{name, *area};
    return out;
}

} // namespace vesk
