#pragma once
// frmPopPrymd, the population pyramid drawn by the program itself (bars and axes painted from the
// geometry of demography/pyramid.h): the BPUs of the study paged with First, Previous, Next and Last
// (Results -> Population Pyramid), or one typed table (Tools -> Population Pyramid). Copy puts the table
// on the clipboard (tabs between columns); Print goes to the printer or to PDF; Save writes PNG, SVG or PDF.

#include "demography/pyramid.h"

#include <QWidget>

class QLabel;
class QPainter;
class QPushButton;

namespace vesk {

// Paints a pyramid's geometry on any surface of `size`.
void paintPyramid(QPainter& painter, const PyramidTable& table, const QSize& size);
// The pyramid of `table` saved as SVG, PDF or an image (PNG ...) by the path's extension, 800 by 600.
bool savePyramid(const PyramidTable& table, const QString& path);

class PyramidCanvas : public QWidget {
public:
    explicit PyramidCanvas(QWidget* parent = nullptr) : QWidget(parent) { setMinimumSize(560, 420); }
    void setTable(PyramidTable table) {
        table_ = std::move(table);
        update();
    }
    const PyramidTable& table() const { return table_; }

protected:
    void paintEvent(QPaintEvent*) override;

private:
    PyramidTable table_;
};

class frmPopPrymd : public QWidget {
public:
    // The BPUs of `units` from the population array (a computation's ArrPop4D).
    frmPopPrymd(const Cell& arrPop4D, const Cell& units, QWidget* parent = nullptr);
    // One typed table, under `caption`.
    frmPopPrymd(PyramidTable table, const QString& caption, QWidget* parent = nullptr);

    QLabel* lblBPU = nullptr;
    QLabel* lblAxis = nullptr;
    PyramidCanvas* picPyramid = nullptr;
    QPushButton *cmdTop = nullptr, *cmdPrev = nullptr, *cmdNxt = nullptr, *cmdlast = nullptr;
    QPushButton *cmdCopy = nullptr, *cmdPrint = nullptr, *cmdSave = nullptr, *cmdClose = nullptr;

    void FnDrawPP(int unit);
    int page() const { return page_; }
    QImage picture(const QSize& size = QSize(800, 600)) const;
    bool saveTo(const QString& path) const;

private:
    void build(bool paging);
    void updateMoves();

    Cell pop_, units_;
    int page_ = 0, count_ = 0;
};

} // namespace vesk
