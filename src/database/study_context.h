#pragma once
// The context of the current study: the one open connection to the study file and everything the
// program keeps in memory about the study, loaded once by the start-up chain and partly rebuilt
// after a change of study or of units. The members carry the names the whole program uses; an
// array member that holds no array (an Empty cell) means "not loaded", and readers test it first.
// The computation's arrays (the chosen parameter sets, the results, the single-year population and
// deaths) are not the study's: they live in the computation above, which empties them with the
// context through onClear.
//
// The paths and preferences (AppPath, DBFullPath, StatOutPath, NLdCauses ...) stay in the settings
// (foundation/settings.h); the loaders read the database path from the preferences' texts. They
// switch no menu item and open no window: each tells what it found (LoadReport), and the frame's
// loading chain, or Study Setup through the frame, decides what follows from it.

#include "database/db_connection.h"
#include "platform/cell_array.h"

#include <QString>
#include <array>
#include <functional>
#include <memory>

namespace vesk {

// What a loader of the study context found.
enum class StudyFinding {
    Loaded,              // what it looked for is there (or nothing that the frame has to act on)
    EngineFailed,        // the file or the engine failed; the message is shown and nothing else follows
    NoStudyEntry,        // InitBDS: the dictionary of studies has no row; a first study is to be defined
    NoneCurrent,         // InitBDS: studies, but none marked as current
    TooManyStudies,      // InitBDS: more than one was marked; all are unmarked now, so none is current
    NoScheme,            // InitBDS: the current study has no aggregate scheme
    NoAgeDefinitions,    // InitAgeGrps: the study has no age definitions; the former ones stay
    AgeDefinitionsFound, // InitAgeGrps: ArrAgeDfn holds the study's definitions
    NoCauses,            // InitCOB: the cause dictionary carries no column of the study
    NoUnits,             // InitBPULst: the study has no population units
    NoAggregates,        // InitPAGLst: the study has no population aggregates
};

// A loader's answer; true where the old loader's Boolean was True (InitBDS, InitCOB) or where the
// loader found what it looked for.
struct LoadReport {
    StudyFinding finding = StudyFinding::Loaded;
    explicit operator bool() const {
        return finding == StudyFinding::Loaded || finding == StudyFinding::AgeDefinitionsFound;
    }
};

class StudyContext {
public:
    // Connection. Opened lazily by InitBDS on the path the preferences name; released by File -> Close.
    std::shared_ptr<DbConnection> StudyDB;

    // Current study.
    QString CurBDSId;
    QString CurBDSTi;
    QString CurPAGSch;
    qint16 CurYear = 0;
    Cell VctrYrLst; // years of the current rows of _DctBDS
    QString LblBPU, LblPAG1, LblPAG2;
    Cell VctrBPULst; // BPUID of the study in Prty order
    Cell VctrPAGLst; // distinct PAG1Id of the study
    Cell ArrAgeDfn;  // (0..n-1, 0..2): YLL, YLD, PND of _DfnAgeGrps, a null as ""
    Cell VctrYLLAsg; // age-sex group labels of the YLL column (built by the age-sex groups)
    Cell VctrYLDAsg; // the same for YLD
    Cell VctrPNDAge; // the PND column alone
    Cell MtxCobCd;   // (0..n-1, 0..1): cause, and Empty or the array of its sequelae
    Cell MtxDmgphy;  // (0..n-1, 0..4): BPUId, Year, CDMdl, PGR, IMR
    std::array<QString, 5> TblNmLst;

    // The built-in parameter sets: DAPID, r, K, Beta, C.
    std::array<double, 5> VctrDAP0{}, VctrDAP1{}, VctrDAP2{}, VctrDAP3{};

    // A new database was just made (set True by File -> New before CreateNewDatabase).
    bool NewDBDone = false;

    // Loaders.
    LoadReport InitBDS();
    void InitYear();
    void InitPAGScheme();
    // The rows of _DfnAgeGrps into `arrAgeDfn`. The age-sex group labels built from them
    // (VctrYLLAsg, VctrYLDAsg, VctrPNDAge) are the study layer's (buildAgeGroupLabels).
    LoadReport InitAgeGrps(const QString& bdsId, Cell& arrAgeDfn);
    LoadReport InitCOB();
    // The study's causes and their sequelae into MtxCobCd. What is wrong with them (no causes, a
    // flagged cause without maps) goes to the error store, unless `quiet`: a refresh behind the
    // user's back, whose findings the next load or Study Setup reports in their turn.
    void InitCobcd(bool quiet = false);
    LoadReport InitBPULst(const QString& tableName);
    LoadReport InitPAGLst(const QString& tableName);
    void InitDmgphyPrmtrs(const QString& bdsId, Cell& mtxDmgphy);
    void InitDAP();
    void InitTblNames();
    // A change of study: empties the demographic parameters, the age definitions and the unit list
    // (each only where it holds an array) and the level labels, then runs the clear hooks.
    void ClearStudyContext();
    // What else a change of study empties. The working data of the layers above (the computation's
    // arrays) are theirs, not the context's; their owner hands in here how to empty them, once, when
    // it is made. The hooks run at the end of ClearStudyContext, in the order given. The list is the
    // class's, not one context's: there is one context in the program, and a context made anew (as
    // the tests do) keeps it.
    static void onClear(std::function<void()> hook);

    // The column of _DctBDM that carries the current study, as the file spells it; empty if none.
    QString studyColumn() const;

    // Both DatPOP and DatASDR hold at least one row.
    bool CheckDatpop();

    // The file the preferences name: Trim(txtwklocation) & separator & Trim(txtVESKObj).
    static QString studyDatabasePath();
    // StudyDB, opened on studyDatabasePath() when it is not open on that file; nullptr with `error`.
    std::shared_ptr<DbConnection> ensureStudyDB(QString* error);
    // The same; when the file cannot be opened the reason is shown and nullptr given back.
    std::shared_ptr<DbConnection> ensureStudyDBOrShow();

private:
    void show(const QString& text);
};

// The one context of the program.
StudyContext& studyContext();

// The captions of the three Results branches: the level labels, or their fall-backs.
struct LevelCaptions {
    QString pag2; // mnu_pag2
    QString bpu;  // mnu_bpu
    QString pag1; // mnu_Pag1Results
};
LevelCaptions levelCaptions(const StudyContext& context);

} // namespace vesk
