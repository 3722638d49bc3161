#include "shell/study_backend.h"

#include "burden/computation.h"
#include "database/chk_db_stru.h"
#include "database/new_database.h"
#include "platform/prompts.h"
#include "shell/frame_preferences.h"
#include "study/asg_labels.h"

namespace vesk {

namespace {
UnbuiltStudyBackend unbuilt;
StudyBackend* installed = nullptr;
} // namespace

bool UnbuiltStudyBackend::ChkDBStru(const QString& path) {
    prompts().ask(
        QStringLiteral("Study databases cannot be checked or opened by this build of VESK yet: %1").arg(path),
        Buttons::Ok, Icon::Warning, QStringLiteral("VESK"));
    return false;
}

bool UnbuiltStudyBackend::CreateNewDatabase() {
    prompts().ask(QStringLiteral("Creating a study database is not built into this version of VESK yet."),
                  Buttons::Ok, Icon::Information, QStringLiteral("VESK"));
    return false;
}

StudyBackend& studyBackend() {
    return installed ? *installed : unbuilt;
}

void setStudyBackend(StudyBackend* backend) {
    installed = backend;
}

bool DatabaseStudyBackend::ChkDBStru(const QString& path) {
    return vesk::ChkDBStru(path);
}

bool DatabaseStudyBackend::CreateNewDatabase() {
    studyContext().NewDBDone = true;
    // The new file becomes the current database through the preferences' OK, which writes the
    // settings and arms the chain.
    if (vesk::CreateNewDatabase())
        preferencesForm().Ok_Click();
    return studyContext().NewDBDone;
}

void DatabaseStudyBackend::InitTblNames() {
    studyContext().InitTblNames();
}
void DatabaseStudyBackend::InitDAP() {
    studyContext().InitDAP();
}
LoadReport DatabaseStudyBackend::InitBDS() {
    return studyContext().InitBDS();
}
void DatabaseStudyBackend::InitYear() {
    studyContext().InitYear();
}
void DatabaseStudyBackend::InitPAGScheme() {
    studyContext().InitPAGScheme();
}

LoadReport DatabaseStudyBackend::InitAgeGrps() {
    StudyContext& c = studyContext();
    return c.InitAgeGrps(c.CurBDSId, c.ArrAgeDfn);
}

LoadReport DatabaseStudyBackend::InitCOB() {
    return studyContext().InitCOB();
}
void DatabaseStudyBackend::InitCobcd() {
    studyContext().InitCobcd();
}
LoadReport DatabaseStudyBackend::InitBPULst(const QString& tableName) {
    return studyContext().InitBPULst(tableName);
}
LoadReport DatabaseStudyBackend::InitPAGLst(const QString& tableName) {
    return studyContext().InitPAGLst(tableName);
}
void DatabaseStudyBackend::buildAgeGroupLabels() {
    vesk::buildAgeGroupLabels(studyContext());
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
    computation().MtxDAP = Cell();
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
