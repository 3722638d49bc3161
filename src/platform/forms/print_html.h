#pragma once
// Printing a page of HTML: to the printer the user chooses in the print dialog, or, where no
// printer is attached, to a PDF file the user names (the prompt service's save dialog titled
// "Print to PDF"). Text is laid out without ligatures, so that the printed words copy as typed.

#include <QString>

class QImage;
class QPrinter;
class QWidget;

namespace vesk {
class GridModel;
}

namespace vesk {

// False when the user cancelled or nothing was printed.
bool printHtml(QWidget* parent, const QString& html);
// A picture, scaled to the page, printed the same way (a chart).
bool printImage(QWidget* parent, const QImage& image);

// The same onto a printer already set up (a PDF printer in tests).
void printHtmlTo(QPrinter& printer, const QString& html);

// A grid as a page: the title, then a table with the fixed first row as its heads and the other rows
// as the grid shows them, right-aligned.
QString gridHtml(const QString& title, const GridModel& grid);

} // namespace vesk
