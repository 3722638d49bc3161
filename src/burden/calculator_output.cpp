#include "burden/calculator_output.h"

#include "burden/calculator_texts.h"

#include <QSaveFile>

namespace vesk {

namespace {

QStringList heads(const QAbstractItemModel& m) {
    QStringList out;
    for (int c = 0; c < m.columnCount(); ++c)
        out.push_back(m.headerData(c, Qt::Horizontal).toString());
    return out;
}

QStringList rowTexts(const QAbstractItemModel& m, int row) {
    QStringList out;
    for (int c = 0; c < m.columnCount(); ++c)
        out.push_back(m.data(m.index(row, c)).toString());
    return out;
}

QString fieldLine(const QString& name, const QString& value) {
    return name + u';' + value;
}

} // namespace

QString calculatorSaveText(const CalculatorSheet& sheet) {
    QStringList lines;
    lines << sheet.caption;
    lines << fieldLine(QString::fromLatin1(calculator_texts::kUserIdentification), sheet.userIdentification);
    lines << fieldLine(QString::fromLatin1(calculator_texts::kCause), sheet.cause);
    for (const CalculatorGrid& grid : sheet.grids) {
        if (!grid.model)
            continue;
        lines << QString() << grid.title << heads(*grid.model).join(u';');
        for (int r = 0; r < grid.model->rowCount(); ++r)
            lines << rowTexts(*grid.model, r).join(u';');
    }
    return lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

bool writeCalculatorFile(const QString& path, const QString& text, QString* error) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}

QString calculatorPrintHtml(const CalculatorSheet& sheet) {
    QString html =
        QStringLiteral("<html><body><h2>%1</h2><p>%2: %3<br>%4: %5</p>")
            .arg(sheet.caption.toHtmlEscaped(),
                 QString::fromLatin1(calculator_texts::kUserIdentification).toHtmlEscaped(),
                 sheet.userIdentification.toHtmlEscaped(),
                 QString::fromLatin1(calculator_texts::kCause).toHtmlEscaped(), sheet.cause.toHtmlEscaped());
    for (const CalculatorGrid& grid : sheet.grids) {
        if (!grid.model)
            continue;
        html += QStringLiteral("<h3>%1</h3><table border=\"1\" cellspacing=\"0\" cellpadding=\"3\"><tr>")
                    .arg(grid.title.toHtmlEscaped());
        for (const QString& h : heads(*grid.model))
            html += QStringLiteral("<th>%1</th>").arg(h.toHtmlEscaped());
        html += QStringLiteral("</tr>");
        for (int r = 0; r < grid.model->rowCount(); ++r) {
            html += QStringLiteral("<tr>");
            const QStringList cells = rowTexts(*grid.model, r);
            for (int c = 0; c < cells.size(); ++c)
                html += QStringLiteral("<td align=\"%1\">%2</td>")
                            .arg(c == 0 ? QStringLiteral("left") : QStringLiteral("right"),
                                 cells[c].toHtmlEscaped());
            html += QStringLiteral("</tr>");
        }
        html += QStringLiteral("</table>");
    }
    return html + QStringLiteral("</body></html>");
}

} // namespace vesk
