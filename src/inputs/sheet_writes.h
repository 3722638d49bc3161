#pragma once
// What every input sheet's writing shares: one transaction for a sheet's rows, a row edited where
// its key is there and added where not, and the message of a write the engine refused.

#include "database/db_connection.h"

#include <QSqlQuery>
#include <QVariantList>
#include <functional>

namespace vesk {

// Runs `work` inside one transaction of `db`: committed when it returns true, rolled back when it
// returns false or the commit fails. False with the engine's error in `error`.
bool inOneTransaction(DbConnection& db, const std::function<bool(QSqlError*)>& work, QSqlError* error);

// Binds `values` to `update` and runs it; false with the engine's error.
bool editRows(QSqlQuery& update, const QVariantList& values, QSqlError* error);

// Binds `values` to `update` and runs it; where it touched no row, binds them to `insert` and runs
// that. The two statements take the same values in the same order. False with the engine's error;
// `added`, when given, tells which of the two it was.
bool editOrAdd(QSqlQuery& update, QSqlQuery& insert, const QVariantList& values, QSqlError* error,
               bool* added = nullptr);

// The engine's number and words, and that nothing of the sheet was stored.
void showSheetWriteFailure(const QSqlError& error);

} // namespace vesk
