#include "inputs/forms/transfer_commands.h"

#include "database/study_context.h"
#include "foundation/settings.h"
#include "inputs/dictionary_transfer.h"
#include "inputs/messages.h"
#include "inputs/study_data_transfer.h"
#include "inputs/transfer_texts.h"
#include "inputs/unit_transfer.h"
#include "inputs/zap.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace {

namespace t = transfer_texts;

std::optional<QString> chosen(std::optional<QString> path) {
    if (!path || path->trimmed().isEmpty())
        return std::nullopt;
    return path->trimmed();
}

std::optional<QString> openPath(const QString& title) {
    return chosen(prompts().openFileName(title, text(texts::kForeignFileFilter), settings().ImportPath));
}

std::optional<QString> savePath(const QString& title) {
    return chosen(prompts().saveFileName(title, text(texts::kForeignFileFilter), settings().ImportPath));
}

// The open study file, or nullptr after its reason was shown.
std::shared_ptr<DbConnection> studyFile() {
    return studyContext().ensureStudyDBOrShow();
}

bool changed(TransferResult r) {
    return r == TransferResult::Done;
}

void addDictionaryCommands(QList<TransferCommand>& out) {
    for (DictionaryTable which : dictionaryTables()) {
        out << TransferCommand{dictionaryImportItem(which), [which] {
                                   const auto db = studyFile();
                                   const auto path =
                                       db ? openPath(dictionaryImportTitle(which)) : std::nullopt;
                                   return path && changed(importDictionary(*db, which, *path));
                               }};
        out << TransferCommand{dictionaryExportItem(which), [which] {
                                   const auto db = studyFile();
                                   if (const auto path = db ? savePath(text(t::kSaveAsTitle)) : std::nullopt)
                                       exportDictionary(*db, which, *path);
                                   return false;
                               }};
    }
    out << TransferCommand{"mnu_All_Dic", [] {
                               const auto db = studyFile();
                               const auto path = db ? openPath(text(t::kImportAllTitle)) : std::nullopt;
                               return path && changed(ImpAllDct(*db, *path));
                           }};
    out << TransferCommand{"mnu_ExpAllDict", [] {
                               const auto db = studyFile();
                               if (const auto path = db ? savePath(text(t::kSaveAsTitle)) : std::nullopt)
                                   exportDictionary(*db, std::nullopt, *path);
                               return false;
                           }};
}

void addUnitCommands(QList<TransferCommand>& out) {
    const std::array<std::pair<const char*, const char*>, 4> items{{{"mnu_impbpu", "mnu_expBPU"},
                                                                    {"mnu_imppag1", "mnu_expPAG1"},
                                                                    {"mnu_imppag2", "mnu_expPAG2"},
                                                                    {"mnu_popunits_all", "mnu_expPopAll"}}};
    const std::array<std::optional<UnitLevel>, 4> levels{UnitLevel::Bpu, UnitLevel::Pag1, UnitLevel::Pag2,
                                                         std::nullopt};
    for (std::size_t k = 0; k < items.size(); ++k) {
        const std::optional<UnitLevel> level = levels[k];
        out << TransferCommand{items[k].first, [level] {
                                   const auto db = studyFile();
                                   const auto path =
                                       db ? openPath(text(t::kImportPopulationTitle)) : std::nullopt;
                                   return path && changed(FnImpPopUntsAll(studyContext(), level, *path));
                               }};
        out << TransferCommand{items[k].second, [level] {
                                   const auto db = studyFile();
                                   if (const auto path = db ? savePath(text(t::kSaveAsTitle)) : std::nullopt)
                                       exportUnits(*db, studyContext().CurBDSId, level, *path);
                                   return false;
                               }};
    }
}

void addStudyDataCommands(QList<TransferCommand>& out) {
    auto exportData = [](std::optional<StudyData> kind, const QString& label) {
        const auto db = studyFile();
        if (const auto path = db ? savePath(text(t::kSaveAsLabelled).arg(label)) : std::nullopt)
            exportStudyData(studyContext(), kind, *path);
        return false;
    };
    for (StudyData kind : studyDataKinds())
        out << TransferCommand{studyDataItem(kind),
                               [kind, exportData] { return exportData(kind, studyDataLabel(kind)); }};
    out << TransferCommand{"mnu_expAll",
                           [exportData] { return exportData(std::nullopt, text(t::kAllStudyDataLabel)); }};
}

void addZapCommands(QList<TransferCommand>& out) {
    out << TransferCommand{"Mnu_Submnu_DfltDicMps", [] {
                               const auto db = studyFile();
                               return db &&
                                      zapDictionaries(*db, studyContext().CurBDSId) == ZapResult::Purged;
                           }};
    out << TransferCommand{"Mnu_Submnu_ExtStDt", [] {
                               const auto db = studyFile();
                               return db && zapStudyData(*db) == ZapResult::Purged;
                           }};
    out << TransferCommand{"mnu_exStdSetup", [] {
                               const auto db = studyFile();
                               return db && zapStudySetup(*db) == ZapResult::Purged;
                           }};
}

} // namespace

const QList<TransferCommand>& transferCommands() {
    static const QList<TransferCommand> commands = [] {
        QList<TransferCommand> out;
        addDictionaryCommands(out);
        addUnitCommands(out);
        addStudyDataCommands(out);
        addZapCommands(out);
        return out;
    }();
    return commands;
}

} // namespace vesk
