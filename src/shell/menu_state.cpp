#include "shell/menu_state.h"

#include "shell/frame_menu_tree.h"
#include "shell/study_backend.h"

#include <QSet>

namespace vesk {

namespace {

RecordingMenus fallback;
MenuSwitch* installed = nullptr;

const QString tb1 = toolbarButtonName(1);
const QString tb2 = toolbarButtonName(2);
const QString tb3 = toolbarButtonName(3);
const QString tb4 = toolbarButtonName(4);
const QString tb5 = toolbarButtonName(5);

// The items a database that is wrong, or closed, leaves dead.
const QStringList kDeadWithoutDatabase = {
    QStringLiteral("mnu_study"),  QStringLiteral("mnu_res"),     QStringLiteral("mnu_Reports"),
    QStringLiteral("Mnu_import"), QStringLiteral("mnu_exp"),     QStringLiteral("Mnu_Purge"),
    QStringLiteral("Cls"),        QStringLiteral("mnu_cgroups"), QStringLiteral("mnu_Compute"),
};

const QStringList kNoStudy = {
    QStringLiteral("mnu_BPUES"), QStringLiteral("mnu_studyInp"), QStringLiteral("mnu_Daly"),
    QStringLiteral("mns_lsr"),   QStringLiteral("mnu_Compute"),  QStringLiteral("mnu_res"),
};

const std::vector<MenuStateRule> kRules = {
    {MenuState::Starting,
     "Starting",
     {},
     {QStringLiteral("mnu_Reports"), QStringLiteral("mnu_res"), QStringLiteral("mnu_Compute")},
     MenuStateRule::Others::Keep},
    {MenuState::Ready, "Ready", {}, {}, MenuStateRule::Others::Enable},
    {MenuState::NoStudy, "No study", {}, kNoStudy, MenuStateRule::Others::Enable},
    {MenuState::BadDatabase,
     "Bad database",
     {QStringLiteral("mnu_tools"), QStringLiteral("mnu_Help"), QStringLiteral("mnu_New"),
      QStringLiteral("mnu_Open"), QStringLiteral("mnu_setup"), QStringLiteral("mnu_exit")},
     kDeadWithoutDatabase,
     MenuStateRule::Others::Keep},
    {MenuState::Closed,
     "Closed",
     {QStringLiteral("mnu_New"), QStringLiteral("mnu_Open"), QStringLiteral("mnu_setup"),
      QStringLiteral("mnu_exit"), QStringLiteral("mnu_tools"), QStringLiteral("mnu_Help")},
     kDeadWithoutDatabase,
     MenuStateRule::Others::Keep},
    // File -> New, Open and Exit, and their toolbar buttons "Open File" and "Exit".
    {MenuState::NoSettings,
     "No settings",
     {QStringLiteral("mnu_New"), QStringLiteral("mnu_Open"), QStringLiteral("mnu_exit"), tb2, tb5},
     {},
     MenuStateRule::Others::Disable},
};

std::vector<MenuStep> off(const QStringList& names) {
    std::vector<MenuStep> out;
    for (const auto& n : names)
        out.push_back({n, false});
    return out;
}

QString s(const char* text) {
    return QString::fromLatin1(text);
}

const std::vector<MenuStep>& literal(MenuChange change) {
    static const std::vector<MenuStep> frameLoad = off({s("mnu_Reports"), s("mnu_res"), s("mnu_Compute")});
    static const std::vector<MenuStep> chainBad{
        {s("mnu_study"), true},
        {s("mnu_res"), false},
        {s("mnu_Reports"), false},
        {s("mnu_tools"), true},
        {s("mnu_Help"), true},
        {s("Mnu_import"), false},
        {s("mnu_exp"), false},
        {s("Mnu_Purge"), false},
        {s("Cls"), false},
        {tb3, false},
        {tb4, false},
        {s("mnu_cgroups"), false},
        {s("mnu_Compute"), false},
        {s("mnu_study"), false},
    };
    static const std::vector<MenuStep> ready{
        {s("mnu_study"), true},
        {s("mnu_res"), true},
        {s("mnu_Reports"), true},
        {s("mnu_tools"), true},
        {s("mnu_Help"), true},
        {s("mnu_setup"), true},
        {tb1, true},
        {s("Mnu_import"), true},
        {s("mnu_exp"), true},
        {s("Mnu_Purge"), true},
        {s("Cls"), true},
        {tb3, true},
        {tb4, true},
        {s("mnu_cgroups"), true},
        {s("mnu_Compute"), true},
    };
    static const std::vector<MenuStep> openFailed{
        {s("mnu_res"), false},
        {s("mnu_Reports"), false},
        {tb1, false},
        {s("Mnu_import"), false},
        {s("mnu_exp"), false},
        {s("Mnu_Purge"), false},
        {s("Cls"), false},
        {tb3, false},
        {tb4, false},
        {s("mnu_cgroups"), false},
        {s("mnu_Compute"), false},
        {s("mnu_tools"), true},
        {s("mnu_Help"), true},
    };
    static const std::vector<MenuStep> openFailedAfter{
        {s("mnu_study"), true},
        {s("mnu_res"), false},
        {s("mnu_Reports"), false},
        {s("mnu_Compute"), false},
    };
    static const std::vector<MenuStep> fileClose = off({
        s("mnu_res"),
        s("mnu_Reports"),
        s("Mnu_import"),
        s("mnu_exp"),
        s("Mnu_Purge"),
        s("mnu_study"),
        s("Cls"),
        tb3,
        tb4,
        s("mnu_cgroups"),
        s("mnu_Compute"),
    });
    static const std::vector<MenuStep> toolbarClose = [] {
        auto v = fileClose;
        v.push_back({s("mnu_setup"), false});
        v.push_back({tb1, false});
        return v;
    }();
    static const std::vector<MenuStep> trapini = off({
        s("mnu_study"),
        s("mnu_res"),
        s("mnu_Reports"),
        s("mnu_tools"),
        s("mnu_Help"),
        s("mnu_setup"),
        s("Mnu_import"),
        s("mnu_exp"),
        s("Mnu_Purge"),
        s("Cls"),
        s("mnu_cgroups"),
        s("mnu_Compute"),
        tb3,
    });
    static const std::vector<MenuStep> noStudy = off(kNoStudy);

    switch (change) {
    case MenuChange::FrameLoad:
        return frameLoad;
    case MenuChange::ChainBadDatabase:
        return chainBad;
    case MenuChange::ChainReady:
    case MenuChange::OpenPassed:
        return ready;
    case MenuChange::OpenFailed:
        return openFailed;
    case MenuChange::OpenFailedAfterMessage:
        return openFailedAfter;
    case MenuChange::FileClose:
        return fileClose;
    case MenuChange::ToolbarClose:
        return toolbarClose;
    case MenuChange::Trapini:
        return trapini;
    case MenuChange::NoStudy:
        return noStudy;
    }
    return noStudy;
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
    switch (change) {
    case MenuChange::FrameLoad:
        return MenuState::Starting;
    case MenuChange::ChainBadDatabase:
    case MenuChange::OpenFailed:
        return MenuState::BadDatabase;
    case MenuChange::ChainReady:
    case MenuChange::OpenPassed:
        return MenuState::Ready;
    case MenuChange::OpenFailedAfterMessage:
        return std::nullopt;
    case MenuChange::FileClose:
    case MenuChange::ToolbarClose:
        return MenuState::Closed;
    case MenuChange::Trapini:
        return MenuState::NoSettings;
    case MenuChange::NoStudy:
        return MenuState::NoStudy;
    }
    return std::nullopt;
}

const std::vector<MenuStep>& menuSteps(MenuChange change) {
    return literal(change);
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
