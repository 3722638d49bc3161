#include "study/study_setup_scheme.h"

#include "platform/prompts.h"
#include "study/study_setup.h"
#include "study/study_setup_report.h"
#include "study/study_setup_texts.h"

namespace vesk {

namespace t = setup_texts;

namespace {

using setup_texts::text;

std::optional<SchemeFields> schemeOf(const DbConnection& db, const QString& sql, const QString& value) {
    auto q = db.query(sql, {value});
    if (!q || !q->next()) {
        prompts().ask(text(t::kNoRecords));
        return std::nullopt;
    }
    return SchemeFields{q->value(0).toString(), q->value(1).toString(), q->value(2).toString(),
                        q->value(3).toString()};
}

} // namespace

bool checkNewSchemeId(const DbConnection& db, const QString& id) {
    auto q = db.query(QStringLiteral("SELECT 1 FROM _DfnBPUPAGDscrptrs WHERE PAGSch = ?"), {id.trimmed()});
    if (!q || !q->next())
        return true;
    prompts().ask(text(t::kSchemaExists1) + id.trimmed() + text(t::kSchemaExists2));
    return false;
}

QStringList schemeIds(const DbConnection& db) {
    QStringList ids;
    auto q = db.query(QStringLiteral("SELECT PAGSch FROM _DfnBPUPAGDscrptrs ORDER BY rowid"));
    while (q && q->next())
        ids << q->value(0).toString();
    if (ids.isEmpty())
        prompts().ask(text(t::kNoSchemas));
    return ids;
}

std::optional<SchemeFields> pickScheme(const DbConnection& db, const QString& id) {
    return schemeOf(
        db, QStringLiteral("SELECT PAGSch, BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs WHERE PAGSch = ?"), id);
}

std::optional<SchemeFields> studyScheme(const DbConnection& db, const QString& studyId) {
    return schemeOf(db,
                    QStringLiteral("SELECT PAGSch, BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs WHERE PAGSch IN "
                                   "(SELECT PAGSch FROM _DctBDS WHERE BDSId = ?)"),
                    studyId);
}

bool applyScheme(StudyContext& context, const SchemeFields& f, const QString& studyId) {
    const char* blanks[4] = {t::kSchemaBlank, t::kBpuBlank, t::kPag1Blank, t::kPag2Blank};
    const QString* fields[4] = {&f.scheme, &f.bpu, &f.pag1, &f.pag2};
    for (int i = 0; i < 4; ++i)
        if (fields[i]->trimmed().isEmpty()) {
            prompts().ask(text(blanks[i]));
            return false;
        }
    const DbConnection& db = *context.StudyDB;
    const QString id = f.scheme.trimmed();
    auto q = db.query(QStringLiteral("SELECT 1 FROM _DfnBPUPAGDscrptrs WHERE PAGSch = ?"), {id});
    const bool exists = q && q->next();
    const bool written =
        exists ? execSetupStatement(
                     db,
                     QStringLiteral("UPDATE _DfnBPUPAGDscrptrs SET PAGSch = ?, BPU = ?, PAG2 = ?, PAG1 = ? "
                                    "WHERE PAGSch = ?"),
                     {id, f.bpu, f.pag2, f.pag1, id})
               : execSetupStatement(
                     db,
                     QStringLiteral(
                         "INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG2, PAG1) VALUES (?, ?, ?, ?)"),
                     {id, f.bpu, f.pag2, f.pag1});
    if (!written)
        return false;
    // The study's words for its levels, and the scheme reloaded.
    context.LblBPU = f.bpu;
    context.LblPAG1 = f.pag1;
    context.LblPAG2 = f.pag2;
    if (context.CurBDSId.compare(studyId.trimmed(), Qt::CaseInsensitive) == 0) {
        context.CurPAGSch = id;
        context.InitPAGScheme();
    }
    setupRequests().ask(FrameRequest::plain(FrameRequest::Kind::LevelCaptions));
    return execSetupStatement(db, QStringLiteral("UPDATE _DctBDS SET PAGSch = ? WHERE BDSId = ?"),
                              {id, studyId.trimmed()});
}

} // namespace vesk
