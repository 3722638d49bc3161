#pragma once
// FRMBULDMAINCLDIC, "Build dictionary of Cause of Burden and their Hierarchy": one tab per level
// (groups, subgroups, clusters, causes, sequelae), each a grid of codes and descriptions with
// record-navigation buttons and, below the groups, a combo for the parent code of the current row.
// "&Append", "&OK" and "C&lose" act on the tab in force; the Delete key on a saved code runs the
// deletion cascade. The work is done by CauseDictionary (study/cause_dictionary.h).

#include "database/db_connection.h"
#include "platform/grid_model.h"
#include "study/cause_dictionary.h"

#include <QSet>
#include <QWidget>
#include <array>
#include <memory>

class QComboBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTabWidget;

namespace vesk {

class FlexGridView;

class FRMBULDMAINCLDIC : public QWidget {
    Q_OBJECT
public:
    enum Tab { TabGroups = 0, TabSubGroups = 1, TabClusters = 2, TabCauses = 3, TabSequela = 4 };

    // The form on the open study file; nullptr after a message when none can be opened.
    static FRMBULDMAINCLDIC* open(QWidget* parent = nullptr);
    explicit FRMBULDMAINCLDIC(std::shared_ptr<DbConnection> db, QWidget* parent = nullptr);

    // Every grid afresh from the tables.
    void loadAll();
    // The buttons, on the tab in force.
    bool cmdAppend_Click();
    void cmdOK_Click();

private:
    struct Page {
        GridModel* model = nullptr;
        FlexGridView* view = nullptr;
        QComboBox* parent = nullptr; // the parent code of the current row; none for groups and sequelae
        QSet<QString> saved;         // the codes as they stand in the table
    };
    QWidget* buildPage(Tab tab, const QString& gridName, const QString& comboName, const QString& suffix);
    QWidget* buildSequelaMaps(QWidget* tab);
    void fillPage(Tab tab, const QList<DictRow>& rows);
    QList<DictRow> pageRows(Tab tab) const;
    void move(Tab tab, int where);
    void currentRowChanged(Tab tab);
    void refreshParentCombo(Tab tab);
    void parentChosen(Tab tab);
    void deleteRow(Tab tab);
    void refreshSequelaCauses();
    void cmdMap_Click();
    void cmdUnmap_Click();
    QString currentCode(Tab tab) const;

    std::shared_ptr<DbConnection> db_;
    CauseDictionary dict_;
    std::array<Page, 5> pages_;
    bool syncing_ = false;

    QTabWidget* SSTab1 = nullptr;
    QComboBox* cmbCobcd = nullptr;
    QListWidget* lstSqlaCauses = nullptr;
    QPushButton* cmdMap = nullptr;
    QPushButton* cmdUnmap = nullptr;
    QPushButton* cmdAppend = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdClose = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QLabel* lblStatus = nullptr;
};

} // namespace vesk
