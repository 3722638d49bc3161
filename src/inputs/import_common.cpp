#include "inputs/import_common.h"

#include "inputs/demography_sheet.h"
#include "inputs/sheet_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace t = sheet_texts;

bool isWorksheetKind(ForeignKind kind) {
    return kind == ForeignKind::Wk1 || kind == ForeignKind::Xlsx || kind == ForeignKind::Xls;
}

QString layoutQuestionHead(ForeignKind kind) {
    switch (kind) {
    case ForeignKind::Dbf: return text(t::kAskDbf);
    case ForeignKind::Text: return text(t::kAskText);
    case ForeignKind::Database: return text(t::kAskDatabase);
    default: return text(t::kAskWorksheet);
    }
}

std::optional<double> sourceNumber(const Cell& v) {
    return v.isNumber() ? std::optional<double>(v.toDouble()) : cellFigure(v.toString());
}

std::optional<QString> sourceTableName(ForeignKind kind, const QString& table, const QString& range,
                                       const QString& title) {
    if (isWorksheetKind(kind))
        return range;
    if (kind != ForeignKind::Database || !table.isEmpty())
        return table;
    const auto asked = prompts().inputBox(text(t::kAskTableName), title);
    if (!asked || asked->trimmed().isEmpty())
        return std::nullopt;
    return asked->trimmed();
}

QString notInSourceMessage(const QString& term, const QString& path) {
    return text(t::kNotInSourcePart1) + term + text(t::kNotInSourcePart2) + path + text(t::kNotInSourcePart3);
}

void tellImportRefusal(const QString& message) {
    prompts().ask(message, Buttons::Ok, Icon::Critical);
}

} // namespace vesk
