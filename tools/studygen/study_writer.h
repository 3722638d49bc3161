#pragma once
// What every recipe of vesk-studygen writes with: the fixed hash that varies its figures, the age
// groups, prepared statements kept for all their rows, a new study file written in transactions,
// and the rows that no recipe changes (age definitions, the four built-in parameter sets).

#include "database/db_connection.h"

#include <QList>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace vesk::studygen {

// A fixed hash of up to four small integers into [0, 1): the same figures on every machine.
double unit(std::uint64_t a, std::uint64_t b = 0, std::uint64_t c = 0, std::uint64_t d = 0);

inline double between(double lo, double hi, double u) {
    return lo + (hi - lo) * u;
}

// The lower ages of the groups for YLL, YLD and PND: 0, 1, 5, 10, ..., 85 (19 a sex).
const QList<double>& studyAges();

// Each statement prepared once and kept for all its rows.
class Writer {
public:
    Writer(DbConnection& db, QString* error) : db_(db), error_(error) {}

    // Runs `sql` with `values`; false at a refusal, with the statement in `error`.
    bool one(const QString& sql, const QVariantList& values);

private:
    bool fail(const QString& sql, const QSqlError& e);
    DbConnection& db_;
    QString* error_;
    std::map<QString, std::unique_ptr<QSqlQuery>> prepared_;
};

// A new study file, made through the program's own creation and open for writing.
class NewStudyFile {
public:
    // False with `error` when the file cannot be made or opened; `path` must not exist.
    bool create(const QString& path, QString* error);
    Writer& rows() { return *writer_; }
    // `work` in one transaction: all its rows, or none. Each keeps the pages it touches in the
    // engine's cache, whatever the size of the study.
    bool unitOfWork(const std::function<bool()>& work);

private:
    std::shared_ptr<DbConnection> db_;
    std::unique_ptr<Writer> writer_;
    QString* error_ = nullptr;
};

// The study's column of _DctBDM, which flags the causes it takes.
bool addStudyColumn(Writer& w, const QString& study);
// The three age definitions of the study, all on studyAges().
bool writeAgeGroups(Writer& w, const QString& study);
// The four built-in parameter sets of _DctDAP: (r, K) of (0, 0), (0.03, 1), (0, 1), (0.03, 0).
bool writeParameterSets(Writer& w);

} // namespace vesk::studygen
