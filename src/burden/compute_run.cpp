#include "burden/compute_run.h"

#include "burden/computation_texts.h"
#include "burden/input_loaders.h"
#include "burden/kernel_loops.h"
#include "burden/stored_results.h"
#include "demography/single_year.h"
#include "foundation/runtime_arithmetic.h"
#include "foundation/runtime_error.h"
#include "foundation/settings.h"
#include "platform/texts.h"
#include "study/asg_labels.h"

#include <QElapsedTimer>

namespace vesk {

namespace ct = computation_texts;

namespace {

void say(Progress* bar, const char* words) {
    if (bar)
        bar->setText(text(words));
}

// "Choice For Five Years" as the single-year series take it; anything but a number is 0.
int choiceFiveYears() {
    try {
        return runtime_arithmetic::toInteger(runtime_arithmetic::operand(settings().ChoiceFiveYrs));
    } catch (const RuntimeError&) {
        return 0;
    }
}

RunOutcome ended(RunEnd end, const char* words, TimeLog& log) {
    log.finish();
    return {end, text(words)};
}

} // namespace

bool openComputationStudy(StudyContext& c) {
    if (!c.InitBDS())
        return false;
    c.InitYear();
    c.InitPAGScheme();
    if (c.InitAgeGrps(c.CurBDSId, c.ArrAgeDfn).finding != StudyFinding::AgeDefinitionsFound ||
        !buildAgeGroupLabels(c))
        return false;
    if (!c.InitCOB())
        return false;
    c.InitCobcd();
    if (!c.InitBPULst(QStringLiteral("_DctBPU")))
        return false;
    c.InitDmgphyPrmtrs(c.CurBDSId, c.MtxDmgphy);
    return c.VctrYrLst.isArray() && c.MtxCobCd.isArray();
}

void procBDNKernel(const KernelInputs& in, const Cell& VctrYLDAsg, const Cell& VctrYLLAsg, Computation& comp,
                   Progress* bar) {
    comp.ArrBDNParams = Cell(FnBDNParams(in));
    say(bar, ct::kComputingYld);
    if (bar)
        bar->setValue(5);
    comp.ArrYld = BldYLDArray(in.ArrADWIP, in.MtxDAP);
    say(bar, ct::kComputingYll);
    const CellArray none;
    const Cell perDeath = BldYLLPerDeath(in.ArrAGD, in.MtxDAP, in.MtxLTS.isArray() ? in.MtxLTS.array() : none);
    comp.ArrYll = BldYLLArray(in.ArrDBC, perDeath);
    say(bar, ct::kComputingDaly);
    comp.ArrDaly = BldDALYArray(comp.ArrYld, comp.ArrYll, VctrYLDAsg, VctrYLLAsg);
    say(bar, ct::kBuildingLabels);
    const ResultLabels labels =
        BldResultLabels(in.VctrYrLst, in.VctrBPULst, in.MtxDAP, in.MtxCobCd, VctrYLDAsg, VctrYLLAsg, comp.ArrDaly);
    comp.ArrYldLbl = labels.yld;
    comp.ArrYllLbl = labels.yll;
    comp.ArrDalyLbl = labels.daly;
}

Cell singleYearPopulation(const StudyContext& study, const QString& settingsFile) {
    const Cell population = Build4DArrPopData(computationStudy(study));
    if (!population.isArray())
        return Cell();
    const std::optional<SpraguePanels> panels = ProcLoadPanels(settingsFile);
    return Newp(population, choiceFiveYears(), panels ? &*panels : nullptr);
}

RunOutcome runComputation(StudyContext& study, Computation& comp, const CellArray& MtxLTS, Progress* bar,
                          TimeLog& log, const QString& settingsFile) {
    QElapsedTimer clock;
    clock.start();
    const auto seconds = [&clock] { return clock.elapsed() / 1000.0; };
    log.start();

    // Population and deaths, by basic interval and then by single year of age.
    log.mark();
    say(bar, ct::kLoadingPopulation);
    if (study.StudyDB)
        study.InitDmgphyPrmtrs(study.CurBDSId, study.MtxDmgphy);
    const LoaderStudy s = computationStudy(study);
    const int choice = choiceFiveYears();
    const std::optional<SpraguePanels> panels = ProcLoadPanels(settingsFile);
    const SpraguePanels* given = panels ? &*panels : nullptr;
    comp.ArrDth4D = Cell();
    comp.ArrPop4D = singleYearPopulation(study, settingsFile);
    if (comp.ArrPop4D.isArray()) {
        const Cell deaths = BldDthArr(s);
        if (deaths.isArray())
            comp.ArrDth4D = Newp(deaths, choice, given);
    }
    if (!comp.ArrPop4D.isArray() || !comp.ArrDth4D.isArray())
        return ended(RunEnd::NoDemographicInputs, ct::kNoDemographicInputs, log);
    log.phase(TimePhase::LoadPopulation);

    say(bar, ct::kComputingAgd);
    if (!loadAgesAtDeath(s, comp.ArrPop4D, comp.ArrDth4D, comp.ArrAGD))
        return ended(RunEnd::NoAgd, ct::kAgdFailed, log);

    const ComputationProgress progress{bar, seconds};
    log.mark();
    FnChkCSMTotals(s);
    if (!DBCProc(s, comp.ArrDth4D, progress, comp.ArrDBC))
        return ended(RunEnd::NoDbc, ct::kDbcFailed, log);
    log.phase(TimePhase::LoadCauseOfDeath);

    log.mark();
    const Cell MtxDwt = LoadDwt(s);
    if (!LoadADWIP(s, MtxDwt, comp.ArrPop4D, progress, comp.ArrADWIP))
        return ended(RunEnd::NoAdwip, ct::kAdwipFailed, log);
    log.phase(TimePhase::LoadEpidemiological);
    say(bar, ct::kLoadedEpidemiological);

    log.mark();
    say(bar, ct::kMappingAsgs);
    const KernelInputs in{comp.ArrADWIP, comp.ArrAGD,   comp.ArrDBC,  Cell(MtxLTS), Cell(QStringLiteral("B")),
                          s.years,       s.units,       comp.MtxDAP,  s.causes};
    procBDNKernel(in, s.yldLabels, s.yllLabels, comp, bar);
    log.phase(TimePhase::Compute);
    say(bar, ct::kComputedDaly);

    log.mark();
    say(bar, ct::kStoringYld);
    LoadTables(s, QStringLiteral("YLD"), QStringLiteral("RsltYLD"), comp.MtxDAP, comp.ArrYld, progress);
    log.phase(TimePhase::StoreYLD);
    log.mark();
    say(bar, ct::kStoringYll);
    LoadTblYll(s, comp.MtxDAP, comp.ArrYll, progress);
    log.phase(TimePhase::StoreYLL);
    log.mark();
    say(bar, ct::kStoringDaly);
    LoadTblDaly(s, comp.MtxDAP, comp.ArrDaly, progress);
    log.phase(TimePhase::StoreDALY);
    log.finish();
    if (comp.ArrDaly.isArray())
        return {RunEnd::Stored, text(ct::kComplete)};
    return {RunEnd::NotComputed, text(ct::kNotComputed)};
}

} // namespace vesk
