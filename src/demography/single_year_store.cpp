#include "demography/single_year_store.h"

#include "demography/single_year.h"
#include "demography/sprague_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QSqlError>
#include <QSqlQuery>

namespace vesk {

namespace {

struct Failure {
    QString words;
};

void check(bool ok, const QSqlError& e) {
    if (!ok)
        throw Failure{engineDescription(e)};
}

QVariant single(const DbConnection& db, const QString& sql, const QString& unit) {
    QSqlError e;
    auto q = db.query(sql, {unit}, &e);
    check(bool(q), e);
    return q->next() ? q->value(0) : QVariant();
}

struct SourceRows {
    CellArray male, female;
    QVariant year;
};

SourceRows readSource(const DbConnection& db, const QString& source, const QString& unit, bool stale) {
    QSqlError e;
    auto q = db.query(QStringLiteral("SELECT BPUID,YEAR,M,F,upddt FROM %1 WHERE BPUID= ? ORDER BY rowid").arg(source),
                      {unit}, &e);
    check(bool(q), e);
    QList<Cell> m, f;
    SourceRows r;
    while (q->next()) {
        if (m.isEmpty())
            r.year = q->value(1);
        m << cellFromVariant(q->value(2));
        f << cellFromVariant(q->value(3));
        if (stale)
            prompts().ask(f.last().toString(), Buttons::Ok, Icon::None, QString());
    }
    if (stale)
        prompts().ask(QString::number(f.size()), Buttons::Ok, Icon::None, QString());
    r.male = CellArray({int(m.size())});
    r.female = CellArray({int(f.size())});
    for (int i = 0; i < m.size(); ++i) {
        r.male(i) = m[i];
        r.female(i) = f[i];
    }
    return r;
}

void store(const DbConnection& db, const QString& target, const QString& unit, const SourceRows& s,
           const CellArray& m, const CellArray& f, const QVariant& estimated) {
    QSqlDatabase base = db.database();
    check(base.transaction(), base.lastError());
    QSqlQuery q(base);
    bool ok = q.prepare(QStringLiteral("INSERT INTO %1 (BPUID, YEAR, Bai, m, f, ESTDT) VALUES (?, ?, ?, ?, ?, ?)")
                            .arg(target));
    for (int i = 0; ok && i < m.size(0); ++i) {
        q.bindValue(0, unit);
        q.bindValue(1, s.year);
        q.bindValue(2, i);
        q.bindValue(3, m(i).toDouble());
        q.bindValue(4, f(i).toDouble());
        q.bindValue(5, estimated);
        ok = q.exec();
    }
    if (!ok) {
        const QSqlError e = q.lastError();
        base.rollback();
        check(false, e);
    }
    check(base.commit(), base.lastError());
}

// One unit; false when it was skipped for want of rows.
void buildUnit(const DbConnection& db, const QString& source, const QString& target, const QString& unit,
               const CellArray& ageBreaks, const SpraguePanels* panels) {
    if (!single(db, QStringLiteral("SELECT count(*) FROM %1 WHERE BPUID= ?").arg(source), unit).toInt())
        return;
    const QVariant updated =
        single(db, QStringLiteral("SELECT max(upddt) as vupddt FROM %1 WHERE BPUID= ?").arg(source), unit);
    const QVariant estimated = single(
        db, QStringLiteral("SELECT max(estdt) as vestdt FROM %1 WHERE BPUID= ? and estdt is not null").arg(target),
        unit);
    const bool stale = !estimated.isNull() && updated.toString() > estimated.toString();
    if (!estimated.isNull() && !stale)
        return;
    if (stale) {
        QSqlError e;
        check(db.exec(QStringLiteral("DELETE FROM %1 WHERE BPUID= ?").arg(target), {unit}, &e), e);
    }
    const SourceRows s = readSource(db, source, unit, stale);
    const Cell m = singleYearSeries(s.male, ageBreaks, panels);
    const Cell f = singleYearSeries(s.female, ageBreaks, panels);
    if (!m.isArray() || !f.isArray()) {
        if ((m.isNumber() && m.toDouble() == 0) || (f.isNumber() && f.toDouble() == 0))
            prompts().ask(text(sprague_texts::kLessThanFiveRows), Buttons::Ok, Icon::None, QString());
        return;
    }
    store(db, target, unit, s, m.array(), f.array(), updated);
}

} // namespace

bool BuildSnglYr1(const DbConnection& db, const CellArray& units, const QString& source, const QString& target,
                  const CellArray& ageBreaks, const SpraguePanels* panels) {
    if (!isPlainIdentifier(source) || !isPlainIdentifier(target) || units.rank() != 1)
        return false;
    try {
        for (int i = units.lbound(0); i <= units.ubound(0); ++i)
            buildUnit(db, source, target, units(i).toString(), ageBreaks, panels);
        return true;
    } catch (const Failure& f) {
        prompts().ask(f.words, Buttons::Ok, Icon::None, QString());
    }
    return false;
}

bool BuildSnglYrPop(const DbConnection& db, const CellArray& units, const CellArray& ageBreaks) {
    return BuildSnglYr1(db, units, QStringLiteral("POP"), QStringLiteral("POPSNGYLR"), ageBreaks);
}

bool BuildSnglYrDth(const DbConnection& db, const CellArray& units, const CellArray& ageBreaks) {
    return BuildSnglYr1(db, units, QStringLiteral("ASDR"), QStringLiteral("DthSnglYr"), ageBreaks);
}

} // namespace vesk
