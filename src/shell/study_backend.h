#pragma once
// What the frame's loading chain and File commands ask of the study database and the study
// context, behind one interface so that the frame's tests can answer for the database. The
// DatabaseStudyBackend below is the real one; until one is installed the chain meets an
// UnbuiltStudyBackend, which accepts no database, so that the frame stands in the state "Bad
// database" and says why. The loaders tell what they found; the chain applies it.

#include "database/study_context.h"

#include <QString>

namespace vesk {

class StudyBackend {
public:
    virtual ~StudyBackend() = default;

    // The structure check of the database file at `path`; shows its own messages, writes
    // vskstru.log, and returns whether the file is a study database of this program.
    virtual bool ChkDBStru(const QString& path) = 0;
    // File -> New: the dialog, the creation, the hand-over to the settings and, for a new file, the
    // preferences' OK. Returns NewDBDone.
    virtual bool CreateNewDatabase() = 0;

    // The loaders of the study context, in the order the chain calls them.
    virtual void InitTblNames() = 0;
    virtual void InitDAP() = 0;
    virtual LoadReport InitBDS() = 0;
    virtual void InitYear() = 0;
    virtual void InitPAGScheme() = 0;
    virtual LoadReport InitAgeGrps() = 0;
    virtual LoadReport InitCOB() = 0;
    virtual void InitCobcd() = 0;
    virtual LoadReport InitBPULst(const QString& tableName) = 0;
    virtual LoadReport InitPAGLst(const QString& tableName) = 0;
    // The age-sex group labels from the age definitions just found.
    virtual void buildAgeGroupLabels() = 0;
    virtual void InitDmgphyPrmtrs() = 0;
    // Both datpop and datasdr have at least one row.
    virtual bool CheckDatpop() = 0;
    // VctrBPULst holds an array.
    virtual bool hasBPUList() const = 0;
    // Builds the computation's ArrPop4D and ArrDth4D from the study's inputs (a no-op until that is
    // built).
    virtual void buildPopulationArrays() = 0;

    // File -> Close: release StudyDB. Empty the computation's MtxDAP.
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
    LoadReport InitBDS() override { return {StudyFinding::EngineFailed}; }
    void InitYear() override {}
    void InitPAGScheme() override {}
    LoadReport InitAgeGrps() override { return {}; }
    LoadReport InitCOB() override { return {StudyFinding::EngineFailed}; }
    void InitCobcd() override {}
    LoadReport InitBPULst(const QString&) override { return {}; }
    LoadReport InitPAGLst(const QString&) override { return {}; }
    void buildAgeGroupLabels() override {}
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

// The study database of this program: the structure check, File -> New and the loaders of
// studyContext().
class DatabaseStudyBackend : public StudyBackend {
public:
    bool ChkDBStru(const QString& path) override;
    // NewDBDone is set True on the way in, as File -> New does, and returned.
    bool CreateNewDatabase() override;

    void InitTblNames() override;
    void InitDAP() override;
    LoadReport InitBDS() override;
    void InitYear() override;
    void InitPAGScheme() override;
    LoadReport InitAgeGrps() override;
    LoadReport InitCOB() override;
    void InitCobcd() override;
    LoadReport InitBPULst(const QString& tableName) override;
    LoadReport InitPAGLst(const QString& tableName) override;
    void buildAgeGroupLabels() override;
    void InitDmgphyPrmtrs() override;
    bool CheckDatpop() override;
    bool hasBPUList() const override;
    // The single-year population and deaths are built by the computation arrays; until those are
    // in place this leaves the computation's ArrPop4D and ArrDth4D as they are.
    void buildPopulationArrays() override {}

    void releaseStudyDB() override;
    void clearMtxDAP() override;

    QString LblBPU() const override;
    QString LblPAG1() const override;
    QString LblPAG2() const override;
    QString CurBDSId() const override;
};

StudyBackend& studyBackend();
void setStudyBackend(StudyBackend* backend); // not owned; nullptr goes back to the unbuilt one

} // namespace vesk
