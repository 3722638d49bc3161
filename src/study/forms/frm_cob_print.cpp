#include "study/forms/frm_cob_print.h"

#include "platform/prompts.h"
#include "foundation/settings.h"
#include "study/cause_dictionary_texts.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

namespace vesk {

namespace {

bool& pdfOnly() {
    static bool on = false;
    return on;
}

const QString kPdfTitle = QStringLiteral("Print");
const QString kPdfFilter = QStringLiteral("PDF (*.pdf)");

// The default printer, or a PDF printer on a file the user names; nullptr when the user cancels.
std::unique_ptr<QPrinter> outlinePrinter() {
    if (!pdfOnly() && !QPrinterInfo::defaultPrinter().isNull())
        return std::make_unique<QPrinter>(QPrinterInfo::defaultPrinter(), QPrinter::HighResolution);
    const auto file = prompts().saveFileName(kPdfTitle, kPdfFilter, settings().StatOutPath);
    if (!file || file->trimmed().isEmpty())
        return nullptr;
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(*file);
    return printer;
}

bool printEntries(const QList<OutlineLine>& entries, const QString& title) {
    auto printer = outlinePrinter();
    if (!printer)
        return false;
    if (!printOutlineEntries(entries, title, *printer)) {
        prompts().ask(QStringLiteral("The printer could not be started."));
        return false;
    }
    prompts().ask(cdtext::Printed);
    return true;
}

} // namespace

void setOutlinePrintToPdf(bool on) {
    pdfOnly() = on;
}

bool printOutlineEntries(const QList<OutlineLine>& entries, const QString& title, QPrinter& printer) {
    printer.setDocName(title);
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    QFont font(QStringLiteral("DejaVu Sans"), 10);
    // No shaping where the script does not need it: no ligatures, so that the printed codes and
    // names are found and copied letter for letter ("traffic", not a single "ffi" glyph).
    font.setStyleStrategy(QFont::PreferNoShaping);
    painter.setFont(font);
    const QFontMetrics metrics(font, &printer);
    const QRect page = printer.pageLayout().paintRectPixels(printer.resolution());
    const int lineHeight = metrics.lineSpacing();
    const int indent = metrics.horizontalAdvance(QStringLiteral("MMMM"));
    const int bottom = page.height() - lineHeight;
    int y = lineHeight;
    for (const OutlineLine& line : entries) {
        if (y > bottom) {
            printer.newPage();
            y = lineHeight;
        }
        painter.drawText(line.depth * indent, y, line.text);
        y += lineHeight;
    }
    return painter.end();
}

bool printCauseOutline(const DbConnection& db, const QString& study) {
    return printEntries(outlineEntries(causeOutline(db, study)), cdtext::OutlineCaption);
}

bool printPopulationOutline(const DbConnection& db, const QString& study) {
    return printEntries(outlineEntries(populationOutline(db, study)), cdtext::PopulationNode);
}

} // namespace vesk
