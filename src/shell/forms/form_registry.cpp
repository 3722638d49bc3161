#include "shell/forms/form_registry.h"

#include "burden/computation.h"
#include "burden/forms/calculators_open.h"
#include "burden/forms/frm_comp_daly.h"
#include "burden/forms/frm_dale.h"
#include "burden/forms/frm_load_status.h"
#include "burden/dale.h"
#include "database/study_context.h"
#include "burden/compute_run.h"
#include "demography/forms/frm_interpolate.h"
#include "demography/forms/frm_pop_dth_as.h"
#include "demography/forms/frm_pop_prymd.h"
#include "demography/forms/frm_tools_pp.h"
#include "demography/pyramid_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "demography/forms/frm_life_table_entry.h"
#include "demography/forms/frmoiagd.h"
#include "demography/forms/standard_table_commands.h"
#include "inputs/forms/new_frm_inputs.h"
#include "inputs/forms/transfer_commands.h"
#include "platform/forms/window_placement.h"
#include "results/chart_export.h"
#include "results/forms/frm_new.h"
#include "results/forms/result_viewer.h"
#include "results/result_entries.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/frame_preferences.h"
#include "shell/forms/frm_shw_cnt_mem.h"
#include "shell/forms/frm_vesk_setup.h"
#include "shell/forms/menu_commands.h"
#include "shell/loading_chain.h"
#include "study/forms/definestudy1.h"
#include "study/forms/defpopunits.h"
#include "study/forms/frm_buld_main_cl_dic.h"
#include "study/forms/frm_cob.h"
#include "study/study_setup_report.h"

#include <QMdiArea>
#include <QPointer>

