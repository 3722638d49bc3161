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
// Each level's entry, and the entries under it.
const QString kCluster =
    QStringLiteral("SELECT ClstrCd FROM _DctBDMClstr WHERE upper(trim(ClstrCd))") + kSame;
const QString kCausesOfCluster =
    QStringLiteral("SELECT CobCd FROM _DctBDM WHERE upper(trim(ClstrCd))") + kSame;
const QString kSubGroup = QStringLiteral("SELECT SGrpCd FROM _DctBDMSGrps WHERE upper(trim(SGrpCd))") + kSame;
const QString kClustersOfSubGroup =
    QStringLiteral("SELECT ClstrCd FROM _DctBDMClstr WHERE upper(trim(SGrpCd))") + kSame;
const QString kGroup = QStringLiteral("SELECT GrpCd FROM _DctBDMGrps WHERE GrpCd = ?");
const QString kSubGroupsOfGroup = QStringLiteral("SELECT SGrpCd FROM _DctBDMSGrps WHERE GrpCd = ?");

// The old engine's "too few parameters" (3061) is what a data table without a cause column gives:
// that table has nothing to lose, and the cascade goes on.
bool isUnknownColumn(const QSqlError& e) {
    return engineErrorNumber(e) == 3061;
}

// Whether the user answers a warning with its first button (Ok, Yes): the cascade goes on.
bool agreed(const QString& question, Buttons buttons, const QString& title = QString()) {
    return prompts().ask(question, buttons, Icon::Warning, title) == defaultAnswer(buttons);
}

QString clusterQuestion(const QString& code, qsizetype causes) {
    return cdtext::ClusterAsk1 + QString::number(causes) + cdtext::ClusterAsk2 + code + cdtext::ClusterAsk3 +
           kNl + cdtext::ClusterAsk4 + kNl + cdtext::ClusterAsk5;
}

QString dataQuestion() {
    return cdtext::DataAsk1 + kNl + cdtext::DataAsk2 + kNl + cdtext::DataAsk3 + kNl + cdtext::DataAsk4;
}

QString subGroupQuestion(const QString& code, qsizetype clusters) {
    return cdtext::SubGroupAsk1 + QString::number(clusters) + cdtext::SubGroupAsk2 + kNl +
           cdtext::SubGroupAsk3 + code + cdtext::SubGroupAsk4 + kNl + cdtext::SubGroupAsk5;
}

QString groupQuestion() {
    return cdtext::GroupAsk1 + kNl + cdtext::GroupAsk2 + kNl + cdtext::GroupAsk3;
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

std::optional<QStringList>
CauseDictionary::childrenToDelete(const QString& entrySql, const QString& childrenSql, const QVariant& key,
                                  const std::function<bool(qsizetype)>& confirm) const {
    bool ok = true;
    if (codes(entrySql, key, &ok).isEmpty())
        return std::nullopt;
    const QStringList children = codes(childrenSql, key, &ok);
    if (!ok || (!children.isEmpty() && !confirm(children.size())))
        return std::nullopt;
    return children;
}

bool CauseDictionary::removeRows(const QString& sql, const QVariant& key) const {
    QSqlError e;
    if (db_.exec(sql, {key}, &e))
        return true;
    prompts().ask(engineDescription(e));
    return false;
}

bool CauseDictionary::removeCluster(const QString& code) const {
    bool ok = true;
    const QStringList causes = codes(kCausesOfCluster, code, &ok);
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
    return removeRows(QStringLiteral("DELETE FROM _DctBDM WHERE upper(trim(ClstrCd))") + kSame, code) &&
           removeRows(QStringLiteral("DELETE FROM _DctBDMClstr WHERE upper(trim(ClstrCd))") + kSame, code);
}

bool CauseDictionary::deleteCluster(const QString& code) const {
    const auto confirm = [&](qsizetype causes) {
        // A No to the second question is final too: nothing has been deleted yet.
        return agreed(clusterQuestion(code, causes), Buttons::OkCancel, cdtext::ClusterAskTitle) &&
               agreed(dataQuestion(), Buttons::YesNo, cdtext::DataAskTitle);
    };
    return childrenToDelete(kCluster, kCausesOfCluster, code, confirm).has_value() && removeCluster(code);
}

bool CauseDictionary::removeSubGroup(const QString& code) const {
    bool ok = true;
    const QStringList clusters = codes(kClustersOfSubGroup, code, &ok);
    if (!ok)
        return false;
    for (const QString& cluster : clusters)
        if (!cluster.isEmpty() && !removeCluster(cluster))
            return false;
    return removeRows(QStringLiteral("DELETE FROM _DctBDMSGrps WHERE upper(trim(SGrpCd))") + kSame, code);
}

bool CauseDictionary::deleteSubGroup(const QString& code) const {
    const auto confirm = [&](qsizetype clusters) {
        return agreed(subGroupQuestion(code, clusters), Buttons::OkCancel);
    };
    return childrenToDelete(kSubGroup, kClustersOfSubGroup, code, confirm).has_value() &&
           removeSubGroup(code);
}

bool CauseDictionary::deleteGroup(const QString& code) const {
    const QVariant key = groupKey(code);
    const auto confirm = [](qsizetype) {
        return agreed(groupQuestion(), Buttons::YesNo, cdtext::GroupAskTitle);
    };
    const auto subgroups = childrenToDelete(kGroup, kSubGroupsOfGroup, key, confirm);
    if (!subgroups)
        return false;
    for (const QString& subgroup : *subgroups)
        if (!subgroup.isEmpty() && !removeSubGroup(subgroup))
            return false;
    return removeRows(QStringLiteral("DELETE FROM _DctBDMGrps WHERE GrpCd = ?"), key);
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
