#include "study_writer.h"

#include "database/db_create.h"

#include <QSqlError>
#include <QSqlQuery>

namespace vesk::studygen {

double unit(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d) {
    std::uint64_t x = a * 0x9E3779B97F4A7C15ULL ^ (b + 0x632BE59BD9B4E019ULL) * 0xBF58476D1CE4E5B9ULL ^
                      (c + 0x8CB92BA72F3D8DD7ULL) * 0x94D049BB133111EBULL ^ (d + 0x2545F4914F6CDD1DULL);
    x ^= x >> 30;
    x *= 0xBF58476D1CE4E5B9ULL;
    x ^= x >> 27;
    x *= 0x94D049BB133111EBULL;
    x ^= x >> 31;
    return double(x >> 11) / double(1ULL << 53);
}

const QList<double>& studyAges() {
    static const QList<double> ages = {0,  1,  5,  10, 15, 20, 25, 30, 35, 40,
                                       45, 50, 55, 60, 65, 70, 75, 80, 85};
    return ages;
}

bool Writer::one(const QString& sql, const QVariantList& values) {
    auto it = prepared_.find(sql);
    if (it == prepared_.end()) {
        auto q = std::make_unique<QSqlQuery>(db_.database());
        if (!q->prepare(sql))
            return fail(sql, q->lastError());
        it = prepared_.emplace(sql, std::move(q)).first;
    }
    QSqlQuery& q = *it->second;
    for (int i = 0; i < values.size(); ++i)
        q.bindValue(i, values[i]);
    return q.exec() || fail(sql, q.lastError());
}

bool Writer::fail(const QString& sql, const QSqlError& e) {
    *error_ = sql + QStringLiteral(": ") + e.text();
    return false;
}

bool NewStudyFile::create(const QString& path, QString* error) {
    error_ = error;
    if (!createStudyFile(path, error))
        return false;
    db_ = DbConnection::open(path, error);
    if (!db_)
        return false;
    writer_ = std::make_unique<Writer>(*db_, error);
    db_->exec(QStringLiteral("PRAGMA cache_size = -262144"));
    return true;
}

bool NewStudyFile::unitOfWork(const std::function<bool()>& work) {
    if (!db_->database().transaction()) {
        *error_ = db_->database().lastError().text();
        return false;
    }
    if (!work()) {
        db_->database().rollback();
        return false;
    }
    if (!db_->database().commit()) {
        *error_ = db_->database().lastError().text();
        return false;
    }
    return true;
}

bool addStudyColumn(Writer& w, const QString& study) {
    return w.one(QStringLiteral("ALTER TABLE _DctBDM ADD COLUMN \"%1\" BOOLEAN").arg(study), {});
}

bool writeAgeGroups(Writer& w, const QString& study) {
    for (double age : studyAges())
        if (!w.one(QStringLiteral("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES (?, ?, ?, ?)"),
                   {study, age, age, age}))
            return false;
    return true;
}

bool writeParameterSets(Writer& w) {
    const char* sets[][5] = {{"0", "0", "0", nullptr, nullptr},
                             {"1", "0.03", "1", "0.04", "0.1658"},
                             {"2", "0", "1", "0.04", "0.1658"},
                             {"3", "0.03", "0", nullptr, nullptr}};
    for (const auto& s : sets)
        if (!w.one(QStringLiteral("INSERT INTO _DctDAP (DAPID, r, K, Beta, C) VALUES (?, ?, ?, ?, ?)"),
                   {QString::fromLatin1(s[0]).toInt(), QString::fromLatin1(s[1]).toDouble(),
                    QString::fromLatin1(s[2]).toDouble(),
                    s[3] ? QVariant(QString::fromLatin1(s[3]).toDouble()) : QVariant(),
                    s[4] ? QVariant(QString::fromLatin1(s[4]).toDouble()) : QVariant()}))
            return false;
    return true;
}

} // namespace vesk::studygen
