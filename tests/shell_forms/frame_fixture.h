#pragma once
// What the frame's tests share: a program folder of their own with a Vesk.stp, a study backend
// whose answers the test chooses, and the program started as a user starts it (splash, then frame).

#include "platform/prompts.h"
#include "platform/sound.h"
#include "shell/forms/frm_main_menu.h"
#include "shell/forms/frm_splash.h"
#include "shell/study_backend.h"

#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

namespace vesk::test {

// A program folder with its working folders, in a temporary directory.
class ProgramFolder {
public:
    ProgramFolder();
    QString prog() const { return root_.filePath(QStringLiteral("prog")); }
    QString work() const { return root_.filePath(QStringLiteral("work")); }
    QString stat() const { return root_.filePath(QStringLiteral("work/output")) + QLatin1Char('/'); }
    QString temp() const { return root_.filePath(QStringLiteral("work/temp")); }
    QString import() const { return root_.filePath(QStringLiteral("work/import")); }
    QString stpPath() const { return prog() + QStringLiteral("/Vesk.stp"); }

    // Writes the delivered settings file with its paths pointing here, the OBJECT line naming
    // `objectName`, and the numeric blocks a start needs.
    void writeStp(const QString& objectName = QStringLiteral("vesk.vdb"));
    // The value of the first line that starts with `key` ("OBJECT=").
    QString stpValue(const QString& key) const;
    // Creates an (empty) database file in the working folder.
    QString touchDatabase(const QString& name = QStringLiteral("vesk.vdb")) const;

private:
    QTemporaryDir root_;
};

// A study backend whose answers the test sets; it records the calls in order.
class FakeStudyBackend : public StudyBackend {
public:
    std::function<bool(const QString&)> chk = [](const QString&) { return true; };
    std::function<bool()> bds = [] { return true; };
    // What a False InitBDS found; by default nothing that the chain acts on beyond its own No study.
    StudyFinding bdsFinding = StudyFinding::EngineFailed;
    bool cob = true;
    bool bpuList = true;
    bool datpop = true;
    int cobcdErrors = 0; // how many errors InitCobcd puts in the store
    QString lblBPU, lblPAG1, lblPAG2;
    QStringList calls;
    bool created = false;

    bool ChkDBStru(const QString& path) override;
    bool CreateNewDatabase() override;
    void InitTblNames() override { calls << QStringLiteral("InitTblNames"); }
    void InitDAP() override { calls << QStringLiteral("InitDAP"); }
    LoadReport InitBDS() override;
    void InitYear() override { calls << QStringLiteral("InitYear"); }
    void InitPAGScheme() override { calls << QStringLiteral("InitPAGScheme"); }
    LoadReport InitAgeGrps() override {
        calls << QStringLiteral("InitAgeGrps");
        return {};
    }
    LoadReport InitCOB() override;
    void InitCobcd() override;
    LoadReport InitBPULst(const QString& table) override {
        calls << QStringLiteral("InitBPULst ") + table;
        return {};
    }
    LoadReport InitPAGLst(const QString& table) override {
        calls << QStringLiteral("InitPAGLst ") + table;
        return {};
    }
    void buildAgeGroupLabels() override {}
    void InitDmgphyPrmtrs() override { calls << QStringLiteral("InitDmgphyPrmtrs"); }
    bool CheckDatpop() override;
    bool hasBPUList() const override { return bpuList; }
    void buildPopulationArrays() override { calls << QStringLiteral("buildPopulationArrays"); }
    void releaseStudyDB() override { calls << QStringLiteral("releaseStudyDB"); }
    void clearMtxDAP() override { calls << QStringLiteral("clearMtxDAP"); }
    QString LblBPU() const override { return lblBPU; }
    QString LblPAG1() const override { return lblPAG1; }
    QString LblPAG2() const override { return lblPAG2; }
    QString CurBDSId() const override { return {}; }
};

// The program's own study backend on real files, recording the calls the frame's tests look for.
class RecordingDatabaseBackend : public DatabaseStudyBackend {
public:
    QStringList calls;

    bool ChkDBStru(const QString& path) override {
        calls << QStringLiteral("ChkDBStru ") + path;
        return DatabaseStudyBackend::ChkDBStru(path);
    }
    void InitDAP() override {
        calls << QStringLiteral("InitDAP");
        DatabaseStudyBackend::InitDAP();
    }
    LoadReport InitBDS() override {
        calls << QStringLiteral("InitBDS");
        return DatabaseStudyBackend::InitBDS();
    }
    void clearMtxDAP() override {
        calls << QStringLiteral("clearMtxDAP");
        DatabaseStudyBackend::clearMtxDAP();
    }
};

// The program as a user starts it: services for a test, the splash, then the frame.
class RunningProgram {
public:
    explicit RunningProgram(const ProgramFolder& folder, int timerInterval = 5);
    ~RunningProgram();

    // Lets the splash's tick come and waits until the frame is up.
    bool waitForFrame();
    // Waits until the chain has disarmed Timer1.
    bool waitForChain(int timeoutMs = 5000);

    FRMMAINMENU& frame() { return *frame_; }
    frmSplash& splash() { return *splash_; }
    ScriptedPrompts prompts;
    RecordingSound sounds;
    int endCalls = 0;

    // The object names whose logical state is enabled / disabled, of `names`.
    bool enabled(const QString& name) const { return frame_->isMenuEnabled(name); }

private:
    std::unique_ptr<FRMMAINMENU> frame_;
    std::unique_ptr<frmSplash> splash_;
};

// Back to a clean start: settings, preferences controls, error store, menu commands, backend.
void resetGlobals();

// A program that came up Ready on a fake database layer: its folder with a settings file and a study
// file, the backend, the running frame. `beforeStart` runs just before the program starts (a form to
// install, say).
struct ReadyProgram {
    ProgramFolder folder;
    FakeStudyBackend backend;
    std::unique_ptr<RunningProgram> program;
    QString db;

    bool start(const std::function<void()>& beforeStart = {}) {
        folder.writeStp();
        db = folder.touchDatabase();
        setStudyBackend(&backend);
        if (beforeStart)
            beforeStart();
        program = std::make_unique<RunningProgram>(folder);
        return program->waitForFrame() && program->waitForChain() && program->prompts.messages().isEmpty();
    }
    ~ReadyProgram() {
        program.reset();
        setStudyBackend(nullptr);
    }
    FRMMAINMENU& frame() { return program->frame(); }
    ScriptedPrompts& prompts() { return program->prompts; }
    void trigger(const QString& name) { frame().item(name)->trigger(); }
};

// The items the state's rule names, checked against the frame; a message for QVERIFY2, empty if
// all agree.
QString stateMismatch(const FRMMAINMENU& frame, MenuState state);

} // namespace vesk::test
