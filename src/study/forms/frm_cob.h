#pragma once
// frmCOB, "Cause of Burden Outline": the tree COB of the causes of burden or of the population
// schema of the current study, with "&Expand All", "&Collapse All", "&Print" and a progress bar.
// The main menu opens it in one of its two modes.

#include "database/db_connection.h"
#include "study/outline.h"

#include <QWidget>
#include <memory>

class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace vesk {

class frmCOB : public QWidget {
    Q_OBJECT
public:
    enum class Mode { Causes, Population };

    // The form on the open study file: the causes of the current study (the whole dictionary when
    // no study is current), or the current study's population schema. nullptr after a message when
    // no file is open, or, for the population schema, no study is current.
    static frmCOB* open(Mode mode, QWidget* parent = nullptr);
    frmCOB(std::shared_ptr<DbConnection> db, QString study, Mode mode, QWidget* parent = nullptr);

    Mode mode() const { return mode_; }
    // Builds the tree afresh from the tables.
    void fill();
    // The print routine of the mode in force.
    bool cmdPrint_Click();

private:
    void addChildren(QTreeWidgetItem* parent, const OutlineNode& node);

    std::shared_ptr<DbConnection> db_;
    QString study_;
    Mode mode_;
    QTreeWidget* COB = nullptr;
    QPushButton* cmdExpand = nullptr;
    QPushButton* cmdCollapse = nullptr;
    QPushButton* cmdPrint = nullptr;
    QPushButton* cmdClose = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
};

} // namespace vesk
