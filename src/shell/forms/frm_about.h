#pragma once
// The about box: the product's name, version and purpose, modal, with a close button.

#include <QDialog>

namespace vesk {

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);
};

} // namespace vesk
