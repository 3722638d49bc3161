#include "inputs/compound_file.h"

#include <vector>

namespace vesk {

namespace {

constexpr quint32 kEndOfChain = 0xFFFFFFFE;
constexpr quint32 kFree = 0xFFFFFFFF;
constexpr int kHeaderFatEntries = 109;
constexpr int kDirEntrySize = 128;
constexpr int kMiniSector = 64;

// Little-endian numbers; a read past the end gives std::nullopt.
std::optional<quint32> le(const QByteArray& b, qsizetype at, int n) {
    if (at < 0 || at + n > b.size())
        return std::nullopt;
    quint32 v = 0;
    for (int k = n - 1; k >= 0; --k)
        v = v << 8 | static_cast<unsigned char>(b[at + k]);
    return v;
}

class Damage {
public:
    explicit Damage(QString* why) : why_(why) {}
    std::nullopt_t operator()(const char* what) const {
        if (why_)
            *why_ = QString::fromLatin1(what);
        return std::nullopt;
    }

private:
    QString* why_;
};

class Reader {
public:
    Reader(const QByteArray& file, QString* why) : d_(file), damage_(why) {}

    std::optional<QByteArray> stream(const QString& wanted) {
        if (!readHeader() || !readFat())
            return std::nullopt;
        const auto dir = chain(dirStart_, fat_, sector_, [&](quint32 s) { return sectorAt(s); });
        if (!dir)
            return std::nullopt;
        for (qsizetype at = 0; at + kDirEntrySize <= dir->size(); at += kDirEntrySize) {
            const int type = static_cast<unsigned char>((*dir)[at + 0x42]);
            const quint32 start = *le(*dir, at + 0x74, 4), size = *le(*dir, at + 0x78, 4);
            if (type == 5 && !rootRead_) {
                rootRead_ = true;
                if (!readMiniStream(start))
                    return std::nullopt;
            } else if (type == 2 && entryName(*dir, at).compare(wanted, Qt::CaseInsensitive) == 0) {
                return streamData(start, size);
            }
        }
        return damage_("the file holds no stream of that name");
    }

private:
    bool readHeader() {
        static const QByteArray magic("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
        if (d_.size() < 512 || !d_.startsWith(magic))
            return fail("the file is no compound file");
        const quint32 shift = *le(d_, 0x1E, 2);
        if (shift != 9 && shift != 12)
            return fail("the compound file's sector size is neither 512 nor 4096 bytes");
        if (*le(d_, 0x20, 2) != 6)
            return fail("the compound file's mini sector size is not 64 bytes");
        sector_ = 1 << shift;
        sectors_ = d_.size() > sector_ ? quint32((d_.size() - sector_) / sector_) : 0;
        fatCount_ = *le(d_, 0x2C, 4);
        dirStart_ = *le(d_, 0x30, 4);
        miniCutoff_ = *le(d_, 0x38, 4);
        miniFatStart_ = *le(d_, 0x3C, 4);
        if (fatCount_ == 0 || fatCount_ > sectors_)
            return fail("the compound file claims more allocation sectors than it holds");
        return true;
    }

    bool readFat() {
        std::vector<quint32> fatSectors;
        fatSectors.reserve(fatCount_);
        for (int i = 0; i < kHeaderFatEntries && fatSectors.size() < fatCount_; ++i)
            fatSectors.push_back(*le(d_, 0x4C + 4 * i, 4));
        std::vector<bool> seen(sectors_, false);
        for (quint32 difat = *le(d_, 0x44, 4); fatSectors.size() < fatCount_;) {
            if (difat >= sectors_ || seen[difat])
                return fail("the compound file's allocation table chain is broken");
            seen[difat] = true;
            const QByteArray s = sectorAt(difat);
            for (int i = 0; i < sector_ / 4 - 1 && fatSectors.size() < fatCount_; ++i)
                fatSectors.push_back(*le(s, 4 * i, 4));
            difat = *le(s, sector_ - 4, 4);
        }
        fat_.reserve(size_t(fatCount_) * (sector_ / 4));
        for (quint32 f : fatSectors) {
            if (f >= sectors_)
                return fail("the compound file's allocation table lies outside the file");
            const QByteArray s = sectorAt(f);
            for (int k = 0; k < sector_; k += 4)
                fat_.push_back(*le(s, k, 4));
        }
        return true;
    }

    bool readMiniStream(quint32 start) {
        const auto root = chain(start, fat_, sector_, [&](quint32 s) { return sectorAt(s); });
        if (!root)
            return false;
        root_ = *root;
        if (miniFatStart_ == kEndOfChain || miniFatStart_ == kFree)
            return true;
        const auto mf = chain(miniFatStart_, fat_, sector_, [&](quint32 s) { return sectorAt(s); });
        if (!mf)
            return false;
        for (int k = 0; k + 4 <= mf->size(); k += 4)
            miniFat_.push_back(*le(*mf, k, 4));
        return true;
    }

    std::optional<QByteArray> streamData(quint32 start, quint32 size) {
        const bool mini = size < miniCutoff_;
        const auto data = mini ? chain(start, miniFat_, kMiniSector,
                                       [&](quint32 s) { return root_.mid(qsizetype(s) * kMiniSector, kMiniSector); })
                               : chain(start, fat_, sector_, [&](quint32 s) { return sectorAt(s); });
        if (!data)
            return std::nullopt;
        if (data->size() < qsizetype(size))
            return damage_("a stream of the compound file is shorter than its entry says");
        return data->left(size);
    }

    // A chain through `table` from `start`, each link fetched once; a link outside the table or
    // the file, a sector met twice, or a piece short of a whole unit is damage.
    template <typename Fetch>
    std::optional<QByteArray> chain(quint32 start, const std::vector<quint32>& table, int unit, Fetch fetch) const {
        QByteArray out;
        std::vector<bool> seen(table.size(), false);
        for (quint32 s = start; s != kEndOfChain; s = table[s]) {
            if (s >= table.size() || seen[s])
                return damage_("a chain of the compound file is broken or runs in a circle");
            seen[s] = true;
            const QByteArray piece = fetch(s);
            if (piece.size() < unit)
                return damage_("a chain of the compound file runs past the end of the file");
            out += piece;
        }
        return out;
    }

    bool fail(const char* what) const {
        damage_(what);
        return false;
    }

    QByteArray sectorAt(quint32 s) const {
        return s < sectors_ ? d_.mid((qsizetype(s) + 1) * sector_, sector_) : QByteArray();
    }

    static QString entryName(const QByteArray& dir, qsizetype at) {
        const int nameBytes = std::min<int>(int(*le(dir, at + 0x40, 2)), 64);
        QString name;
        for (int k = 0; k + 2 <= nameBytes - 2; k += 2)
            name += QChar(char16_t(*le(dir, at + k, 2)));
        return name;
    }

    const QByteArray& d_;
    Damage damage_;
    int sector_ = 512;
    quint32 sectors_ = 0, fatCount_ = 0, dirStart_ = kEndOfChain, miniCutoff_ = 4096, miniFatStart_ = kEndOfChain;
    std::vector<quint32> fat_, miniFat_;
    QByteArray root_;
    bool rootRead_ = false;
};

} // namespace

std::optional<QByteArray> readCompoundStream(const QByteArray& file, const QString& name, QString* why) {
    return Reader(file, why).stream(name);
}

} // namespace vesk
