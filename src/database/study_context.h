#pragma once
// The context of the current study: the one open connection to the study file and everything the
// program keeps in memory about the study, loaded once by the start-up chain and partly rebuilt
// after a change of study or of units. The members carry the names the whole program uses; an
// array member that holds no array (an Empty cell) means "not loaded", and readers test it first.
//
// The paths and preferences (AppPath, DBFullPath, StatOutPath, NLdCauses ...) stay in the settings
// (shell/settings.h); the loaders read the database path from the preferences' texts, switch menu
// items through menus() and open Study Setup through the frame (frameHost()).

#include "database/db_connection.h"
#include "platform/cell_array.h"

#include <QString>
#include <array>
#include <memory>

namespace vesk {

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

    // Working data held with the context: the parameter sets of a computation, the result arrays
    // and the single-year population and deaths.
    Cell MtxDAP;
    Cell ArrYld, ArrYll, ArrDaly;
    Cell ArrDth4D, ArrPop4D;

    // A new database was just made (set True by File -> New before CreateNewDatabase).
    bool NewDBDone = false;

    // Loaders.
    bool InitBDS();
    void InitYear();
    void InitPAGScheme();
    void InitAgeGrps(const QString& bdsId, Cell& arrAgeDfn);
    bool InitCOB();
    // The study's causes and their sequelae into MtxCobCd. What is wrong with them (no causes, a
    // flagged cause without maps) goes to the error store, unless `quiet`: a refresh behind the
    // user's back, whose findings the next load or Study Setup reports in their turn.
    void InitCobcd(bool quiet = false);
    void InitBPULst(const QString& tableName);
    void InitPAGLst(const QString& tableName);
    void InitDmgphyPrmtrs(const QString& bdsId, Cell& mtxDmgphy);
    void InitDAP();
    void InitTblNames();
    void ClearStudyContext();

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
    // The column of _DctBDM that carries the current study, as the file spells it; empty if none.
    QString studyColumn();
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
