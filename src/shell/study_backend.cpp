#include "shell/study_backend.h"

#include "platform/prompts.h"

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

} // namespace vesk
