#include "inputs/sheet_writes.h"

#include "inputs/sheet_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

bool inOneTransaction(DbConnection& db, const std::function<bool(QSqlError*)>& work, QSqlError* error) {
    QSqlDatabase base = db.database();
    if (!base.transaction()) {
        *error = base.lastError();
        return false;
    }
    bool ok = work(error);
    if (ok && !base.commit()) {
        *error = base.lastError();
        ok = false;
    }
    if (!ok)
        base.rollback();
    return ok;
}

bool editRows(QSqlQuery& update, const QVariantList& values, QSqlError* error) {
    for (int k = 0; k < values.size(); ++k)
        update.bindValue(k, values[k]);
    if (update.exec())
        return true;
    *error = update.lastError();
    return false;
}

bool editOrAdd(QSqlQuery& update, QSqlQuery& insert, const QVariantList& values, QSqlError* error, bool* added) {
    if (added)
        *added = false;
    if (!editRows(update, values, error))
        return false;
    if (update.numRowsAffected() > 0)
        return true;
    for (int k = 0; k < values.size(); ++k)
        insert.bindValue(k, values[k]);
    if (!insert.exec()) {
        *error = insert.lastError();
        return false;
    }
    if (added)
        *added = true;
    return true;
}

void showSheetWriteFailure(const QSqlError& error) {
    prompts().ask(QString::number(engineErrorNumber(error)) + u' ' + engineDescription(error) + u'\n' +
                      text(sheet_texts::kNothingStored),
                  Buttons::Ok, Icon::Critical);
}

} // namespace vesk
