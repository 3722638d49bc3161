// Pictures of the splash and the frame, taken offscreen. With VESK_SCREENSHOT_DIR set they are kept
// there (docs/screenshots); otherwise they go to a temporary folder and only their making is tested.

#include "frame_fixture.h"
#include "platform/progress.h"
#include "screenshots.h"
#include "shell/frame_texts.h"

#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace vesk;
using namespace vesk::test;

class FrameScreenshotTest : public QObject {
    Q_OBJECT
private slots:
    void init() { resetGlobals(); }
    void cleanup() { resetGlobals(); }
    void pictures();
};

void FrameScreenshotTest::pictures() {
    QTemporaryDir scratch;
    const QString dir = screenshotFolder(scratch);
    ProgramFolder folder;
    folder.writeStp();
    folder.touchDatabase();
    FakeStudyBackend backend;
    backend.lblBPU = QStringLiteral("District");
    backend.lblPAG1 = QStringLiteral("Province");
    backend.lblPAG2 = QStringLiteral("Region");
    setStudyBackend(&backend);
    RunningProgram program(folder);
    program.splash().Timer1->stop();
    program.splash().adjustSize();
    const QImage splash = program.splash().grab().toImage();
    QVERIFY(hasContent(splash));
    QVERIFY(splash.save(dir + QStringLiteral("/splash.png")));
    program.splash().Timer1->start(5);

    QVERIFY(program.waitForFrame());
    QVERIFY(program.waitForChain());
    program.frame().resize(1024, 640);
    QTest::qWait(50);
    const QImage frame = program.frame().grab().toImage();
    QVERIFY(hasContent(frame));
    QVERIFY(frame.save(dir + QStringLiteral("/main_frame.png")));

    // The frame while a long operation runs: the bar and the label at its foot.
    progress().setRange(0, 7);
    progress().setValue(4);
    progress().setVisible(true);
    progress().setText(QString::fromUtf8(frame_texts::kLabel1));
    QTest::qWait(50);
    QVERIFY(program.frame().grab().toImage().save(dir + QStringLiteral("/main_frame_loading.png")));
    progress().setVisible(false);
    progress().setText(QString());

    auto* results = program.frame().findChild<QMenu*>(QStringLiteral("mnu_res"));
    QVERIFY(results);
    results->adjustSize();
    QVERIFY(results->grab().toImage().save(dir + QStringLiteral("/menu_results.png")));
    auto* file = program.frame().findChild<QMenu*>(QStringLiteral("mnu_file"));
    file->adjustSize();
    QVERIFY(file->grab().toImage().save(dir + QStringLiteral("/menu_file.png")));
    setStudyBackend(nullptr);
}

QTEST_MAIN(FrameScreenshotTest)
#include "frame_screenshot_test.moc"
