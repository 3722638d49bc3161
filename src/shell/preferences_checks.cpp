#include "shell/preferences_checks.h"

#include "database/db_paths.h"
#include "foundation/settings_texts.h"
#include "platform/grid_model.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"
#include "shell/preferences_texts.h"

#include <QFileInfo>
#include <limits>

namespace vesk {

namespace t = preferences_texts;

namespace {

constexpr double kLowestAge = 45;
constexpr double kHighestAge = 85;

void tell(const char* message, const char* title) {
    prompts().ask(text(message), Buttons::Ok, Icon::None, text(title));
}

// "\\machine\share" of a network path, its two first parts; empty when it has fewer.
QString shareOf(const QString& path) {
    const QChar sep = path.front();
    const QStringList parts = path.mid(2).split(sep);
    if (parts.size() < 2 || parts[0].isEmpty() || parts[1].isEmpty())
        return {};
    return QString(2, sep) + parts[0] + sep + parts[1];
}

bool folderExists(const QString& path) {
    return QFileInfo(path).isDir();
}

} // namespace

bool isNetworkPath(const QString& path) {
    if (Like(path, QStringLiteral("\\\\*\\*")))
        return true;
#ifndef Q_OS_WIN
    return Like(path, QStringLiteral("//*/*"));
#else
    return false;
#endif
}

bool isPathFormat(const QString& path) {
    if (Like(path, QStringLiteral("?:*\\")) || Like(path, QStringLiteral("?:*")) || isNetworkPath(path))
        return true;
#ifndef Q_OS_WIN
    return path.startsWith(u'/');
#else
    return false;
#endif
}

bool checkFolderLeft(const QString& path) {
    if (path.isEmpty())
        return true;
    if (!isPathFormat(path)) {
        tell(t::kPathFormat, t::kTitleFormat);
        return false;
    }
    if (isNetworkPath(path)) {
        const QString share = shareOf(path);
        if (share.isEmpty() || !folderExists(share)) {
            prompts().ask(text(settings_texts::kMachineMissing), Buttons::Ok, Icon::Warning,
                          text(settings_texts::kTitleSetupError));
            return false;
        }
    }
    if (!folderExists(path)) {
        tell(t::kNoDirectory, t::kTitleSetupError);
        return false;
    }
    return true;
}

bool checkDatabaseLeft(const QString& folder, const QString& file) {
    if (file.isEmpty())
        return true;
    if (!Like(file, QStringLiteral("*.???"))) {
        tell(t::kFileFormat, t::kTitleFormat);
        return false;
    }
    if (!QFileInfo(joinPath(folder, file)).isFile()) {
        tell(t::kNoFile, t::kTitleSetupError);
        return false;
    }
    return true;
}

bool checkMinMaxAgeLeft(const QString& text, VeskSettings& s) {
    if (text.trimmed().isEmpty())
        return true;
    const double age = Val(text);
    if (age < kLowestAge || age > kHighestAge) {
        prompts().ask(vesk::text(t::kMinMaxAge));
        return false;
    }
    s.MinMaxAge = static_cast<qint16>(roundHalfEven(age));
    return true;
}

bool checkMaxMaxAgeLeft(const QString& text, VeskSettings& s) {
    if (text.trimmed().isEmpty())
        return true;
    const double age = Val(text);
    const qint16 lowest = s.MinMaxAge == 0 ? settings_defaults::MinMaxAge : s.MinMaxAge;
    if (age <= lowest || age > kHighestAge) {
        prompts().ask(vesk::text(t::kMaxMaxAge[0]) + QString::number(lowest) + vesk::text(t::kMaxMaxAge[1]));
        return false;
    }
    s.MaxMaxAge = static_cast<qint16>(roundHalfEven(age));
    return true;
}

bool isNumberKey(int keyCode) {
    return (keyCode >= '0' && keyCode <= '9') || keyCode == key::kBackspace;
}

void nLeadingCausesLeft(const QString& text, VeskSettings& s) {
    // Digits only, so the number is whole; an empty field, or a number too large for the setting,
    // keeps the old one.
    if (text.trimmed().isEmpty())
        return;
    const double n = Val(text);
    if (n <= std::numeric_limits<int>::max())
        s.NLdCauses = static_cast<int>(n);
}

CloseOutcome closeAsked(const PreferencesControls& p) {
    if (!p.txtwklocation.isEmpty() && !p.txtImpLoc.isEmpty() && !p.txtStatOut.isEmpty() &&
        !p.txtTempArea.isEmpty())
        return CloseOutcome::Hide;
    const Answer a =
        prompts().ask(text(t::kPathsIncomplete), Buttons::YesNo, Icon::None, text(t::kTitleSetupError));
    return a == Answer::Yes ? CloseOutcome::Stay : CloseOutcome::EndProgram;
}

} // namespace vesk
