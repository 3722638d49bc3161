#include "database/study_context.h"

#include "database/db_paths.h"
#include "database/db_texts.h"
#include "foundation/settings.h"
#include "platform/prompts.h"

#include <QFileInfo>
#include <vector>

namespace vesk {

namespace {

QString sameFile(const QString& path) {
    const QFileInfo info(path);
    return info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
}

struct BDSRow {
    QString id, title, scheme;
    qint16 year = 0;
};

// What ClearStudyContext runs after its own members (onClear).
std::vector<std::function<void()>>& clearHooks() {
    static std::vector<std::function<void()>> hooks;
    return hooks;
}

} // namespace

StudyContext& studyContext() {
    static StudyContext context;
    return context;
}

void StudyContext::show(const QString& text) {
    prompts().ask(text, Buttons::Ok, Icon::None);
}

QString StudyContext::studyDatabasePath() {
    return joinPath(preferences().txtwklocation.trimmed(), preferences().txtVESKObj.trimmed());
}

std::shared_ptr<DbConnection> StudyContext::ensureStudyDB(QString* error) {
    const QString path = studyDatabasePath();
    if (StudyDB && sameFile(StudyDB->path()) == sameFile(path))
        return StudyDB;
    // Not open, or open on a file the settings no longer name: (re)open on the named one.
    auto db = DbConnection::open(path, error);
    if (db)
        StudyDB = db;
    return db;
}

std::shared_ptr<DbConnection> StudyContext::ensureStudyDBOrShow() {
    QString error;
    auto db = ensureStudyDB(&error);
    if (!db)
        show(error);
    return db;
}

LoadReport StudyContext::InitBDS() {
    QString error;
    if (!ensureStudyDB(&error)) {
        show(dbtext::ErrorFromInitBDS + error);
        return {StudyFinding::EngineFailed};
    }
    QSqlError e;
    QList<BDSRow> rows;
    if (auto q = StudyDB->query(
            QStringLiteral("SELECT BDSId, Year, BDSTi, PAGSch FROM _DctBDS WHERE Slct <> 0 ORDER BY rowid"),
            {}, &e)) {
        while (q->next())
            rows.push_back({q->value(0).toString(), q->value(2).toString(), q->value(3).toString(),
                            static_cast<qint16>(q->value(1).toInt())});
    } else {
        show(dbtext::ErrorFromInitBDS + engineDescription(e));
        return {StudyFinding::EngineFailed};
    }
    if (rows.size() == 1) {
        const BDSRow& r = rows.back();
        CurBDSId = r.id;
        CurYear = r.year;
        CurBDSTi = r.title;
        CurPAGSch = r.scheme; // a Null reads as ""
        if (!CurPAGSch.isEmpty())
            return {};
        show(dbtext::NoPAGScheme);
        return {StudyFinding::NoScheme};
    }
    const bool tooMany = rows.size() > 1;
    if (tooMany) {
        show(dbtext::TooManyStudies);
        if (!StudyDB->exec(QStringLiteral("UPDATE _DctBDS SET Slct = 0"), {}, &e)) {
            show(dbtext::ErrorFromInitBDS + engineDescription(e));
            return {StudyFinding::EngineFailed};
        }
    }
    // No current study: tell whether there is any study at all.
    auto any = StudyDB->query(QStringLiteral("SELECT 1 FROM _DctBDS LIMIT 1"), {}, &e);
    if (!any) {
        show(dbtext::ErrorFromInitBDS + engineDescription(e));
        return {StudyFinding::EngineFailed};
    }
    if (!any->next()) {
        show(dbtext::NoStudyEntry);
        return {StudyFinding::NoStudyEntry};
    }
    show(dbtext::NoneCurrent1 + QStringLiteral("\r\n") + dbtext::NoneCurrent2 + QStringLiteral("\r\n") +
         dbtext::NoneCurrent3);
    return {tooMany ? StudyFinding::TooManyStudies : StudyFinding::NoneCurrent};
}

void StudyContext::InitYear() {
    if (!StudyDB)
        return;
    auto q = StudyDB->query(QStringLiteral("SELECT Year FROM _DctBDS WHERE Slct <> 0 ORDER BY rowid"));
    QList<Cell> years;
    while (q && q->next())
        years.push_back(cellFromVariant(q->value(0)));
    if (years.isEmpty())
        return;
    CellArray list{static_cast<int>(years.size())};
    for (int i = 0; i < years.size(); ++i)
        list(i) = years[i];
    VctrYrLst = Cell(std::move(list));
    CurYear = static_cast<qint16>(years[0].toDouble());
}

void StudyContext::InitPAGScheme() {
    if (CurBDSId.isEmpty() || !StudyDB)
        return;
    QSqlError e;
    if (CurPAGSch.isEmpty()) {
        auto q = StudyDB->query(QStringLiteral("SELECT PAGSch FROM _DctBDS WHERE BDSId = ?"), {CurBDSId}, &e);
        if (q && !q->next())
            show(dbtext::PAGSchNotInBDS);
        else if (!q)
            show(engineDescription(e));
        return;
    }
    auto q = StudyDB->query(QStringLiteral("SELECT BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs WHERE PAGSch = ?"),
                            {CurPAGSch}, &e);
    if (!q) {
        show(isNoSuchTable(e) ? dbtext::NoDscrptrsTable : engineDescription(e));
        return;
    }
    if (!q->next()) {
        show(dbtext::NoPAGSchRecords);
        return;
    }
    LblBPU = q->value(0).toString();
    LblPAG1 = q->value(1).toString();
    LblPAG2 = q->value(2).toString();
}

void StudyContext::InitDAP() {
    VctrDAP0 = {0, 0, 0, 0, 0};
    VctrDAP1 = {1, 0.03, 1, 0.04, 0.1658};
    VctrDAP2 = {2, 0, 1, 0.04, 0.1658};
    VctrDAP3 = {3, 0.03, 0, 0, 0};
}

void StudyContext::InitTblNames() {
    TblNmLst = {QStringLiteral("DatADW"), QStringLiteral("DatASDR"), QStringLiteral("DatCSM"),
                QStringLiteral("DatDmgphyPrmtrs"), QStringLiteral("DatPop")};
}

void StudyContext::onClear(std::function<void()> hook) {
    clearHooks().push_back(std::move(hook));
}

void StudyContext::ClearStudyContext() {
    for (Cell* c : {&MtxDmgphy, &ArrAgeDfn, &VctrBPULst})
        if (c->isArray())
            *c = Cell();
    LblBPU.clear();
    LblPAG1.clear();
    LblPAG2.clear();
    for (const auto& hook : clearHooks())
        hook();
}

bool StudyContext::CheckDatpop() {
    if (!StudyDB)
        return false;
    auto pop = StudyDB->query(QStringLiteral("SELECT 1 FROM DatPOP LIMIT 1"));
    auto asdr = StudyDB->query(QStringLiteral("SELECT 1 FROM DatASDR LIMIT 1"));
    return pop && asdr && pop->next() && asdr->next();
}

LevelCaptions levelCaptions(const StudyContext& c) {
    return {c.LblPAG2.isEmpty() ? dbtext::CaptionPAG2 : c.LblPAG2,
            c.LblBPU.isEmpty() ? dbtext::CaptionBPU : c.LblBPU,
            c.LblPAG1.isEmpty() ? dbtext::CaptionPAG1 : c.LblPAG1};
}

} // namespace vesk
