// The compound file of legacy workbooks: a stream read whole from the regular sectors and from the
// mini stream, and every kind of damage refused with its reason, in time and memory of the file's
// length (the files are built here byte by byte, the way the format lays them out).

#include "inputs/compound_file.h"
#include "inputs/xls_file.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace vesk;

namespace {

constexpr quint32 kEnd = 0xFFFFFFFE, kFree = 0xFFFFFFFF, kFatSector = 0xFFFFFFFD;
constexpr int kSector = 512;

void put(QByteArray& b, int at, quint32 v, int n) {
    for (int k = 0; k < n; ++k)
        b[at + k] = char(v >> (8 * k) & 0xFF);
}

// A compound file of 512-byte sectors holding one stream "Workbook" of `data`: sector 0 the
// allocation table, sector 1 the directory, then the stream's sectors, or, for a stream under 4096
// bytes, the mini allocation table (sector 2) and the root entry's mini stream (from sector 3).
struct Built {
    QByteArray file;
    int firstDataSector = 2;
    int fatAt(int sector) const { return kSector + 4 * sector; } // offset of FAT entry `sector`
};

Built build(const QByteArray& data) {
    const bool mini = data.size() < 4096;
    const int payload = mini ? (data.size() + 63) / 64 * 64 : data.size();
    const int dataSectors = (payload + kSector - 1) / kSector;
    const int sectors = 2 + (mini ? 1 : 0) + dataSectors;
    Built b;
    b.file = QByteArray(kSector * (1 + sectors), '\0');
    QByteArray& f = b.file;
    f.replace(0, 8, QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8));
    put(f, 0x18, 0x3E, 2);
    put(f, 0x1A, 3, 2);
    put(f, 0x1C, 0xFFFE, 2);
    put(f, 0x1E, 9, 2);
    put(f, 0x20, 6, 2);
    put(f, 0x2C, 1, 4);    // one allocation sector
    put(f, 0x30, 1, 4);    // the directory in sector 1
    put(f, 0x38, 4096, 4); // mini stream cutoff
    put(f, 0x3C, mini ? 2 : kEnd, 4);
    put(f, 0x40, mini ? 1 : 0, 4);
    put(f, 0x44, kEnd, 4);
    put(f, 0x4C, 0, 4);
    for (int i = 1; i < 109; ++i)
        put(f, 0x4C + 4 * i, kFree, 4);
    // The allocation table.
    for (int s = 0; s < kSector / 4; ++s)
        put(f, b.fatAt(s), kFree, 4);
    put(f, b.fatAt(0), kFatSector, 4);
    put(f, b.fatAt(1), kEnd, 4);
    b.firstDataSector = mini ? 3 : 2;
    if (mini)
        put(f, b.fatAt(2), kEnd, 4);
    for (int s = 0; s < dataSectors; ++s)
        put(f, b.fatAt(b.firstDataSector + s), s + 1 < dataSectors ? b.firstDataSector + s + 1 : kEnd, 4);
    // The directory: the root entry, then the stream.
    const int dir = kSector * 2;
    const QString names[2] = {QStringLiteral("Root Entry"), QStringLiteral("Workbook")};
    for (int e = 0; e < 2; ++e) {
        const int at = dir + 128 * e;
        for (int k = 0; k < names[e].size(); ++k)
            put(f, at + 2 * k, names[e][k].unicode(), 2);
        put(f, at + 0x40, 2 * (names[e].size() + 1), 2);
        f[at + 0x42] = char(e == 0 ? 5 : 2);
    }
    put(f, dir + 0x74, mini ? b.firstDataSector : kEnd, 4);
    put(f, dir + 0x78, mini ? payload : 0, 4);
    put(f, dir + 128 + 0x74, mini ? 0 : b.firstDataSector, 4);
    put(f, dir + 128 + 0x78, data.size(), 4);
    if (mini) {
        const int miniFat = kSector * 3;
        for (int s = 0; s < kSector / 4; ++s)
            put(f, miniFat + 4 * s, kFree, 4);
        const int miniSectors = payload / 64;
        for (int s = 0; s < miniSectors; ++s)
            put(f, miniFat + 4 * s, s + 1 < miniSectors ? s + 1 : kEnd, 4);
    }
    f.replace(kSector * (1 + b.firstDataSector), data.size(), data);
    return b;
}

QByteArray pattern(int size) {
    QByteArray p(size, '\0');
    for (int i = 0; i < size; ++i)
        p[i] = char((i * 7 + i / 256) & 0xFF);
    return p;
}

std::string reasonOf(const QByteArray& file) {
    QString why;
    const auto s = readCompoundStream(file, QStringLiteral("Workbook"), &why);
    EXPECT_FALSE(s.has_value());
    return why.toStdString();
}

TEST(CompoundFile, AStreamOfRegularSectorsReadsWhole) {
    const QByteArray data = pattern(5000);
    const auto s = readCompoundStream(build(data).file, QStringLiteral("workbook"));
    ASSERT_TRUE(s.has_value());
    EXPECT_EQ(*s, data);
}

