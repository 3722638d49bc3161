#include "inputs/staged_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

namespace vesk {

namespace {

std::filesystem::path fsPath(const QString& path) {
#ifdef Q_OS_WIN
    return std::filesystem::path(path.toStdWString());
#else
    return std::filesystem::path(QFile::encodeName(path).toStdString());
#endif
}

QString scratchTemplate(const QString& target) {
    const QFileInfo info(target);
    return info.absoluteDir().filePath(QStringLiteral(".") + info.fileName() + QStringLiteral(".XXXXXX"));
}

} // namespace

StagedFile::StagedFile(const QString& target, bool keepContent)
    : target_(QFileInfo(target).absoluteFilePath()), scratch_(scratchTemplate(target)) {
    if (!scratch_.isValid()) {
        error_ = QStringLiteral("No file can be written beside '%1': %2").arg(target, scratch_.errorString());
        return;
    }
    path_ = QDir(scratch_.path()).filePath(QFileInfo(target).fileName());
    if (keepContent && QFileInfo::exists(target_) && !QFile::copy(target_, path_))
        error_ = QStringLiteral("The file '%1' cannot be copied to be written.").arg(target);
}

bool StagedFile::ready(QString* error) const {
    if (error_.isEmpty())
        return true;
    *error = error_;
    return false;
}

bool StagedFile::commit(QString* error) {
    const QDir scratch(scratch_.path());
    const QDir folder = QFileInfo(target_).absoluteDir();
    for (const QString& name : scratch.entryList(QDir::Files | QDir::Hidden)) {
        std::error_code ec;
        std::filesystem::rename(fsPath(scratch.filePath(name)), fsPath(folder.filePath(name)), ec);
        if (ec) {
            *error = QStringLiteral("The file '%1' cannot be put in place: %2")
                         .arg(folder.filePath(name), QString::fromLocal8Bit(ec.message().c_str()));
            return false;
        }
    }
    return true;
}

} // namespace vesk
