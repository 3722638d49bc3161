#include "inputs/zip_archive.h"

#include <QDateTime>
#include <QFile>
#include <algorithm>
#include <minizip/unzip.h>
#include <minizip/zip.h>

namespace vesk {

namespace {
QString normalName(const QString& name) {
    return name.startsWith(u'/') ? name.mid(1) : name;
}
} // namespace

namespace {

// No part of a workbook is bigger than this, and deflate packs no more than 1032 bytes into one.
constexpr quint64 kMaxEntryBytes = quint64(1) << 30;
constexpr quint64 kMaxDeflateRatio = 1032;

// Why the entry's declared size cannot be believed; empty when it can.
QString declaredSizeRefusal(const char* name, const unz_file_info64& info) {
    const quint64 packable = info.compressed_size * kMaxDeflateRatio + 1024;
    if (info.uncompressed_size <= std::min(kMaxEntryBytes, packable))
        return QString();
    return QStringLiteral(
               "the entry %1 declares %2 bytes, more than its %3 packed bytes or a workbook part can hold")
        .arg(QString::fromUtf8(name))
        .arg(info.uncompressed_size)
        .arg(info.compressed_size);
}

// The current entry's bytes, never more than it declared.
bool readEntry(unzFile uf, const char* name, const unz_file_info64& info, QByteArray* data, QString* error) {
    char buffer[65536];
    int got;
    while ((got = unzReadCurrentFile(uf, buffer, sizeof buffer)) > 0) {
        if (static_cast<quint64>(data->size()) + static_cast<quint64>(got) > info.uncompressed_size) {
            *error = QStringLiteral("the entry %1 holds more than the %2 bytes it declares")
                         .arg(QString::fromUtf8(name))
                         .arg(info.uncompressed_size);
            return false;
        }
        data->append(buffer, got);
    }
    if (got != 0 || unzCloseCurrentFile(uf) != UNZ_OK) {
        *error = QStringLiteral("a damaged zip archive");
        return false;
    }
    return true;
}

} // namespace

std::optional<ZipArchive> ZipArchive::read(const QString& path, QString* error) {
    unzFile uf = unzOpen64(QFile::encodeName(path).constData());
    if (!uf) {
        *error = QStringLiteral("not a zip archive");
        return std::nullopt;
    }
    ZipArchive archive;
    bool ok = true;
    int rc = unzGoToFirstFile(uf);
    for (; rc == UNZ_OK && ok; rc = unzGoToNextFile(uf)) {
        unz_file_info64 info{};
        char name[1025] = {}; // minizip ends a name with NUL only when it fits: the last byte stays 0
        if (unzGetCurrentFileInfo64(uf, &info, name, sizeof name - 1, nullptr, 0, nullptr, 0) != UNZ_OK) {
            *error = QStringLiteral("a damaged zip archive");
            ok = false;
            break;
        }
        *error = declaredSizeRefusal(name, info);
        if (!error->isEmpty() || unzOpenCurrentFile(uf) != UNZ_OK) {
            if (error->isEmpty())
                *error = QStringLiteral("a damaged zip archive");
            ok = false;
            break;
        }
        QByteArray data; // grown as it is read, never to the size the entry claims
        ok = readEntry(uf, name, info, &data, error);
        archive.entries_ << ZipEntry{QString::fromUtf8(name), data};
    }
    unzClose(uf);
    if (ok && rc != UNZ_END_OF_LIST_OF_FILE) {
        *error = QStringLiteral("a damaged zip archive");
        ok = false;
    }
    if (!ok)
        return std::nullopt;
    return archive;
}

bool ZipArchive::write(const QString& path, QString* error) const {
    const QString temp = path + QStringLiteral(".vesk-new");
    zipFile zf = zipOpen64(QFile::encodeName(temp).constData(), APPEND_STATUS_CREATE);
    if (!zf) {
        *error = QStringLiteral("cannot create %1").arg(temp);
        return false;
    }
    bool ok = true;
    const QDateTime now = QDateTime::currentDateTime();
    for (const auto& e : entries_) {
        zip_fileinfo zi{};
        zi.tmz_date.tm_year = static_cast<uInt>(now.date().year());
        zi.tmz_date.tm_mon = static_cast<uInt>(now.date().month() - 1);
        zi.tmz_date.tm_mday = static_cast<uInt>(now.date().day());
        zi.tmz_date.tm_hour = static_cast<uInt>(now.time().hour());
        zi.tmz_date.tm_min = static_cast<uInt>(now.time().minute());
        zi.tmz_date.tm_sec = static_cast<uInt>(now.time().second());
        const QByteArray name = e.name.toUtf8();
        ok = zipOpenNewFileInZip64(zf, name.constData(), &zi, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                   Z_DEFAULT_COMPRESSION, 0) == ZIP_OK &&
             zipWriteInFileInZip(zf, e.data.constData(), static_cast<unsigned>(e.data.size())) == ZIP_OK &&
             zipCloseFileInZip(zf) == ZIP_OK;
        if (!ok)
            break;
    }
    ok = zipClose(zf, nullptr) == ZIP_OK && ok;
    if (ok && QFile::exists(path) && !QFile::remove(path))
        ok = false;
    if (ok && !QFile::rename(temp, path))
        ok = false;
    if (!ok) {
        QFile::remove(temp);
        *error = QStringLiteral("cannot write %1").arg(path);
    }
    return ok;
}

const ZipEntry* ZipArchive::find(const QString& name) const {
    const QString n = normalName(name);
    for (const auto& e : entries_)
        if (normalName(e.name).compare(n, Qt::CaseInsensitive) == 0)
            return &e;
    return nullptr;
}

void ZipArchive::put(const QString& name, const QByteArray& data) {
    const QString n = normalName(name);
    for (auto& e : entries_)
        if (normalName(e.name).compare(n, Qt::CaseInsensitive) == 0) {
            e.data = data;
            return;
        }
    entries_ << ZipEntry{n, data};
}

} // namespace vesk
