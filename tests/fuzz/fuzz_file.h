#pragma once
// What every fuzz target shares: the readers take a path, so each input is written to one file of
// the target's own scratch folder (under $TMPDIR, a tmpfs where there is one) and read from there.

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

namespace vesk::fuzz {

// The path of `name` in the scratch folder, holding exactly `data`.
inline QString inputFile(const uint8_t* data, size_t size, const QString& name) {
    static QTemporaryDir dir;
    const QString path = dir.filePath(name);
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        __builtin_trap(); // the scratch folder itself failed: no input can be tried
    f.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    return path;
}

} // namespace vesk::fuzz
