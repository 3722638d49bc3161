#include "shell/preferences_names.h"

#include "foundation/settings_file_keys.h"

namespace vesk {

namespace {

// Each field with the setting and default of its key, from the settings file's own table.
struct NameBinding {
    QString control;
    const stp::NameKey* key;
};

QList<NameBinding> bindings(bool userTable) {
    QList<NameBinding> list;
    int i = 0;
    for (const stp::NameSection& section : stp::kNameSections) {
        const bool isUser = &section == &stp::kNameSections.back();
        for (const stp::NameKey& key : section.keys) {
            if (isUser == userTable)
                list << NameBinding{QString::fromLatin1(kNameControls[i]), &key};
            ++i;
        }
    }
    return list;
}

void show(QHash<QString, QString>& texts, const VeskSettings& s, bool userTable) {
    for (const NameBinding& b : bindings(userTable)) {
        const QString& name = s.*b.key->member;
        texts[b.control] = name.isEmpty() ? QString::fromUtf8(b.key->textDefault) : name;
    }
}

void keep(const QHash<QString, QString>& texts, VeskSettings& s, bool userTable) {
    for (const NameBinding& b : bindings(userTable)) {
        const QString name = texts.value(b.control).trimmed();
        s.*b.key->member = name.isEmpty() ? QString::fromUtf8(b.key->textDefault) : name;
    }
}

} // namespace

void GetDctTblNm(QHash<QString, QString>& texts, const VeskSettings& s) {
    show(texts, s, false);
}

void AppendDctTblNm(const QHash<QString, QString>& texts, VeskSettings& s) {
    keep(texts, s, false);
}

void GetUsrLtsTblNm(QHash<QString, QString>& texts, const VeskSettings& s) {
    show(texts, s, true);
}

void AppendUsrLtsTblNm(const QHash<QString, QString>& texts, VeskSettings& s) {
    keep(texts, s, true);
}

} // namespace vesk
