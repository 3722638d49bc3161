#include "inputs/inputs_study.h"

#include "inputs/sheet_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "study/asg_labels.h"

namespace vesk {

namespace t = sheet_texts;

namespace {

void tell(const QString& message) {
    prompts().ask(message, Buttons::Ok, Icon::Critical);
}

QStringList textsOf(const Cell& vector) {
    QStringList out;
    if (!vector.isArray())
        return out;
    const CellArray& a = vector.array();
    for (std::size_t k = 0; k < a.count(); ++k)
        if (!a.flat(k).toString().isEmpty())
            out << a.flat(k).toString();
    return out;
}

QList<double> agesOf(const Cell& vector) {
    QList<double> out;
    if (!vector.isArray())
        return out;
    const CellArray& a = vector.array();
    for (std::size_t k = 0; k < a.count(); ++k)
        if (a.flat(k).isNumber() || !a.flat(k).toString().trimmed().isEmpty())
            out << a.flat(k).toDouble();
    return out;
}

QStringList column(DbConnection& db, const QString& sql, const QVariantList& values) {
    QStringList out;
    auto q = db.query(sql, values);
    while (q && q->next())
        out << q->value(0).toString();
    return out;
}

bool loadAges(StudyContext& c, InputsStudy& s) {
    DbConnection& db = *c.StudyDB;
    if (column(db, QStringLiteral("SELECT count(*) FROM _DfnAgeGrps WHERE BDSId = ?"), {s.studyId}).value(0) == u"0") {
        tell(text(t::kNoAgeDefinitions) + s.studyId);
        return false;
    }
    if (!c.InitAgeGrps(s.studyId, c.ArrAgeDfn) || !buildAgeGroupLabels(c)) {
        tell(text(t::kAgeDefinitionsUnobtainable));
        return false;
    }
    s.yllLabels = textsOf(c.VctrYLLAsg);
    s.yldLabels = textsOf(c.VctrYLDAsg);
    s.pndAges = agesOf(c.VctrPNDAge);
    if (s.pndAges.isEmpty() || s.yllLabels.isEmpty() || s.yldLabels.isEmpty()) {
        tell(text(t::kAgeDefinitionsUnobtainable));
        return false;
    }
    return true;
}

bool loadCauses(StudyContext& c, InputsStudy& s) {
    c.InitCobcd(true);
    if (!c.MtxCobCd.isArray() || c.MtxCobCd.array().rank() != 2) {
        tell(text(t::kNoCauses));
        return false;
    }
    const CellArray& causes = c.MtxCobCd.array();
    for (int i = 0; i < causes.size(0); ++i) {
        const QString code = causes(causes.lbound(0) + i, causes.lbound(1)).toString();
        const QString name = column(*c.StudyDB, QStringLiteral("SELECT Disease FROM _DctBDM WHERE CobCd = ?"), {code})
                                 .value(0);
        s.causes << StudyCause{code, name};
        s.sequelae << textsOf(causes(causes.lbound(0) + i, causes.lbound(1) + 1));
    }
    return true;
}

} // namespace

std::optional<InputsStudy> openInputsStudy(StudyContext& c) {
    if (!c.InitBDS())
        return std::nullopt;
    c.InitPAGScheme();
    InputsStudy s;
    s.studyId = c.CurBDSId;
    s.title = c.CurBDSTi;
    s.year = c.CurYear;
    s.term = c.LblBPU;
    if (!loadAges(c, s))
        return std::nullopt;
    auto units = c.StudyDB->query(
        QStringLiteral("SELECT BPUID, BPUName FROM _DctBPU WHERE BDSId = ? ORDER BY Prty, BPUID"), {s.studyId});
    while (units && units->next()) {
        s.units << units->value(0).toString();
        s.unitNames << units->value(1).toString();
    }
    if (s.units.isEmpty()) {
        tell(text(t::kNoUnitsPart1) + s.term + text(t::kNoUnitsPart2));
        return std::nullopt;
    }
    if (!loadCauses(c, s))
        return std::nullopt;
    return s;
}

QList<WeightRow> weightRowsOf(const InputsStudy& study) {
    QList<WeightRow> rows;
    for (int i = 0; i < study.causes.size(); ++i) {
        const StudyCause& c = study.causes[i];
        if (study.sequelae.value(i).isEmpty())
            rows << WeightRow{c.code, c.name, c.code};
        for (const QString& sequela : study.sequelae.value(i))
            rows << WeightRow{sequela, c.name, c.code};
    }
    return rows;
}

QString inputsCaption(const InputsStudy& study) {
    return text(t::kInputsCaption) + study.title + QStringLiteral(" (") + QString::number(study.year) + u')';
}

} // namespace vesk
