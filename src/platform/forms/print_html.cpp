#include "platform/forms/print_html.h"

#include "platform/prompts.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTextDocument>

namespace vesk {

void printHtmlTo(QPrinter& printer, const QString& html) {
    QTextDocument doc;
    QFont font = doc.defaultFont();
    font.setStyleStrategy(QFont::PreferNoShaping);
    doc.setDefaultFont(font);
    doc.setHtml(html);
    doc.print(&printer);
}

bool printHtml(QWidget* parent, const QString& html) {
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        const auto path = prompts().saveFileName(QStringLiteral("Print to PDF"), QStringLiteral("PDF (*.pdf)"));
        if (!path)
            return false;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(*path);
        printHtmlTo(printer, html);
        return true;
    }
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    printHtmlTo(printer, html);
    return true;
}

} // namespace vesk
