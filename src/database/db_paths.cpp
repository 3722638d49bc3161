#include "database/db_paths.h"

#include "platform/runtime.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <QSysInfo>

namespace vesk {

namespace {

const QString kUnc = QStringLiteral("\\\\");

bool isSeparator(QChar c) {
    return c == u'\\' || c == u'/';
}

// The file title in lower case when that names the same file, as it does where the file system
// does not tell case apart; as it stands where lower case would name another file.
QString storedTitle(const QString& folder, const QString& title) {
    const QString lower = title.toLower();
    if (lower == title)
        return title;
    const QFileInfo original(joinPath(folder, title));
    const QFileInfo lowered(joinPath(folder, lower));
    if (original.exists() && lowered.exists() && lowered.canonicalFilePath() == original.canonicalFilePath())
        return lower;
    return title;
}

} // namespace

QString driveText(const QString& path) {
    if (path.startsWith(kUnc))
        return {};
#ifdef Q_OS_WIN
    if (path.size() >= 2 && path[1] == u':') {
        const QStorageInfo volume(path.left(2) + u'\\');
        const QString device = QString::fromLocal8Bit(volume.device());
        const QString letter = path.left(2).toLower();
        if (device.startsWith(kUnc) && !device.startsWith(QStringLiteral("\\\\?\\")))
            return letter + QStringLiteral(" [") + device + u']';
        return letter + QStringLiteral(" [") + volume.name() + u']';
    }
    return {};
#else
    return path.startsWith(u'/') ? QStringLiteral("/") : QString();
#endif
}

DatabaseLocation normaliseDatabasePath(const QString& path, const QString& drive) {
    DatabaseLocation loc;
    loc.path = path;
    if (!drive.isEmpty() && !drive.contains(kUnc)) {
        // A local drive: the machine's name is read, and the path stands unchanged.
        const QString computerName = QSysInfo::machineHostName();
        Q_UNUSED(computerName);
    } else if (!drive.isEmpty()) {
        // A mapped drive "z: [\\server\share]": the share, less the closing characters, takes the
        // place of the drive letter.
        const int at = drive.indexOf(kUnc);
        loc.share = Mid(drive, at + 1, drive.size() - 5);
        const int colon = path.indexOf(u':');
        loc.path = loc.share + (colon >= 0 ? path.mid(colon + 1) : path);
    }
    // An empty drive text with a network path "\\*\*": the path is used as it stands.
    int cut = static_cast<int>(loc.path.size()) - 1;
    while (cut >= 0 && !isSeparator(loc.path[cut]))
        --cut;
    loc.folder = cut >= 0 ? loc.path.left(cut) : QString();
    loc.fileTitle = storedTitle(loc.folder, loc.path.mid(cut + 1));
    return loc;
}

QString joinPath(const QString& folder, const QString& name) {
#ifdef Q_OS_WIN
    return folder + u'\\' + name;
#else
    return folder + u'/' + name;
#endif
}

} // namespace vesk
