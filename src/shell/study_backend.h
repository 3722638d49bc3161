#pragma once
// What the frame's loading chain and File commands ask of the study database and the study
// context. The database layer installs the real implementation; until it is installed the chain
// meets an UnbuiltStudyBackend, which accepts no database, so that the frame stands in the state
// "Bad database" and says why.

#include <QString>

namespace vesk {

class StudyBackend {
public:
    virtual ~StudyBackend() = default;

    // The structure check of the database file at `path`; shows its own messages, writes
    // vskstru.log, and returns whether the file is a study database of this program.
    virtual bool ChkDBStru(const QString& path) = 0;
    // File -> New: the dialog, the creation and the hand-over to the settings. Returns whether a
    // database was made (NewDBDone).
    virtual bool CreateNewDatabase() = 0;

    // The loaders of the study context, in the order the chain calls them.
    virtual void InitTblNames() = 0;
    virtual void InitDAP() = 0;
    virtual bool InitBDS() = 0;
    virtual void InitYear() = 0;
    virtual void InitPAGScheme() = 0;
    virtual void InitAgeGrps() = 0;
    virtual bool InitCOB() = 0;
    virtual void InitCobcd() = 0;
    virtual void InitBPULst(const QString& tableName) = 0;
    virtual void InitPAGLst(const QString& tableName) = 0;
    virtual void InitDmgphyPrmtrs() = 0;
    // Both datpop and datasdr have at least one row.
    virtual bool CheckDatpop() = 0;
    // VctrBPULst holds an array.
    virtual bool hasBPUList() const = 0;
    // Builds ArrPop4D and ArrDth4D from the study's inputs (a no-op until that is built).
    virtual void buildPopulationArrays() = 0;

    // File -> Close: release StudyDB. Empty MtxDAP.
    virtual void releaseStudyDB() = 0;
    virtual void clearMtxDAP() = 0;

    // The words for the three population levels of the current scheme (LblBPU, LblPAG1, LblPAG2),
    // empty when no scheme is loaded; the frame puts them on the Results menu.
    virtual QString LblBPU() const = 0;
    virtual QString LblPAG1() const = 0;
    virtual QString LblPAG2() const = 0;
    virtual QString CurBDSId() const = 0;
};

// Accepts no database: ChkDBStru says that study databases cannot be opened by this build and
// returns False; everything else is empty.
class UnbuiltStudyBackend : public StudyBackend {
public:
    bool ChkDBStru(const QString& path) override;
    bool CreateNewDatabase() override;
    void InitTblNames() override {}
    void InitDAP() override {}
    bool InitBDS() override { return false; }
    void InitYear() override {}
    void InitPAGScheme() override {}
    void InitAgeGrps() override {}
    bool InitCOB() override { return false; }
    void InitCobcd() override {}
    void InitBPULst(const QString&) override {}
    void InitPAGLst(const QString&) override {}
    void InitDmgphyPrmtrs() override {}
    bool CheckDatpop() override { return false; }
    bool hasBPUList() const override { return false; }
    void buildPopulationArrays() override {}
    void releaseStudyDB() override {}
    void clearMtxDAP() override {}
    QString LblBPU() const override { return {}; }
    QString LblPAG1() const override { return {}; }
    QString LblPAG2() const override { return {}; }
    QString CurBDSId() const override { return {}; }
};

StudyBackend& studyBackend();
void setStudyBackend(StudyBackend* backend); // not owned; nullptr goes back to the unbuilt one

} // namespace vesk
