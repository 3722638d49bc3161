// Where Vesk.stp lies, and the start of reading it: InitVESKFilePath and the dialogue for a missing
// file. The reader is in settings_file_reader.cpp, the writer in settings_file_writer.cpp, the block
// readers in settings_file_blocks.cpp.

#include "foundation/settings_file.h"

#include "platform/prompts.h"
#include "platform/runtime.h"
#include "foundation/settings_file_io.h"
#include "foundation/settings_texts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace vesk {

namespace t = settings_texts;

QString cutDriveRoot(const QString& path) {
    return Like(path, QStringLiteral("?:\\")) ? path.left(2) : path;
}

QString appPathFor(const QString& programFolder) {
    const QString folder = QDir::toNativeSeparators(programFolder);
#ifndef Q_OS_WIN
    // The file system root: "" so that "/Vesk.stp" names the file.
    if (folder == QLatin1String("/"))
        return QString();
#endif
    return cutDriveRoot(folder);
}

QString settingsFilePath(const QString& appPath) {
    return appPath + stp::pathSeparator() + QLatin1String(kSettingsFileName);
}

QString settingsFilePath() {
    return settingsFilePath(settings().AppPath);
}

bool trapini() {
    return prompts().ask(QString::fromUtf8(t::kTrapini), Buttons::YesNo, Icon::Warning,
                         QString::fromUtf8(t::kTitleSetupError)) == Answer::Yes;
}

SettingsResult InitVESKFilePath(const QString& programFolder, VeskSettings& s, PreferencesControls& p) {
    SettingsResult result;
    try {
        s.AppPath =
            appPathFor(programFolder.isEmpty() ? QCoreApplication::applicationDirPath() : programFolder);
        s.SampPct = 100;
        p.txtSampPct = QStringLiteral("100");
        if (QFileInfo(settingsFilePath(s.AppPath)).isFile())
            return openfile(s, p);
        result.outcome = trapini() ? SettingsOutcome::NoSettings : SettingsOutcome::EndProgram;
    } catch (const RuntimeError& e) {
        result.errorNumber = e.number;
        prompts().ask(QString::fromUtf8(t::kInitVeskFilePathError) + e.words);
    } catch (const std::exception& e) {
        prompts().ask(QString::fromUtf8(t::kInitVeskFilePathError) + QString::fromUtf8(e.what()));
    }
    return result;
}

} // namespace vesk
