#include "database/database_backend.h"

#include "database/chk_db_stru.h"
#include "database/new_database.h"
#include "database/study_context.h"

namespace vesk {

bool DatabaseStudyBackend::ChkDBStru(const QString& path) {
    return vesk::ChkDBStru(path);
}

bool DatabaseStudyBackend::CreateNewDatabase() {
    studyContext().NewDBDone = true;
    vesk::CreateNewDatabase();
    return studyContext().NewDBDone;
}

void DatabaseStudyBackend::InitTblNames() {
    studyContext().InitTblNames();
}
void DatabaseStudyBackend::InitDAP() {
    studyContext().InitDAP();
}
bool DatabaseStudyBackend::InitBDS() {
    return studyContext().InitBDS();
}
void DatabaseStudyBackend::InitYear() {
    studyContext().InitYear();
}
void DatabaseStudyBackend::InitPAGScheme() {
    studyContext().InitPAGScheme();
}

void DatabaseStudyBackend::InitAgeGrps() {
    StudyContext& c = studyContext();
    c.InitAgeGrps(c.CurBDSId, c.ArrAgeDfn);
}

bool DatabaseStudyBackend::InitCOB() {
    return studyContext().InitCOB();
}
void DatabaseStudyBackend::InitCobcd() {
    studyContext().InitCobcd();
}
void DatabaseStudyBackend::InitBPULst(const QString& tableName) {
    studyContext().InitBPULst(tableName);
}
void DatabaseStudyBackend::InitPAGLst(const QString& tableName) {
    studyContext().InitPAGLst(tableName);
}

void DatabaseStudyBackend::InitDmgphyPrmtrs() {
    StudyContext& c = studyContext();
    c.InitDmgphyPrmtrs(c.CurBDSId, c.MtxDmgphy);
}

bool DatabaseStudyBackend::CheckDatpop() {
    return studyContext().CheckDatpop();
}
bool DatabaseStudyBackend::hasBPUList() const {
    return studyContext().VctrBPULst.isArray();
}
void DatabaseStudyBackend::releaseStudyDB() {
    studyContext().StudyDB.reset();
}
void DatabaseStudyBackend::clearMtxDAP() {
    studyContext().MtxDAP = Cell();
}
QString DatabaseStudyBackend::LblBPU() const {
    return studyContext().LblBPU;
}
QString DatabaseStudyBackend::LblPAG1() const {
    return studyContext().LblPAG1;
}
QString DatabaseStudyBackend::LblPAG2() const {
    return studyContext().LblPAG2;
}
QString DatabaseStudyBackend::CurBDSId() const {
    return studyContext().CurBDSId;
}

} // namespace vesk
