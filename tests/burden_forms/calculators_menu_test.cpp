// Tools -> YLL, IYLD, PYLD and DALY Calculator and Life Table in the running frame: enabled in every
// state that keeps the Tools menu, and each opens its window once inside the frame.

#include "burden/forms/calculators_open.h"
#include "frame_fixture.h"
#include "shell/forms/form_registry.h"
#include "shell/forms/frm_main_menu.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QtTest>

using namespace vesk;
using namespace vesk::test;

class CalculatorsMenuTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        resetGlobals();
        registerCalculators();
    }
    void cleanup() { resetGlobals(); }

    void eachItemOpensItsCalculatorOnce() {
        ProgramFolder folder;
        folder.writeStp();
        RunningProgram program(folder);
        QVERIFY(program.waitForFrame());
        QVERIFY(program.waitForChain());
        const QList<std::pair<QString, QString>> items{{"mnu_yllcal", "YLL Calculator"},
                                                       {"mnu_yldcal", "IYLD Calculator"},
                                                       {"mnu_pyldcal", "PYLD Calculator"},
                                                       {"mnu_dcal", ""},
                                                       {"mnu_lt", "LifeTable: Input Data And Choice Of "
                                                                  "Computational Method"}};
        QMdiArea* area = program.frame().mdiArea();
        for (const auto& [name, title] : items) {
            QVERIFY2(program.enabled(name), qPrintable(name));
            const int before = area->subWindowList().size();
            program.frame().item(name)->trigger();
            QCOMPARE(area->subWindowList().size(), before + 1);
            if (!title.isEmpty())
                QCOMPARE(area->activeSubWindow()->widget()->windowTitle(), title);
            program.frame().item(name)->trigger(); // a single instance: brought forward, not doubled
            QCOMPARE(area->subWindowList().size(), before + 1);
        }
    }
};

QTEST_MAIN(CalculatorsMenuTest)
#include "calculators_menu_test.moc"