namespace vesk {

void registerCalculators() {
    registerMenuCommand(QStringLiteral("mnu_yllcal"), [](FRMMAINMENU& f) { openYllCalculator(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_yldcal"),
                        [](FRMMAINMENU& f) { openIyldCalculator(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_pyldcal"),
                        [](FRMMAINMENU& f) { openPyldCalculator(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_dcal"), [](FRMMAINMENU& f) { openDalyCalculator(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_lt"), [](FRMMAINMENU& f) { FrmLifeTableEntry::open(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_FiAGAtDthinOpInt"), [](FRMMAINMENU& f) { frmoiagd::open(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("Interpolation"), [](FRMMAINMENU& f) { frmInterpolate::open(f.mdiArea()); });
}

void registerStudySetup() {
    setStudySetupOpener([](FRMMAINMENU& frame, bool newDatabase) {
        DEFINESTUDY1::open(&frame, newDatabase, computation().MtxDAP, applyFrameRequest);
    });
}

void registerStudyDefinitionForms() {
    static QPointer<QMdiSubWindow> units, dictionary, outline;
    setupRequests().setHandler(applyFrameRequest);
    registerMenuCommand(QStringLiteral("mnu_BPUES"), [](FRMMAINMENU& frame) {
        showSingleInArea(frame.mdiArea(), defpopunits::open(), units);
    });
    static QPointer<QMdiSubWindow> inputs;
    registerMenuCommand(QStringLiteral("mnu_studyInp"), [](FRMMAINMENU& frame) {
        showSingleInArea(frame.mdiArea(), NewFrmInputs::open(), inputs);
    });
    registerMenuCommand(QStringLiteral("mnu_cgroups"), [](FRMMAINMENU& frame) {
        showSingleInArea(frame.mdiArea(), FRMBULDMAINCLDIC::open(), dictionary);
    });
    registerMenuCommand(QStringLiteral("mnu_CauseGrps"), [](FRMMAINMENU& frame) {
        showSingleInArea(frame.mdiArea(), frmCOB::open(frmCOB::Mode::Causes), outline);
    });
    registerMenuCommand(QStringLiteral("mnu_popunits_outline"), [](FRMMAINMENU& frame) {
        showSingleInArea(frame.mdiArea(), frmCOB::open(frmCOB::Mode::Population), outline);
    });
}

void registerComputationForms() {
    for (const auto& [item, mode] : {std::pair{"mnu_Daly", kCompModeQuick}, std::pair{"mnu_sens", kCompModeSensitivity}})
        registerMenuCommand(QString::fromLatin1(item), [mode](FRMMAINMENU& f) {
            frmCompDALY::open(f.mdiArea(), mode, [&f] { f.showErrorViewer(); });
        });
    registerMenuCommand(QStringLiteral("mns_lsr"), [](FRMMAINMENU& f) { frmLoadStatus::open(f.mdiArea()); });
    registerMenuCommand(QStringLiteral("mnu_CmpDale"), [](FRMMAINMENU& f) {
        procCompDALE(studyContext(), computation(), [&f] { f.showErrorViewer(); });
    });
    registerMenuCommand(QStringLiteral("mnu_DaleShow"), [](FRMMAINMENU& f) { frmDale::open(f.mdiArea()); });
}

void registerResultViewers() {
    for (const ResultEntry& entry : resultEntries())
        registerMenuCommand(QString::fromLatin1(entry.item), [&entry](FRMMAINMENU& f) {
            if (ResultViewer* viewer = ResultViewer::open(entry, nullptr)) {
                placeInArea(f.mdiArea(), viewer, OpeningSize::FormsOwn);
                viewer->show();
            }
        });
    // Graph Export Data: sheet names first (Yes opens the preferences to name them), then the workbook.
    for (const auto& [item, pag] :
         {std::pair{"mnu_bpuGraphExptDat", false}, std::pair{"mnu_Pag1GraphExportdata", true}})
        registerMenuCommand(QString::fromLatin1(item), [pag](FRMMAINMENU&) {
            if (procCheckSheetNames())
                preferencesForm().showModal();
            else
                exportChartData(pag, computation(), studyContext());
        });
    for (const auto& [item, pag] : {std::pair{"mnu_bpuGraphs", false}, std::pair{"mnu_pag1Graphs", true}})
        registerMenuCommand(QString::fromLatin1(item), [pag](FRMMAINMENU& f) {
            if (frmnew* charts = frmnew::procReadGph(pag, nullptr)) {
                placeInArea(f.mdiArea(), charts, OpeningSize::FormsOwn);
                charts->show();
            }
        });
}

void registerPyramids() {
    registerMenuCommand(QStringLiteral("mnu_popPryd"), [](FRMMAINMENU& f) {
        StudyContext& study = studyContext();
        if (!study.VctrBPULst.isArray()) {
            prompts().ask(text(pyramid_texts::kNoBpu));
            return;
        }
        // The population by single year of age: the computation's, or built for the pyramid.
        Computation& comp = computation();
        if (!comp.ArrPop4D.isArray())
            comp.ArrPop4D = singleYearPopulation(study);
        auto* pyramid = new frmPopPrymd(comp.ArrPop4D, study.VctrBPULst);
        placeInArea(f.mdiArea(), pyramid, OpeningSize::FormsOwn);
        pyramid->show();
    });
    // Reports -> Population and Deaths by age and sex, over the computation's single-year arrays.
    for (const auto& [item, mode] : {std::pair{"mnu_Population", frmPopDthAS::Population},
                                     std::pair{"mnu_DthsByAgeSex", frmPopDthAS::Deaths}})
        registerMenuCommand(QString::fromLatin1(item), [mode](FRMMAINMENU& f) {
            const Computation& comp = computation();
            if (frmPopDthAS* view = frmPopDthAS::open(mode, mode == frmPopDthAS::Population ? comp.ArrPop4D : comp.ArrDth4D,
                                                      studyContext().VctrBPULst)) {
                placeInArea(f.mdiArea(), view, OpeningSize::FormsOwn);
                view->show();
            }
        });
    registerMenuCommand(QStringLiteral("mnu_toolsPP"), [](FRMMAINMENU& f) {
        auto* tool = new frmToolsPP;
        placeInArea(f.mdiArea(), tool, OpeningSize::FormsOwn);
        tool->show();
    });
}

void registerTransfers() {
    // An import or purge that may have changed the study's definitions has the chain load it again.
    for (const TransferCommand& c : transferCommands())
        registerMenuCommand(QString::fromLatin1(c.item), [run = c.run](FRMMAINMENU&) {
            if (run())
                enableTimer1();
        });
    for (const StandardTableCommand& c : standardTableCommands())
        registerMenuCommand(QString::fromLatin1(c.item), [run = c.run](FRMMAINMENU&) { run(); });
}

void registerForms() {
    installPreferencesForm();
    registerRunLogViewers();
    registerCalculators();
    registerStudySetup();
    registerStudyDefinitionForms();
    registerComputationForms();
    registerResultViewers();
    registerPyramids();
    registerTransfers();
}

} // namespace vesk
