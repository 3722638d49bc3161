// The deletion cascade of the cause dictionary: a cluster takes its causes and their rows in every
// data table; a subgroup its clusters; a group its subgroups. Codes compare trimmed and without
// regard to case on both sides, group codes as numbers. The pairs of _MapBDMSqla stay.

#include "database/sql_tokens.h"
#include "platform/prompts.h"
#include "study/cause_dictionary.h"
#include "study/cause_dictionary_texts.h"

namespace vesk {

namespace {

const QString kNl = QStringLiteral("\n");
const QString kSame = QStringLiteral(" = upper(trim(?))");

// The old engine's "too few parameters" (3061) is what a data table without a cause column gives:
// that table has nothing to lose, and the cascade goes on.
bool isUnknownColumn(const QSqlError& e) {
    return engineErrorNumber(e) == 3061;
}

QVariant groupKey(const QString& code) {
    bool ok = false;
    const int n = code.trimmed().toInt(&ok);
    return ok ? QVariant(n) : QVariant(code);
}

} // namespace

QStringList CauseDictionary::dataTables() const {
    QStringList tables;
    auto q = db_.query(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND "
                                      "upper(substr(name, 1, 3)) = 'DAT' ORDER BY rowid"));
    while (q && q->next())
        tables << q->value(0).toString();
    return tables;
}

QStringList CauseDictionary::codes(const QString& sql, const QVariant& value, bool* ok) const {
    QSqlError e;
    QStringList out;
    auto q = db_.query(sql, {value}, &e);
    *ok = q.has_value();
    if (!q) {
        prompts().ask(engineDescription(e));
        return out;
    }
    while (q->next())
        out << q->value(0).toString();
    return out;
}

bool CauseDictionary::removeCluster(const QString& code) const {
    bool ok = true;
    const QStringList causes =
        codes(QStringLiteral("SELECT CobCd FROM _DctBDM WHERE upper(trim(ClstrCd))") + kSame, code, &ok);
    if (!ok)
        return false;
    const QStringList tables = dataTables();
    QSqlError e;
    for (const QString& cause : causes)
        for (const QString& table : tables) {
            if (!isPlainIdentifier(table))
                continue;
            const QString sql =
                QStringLiteral("DELETE FROM %1 WHERE upper(trim(COBCd))").arg(sql::quoteName(table)) + kSame;
            if (!db_.exec(sql, {cause}, &e) && !isUnknownColumn(e)) {
                prompts().ask(engineDescription(e));
                return false;
            }
        }
    if (!db_.exec(QStringLiteral("DELETE FROM _DctBDM WHERE upper(trim(ClstrCd))") + kSame, {code}, &e) ||
        !db_.exec(QStringLiteral("DELETE FROM _DctBDMClstr WHERE upper(trim(ClstrCd))") + kSame, {code},
                  &e)) {
        prompts().ask(engineDescription(e));
        return false;
    }
    return true;
}

bool CauseDictionary::deleteCluster(const QString& code) const {
    bool ok = true;
    if (codes(QStringLiteral("SELECT ClstrCd FROM _DctBDMClstr WHERE upper(trim(ClstrCd))") + kSame, code,
              &ok)
            .isEmpty())
        return false;
    const QStringList causes =
        codes(QStringLiteral("SELECT CobCd FROM _DctBDM WHERE upper(trim(ClstrCd))") + kSame, code, &ok);
    if (!ok)
        return false;
    if (!causes.isEmpty()) {
        const QString first = cdtext::ClusterAsk1 + QString::number(causes.size()) + cdtext::ClusterAsk2 +
                              code + cdtext::ClusterAsk3 + kNl + cdtext::ClusterAsk4 + kNl +
                              cdtext::ClusterAsk5;
        if (prompts().ask(first, Buttons::OkCancel, Icon::Warning, cdtext::ClusterAskTitle) != Answer::Ok)
            return false;
        const QString second =
            cdtext::DataAsk1 + kNl + cdtext::DataAsk2 + kNl + cdtext::DataAsk3 + kNl + cdtext::DataAsk4;
        // A No here is final too: nothing has been deleted yet.
        if (prompts().ask(second, Buttons::YesNo, Icon::Warning, cdtext::DataAskTitle) != Answer::Yes)
            return false;
    }
    return removeCluster(code);
}

bool CauseDictionary::removeSubGroup(const QString& code) const {
    bool ok = true;
    const QStringList clusters = codes(
        QStringLiteral("SELECT ClstrCd FROM _DctBDMClstr WHERE upper(trim(SGrpCd))") + kSame, code, &ok);
    if (!ok)
        return false;
    for (const QString& cluster : clusters)
        if (!cluster.isEmpty() && !removeCluster(cluster))
            return false;
    QSqlError e;
    if (!db_.exec(QStringLiteral("DELETE FROM _DctBDMSGrps WHERE upper(trim(SGrpCd))") + kSame, {code}, &e)) {
        prompts().ask(engineDescription(e));
        return false;
    }
    return true;
}

bool CauseDictionary::deleteSubGroup(const QString& code) const {
    bool ok = true;
    if (codes(QStringLiteral("SELECT SGrpCd FROM _DctBDMSGrps WHERE upper(trim(SGrpCd))") + kSame, code, &ok)
            .isEmpty())
        return false;
    const QStringList clusters = codes(
        QStringLiteral("SELECT ClstrCd FROM _DctBDMClstr WHERE upper(trim(SGrpCd))") + kSame, code, &ok);
    if (!ok)
        return false;
    if (!clusters.isEmpty()) {
        const QString ask = cdtext::SubGroupAsk1 + QString::number(clusters.size()) + cdtext::SubGroupAsk2 +
                            kNl + cdtext::SubGroupAsk3 + code + cdtext::SubGroupAsk4 + kNl +
                            cdtext::SubGroupAsk5;
        if (prompts().ask(ask, Buttons::OkCancel, Icon::Warning) != Answer::Ok)
            return false;
    }
    return removeSubGroup(code);
}

bool CauseDictionary::deleteGroup(const QString& code) const {
    bool ok = true;
    const QVariant key = groupKey(code);
    if (codes(QStringLiteral("SELECT GrpCd FROM _DctBDMGrps WHERE GrpCd = ?"), key, &ok).isEmpty())
        return false;
    const QStringList subgroups =
        codes(QStringLiteral("SELECT SGrpCd FROM _DctBDMSGrps WHERE GrpCd = ?"), key, &ok);
    if (!ok)
        return false;
    if (!subgroups.isEmpty()) {
        const QString ask = cdtext::GroupAsk1 + kNl + cdtext::GroupAsk2 + kNl + cdtext::GroupAsk3;
        if (prompts().ask(ask, Buttons::YesNo, Icon::Warning, cdtext::GroupAskTitle) != Answer::Yes)
            return false;
    }
    for (const QString& subgroup : subgroups)
        if (!subgroup.isEmpty() && !removeSubGroup(subgroup))
            return false;
    QSqlError e;
    if (!db_.exec(QStringLiteral("DELETE FROM _DctBDMGrps WHERE GrpCd = ?"), {key}, &e)) {
        prompts().ask(engineDescription(e));
        return false;
    }
    return true;
}

bool CauseDictionary::deleteCode(const QString& code, int level) const {
    bool deleted = false;
    switch (level) {
    case 2:
        deleted = deleteCluster(code);
        break;
    case 1:
        deleted = deleteSubGroup(code);
        break;
    case 0:
        deleted = deleteGroup(code);
        break;
    default:
        return false;
    }
    if (deleted)
        reloadStudyCauses();
    return deleted;
}

} // namespace vesk
