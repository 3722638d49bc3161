#include "platform/forms/print_html.h"

#include "platform/grid_model.h"
#include "platform/prompts.h"

#include <QImage>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTextDocument>
#include <functional>

namespace vesk {

void printHtmlTo(QPrinter& printer, const QString& html) {
    QTextDocument doc;
    QFont font = doc.defaultFont();
    font.setStyleStrategy(QFont::PreferNoShaping);
    doc.setDefaultFont(font);
    doc.setHtml(html);
    doc.print(&printer);
}

bool printWith(QWidget* parent, const std::function<void(QPrinter&)>& paint) {
    if (QPrinterInfo::availablePrinters().isEmpty()) {
        const auto path = prompts().saveFileName(QStringLiteral("Print to PDF"), QStringLiteral("PDF (*.pdf)"));
        if (!path)
            return false;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(*path);
        paint(printer);
        return true;
    }
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    paint(printer);
    return true;
}

bool printHtml(QWidget* parent, const QString& html) {
    return printWith(parent, [&html](QPrinter& printer) { printHtmlTo(printer, html); });
}

bool printImage(QWidget* parent, const QImage& image) {
    return printWith(parent, [&image](QPrinter& printer) {
        QPainter painter(&printer);
        const QRect page = painter.viewport();
        const QSize size = image.size().scaled(page.size(), Qt::KeepAspectRatio);
        painter.setViewport(page.x(), page.y(), size.width(), size.height());
        painter.setWindow(image.rect());
        painter.drawImage(0, 0, image);
    });
}

QString gridHtml(const QString& title, const GridModel& grid) {
    QString html = QStringLiteral("<h3><pre>%1</pre></h3><table border=1 cellspacing=0 cellpadding=3><tr>")
                       .arg(title.toHtmlEscaped());
    for (int c = 0; c < grid.cols(); ++c)
        html += QStringLiteral("<th>%1</th>").arg(grid.textMatrix(0, c).toHtmlEscaped());
    html += QStringLiteral("</tr>");
    for (int r = 1; r < grid.rows(); ++r) {
        html += QStringLiteral("<tr>");
        for (int c = 0; c < grid.cols(); ++c)
            html += QStringLiteral("<td align=right>%1</td>").arg(grid.textMatrix(r, c).toHtmlEscaped());
        html += QStringLiteral("</tr>");
    }
    return html + QStringLiteral("</table>");
}

} // namespace vesk
