#pragma once
// Population units of the current study: basic population units (BPU, _DctBPU) roll up into
// level-1 aggregates (PAG1, _DctPAG1), and those into the one level-2 aggregate (PAG2, _DctPAG2).
// Every row carries the study; a BPUID may stand in many studies, and the data tables, keyed by
// BPUID and YEAR alone, are then shared by them.
//
// The operations talk to the user through prompts() with the program's own words, and name the
// levels by the generic terms of the study's scheme. Nothing runs in a transaction: each write goes
// through at once, and a failure midway leaves the rows written before it.

#include "database/db_connection.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace vesk {

// The words for the three levels: the study's scheme, or "BPU", "PAG1" and "PAG2" without one.
struct LevelTerms {
    QString bpu, pag1, pag2;
};
LevelTerms currentLevelTerms();

enum class PopLevel { BPU, PAG1, PAG2 };

// A row of a level's grid. `priority` is the BPU's Prty as typed (read by a lenient parse).
struct UnitRow {
    QString id;
    QString name;
    QString priority;
    bool operator==(const UnitRow&) const = default;
};

// A BPU and the PAG1 it stands under.
struct MapPair {
    QString bpu;
    QString pag1;
    bool operator==(const MapPair&) const = default;
};

// Sets the pair of `bpu`: each BPU stands under one PAG1, so a second Set replaces its pair.
void setMapPair(QList<MapPair>& map, const QString& bpu, const QString& pag1);
// Removes the pairs of `bpu`, or of every BPU under `pag1`.
void removeMapPairOfBPU(QList<MapPair>& map, const QString& bpu);
void removeMapPairsOfPAG1(QList<MapPair>& map, const QString& pag1);

// The data tables of a study as the context lists them (TblNmLst), or their five names when the
// context has not been loaded: the tables whose rows make a unit one "with data".
QStringList studyDataTables();

class PopulationUnits {
public:
    PopulationUnits(const DbConnection& db, QString study) : db_(db), study_(std::move(study)) {}

    // The studies that hold rows of the level, to copy from; an empty list means none
    // (the form says "NO study exist", "NO PAG1id exist" or "NO PAG2id exist").
    QStringList sourceStudies(PopLevel level) const;
    // The rows of `chosen` for the level's grid; an empty list means "No records".
    QList<UnitRow> copyRows(PopLevel level, const QString& chosen) const;

    // The grids and the map of the current study as the form loads them. The map leaves out a BPU
    // whose PAG1 is no longer in the study.
    QList<UnitRow> loadRows(PopLevel level) const;
    QList<MapPair> loadMap() const;

    // Apply, in its order: the map must be set, the PAG2 id not blank; then PAG2, the PAG1 rows
    // and the mapped BPU rows are added or edited. BPUs without a pair are listed to the user and
    // not written. The BPU and PAG lists of the context are reloaded and success is reported.
    // Returns false when a check stopped it or a write failed.
    bool apply(const LevelTerms& terms, const UnitRow& pag2, const QList<UnitRow>& pag1Rows,
               const QList<UnitRow>& bpuRows, const QList<MapPair>& map) const;

    // Deletes a BPU row. A unit with data (FnBpuHasData over `dataTables`) asks first and goes from this
    // study alone; a unit without data goes at once from every study that holds the id. Returns whether it
    // went.
    bool deleteBPU(const QString& id, const QStringList& dataTables) const;
    // Deletes a PAG1 row after the questions, and with it the study's BPUs under it (their data
    // rows stay). Returns whether it went.
    bool deletePAG1(const QString& id) const;

    // The message of a failed write: the field-size text for error 3163, else number and text.
    static void reportWriteError(const QSqlError& error);

private:
    bool writePAG2(const UnitRow& pag2) const;
    bool writePAG1(const UnitRow& row, const QString& pag2Id) const;
    bool writeBPU(const UnitRow& row, const QString& pag1Id) const;
    bool addOrEdit(const QString& findSql, const QVariantList& findValues, const QString& insertSql,
                   const QVariantList& insertValues, const QString& updateSql,
                   const QVariantList& updateValues) const;
    QString studyKey() const { return study_.trimmed().toUpper(); }

    const DbConnection& db_;
    QString study_;
};

// After a change of units: the BPU and PAG1 lists of the study context.
void reloadUnitLists();

} // namespace vesk
