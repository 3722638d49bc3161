#include "foundation/settings_file_io.h"

#include "platform/runtime.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <limits>

namespace vesk::stp {

namespace {

bool isNetworkPath(const QString& path) {
    return path.startsWith(QLatin1String("\\\\")) || path.startsWith(QLatin1String("//"));
}

template <typename T> T toInteger(const QString& text) {
    const double v = roundHalfEven(Val(text));
    if (!std::isfinite(v) || v < std::numeric_limits<T>::min() || v > std::numeric_limits<T>::max())
        throw overflow();
    return static_cast<T>(v);
}

} // namespace

RuntimeError openErrorFor(const QString& path, bool forWriting) {
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (!folder.exists() || !folder.isDir()) {
        if (isNetworkPath(path))
            return RuntimeError(runtime_error::kBadFileNameOrNumber);
        return RuntimeError(runtime_error::kPathNotFound);
    }
    if (!forWriting && !file.exists())
        return RuntimeError(runtime_error::kFileNotFound);
    if (forWriting ? (!folder.isWritable() || (file.exists() && !file.isWritable())) : !file.isReadable())
        return RuntimeError(runtime_error::kPermissionDenied);
    return RuntimeError(runtime_error::kPathFileAccess);
}

RuntimeError inputPastEnd() {
    return RuntimeError(runtime_error::kInputPastEnd);
}

RuntimeError overflow() {
    return RuntimeError(runtime_error::kOverflow);
}

QString Trim(const QString& text) {
    qsizetype b = 0, e = text.size();
    while (b < e && text[b] == u' ')
        ++b;
    while (e > b && text[e - 1] == u' ')
        --e;
    return text.mid(b, e - b);
}

QString heading(const QString& line) {
    return Trim(line).toUpper();
}

QString pathSeparator() {
#ifdef Q_OS_WIN
    return QStringLiteral("\\");
#else
    return QStringLiteral("/");
#endif
}

QString upperWhereCaseBlind(const QString& path) {
#ifdef Q_OS_WIN
    return path.toUpper();
#else
    return path;
#endif
}

qint16 toInt16(const QString& text) {
    return toInteger<qint16>(text);
}

qint32 toInt32(const QString& text) {
    return toInteger<qint32>(text);
}

bool readLines(const QString& path, QStringList& lines) {
    lines.clear();
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    // Every ending becomes LF ("\r\n" first, so that it counts once), then the text splits there.
    // The piece after the last ending is a line only when it holds something.
    QString text = QString::fromUtf8(f.readAll());
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    lines = text.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return true;
}

StpLines StpLines::open(const QString& path) {
    StpLines in;
    if (!readLines(path, in.lines_))
        throw openErrorFor(path, false);
    return in;
}

QString StpLines::next() {
    if (atEnd())
        throw inputPastEnd();
    return lines_[pos_++];
}

} // namespace vesk::stp
