#include "results/result_entries.h"

#include "platform/texts.h"
#include "results/results_texts.h"

namespace vesk {

namespace rt = results_texts;

namespace {

using L = ResultLevel;
using K = ResultKind;
using M = BurdenMeasure;

} // namespace

const std::vector<ResultEntry>& resultEntries() {
    static const std::vector<ResultEntry> entries = {
        {"mnu_Pag2IdPdYll", L::PAG2, K::Distribution, M::YLL, true},
        {"mnu_Pag2YldSpCa", L::PAG2, K::Distribution, M::IYLD},
        {"mnu_pag2DalySpCa", L::PAG2, K::Distribution, M::IDALY},
        {"mnu_Pag2nLdCauses", L::PAG2, K::Leading, M::IDALY},
        {"mnu_Pg2yllAgSxCa", L::PAG2, K::Detail, M::YLL},
        {"mnu_Pg2YldAgSxCa", L::PAG2, K::Detail, M::IYLD},
        {"mnu_Pg2DalyAgSxCa", L::PAG2, K::Detail, M::IDALY},
        {"mnu_Pag2YllAsSpCauses", L::PAG2, K::Distribution, M::YLL},
        {"mnu_Pg2PYldAgSpCa", L::PAG2, K::Distribution, M::PYLD},
        {"mnu_Pg2PDalyAgSpCa", L::PAG2, K::Distribution, M::PDALY},
        {"mnu_Pg2NLdCauses", L::PAG2, K::Leading, M::PDALY},
        {"mnu_pg2PYllAgSxCa", L::PAG2, K::Detail, M::YLL},
        {"mnu_pg2PYldAgSxCa", L::PAG2, K::Detail, M::PYLD},
        {"mnu_pg2PDalyAgSxCa", L::PAG2, K::Detail, M::PDALY},
        {"mnu_pg1YllSpCa", L::PAG1, K::Distribution, M::YLL, true},
        {"mnu_Pg1YldSpCa", L::PAG1, K::Distribution, M::IYLD},
        {"mnu_pg1DalySpCa", L::PAG1, K::Distribution, M::IDALY},
        {"mnu_pg1YllAgSxCa", L::PAG1, K::Detail, M::YLL},
        {"mnu_pg1YldAgSxCa", L::PAG1, K::Detail, M::IYLD},
        {"mnu_pg1DalyAgSxCa", L::PAG1, K::Detail, M::IDALY},
        {"mnu_pg1YllPSpCa", L::PAG1, K::Distribution, M::YLL, true},
        {"mnu_Pg1PYldSpCa", L::PAG1, K::Distribution, M::PYLD},
        {"mnu_PPg1DalySpCa", L::PAG1, K::Distribution, M::PDALY},
        {"mnu_pg1PYllAgSxCa", L::PAG1, K::Detail, M::YLL},
        {"mnu_Pg1PyldAgSxCa", L::PAG1, K::Detail, M::PYLD},
        {"mnu_Pg1PDalyAgSxCa", L::PAG1, K::Detail, M::PDALY},
        {"mnu_bpuPDYllSpcauses", L::BPU, K::Distribution, M::YLL},
        {"mnu_bpuIDalyPdYldspcauses", L::BPU, K::Distribution, M::IYLD},
        {"mnu_bpuiDalyPdDalyspcauses", L::BPU, K::Distribution, M::IDALY},
        {"mnu_nLdCauses", L::BPU, K::Leading, M::IDALY},
        {"mnu_IdYllAgSxCa", L::BPU, K::Detail, M::YLL},
        {"mnu_idalyYldAgSxCu", L::BPU, K::Detail, M::IYLD},
        {"mnu_iDalyAgSxCa", L::BPU, K::Detail, M::IDALY},
        {"mnu_BpuPYllPdSpCa", L::BPU, K::Distribution, M::YLL},
        {"mnu_BpPYldPAgCa", L::BPU, K::Distribution, M::PYLD},
        {"mnu_BpPPdAgSx", L::BPU, K::Distribution, M::PDALY},
        {"mnu_BpPNLdCauses", L::BPU, K::Leading, M::PDALY},
        {"mnu_BpPYllAgSxCa", L::BPU, K::Detail, M::YLL},
        {"mnu_BpPYldAgSxCa", L::BPU, K::Detail, M::PYLD},
        {"mnu_BpPDalyAgSxCa", L::BPU, K::Detail, M::PDALY},
    };
    return entries;
}

const ResultEntry* resultEntry(const QString& item) {
    for (const ResultEntry& e : resultEntries())
        if (item == QLatin1String(e.item))
            return &e;
    return nullptr;
}

int rptMeasure(const ResultEntry& e) {
    if (e.kind == K::Detail)
        return -1;
    if (e.kind == K::Leading)
        return e.measure == M::PDALY ? 8 : 6;
    switch (e.measure) {
    case M::YLL:
        return 0;
    case M::IYLD:
        return 1;
    case M::IDALY:
        return 2;
    case M::PYLD:
        return 3;
    case M::PDALY:
        break;
    }
    return 4;
}

int detailMeasure(const ResultEntry& e) {
    if (e.kind != K::Detail)
        return -1;
    switch (e.measure) {
    case M::IYLD:
        return 3;
    case M::PYLD:
        return 4;
    case M::YLL:
        return 5;
    case M::IDALY:
        return 6;
    case M::PDALY:
        break;
    }
    return 7;
}

QStringList summaryHeads(const ResultEntry& e) {
    const QString measure = e.iyllHeads ? QStringLiteral("IYLL") : burdenMeasureName(e.measure);
    return {text(rt::kCobCode), text(rt::kCobDescription), measure, measure + text(rt::kPercentage)};
}

QString levelName(ResultLevel level) {
    switch (level) {
    case L::PAG2:
        return QStringLiteral("PAG2");
    case L::PAG1:
        return QStringLiteral("PAG1");
    case L::BPU:
        break;
    }
    return QStringLiteral("BPU");
}

} // namespace vesk
