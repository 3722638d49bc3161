#pragma once
// Reading the program's output back: a tree's node texts indented by depth, and the text of a PDF
// (by pdftotext, with its layout kept).

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <functional>

namespace vesk::test {

inline QStringList treeTexts(const QTreeWidget* tree) {
    QStringList out;
    std::function<void(const QTreeWidgetItem*, int)> walk = [&](const QTreeWidgetItem* item, int depth) {
        out << QString(depth * 2, u' ') + item->text(0);
        for (int i = 0; i < item->childCount(); ++i)
            walk(item->child(i), depth + 1);
    };
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        walk(tree->topLevelItem(i), 0);
    return out;
}

// Empty when pdftotext is missing or fails.
inline QString pdfText(const QString& pdf) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    if (!p.waitForFinished(30000))
        return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

} // namespace vesk::test