TEST(CompoundFile, ASmallStreamReadsWholeFromTheMiniStream) {
    const QByteArray data = pattern(300);
    const auto s = readCompoundStream(build(data).file, QStringLiteral("Workbook"));
    ASSERT_TRUE(s.has_value());
    EXPECT_EQ(*s, data);
}

TEST(CompoundFile, ATextFileOrAnEmptyOneIsNoCompoundFile) {
    EXPECT_EQ(reasonOf(QByteArray("a;b\n1;2\n")), "the file is no compound file");
    EXPECT_EQ(reasonOf(QByteArray()), "the file is no compound file");
}

TEST(CompoundFile, ASectorSizeOtherThan512Or4096IsRefusedBeforeAnyShift) {
    for (quint32 shift : {0u, 6u, 8u, 31u, 6833u, 0xFFFFu}) {
        Built b = build(pattern(5000));
        put(b.file, 0x1E, shift, 2);
        EXPECT_EQ(reasonOf(b.file), "the compound file's sector size is neither 512 nor 4096 bytes") << shift;
    }
}

TEST(CompoundFile, MoreAllocationSectorsThanTheFileHoldsAreRefused) {
    for (quint32 count : {0u, 100u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        Built b = build(pattern(5000));
        put(b.file, 0x2C, count, 4);
        EXPECT_EQ(reasonOf(b.file), "the compound file claims more allocation sectors than it holds") << count;
    }
}

TEST(CompoundFile, AnAllocationSectorOutsideTheFileIsRefused) {
    Built b = build(pattern(5000));
    put(b.file, 0x4C, 0x00FFFFFF, 4);
    EXPECT_EQ(reasonOf(b.file), "the compound file's allocation table lies outside the file");
}

TEST(CompoundFile, AChainThatRunsInACircleEndsAsDamage) {
    Built b = build(pattern(5000));
    // The stream's third sector leads back to its first.
    put(b.file, b.fatAt(b.firstDataSector + 2), b.firstDataSector, 4);
    EXPECT_EQ(reasonOf(b.file), "a chain of the compound file is broken or runs in a circle");
    // The directory leads to itself.
    Built d = build(pattern(5000));
    put(d.file, d.fatAt(1), 1, 4);
    EXPECT_EQ(reasonOf(d.file), "a chain of the compound file is broken or runs in a circle");
}

TEST(CompoundFile, AChainPastTheTableOrTheFileIsRefused) {
    Built b = build(pattern(5000));
    put(b.file, b.fatAt(b.firstDataSector), 0x7FFFFFFF, 4);
    EXPECT_EQ(reasonOf(b.file), "a chain of the compound file is broken or runs in a circle");
    Built c = build(pattern(5000));
    put(c.file, c.fatAt(c.firstDataSector + 1), 100, 4); // in the table, beyond the file's sectors
    EXPECT_EQ(reasonOf(c.file), "a chain of the compound file runs past the end of the file");
}

TEST(CompoundFile, AStreamShorterThanItsEntryIsRefused) {
    Built b = build(pattern(5000));
    put(b.file, 2 * kSector + 128 + 0x78, 0x7FFFFFFF, 4); // the entry claims 2 GB
    // Under the cutoff the size would send it to the mini stream; 2 GB is above it.
    EXPECT_EQ(reasonOf(b.file), "a stream of the compound file is shorter than its entry says");
}

TEST(CompoundFile, AMiniChainPastTheRootStreamIsRefused) {
    Built b = build(pattern(300));
    put(b.file, kSector * 3 + 4 * 1, 5000, 4); // the second mini sector leads far beyond the mini table
    EXPECT_EQ(reasonOf(b.file), "a chain of the compound file is broken or runs in a circle");
}

TEST(CompoundFile, ACircleThroughTheExtraAllocationSectorsEnds) {
    // 240 allocation sectors: 109 in the header, 127 in a DIFAT sector, and the rest behind a
    // next DIFAT sector that is that sector itself.
    Built b = build(pattern(5000));
    b.file.append(QByteArray(kSector * 300, '\0'));
    put(b.file, 0x2C, 240, 4);
    put(b.file, 0x44, 20, 4);
    const int difat = kSector * (1 + 20);
    for (int i = 0; i < kSector / 4; ++i)
        put(b.file, difat + 4 * i, 0, 4);
    put(b.file, difat + kSector - 4, 20, 4);
    for (int i = 1; i < 109; ++i)
        put(b.file, 0x4C + 4 * i, 0, 4);
    EXPECT_EQ(reasonOf(b.file), "the compound file's allocation table chain is broken");
}

TEST(CompoundFile, TheDamagedWorkbookTheFuzzerFoundYieldsNoNames) {
    QFile f(QStringLiteral(VESK_SOURCE_DIR "/tests/fuzz/corpus/xls/crash-209b4926b2e7d73c8bf0638de75a1b74d321801a"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    QString why;
    EXPECT_FALSE(readCompoundStream(f.readAll(), QStringLiteral("Workbook"), &why).has_value());
    EXPECT_FALSE(why.isEmpty());
    EXPECT_TRUE(readXlsNames(f.fileName()).isEmpty());
}

} // namespace
