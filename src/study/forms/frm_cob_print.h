#pragma once
// Printing of the two outlines: the same queries as the tree, one indented line per node. The lines
// go to the default printer, or, where no printer is attached, to a PDF file the user names.

#include "database/db_connection.h"
#include "study/outline.h"

#include <QString>
#include <QStringList>

class QPrinter;

namespace vesk {

// Draws the entries on `printer`, indented by depth, breaking pages as they fill. False when the
// printer could not be started.
bool printOutlineEntries(const QList<OutlineLine>& entries, const QString& title, QPrinter& printer);

// The two print routines. Each walks its outline's queries, prints, and reports
// "printed Sucessfully"; false when the user cancelled or the printer failed.
bool printCauseOutline(const DbConnection& db, const QString& study);
bool printPopulationOutline(const DbConnection& db, const QString& study);

// Makes every print go to a PDF file (as on a machine without printer), as tests and headless
// runs need.
void setOutlinePrintToPdf(bool pdfOnly);

} // namespace vesk
