#include "study/cause_dictionary.h"

#include "database/study_context.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "study/cause_dictionary_texts.h"

namespace vesk {

namespace {

const QString kNl = QStringLiteral("\n");

QVariant textValue(const QString& text) {
    return text.trimmed().isEmpty() ? QVariant() : QVariant(text);
}

// A parent code as stored: "-NA-" and a blank stand for no parent.
QVariant parentValue(const QString& parent) {
    return parent == cdtext::NoParent ? QVariant() : textValue(parent);
}

// Group codes are numbers: a code that reads as a whole number is bound as one.
QVariant groupValue(const QString& code) {
    bool ok = false;
    const int n = code.trimmed().toInt(&ok);
    if (ok)
        return n;
    return textValue(code);
}

QString cellText(const QVariant& v) {
    if (v.isNull())
        return {};
    const Cell c = cellFromVariant(v);
    return c.isNumber() ? numberToText(c.toDouble()) : c.toString();
}

QList<DictRow> dictRows(const DbConnection& db, const QString& sql) {
    QSqlError e;
    QList<DictRow> rows;
    auto q = db.query(sql, {}, &e);
    if (!q) {
        prompts().ask(engineDescription(e));
        return rows;
    }
    while (q->next())
        rows.push_back({cellText(q->value(0)), cellText(q->value(1)), cellText(q->value(2))});
    return rows;
}

bool isBlank(const DictRow& row) {
    return row.code.trimmed().isEmpty() && row.description.trimmed().isEmpty();
}

// The message of a failed write of the dictionary: the group rule's own, or the engine's text.
void reportAppendError(const QSqlError& e) {
    if (engineErrorNumber(e) == 3316)
        prompts().ask(cdtext::GroupRule);
    else
        prompts().ask(engineDescription(e) + cdtext::Terminated);
}

struct LevelSql {
    QString find, insert, update, status;
};

const LevelSql& levelSql(DictLevel level) {
    static const LevelSql sql[4] = {
        {QStringLiteral("SELECT rowid FROM _DctBDMGrps WHERE GrpCd = ?"),
         QStringLiteral("INSERT INTO _DctBDMGrps (\"Group\", GrpCd) VALUES (?, ?)"),
         QStringLiteral("UPDATE _DctBDMGrps SET \"Group\" = ? WHERE rowid = ?"), cdtext::UpdatingGroups},
        {QStringLiteral("SELECT rowid FROM _DctBDMSGrps WHERE SGrpCd = ?"),
         QStringLiteral("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES (?, ?, ?)"),
         QStringLiteral("UPDATE _DctBDMSGrps SET Subgroup = ?, GrpCd = ? WHERE rowid = ?"),
         cdtext::UpdatingSubGroups},
        {QStringLiteral("SELECT rowid FROM _DctBDMClstr WHERE ClstrCd = ?"),
         QStringLiteral("INSERT INTO _DctBDMClstr (Cluster, ClstrCd, SGrpCd) VALUES (?, ?, ?)"),
         QStringLiteral("UPDATE _DctBDMClstr SET Cluster = ?, SGrpCd = ? WHERE rowid = ?"),
         cdtext::UpdatingClusters},
        {QStringLiteral("SELECT rowid FROM _DctBDM WHERE CobCd = ?"),
         QStringLiteral("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla) VALUES (?, ?, ?, 0)"),
         QStringLiteral("UPDATE _DctBDM SET Disease = ?, ClstrCd = ? WHERE rowid = ?"),
         cdtext::UpdatingCauses},
    };
    return sql[static_cast<int>(level)];
}

} // namespace

QList<DictRow> loadDictLevel(const DbConnection& db, DictLevel level) {
    switch (level) {
    case DictLevel::Group:
        return dictRows(db, QStringLiteral("SELECT GrpCd, \"Group\", NULL FROM _DctBDMGrps ORDER BY rowid"));
    case DictLevel::SubGroup:
        return dictRows(db,
                        QStringLiteral("SELECT SGrpCd, Subgroup, GrpCd FROM _DctBDMSGrps ORDER BY SGrpCd"));
    case DictLevel::Cluster:
        return dictRows(db,
                        QStringLiteral("SELECT ClstrCd, Cluster, SGrpCd FROM _DctBDMClstr ORDER BY ClstrCd"));
    case DictLevel::Cause:
        return dictRows(db, QStringLiteral("SELECT CobCd, Disease, ClstrCd FROM _DctBDM ORDER BY rowid"));
    }
    return {};
}

QList<DictRow> loadSequelae(const DbConnection& db) {
    return dictRows(db, QStringLiteral("SELECT SqlaCd, Sequela, NULL FROM _DctBDMSqla ORDER BY rowid"));
}

CobcdCheck chkcobcd(const DbConnection& db, const QStringList& codes) {
    CobcdCheck check;
    for (const QString& code : codes) {
        if (code.isEmpty())
            continue;
        bool ok = true;
        if (code.trimmed().size() != 5) {
            check.errors << code + cdtext::CodeSeparator + cdtext::OnlyFiveCharacters;
            ok = false;
        }
        auto q =
            db.query(QStringLiteral("SELECT ClstrCd FROM _DctBDMClstr WHERE ClstrCd = ?"), {code.left(4)});
        if (!q || !q->next()) {
            check.errors << code + cdtext::CodeSeparator + cdtext::ClusterMissing;
            ok = false;
        }
        if (ok)
            check.valid << code;
    }
    return check;
}

bool CauseDictionary::writeRow(DictLevel level, const DictRow& row) const {
    const LevelSql& sql = levelSql(level);
    const QVariant key = level == DictLevel::Group ? groupValue(row.code) : textValue(row.code);
    const QVariant description = textValue(row.description);
    QVariant parent = level == DictLevel::SubGroup ? groupValue(row.parent) : parentValue(row.parent);
    if (level == DictLevel::SubGroup && row.parent == cdtext::NoParent)
        parent = QVariant();
    if (level == DictLevel::Cause && parent.isNull())
        parent = row.code.trimmed().left(4); // the first four characters name the cluster
    QSqlError e;
    auto found = db_.query(sql.find, {key}, &e);
    bool ok = found.has_value();
    if (ok) {
        const bool exists = found->next();
        const QVariant rowid = exists ? found->value(0) : QVariant();
        found.reset();
        if (exists) {
            QVariantList values{description};
            if (level != DictLevel::Group)
                values << parent;
            values << rowid;
            ok = db_.exec(sql.update, values, &e);
        } else if (level == DictLevel::Group) {
            ok = db_.exec(sql.insert, {description, key}, &e);
        } else if (level == DictLevel::Cluster) {
            ok = db_.exec(sql.insert, {description, key, parent}, &e);
        } else {
            ok = db_.exec(sql.insert, {key, description, parent}, &e);
        }
    }
    if (!ok)
        reportAppendError(e);
    return ok;
}

bool CauseDictionary::writeLevel(DictLevel level, const QList<DictRow>& rows, Progress& progress) const {
    progress.setText(levelSql(level).status);
    progress.setRange(0, std::max<int>(1, static_cast<int>(rows.size())));
    progress.setValue(0);
    int done = 0;
    for (const DictRow& row : rows) {
        if (!isBlank(row) && !writeRow(level, row))
            return false;
        progress.setValue(++done);
    }
    return true;
}

bool CauseDictionary::append(const std::array<QList<DictRow>, 4>& levels, Progress& progress) const {
    const QList<DictRow>& causes = levels[static_cast<int>(DictLevel::Cause)];
    for (const DictRow& row : causes)
        if (!row.code.trimmed().isEmpty() && row.description.trimmed().isEmpty()) {
            prompts().ask(cdtext::FillDescription);
            return false;
        }
    progress.setVisible(true);
    bool ok = true;
    for (DictLevel level : {DictLevel::Group, DictLevel::SubGroup, DictLevel::Cluster})
        if (ok)
            ok = writeLevel(level, levels[static_cast<int>(level)], progress);
    if (ok) {
        // Causes are checked once their clusters are written: a bad code is listed and left out.
        QStringList codes;
        for (const DictRow& row : causes)
            codes << row.code;
        const CobcdCheck check = chkcobcd(db_, codes);
        QList<DictRow> valid;
        for (const DictRow& row : causes)
            if (isBlank(row) || check.valid.contains(row.code))
                valid << row;
        if (!check.errors.isEmpty())
            prompts().ask(check.errors.join(kNl));
        ok = writeLevel(DictLevel::Cause, valid, progress) && check.errors.isEmpty();
    }
    progress.setText(QString());
    progress.setVisible(false);
    return ok;
}

bool CauseDictionary::writeSequela(const DictRow& row) const {
    QSqlError e;
    auto found = db_.query(QStringLiteral("SELECT rowid FROM _DctBDMSqla WHERE SqlaCd = ?"), {row.code}, &e);
    bool ok = found.has_value();
    if (ok) {
        const bool exists = found->next();
        const QVariant rowid = exists ? found->value(0) : QVariant();
        found.reset();
        ok = exists ? db_.exec(QStringLiteral("UPDATE _DctBDMSqla SET Sequela = ? WHERE rowid = ?"),
                               {row.description, rowid}, &e)
                    : db_.exec(QStringLiteral("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES (?, ?)"),
                               {row.code, row.description}, &e);
    }
    if (!ok)
        prompts().ask(engineDescription(e));
    return ok;
}

bool CauseDictionary::saveSequelae(const QList<DictRow>& rows) const {
    for (const DictRow& row : rows) {
        if (isBlank(row))
            continue;
        QString refusal;
        if (row.code.trimmed().isEmpty())
            refusal = cdtext::SequelaNull;
        else if (row.code.size() > 7)
            refusal = cdtext::SequelaTooLong;
        else if (row.description.trimmed().isEmpty())
            refusal = cdtext::DescriptionNull;
        if (!refusal.isEmpty()) {
            prompts().ask(refusal);
            return false;
        }
        if (!writeSequela(row))
            return false;
    }
    prompts().ask(cdtext::SequelaUpdated);
    return true;
}

bool CauseDictionary::mapSequela(const QString& sequela, const QString& cause) const {
    QSqlError e;
    auto found = db_.query(QStringLiteral("SELECT 1 FROM _MapBDMSqla WHERE SqlaCd = ? AND cobcd = ?"),
                           {sequela, cause}, &e);
    if (found && found->next()) {
        prompts().ask(cdtext::AlreadyMapped);
        return false;
    }
    found.reset();
    if (!db_.exec(QStringLiteral("INSERT INTO _MapBDMSqla (SqlaCd, cobcd) VALUES (?, ?)"), {sequela, cause},
                  &e) ||
        !db_.exec(QStringLiteral("UPDATE _DctBDM SET Sqla = -1 WHERE CobCd = ?"), {cause}, &e)) {
        prompts().ask(engineDescription(e));
        return false;
    }
    reloadStudyCauses();
    return true;
}

bool CauseDictionary::removeSequelaMap(const QString& cause, const QString& sequela) const {
    QSqlError e;
    if (!db_.exec(QStringLiteral("DELETE FROM _MapBDMSqla WHERE cobcd = ? AND SqlaCd = ?"), {cause, sequela},
                  &e)) {
        prompts().ask(engineDescription(e));
        return false;
    }
    auto left = db_.query(QStringLiteral("SELECT 1 FROM _MapBDMSqla WHERE cobcd = ?"), {cause}, &e);
    const bool none = left && !left->next();
    left.reset();
    if (none && !db_.exec(QStringLiteral("UPDATE _DctBDM SET Sqla = 0 WHERE CobCd = ?"), {cause}, &e)) {
        prompts().ask(engineDescription(e));
        return false;
    }
    reloadStudyCauses();
    return true;
}

QList<DictRow> CauseDictionary::causesOfSequela(const QString& sequela) const {
    QSqlError e;
    QList<DictRow> rows;
    auto q = db_.query(QStringLiteral("SELECT CobCd, Disease, ClstrCd FROM _DctBDM WHERE CobCd IN "
                                      "(SELECT cobcd FROM _MapBDMSqla WHERE SqlaCd = ?) ORDER BY rowid"),
                       {sequela}, &e);
    while (q && q->next())
        rows.push_back({cellText(q->value(0)), cellText(q->value(1)), cellText(q->value(2))});
    return rows;
}

bool CauseDictionary::deleteSequela(const QString& code) const {
    if (prompts().ask(cdtext::DeleteSequela, Buttons::YesNo, Icon::Question, cdtext::TitleVESK) !=
        Answer::Yes)
        return false;
    QSqlError e;
    // The causes' flags are not revised here.
    if (!db_.exec(QStringLiteral("DELETE FROM _DctBDMSqla WHERE SqlaCd = ?"), {code}, &e) ||
        !db_.exec(QStringLiteral("DELETE FROM _MapBDMSqla WHERE SqlaCd = ?"), {code}, &e)) {
        prompts().ask(engineDescription(e));
        return false;
    }
    reloadStudyCauses();
    return true;
}

void reloadStudyCauses() {
    StudyContext& c = studyContext();
    if (c.StudyDB && !c.CurBDSId.isEmpty())
        c.InitCobcd(/*quiet=*/true);
}

} // namespace vesk
