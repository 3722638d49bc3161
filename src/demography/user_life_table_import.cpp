#include "demography/user_life_table_import.h"

#include "demography/life_table_check.h"
#include "demography/standard_table_texts.h"
#include "demography/user_life_table_file.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QStringList>

namespace vesk {

namespace {

namespace t = standard_table_texts;

QString linesOf(const char* head, const QStringList& layout) {
    return text(head) + u'\n' + layout.join(u'\n');
}

} // namespace

QString userTableQuestion(ForeignKind kind) {
    switch (kind) {
    case ForeignKind::Text: {
        QStringList layout;
        for (const char* line : t::kTextLayout)
            layout << text(line);
        return linesOf(t::kAskText, layout);
    }
    case ForeignKind::Dbf:
        return linesOf(t::kAskDbf, {text(t::kTableLayout)});
    case ForeignKind::Database:
        return linesOf(t::kAskDatabase, {text(t::kTableLayout)});
    default:
        return linesOf(t::kAskWorksheet, {text(t::kWorksheetLayout)});
    }
}

QString consistencyFailureMessage() {
    QString message = text(t::kFailedChecks);
    for (const char* check : t::kChecks)
        message += u'\n' + text(check);
    return message;
}

QString userTableSourceName(const VeskSettings& s) {
    const QString name = s.UsrLTSTblNm.trimmed();
    return name.isEmpty() ? QString::fromLatin1(settings_defaults::UsrLTSTblNm) : name;
}

UserTableImport importUserLifeTable(const QString& path, const VeskSettings& s, PreferencesControls& p) {
    const ForeignKind kind = foreignKind(path);
    // A file of no kind has no layout to ask about: the reader says what it is.
    if (kind != ForeignKind::None &&
        prompts().ask(userTableQuestion(kind), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return UserTableImport::Declined;
    QString reason;
    const auto table = readUserLifeTable(path, userTableSourceName(s), &reason);
    if (!table) {
        prompts().ask(text(t::kNotImported) + reason, Buttons::Ok, Icon::Critical);
        return UserTableImport::Refused;
    }
    if (!DoChk(*table)) {
        prompts().ask(consistencyFailureMessage(), Buttons::Ok, Icon::Critical);
        return UserTableImport::FailedChecks;
    }
    p.userLifeTable = *table;
    p.userLifeTableLoaded = true;
    prompts().ask(text(t::kImported), Buttons::Ok, Icon::Information);
    return UserTableImport::Imported;
}

} // namespace vesk
