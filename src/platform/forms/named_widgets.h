#pragma once
// Buttons and options made with their object name (the name by which the program and its tests know
// them) and caption in one call.

#include <QPushButton>
#include <QRadioButton>

namespace vesk {

inline QPushButton* namedButton(QWidget* parent, const QString& objectName, const QString& caption) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(objectName);
    return b;
}

inline QRadioButton* namedOption(QWidget* parent, const QString& objectName, const QString& caption) {
    auto* o = new QRadioButton(caption, parent);
    o->setObjectName(objectName);
    return o;
}

} // namespace vesk
