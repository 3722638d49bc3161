#include "shell/menu_state.h"

#include "shell/frame_menu_tree.h"
#include "shell/study_backend.h"

#include <QSet>

namespace vesk {

namespace {

RecordingMenus fallback;
MenuSwitch* installed = nullptr;

QString s(const char* name) {
    return QString::fromLatin1(name);
}

const QString tb1 = toolbarButtonName(1);
const QString tb2 = toolbarButtonName(2);
const QString tb3 = toolbarButtonName(3);
const QString tb4 = toolbarButtonName(4);
const QString tb5 = toolbarButtonName(5);

// What works on the open database: the File items Import, Export, Zap, Close and Dictionaries,
// toolbar buttons 3 and 4, and Compute.
const QStringList kDatabaseItems = {s("Mnu_import"),  s("mnu_exp"),    s("Mnu_Purge"), s("Cls"), tb3, tb4,
                                    s("mnu_cgroups"), s("mnu_Compute")};

// The items a database that is wrong, or closed, leaves dead.
const QStringList kDeadWithoutDatabase = {
    s("mnu_study"), s("mnu_res"), s("mnu_Reports"), s("Mnu_import"),  s("mnu_exp"),
    s("Mnu_Purge"), s("Cls"),     s("mnu_cgroups"), s("mnu_Compute"),
};

// And the items that stay alive without one.
const QStringList kAliveWithoutDatabase = {s("mnu_tools"), s("mnu_Help"),  s("mnu_New"),
                                           s("mnu_Open"),  s("mnu_setup"), s("mnu_exit")};

const QStringList kDeadAtStart = {s("mnu_Reports"), s("mnu_res"), s("mnu_Compute")};

const QStringList kNoStudy = {s("mnu_BPUES"), s("mnu_studyInp"), s("mnu_Daly"),
                              s("mns_lsr"),   s("mnu_Compute"),  s("mnu_res")};

const std::vector<MenuStateRule> kRules = {
    {MenuState::Starting, "Starting", {}, kDeadAtStart, MenuStateRule::Others::Keep},
    {MenuState::Ready, "Ready", {}, {}, MenuStateRule::Others::Enable},
    {MenuState::NoStudy, "No study", {}, kNoStudy, MenuStateRule::Others::Enable},
    {MenuState::BadDatabase, "Bad database", kAliveWithoutDatabase, kDeadWithoutDatabase,
     MenuStateRule::Others::Keep},
    {MenuState::Closed, "Closed", kAliveWithoutDatabase, kDeadWithoutDatabase, MenuStateRule::Others::Keep},
    // File -> New, Open and Exit, and their toolbar buttons "Open File" and "Exit".
    {MenuState::NoSettings,
     "No settings",
     {s("mnu_New"), s("mnu_Open"), s("mnu_exit"), tb2, tb5},
     {},
     MenuStateRule::Others::Disable},
};

// Steps that switch each of `names` on, or off, in that order.
std::vector<MenuStep> on(const QStringList& names, bool enabled = true) {
    std::vector<MenuStep> out;
    for (const auto& n : names)
        out.push_back({n, enabled});
    return out;
}

std::vector<MenuStep> off(const QStringList& names) {
    return on(names, false);
}

std::vector<MenuStep> join(std::initializer_list<std::vector<MenuStep>> parts) {
    std::vector<MenuStep> out;
    for (const auto& part : parts)
        out.insert(out.end(), part.begin(), part.end());
    return out;
}

struct ChangeEntry {
    MenuChange change;
    std::optional<MenuState> state; // none: the literal list alone
    std::vector<MenuStep> steps;    // the literal list
};

const std::vector<ChangeEntry>& changeTable() {
    static const std::vector<MenuStep> ready = join({on({s("mnu_study"), s("mnu_res"), s("mnu_Reports"),
                                                         s("mnu_tools"), s("mnu_Help"), s("mnu_setup"), tb1}),
                                                     on(kDatabaseItems)});
    static const std::vector<MenuStep> fileClose =
        off(QStringList{s("mnu_res"), s("mnu_Reports"), s("mnu_study")} + kDatabaseItems);
    // The settings dialogue leaves toolbar button 4 alone.
    static const std::vector<MenuStep> trapini = [] {
        QStringList names = QStringList{s("mnu_study"), s("mnu_res"),  s("mnu_Reports"),
                                        s("mnu_tools"), s("mnu_Help"), s("mnu_setup")} +
                            kDatabaseItems;
        names.removeOne(tb4);
        return off(names);
    }();
    static const std::vector<ChangeEntry> table = {
        {MenuChange::FrameLoad, MenuState::Starting, off(kDeadAtStart)},
        {MenuChange::ChainBadDatabase, MenuState::BadDatabase,
         join({on({s("mnu_study")}), off({s("mnu_res"), s("mnu_Reports")}),
               on({s("mnu_tools"), s("mnu_Help")}), off(kDatabaseItems), off({s("mnu_study")})})},
        {MenuChange::ChainReady, MenuState::Ready, ready},
        {MenuChange::OpenPassed, MenuState::Ready, ready},
        {MenuChange::OpenFailed, MenuState::BadDatabase,
         join({off({s("mnu_res"), s("mnu_Reports"), tb1}), off(kDatabaseItems),
               on({s("mnu_tools"), s("mnu_Help")})})},
        {MenuChange::OpenFailedAfterMessage, std::nullopt,
         join({on({s("mnu_study")}), off({s("mnu_res"), s("mnu_Reports"), s("mnu_Compute")})})},
        {MenuChange::FileClose, MenuState::Closed, fileClose},
        {MenuChange::ToolbarClose, MenuState::Closed, join({fileClose, off({s("mnu_setup"), tb1})})},
        {MenuChange::Trapini, MenuState::NoSettings, trapini},
        {MenuChange::NoStudy, MenuState::NoStudy, off(kNoStudy)},
    };
    return table;
}

const ChangeEntry& changeEntry(MenuChange change) {
    for (const auto& entry : changeTable())
        if (entry.change == change)
            return entry;
    return changeTable().back();
}

} // namespace

QString RecordingMenus::menuCaption(const QString& name) const {
    if (captions_.contains(name))
        return captions_.value(name);
    const MenuItemDef* item = findMenuItem(name);
    return item ? QString::fromLatin1(item->caption) : QString();
}

MenuSwitch& menus() {
    return installed ? *installed : fallback;
}

void setMenuSwitch(MenuSwitch* menuSwitch) {
    installed = menuSwitch;
}

const MenuStateRule& menuStateRule(MenuState state) {
    for (const auto& rule : kRules)
        if (rule.state == state)
            return rule;
    return kRules.front();
}

std::optional<MenuState> menuStateOf(MenuChange change) {
    return changeEntry(change).state;
}

const std::vector<MenuStep>& menuSteps(MenuChange change) {
    return changeEntry(change).steps;
}

void applyMenuState(MenuState state) {
    const MenuStateRule& rule = menuStateRule(state);
    MenuSwitch& m = menus();
    if (rule.others != MenuStateRule::Others::Keep) {
        // The parents of an item that is to stay on must stay on, or the item cannot be reached.
        QSet<QString> keep(rule.enabled.begin(), rule.enabled.end());
        for (const auto& name : rule.enabled)
            for (const auto& parent : menuAncestors(name))
                keep.insert(parent);
        const bool on = rule.others == MenuStateRule::Others::Enable;
        for (const auto& name : allSwitchableItems())
            if (!rule.enabled.contains(name) && !rule.disabled.contains(name))
                m.setMenuEnabled(name, on || keep.contains(name));
    }
    for (const auto& name : rule.enabled)
        m.setMenuEnabled(name, true);
    for (const auto& name : rule.disabled)
        m.setMenuEnabled(name, false);
}

void applyMenuChange(MenuChange change) {
    if (const auto state = menuStateOf(change))
        applyMenuState(*state);
    for (const auto& step : menuSteps(change))
        menus().setMenuEnabled(step.name, step.enabled);
}

const QStringList& noStudyItems() {
    return kNoStudy;
}

void disableMenus(const QStringList& names) {
    for (const auto& name : names)
        menus().setMenuEnabled(name, false);
}

void enableMenus(const QStringList& names) {
    for (const auto& name : names)
        menus().setMenuEnabled(name, true);
}

void applyStudyFinding(StudyFinding finding) {
    switch (finding) {
    case StudyFinding::NoStudyEntry:
    case StudyFinding::NoneCurrent:
    case StudyFinding::TooManyStudies:
    case StudyFinding::NoScheme:
    case StudyFinding::NoAgeDefinitions:
    case StudyFinding::NoCauses:
        disableMenus(noStudyItems());
        break;
    case StudyFinding::AgeDefinitionsFound:
        enableMenus(noStudyItems());
        break;
    case StudyFinding::NoUnits:
        disableMenus({QStringLiteral("mnu_studyInp"), QStringLiteral("mnu_Daly"), QStringLiteral("mns_lsr"),
                      QStringLiteral("mnu_Compute"), QStringLiteral("mnu_res")});
        break;
    case StudyFinding::NoAggregates:
        disableMenus({QStringLiteral("mnu_studyInp"), QStringLiteral("mns_lsr")});
        break;
    case StudyFinding::Loaded:
    case StudyFinding::EngineFailed:
        break;
    }
}

void SetLevelCaptions() {
    const StudyBackend& b = studyBackend();
    const auto orElse = [](const QString& label, const char* fallbackCaption) {
        return label.isEmpty() ? QString::fromLatin1(fallbackCaption) : label;
    };
    menus().setMenuCaption(QStringLiteral("mnu_pag2"), orElse(b.LblPAG2(), "PAG2"));
    // The fall-back of the BPU branch is "Detail Tables", as it has always been.
    menus().setMenuCaption(QStringLiteral("mnu_bpu"), orElse(b.LblBPU(), "Detail Tables"));
    menus().setMenuCaption(QStringLiteral("mnu_Pag1Results"), orElse(b.LblPAG1(), "PAG1"));
}

} // namespace vesk
