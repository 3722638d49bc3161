#include "shell/frame_menu_tree.h"

#include "shell/frame_texts.h"

#include <QHash>

namespace vesk {

namespace {

const std::vector<MenuItemDef> kTree = {
    {"mnu_file", "&File", ""},
    {"mnu_New", "&New", "mnu_file"},
    {"mnu_Open", "&Open..", "mnu_file"},
    {"mnu_cgroups", "&Dictionaries", "mnu_file"},
    {"Mnu_import", "&Import", "mnu_file"},
    {"Mnu_SubMnu_DfltDictMaps", "&Dictionaries and Maps", "Mnu_import"},
    {"mnu_GrpDic", "&Groups Dictionaries", "Mnu_SubMnu_DfltDictMaps"},
    {"mnu_SubGrpsDic", "&SubGroups Dictionaries", "Mnu_SubMnu_DfltDictMaps"},
    {"mnu_ClusterDic", "&Cluster Dictionaries", "Mnu_SubMnu_DfltDictMaps"},
    {"mnu_causeOfBurdenCodes", "Cause of &Burden codes", "Mnu_SubMnu_DfltDictMaps"},
    {"mnu_Squ_Dic", "Se&quela Dictionaries", "Mnu_SubMnu_DfltDictMaps"},
    {"mnu_Sql_Cobcd_map", "Sequela-Cause of Burden &Map", "Mnu_SubMnu_DfltDictMaps"},
    {"mnu_All_Dic", "&All Dictionaries", "Mnu_SubMnu_DfltDictMaps"},
    {"mnu_popunits", "&Population Units", "Mnu_import"},
    {"mnu_impbpu", "&Basic Populatuion Units (BPU)", "mnu_popunits"},
    {"mnu_imppag1", "Population Aggregate Level1 (PAG1)", "mnu_popunits"},
    {"mnu_imppag2", "Population Aggregate Level2 (PAG2)", "mnu_popunits"},
    {"mnu_popunits_all", "&All Population Units", "mnu_popunits"},
    {"Mnu_SubMnu_UsrStdLftbl", "&User Defined Standard Life Table", "Mnu_import"},
    {"mnu_exp", "Export", "mnu_file"},
    {"Mnu_SubMnu_ExpDictMaps", "&Dictionaries and Maps", "mnu_exp"},
    {"mnu_ExpGDict", "Group Dictionaries", "Mnu_SubMnu_ExpDictMaps"},
    {"mnu_ExpSGDict", "&SubGroups Dictionaries", "Mnu_SubMnu_ExpDictMaps"},
    {"mnu_ExpClstrDict", "&Cluster Dictionaries", "Mnu_SubMnu_ExpDictMaps"},
    {"mnu_ExpCOBDict", "Cause of &Burden codes", "Mnu_SubMnu_ExpDictMaps"},
    {"mnu_ExpSqlaDict", "Se&quela Dictionaries", "Mnu_SubMnu_ExpDictMaps"},
    {"mnu_ExpMapDict", "Sequela-Cause of Burden &Map", "Mnu_SubMnu_ExpDictMaps"},
    {"mnu_ExpAllDict", "&All Dictionaries", "Mnu_SubMnu_ExpDictMaps"},
    {"mnu_exppopunits", "&Population Units", "mnu_exp"},
    {"mnu_expBPU", "&Basic Populatuion Units (BPU)", "mnu_exppopunits"},
    {"mnu_expPAG1", "Population Aggregate Level1 (PAG1)", "mnu_exppopunits"},
    {"mnu_expPAG2", "Population Aggregate Level2 (PAG2)", "mnu_exppopunits"},
    {"mnu_expPopAll", "&All Population Units", "mnu_exppopunits"},
    {"mnu_lts", "&Life Tables", "mnu_exp"},
    {"mnu_expKROLTS", "Standard Life Table - &KRO", "mnu_lts"},
    {"mnu_expWHOLTS", "Standard Life Table - &WHO", "mnu_lts"},
    {"mnu_expUstrLTS", "&User Defined Standard Life Table", "mnu_lts"},
    {"mnu_expStdData", "&Study Data", "mnu_exp"},
    {"mnu_exp_Pop", "&Population", "mnu_expStdData"},
    {"mnu_expASRD", "&Age Specific Death Rates", "mnu_expStdData"},
    {"mnu_exp_CSMP", "&Cause Specific Mortality Proportions", "mnu_expStdData"},
    {"mnu_exp_epi", "&Epideilogical Estimates", "mnu_expStdData"},
    {"mnu_Dwt", "&Disability weights", "mnu_expStdData"},
    {"mnu_expAll", "&All Study Data", "mnu_expStdData"},
    {"Mnu_Purge", "&Zap", "mnu_file"},
    {"Mnu_Submnu_DfltDicMps", "&Dictionaries and Maps", "Mnu_Purge"},
    {"Mnu_Submnu_ExtStDt", "&All Study Data", "Mnu_Purge"},
    {"mnu_exStdSetup", "Existing &Study Setup", "Mnu_Purge"},
    {"mnu_setup", "&Preferences", "mnu_file"},
    {"Cls", "&Close", "mnu_file"},
    {"mnu_exit", "&Exit", "mnu_file"},

    {"mnu_study", "&Study", ""},
    {"mnu_SSetup", "&Setup", "mnu_study"},
    {"mnu_BPUES", "&Population Units", "mnu_study"},
    {"mnu_studyInp", "&Inputs", "mnu_study"},

    {"mnu_Reports", "&View", ""},
    {"mnu_CauseGrps", "Causes of burden &Outline", "mnu_Reports"},
    {"mnu_popunits_outline", "Population &Units Schema Outline", "mnu_Reports"},
    {"mnu_ADW", "Age specific disability &Weights", "mnu_Reports"},
    {"mnu_Population", "&Population by age and sex", "mnu_Reports"},
    {"mnu_DthsByAgeSex", "&Deaths by age and sex", "mnu_Reports"},
    {"mnu_DthASG", "Deaths by age,sex and &Cause", "mnu_Reports"},

    {"mnu_Compute", "&Compute", ""},
    {"mnu_Daly", "&DALYs - Quick", "mnu_Compute"},
    {"mnu_sens", "DALYs -  &Sensitivity Analysis", "mnu_Compute"},
    {"mnu_CmpDale", "DAL&E", "mnu_Compute"},
    {"mns_lsr", "Load Stored &Results", "mnu_Compute"},
    {"mnu_ShCntMem", "Show Content in &Memory", "mnu_Compute"},

    {"mnu_res", "&Results", ""},
    {"mnu_pag2", "&PAG2", "mnu_res"},
    {"mnu_Pag2iDaly", "&IDALY", "mnu_pag2"},
    {"mnu_pag2SumTab", "&Summary Tables", "mnu_Pag2iDaly"},
    {"mnu_Pag2IdPdYll", frame_texts::kPctYll, "mnu_pag2SumTab"},
    {"mnu_Pag2YldSpCa", frame_texts::kPctIyld, "mnu_pag2SumTab"},
    {"mnu_pag2DalySpCa", frame_texts::kPctIdaly, "mnu_pag2SumTab"},
    {"mnu_Pag2nLdCauses", frame_texts::kNLeading, "mnu_pag2SumTab"},
    {"mnu_IdDtTables", "Detail &Tables", "mnu_Pag2iDaly"},
    {"mnu_Pg2yllAgSxCa", frame_texts::kDtYll, "mnu_IdDtTables"},
    {"mnu_Pg2YldAgSxCa", frame_texts::kDtIyld, "mnu_IdDtTables"},
    {"mnu_Pg2DalyAgSxCa", frame_texts::kDtIdaly, "mnu_IdDtTables"},
    {"mnu_Pag2PDaly", "&PDALY", "mnu_pag2"},
    {"mnu_Pg2pDySt", "&Summary Tables", "mnu_Pag2PDaly"},
    {"mnu_Pag2YllAsSpCauses", frame_texts::kPctYll, "mnu_Pg2pDySt"},
    {"mnu_Pg2PYldAgSpCa", frame_texts::kPctPyld, "mnu_Pg2pDySt"},
    {"mnu_Pg2PDalyAgSpCa", frame_texts::kPctPdaly, "mnu_Pg2pDySt"},
    {"mnu_Pg2NLdCauses", frame_texts::kNLeading, "mnu_Pg2pDySt"},
    {"mnu_pg2DtTb", "Detail &Tables", "mnu_Pag2PDaly"},
    {"mnu_pg2PYllAgSxCa", frame_texts::kDtYll, "mnu_pg2DtTb"},
    {"mnu_pg2PYldAgSxCa", frame_texts::kDtPyld, "mnu_pg2DtTb"},
    {"mnu_pg2PDalyAgSxCa", frame_texts::kDtPdaly, "mnu_pg2DtTb"},
    {"mnu_Pag1Results", "&PAG1", "mnu_res"},
    {"mnu_pag1Idaly", "&IDALY", "mnu_Pag1Results"},
    {"mnu_Pg1SumTbls", "&Summary Tables", "mnu_pag1Idaly"},
    {"mnu_pg1YllSpCa", frame_texts::kPctYll, "mnu_Pg1SumTbls"},
    {"mnu_Pg1YldSpCa", frame_texts::kPctIyld, "mnu_Pg1SumTbls"},
    {"mnu_pg1DalySpCa", frame_texts::kPctIdaly, "mnu_Pg1SumTbls"},
    {"mnu_Pg1DtTb", "Detail &Tables", "mnu_pag1Idaly"},
    {"mnu_pg1YllAgSxCa", frame_texts::kDtYll, "mnu_Pg1DtTb"},
    {"mnu_pg1YldAgSxCa", frame_texts::kDtIyld, "mnu_Pg1DtTb"},
    {"mnu_pg1DalyAgSxCa", frame_texts::kDtIdaly, "mnu_Pg1DtTb"},
    {"mnu_pag1Pdaly", "&PDALY", "mnu_Pag1Results"},
    {"mnu_Ppg1SmTbls", "&Summary Details", "mnu_pag1Pdaly"},
    {"mnu_pg1YllPSpCa", frame_texts::kPctYll, "mnu_Ppg1SmTbls"},
    {"mnu_Pg1PYldSpCa", frame_texts::kPctPyld, "mnu_Ppg1SmTbls"},
    {"mnu_PPg1DalySpCa", frame_texts::kPctPdaly, "mnu_Ppg1SmTbls"},
    {"mnu_pg1PDtTables", "Detail &Tables", "mnu_pag1Pdaly"},
    {"mnu_pg1PYllAgSxCa", frame_texts::kDtYll, "mnu_pg1PDtTables"},
    {"mnu_Pg1PyldAgSxCa", frame_texts::kDtPyld, "mnu_pg1PDtTables"},
    {"mnu_Pg1PDalyAgSxCa", frame_texts::kDtPdaly, "mnu_pg1PDtTables"},
    {"mnu_pag1Graphs", "&Graphs", "mnu_Pag1Results"},
    {"mnu_Pag1GraphExportdata", "Graph &Export Data", "mnu_Pag1Results"},
    {"mnu_bpu", "&BPU", "mnu_res"},
    {"mnu_bpuIDaly", "&IDALY", "mnu_bpu"},
    {"mnu_Idalysumtabl", "&Summary Tables", "mnu_bpuIDaly"},
    {"mnu_bpuPDYllSpcauses", frame_texts::kPctYll, "mnu_Idalysumtabl"},
    {"mnu_bpuIDalyPdYldspcauses", frame_texts::kPctIyld, "mnu_Idalysumtabl"},
    {"mnu_bpuiDalyPdDalyspcauses", frame_texts::kPctIdaly, "mnu_Idalysumtabl"},
    {"mnu_nLdCauses", frame_texts::kNLeading, "mnu_Idalysumtabl"},
    {"mnu_BpuDtTables", "Detail &Tables", "mnu_bpuIDaly"},
    {"mnu_IdYllAgSxCa", frame_texts::kDtYll, "mnu_BpuDtTables"},
    {"mnu_idalyYldAgSxCu", frame_texts::kDtIyld, "mnu_BpuDtTables"},
    {"mnu_iDalyAgSxCa", frame_texts::kDtIdaly, "mnu_BpuDtTables"},
    {"mnu_bpuPdaly", "&PDALY", "mnu_bpu"},
    {"mnu_BpPSmTbls", "&Summary Tables", "mnu_bpuPdaly"},
    {"mnu_BpuPYllPdSpCa", frame_texts::kPctYll, "mnu_BpPSmTbls"},
    {"mnu_BpPYldPAgCa", frame_texts::kPctPyld, "mnu_BpPSmTbls"},
    {"mnu_BpPPdAgSx", frame_texts::kPctPdaly, "mnu_BpPSmTbls"},
    {"mnu_BpPNLdCauses", frame_texts::kNLeading, "mnu_BpPSmTbls"},
    {"mnu_BpDtPTbls", "Detail &Tables", "mnu_bpuPdaly"},
    {"mnu_BpPYllAgSxCa", frame_texts::kDtYll, "mnu_BpDtPTbls"},
    {"mnu_BpPYldAgSxCa", frame_texts::kDtPyld, "mnu_BpDtPTbls"},
    {"mnu_BpPDalyAgSxCa", frame_texts::kDtPdaly, "mnu_BpDtPTbls"},
    {"mnu_bpuGraphs", "&Graphs", "mnu_bpu"},
    {"mnu_bpuGraphExptDat", "Graph &Export Data", "mnu_bpu"},
    {"mnu_popPryd", "Population &Pyramid", "mnu_res"},
    {"mnu_DaleShow", "DALE &Results", "mnu_res"},

    {"mnu_tools", "&Tools", ""},
    {"mnu_lt", "&Life Table", "mnu_tools"},
    {"mnu_yllcal", "&YLL Calculator", "mnu_tools"},
    {"mnu_yldcal", "&IYLD Calculator", "mnu_tools"},
    {"mnu_pyldcal", "&PYLD Calculator", "mnu_tools"},
    {"mnu_dcal", "&DALY Calculator", "mnu_tools"},
    {"Interpolation", "In&terpolator", "mnu_tools"},
    {"mnu_FiAGAtDthinOpInt", "Find Age at Death in an &Open Interval", "mnu_tools"},
    {"mnu_toolsPP", "Population P&yramid", "mnu_tools"},

    {"mnu_Help", "&Help", ""},
    {"mnu_veskh", "&VESK-Help", "mnu_Help"},
    {"mnu_avesk", "&About VESK", "mnu_Help"},
};

const std::vector<ToolbarButtonDef> kToolbar = {
    {1, "Setup"}, {2, "Open File"}, {3, "Dictionaries"}, {4, "Close Database"}, {5, "Exit"},
};

const QHash<QString, int>& indexByName() {
    static const QHash<QString, int> index = [] {
        QHash<QString, int> h;
        for (int i = 0; i < int(kTree.size()); ++i)
            h.insert(QString::fromLatin1(kTree[i].name), i);
        return h;
    }();
    return index;
}

} // namespace

const std::vector<MenuItemDef>& menuTree() {
    return kTree;
}

const MenuItemDef* findMenuItem(const QString& name) {
    const auto it = indexByName().constFind(name);
    return it == indexByName().constEnd() ? nullptr : &kTree[*it];
}

QStringList menuChildren(const QString& name) {
    QStringList out;
    for (const auto& item : kTree)
        if (QLatin1String(item.parent) == name)
            out << QString::fromLatin1(item.name);
    return out;
}

bool isSubmenu(const QString& name) {
    for (const auto& item : kTree)
        if (QLatin1String(item.parent) == name)
            return true;
    return false;
}

QStringList allMenuItems() {
    QStringList out;
    for (const auto& item : kTree)
        out << QString::fromLatin1(item.name);
    return out;
}

QStringList menuAncestors(const QString& name) {
    QStringList out;
    const MenuItemDef* item = findMenuItem(name);
    while (item && *item->parent) {
        out << QString::fromLatin1(item->parent);
        item = findMenuItem(out.last());
    }
    return out;
}

const std::vector<ToolbarButtonDef>& toolbarButtons() {
    return kToolbar;
}

QString toolbarButtonName(int index) {
    return QStringLiteral("Toolbar1_Button%1").arg(index);
}

QStringList allSwitchableItems() {
    QStringList out = allMenuItems();
    for (const auto& b : kToolbar)
        out << toolbarButtonName(b.index);
    return out;
}

} // namespace vesk
