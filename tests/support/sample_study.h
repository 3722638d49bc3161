#pragma once
// A small dictionary of causes of burden as a user types it into "Build dictionary of Cause of
// Burden and their Hierarchy": 3 groups, 4 subgroups, 6 clusters, 12 causes, 5 sequelae and 9 maps
// of causes to sequelae; and the population units of a study as typed into "Define Population
// Units": one level-2 aggregate, two level-1 aggregates and four basic units.

#include "grid_gestures.h"
#include "platform/prompts.h"
#include "study/forms/defpopunits.h"
#include "study/forms/frm_buld_main_cl_dic.h"

#include <QComboBox>
#include <QLineEdit>
#include <QList>
#include <QListWidget>
#include <QPair>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>
#include <utility>

namespace vesk::test::sample {

struct Entry {
    QString code, description, parent;
};

inline const QList<Entry> kGroups = {
    {"1", "Communicable", ""}, {"2", "Noncommunicable", ""}, {"3", "Injuries", ""}};
inline const QList<Entry> kSubGroups = {
    {"11", "Infectious", "1"}, {"12", "Maternal", "1"}, {"21", "Cancers", "2"}, {"31", "Unintentional", "3"}};
inline const QList<Entry> kClusters = {{"1101", "Diarrhoeal", "11"},  {"1102", "Malaria", "11"},
                                       {"1201", "Haemorrhage", "12"}, {"2101", "Lung", "21"},
                                       {"2102", "Breast", "21"},      {"3101", "Road traffic", "31"}};
inline const QList<Entry> kCauses = {
    {"11011", "Cholera", "1101"},    {"11012", "Shigellosis", "1101"},    {"11021", "Falciparum", "1102"},
    {"11022", "Vivax", "1102"},      {"12011", "Antepartum", "1201"},     {"12012", "Postpartum", "1201"},
    {"21011", "Small cell", "2101"}, {"21012", "Non-small cell", "2101"}, {"21021", "Ductal", "2102"},
    {"21022", "Lobular", "2102"},    {"31011", "Pedestrian", "3101"},     {"31012", "Motorcyclist", "3101"}};
inline const QList<Entry> kSequelae = {{"SQ1", "Dehydration", ""},
                                       {"SQ2", "Anaemia", ""},
                                       {"SQ3", "Infertility", ""},
                                       {"SQ4", "Disfigurement", ""},
                                       {"SQ5", "Paraplegia", ""}};
inline const QList<QPair<QString, QString>> kMaps = {{"SQ1", "11011"}, {"SQ1", "11012"}, {"SQ2", "11021"},
                                                     {"SQ2", "11022"}, {"SQ2", "12012"}, {"SQ3", "12011"},
                                                     {"SQ4", "21021"}, {"SQ5", "31011"}, {"SQ5", "31012"}};

// "code|description" or "code|description|parent", one per entry, as the tables read back.
inline QStringList joined(const QList<Entry>& entries, bool withParent) {
    QStringList out;
    for (const Entry& e : entries)
        out << (withParent ? e.code + u'|' + e.description + u'|' + e.parent : e.code + u'|' + e.description);
    return out;
}

inline QStringList joinedMaps() {
    QStringList out;
    for (const auto& [sequela, cause] : kMaps)
        out << sequela + u'|' + cause;
    return out;
}

template <typename T> T* child(QWidget* form, const QString& name) {
    T* w = form->findChild<T*>(name);
    if (!w)
        qFatal("no widget %s", qPrintable(name));
    return w;
}

// Types the rows of a level on its tab, choosing each row's parent in the tab's combo.
inline void enterLevel(FRMBULDMAINCLDIC& form, int tab, const QString& grid, const QString& combo,
                       const QList<Entry>& entries) {
    child<QTabWidget>(&form, "SSTab1")->setCurrentIndex(tab);
    auto* view = child<FlexGridView>(&form, grid);
    for (int r = 0; r < entries.size(); ++r) {
        typeRow(view, r, {entries[r].code, entries[r].description});
        if (!combo.isEmpty()) {
            auto* parents = child<QComboBox>(&form, combo);
            const int i = parents->findText(entries[r].parent);
            QVERIFY2(i > 0, qPrintable(entries[r].parent));
            parents->setCurrentIndex(i);
        }
    }
}

// The whole dictionary through the form: the four levels and one Append, the sequelae and a
// second Append, then each map chosen on the sequela tab. The prompts are cleared at the end.
inline void enterDictionary(FRMBULDMAINCLDIC& form, ScriptedPrompts& prompts) {
    enterLevel(form, 0, "MsbdmGrps", "", kGroups);
    enterLevel(form, 1, "MSFlexsubgrps", "cmbgrpcode", kSubGroups);
    enterLevel(form, 2, "MSFlexbdmclstr", "cmbSgrpcode", kClusters);
    enterLevel(form, 3, "MSFlexsgrptab", "cmbclstrcode", kCauses);
    child<QPushButton>(&form, "cmdAppend")->click();
    QCOMPARE(prompts.messages(), QStringList());
    enterLevel(form, 4, "MSFlxSequelaDct", "", kSequelae);
    child<QPushButton>(&form, "cmdAppend")->click();
    QCOMPARE(prompts.messages(), QStringList({"The Sequela has been updated "}));
    auto* sequelae = child<FlexGridView>(&form, "MSFlxSequelaDct");
    auto* causes = child<QComboBox>(&form, "cmbCobcd");
    QCOMPARE(causes->count(), kCauses.size());
    for (const auto& [sequela, cause] : kMaps) {
        const auto at = std::find_if(kSequelae.begin(), kSequelae.end(),
                                     [&](const Entry& e) { return e.code == sequela; });
        clickCell(sequelae, static_cast<int>(at - kSequelae.begin()), 0);
        causes->setCurrentIndex(causes->findText(cause));
        child<QPushButton>(&form, "cmdMap")->click();
    }
    clickCell(sequelae, 1, 0);
    QCOMPARE(child<QListWidget>(&form, "lstSqlaCauses")->count(), 3); // SQ2: 11021, 11022, 12012
    prompts.clear();
}

// Types the three levels of "Define Population Units": the level-2 aggregate (id, name), the
// level-1 aggregates (id, name each) and the units (id, name, priority each). Nothing is applied.
inline void typeUnits(defpopunits& form, const QStringList& pag2, const QList<QStringList>& pag1s,
                      const QList<QStringList>& bpus) {
    auto* tabs = child<QTabWidget>(&form, "SSBPU");
    tabs->setCurrentIndex(0);
    QTest::keyClicks(child<QLineEdit>(&form, "txtPAG2Id"), pag2[0]);
    QTest::keyClicks(child<QLineEdit>(&form, "txtPAG2Name"), pag2[1]);
    tabs->setCurrentIndex(1);
    auto* pag1 = child<FlexGridView>(&form, "MSFLPAG1");
    for (int r = 0; r < pag1s.size(); ++r)
        typeRow(pag1, r, pag1s[r]);
    tabs->setCurrentIndex(2);
    auto* bpu = child<FlexGridView>(&form, "MSFGBPU");
    for (int r = 0; r < bpus.size(); ++r)
        typeRow(bpu, r, bpus[r]);
}

// Sets the pair of a unit and its level-1 aggregate on the Map tab, as the user does.
inline void setPair(defpopunits& form, const QString& unit, const QString& aggregate) {
    child<QTabWidget>(&form, "SSBPU")->setCurrentIndex(3);
    for (const auto& [name, text] : {std::pair{"lstbpu", unit}, std::pair{"List1", aggregate}}) {
        auto* list = child<QListWidget>(&form, name);
        const auto items = list->findItems(text, Qt::MatchExactly);
        QVERIFY2(!items.isEmpty(), qPrintable(text));
        list->setCurrentItem(items.first());
    }
    child<QPushButton>(&form, "cmdSet")->click();
}

// The sample's units: India; Karnataka and Tamil Nadu; two districts in each.
inline const QList<QStringList> kUnits = {
    {"BLR", "Bangalore", "1", "KA"}, {"MYS", "Mysore", "2", "KA"}, {"MAA", "Chennai", "3", "TN"},
    {"CBE", "Coimbatore", "4", "TN"}};

// The sample's units typed, each mapped, and applied.
inline void enterUnits(defpopunits& form, ScriptedPrompts& prompts) {
    QList<QStringList> bpus;
    for (const QStringList& unit : kUnits)
        bpus << unit.mid(0, 3);
    typeUnits(form, {"IN", "India"}, {{"KA", "Karnataka"}, {"TN", "Tamil Nadu"}}, bpus);
    for (const QStringList& unit : kUnits)
        setPair(form, unit[0], unit[3]);
    child<QPushButton>(&form, "cmdApply")->click();
    QCOMPARE(prompts.messages(), QStringList({"Population Units updated successfully"}));
    prompts.clear();
}

} // namespace vesk::test::sample
