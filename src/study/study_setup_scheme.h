#pragma once
// Study Setup, the tab "Pop Units -  Aggt. Schema": a population aggregate scheme is a row of
// _DfnBPUPAGDscrptrs, an id (PAGSch) with the generic terms a study uses for its three population
// levels (BPU, PAG1, PAG2). A study names its scheme in _DctBDS.PAGSch.

#include "database/study_context.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace vesk {

struct SchemeFields {
    QString scheme; // Txtpagsch
    QString bpu;    // TXTBPU
    QString pag1;   // tXTPAG1
    QString pag2;   // TXTPAG2
};

// A new scheme id that exists already: " Already PAGSch : " id "record exist in the
// _DfnBPUPAGDscrptrs", and false.
bool checkNewSchemeId(const DbConnection& db, const QString& id);
// The schemes to pick from, or "No Population Aggregate Schema in the Database" and none.
QStringList schemeIds(const DbConnection& db);
// The scheme `id`, or "NO RECORDS" and nothing.
std::optional<SchemeFields> pickScheme(const DbConnection& db, const QString& id);
// The scheme of the study `studyId`, or "NO RECORDS" and nothing.
std::optional<SchemeFields> studyScheme(const DbConnection& db, const QString& studyId);

// Apply on the tab: the four blank checks in order, the scheme added or edited, the three generic
// terms put into the context with the Results captions, and the study given the scheme.
bool applyScheme(StudyContext& context, const SchemeFields& fields, const QString& studyId);

} // namespace vesk
