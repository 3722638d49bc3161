#pragma once
// The entries of the Results menu that show a table: for each, its level, what kind of table, the
// measure, and the codes that the viewers take (RptMeasure of a summary, DetailMeasure of a detail
// table). Data only: the tables themselves are in results/result_tables.h.
//
//   RptMeasure     0 YLL, 1 IYLD, 2 IDALY, 3 PYLD, 4 PDALY, 6 IDALY N leading, 8 PDALY N leading
//   DetailMeasure  3 IYLD, 4 PYLD, 5 YLL, 6 IDALY, 7 PDALY

#include "burden/leading_causes.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace vesk {

enum class ResultLevel { PAG2, PAG1, BPU };
enum class ResultKind {
    Distribution, // the percentage distribution among causes: every cause, ranked
    Leading,      // the N leading causes
    Detail,       // by age, sex and cause
};

struct ResultEntry {
    const char* item;
    ResultLevel level;
    ResultKind kind;
    BurdenMeasure measure;
    bool iyllHeads = false; // three YLL summaries head their columns "IYLL"
};

// Every entry, in the order of the menu.
const std::vector<ResultEntry>& resultEntries();
// The entry of a menu item; nullptr for another item.
const ResultEntry* resultEntry(const QString& item);

int rptMeasure(const ResultEntry& entry);    // summaries and N leading; -1 for a detail table
int detailMeasure(const ResultEntry& entry); // detail tables; -1 for a summary

// The heads of a summary: "Cob Code", "Cob Description", the measure, the measure + " Percentage".
QStringList summaryHeads(const ResultEntry& entry);

QString levelName(ResultLevel level); // "BPU", "PAG1", "PAG2"

} // namespace vesk
