#pragma once
// The study database behind the frame's loading chain and its File commands: the structure check,
// File -> New and the loaders of the study context. The desktop program installs one with
// setStudyBackend().

#include "shell/study_backend.h"

namespace vesk {

class DatabaseStudyBackend : public StudyBackend {
public:
    bool ChkDBStru(const QString& path) override;
    // NewDBDone is set True on the way in, as File -> New does, and returned.
    bool CreateNewDatabase() override;

    void InitTblNames() override;
    void InitDAP() override;
    bool InitBDS() override;
    void InitYear() override;
    void InitPAGScheme() override;
    void InitAgeGrps() override;
    bool InitCOB() override;
    void InitCobcd() override;
    void InitBPULst(const QString& tableName) override;
    void InitPAGLst(const QString& tableName) override;
    void InitDmgphyPrmtrs() override;
    bool CheckDatpop() override;
    bool hasBPUList() const override;
    // The single-year population and deaths are built by the computation arrays; until those are
    // in place this leaves ArrPop4D and ArrDth4D as they are.
    void buildPopulationArrays() override {}

    void releaseStudyDB() override;
    void clearMtxDAP() override;

    QString LblBPU() const override;
    QString LblPAG1() const override;
    QString LblPAG2() const override;
    QString CurBDSId() const override;
};

} // namespace vesk
