#pragma once
// The zip container of workbooks, through minizip: every entry read into memory, or a new archive
// written from entries in order. An entry that declares more than its packed bytes or a workbook
// part can hold, or holds more than it declares, makes the archive a damaged one.

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace vesk {

struct ZipEntry {
    QString name;
    QByteArray data;
};

class ZipArchive {
public:
    static std::optional<ZipArchive> read(const QString& path, QString* error);
    // Writes beside the target and moves the new file over it, so that a failure leaves the old.
    bool write(const QString& path, QString* error) const;

    // Entry names compare case-blind, as package part names do; a leading "/" is ignored.
    const ZipEntry* find(const QString& name) const;
    void put(const QString& name, const QByteArray& data); // replaces or appends
    const QList<ZipEntry>& entries() const { return entries_; }

private:
    QList<ZipEntry> entries_;
};

} // namespace vesk
