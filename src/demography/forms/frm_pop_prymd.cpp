#include "demography/forms/frm_pop_prymd.h"

#include "demography/pyramid_texts.h"
#include "platform/cell_array.h"
#include "platform/forms/named_widgets.h"
#include "platform/forms/print_html.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QPushButton>
#include <QSvgGenerator>
#include <QVBoxLayout>

namespace vesk {

namespace pt = pyramid_texts;

void paintPyramid(QPainter& p, const PyramidTable& table, const QSize& size) {
    p.fillRect(QRect(QPoint(0, 0), size), Qt::white);
    if (table.empty())
        return;
    // Margins for the age labels on the left, the tick labels and the words below.
    const int left = 60, right = 20, top = 30, bottom = 70;
    const double width = size.width() - left - right, height = size.height() - top - bottom;
    const PyramidGeometry g = pyramidGeometry(table, width, height);
    p.translate(left, top);
    const QColor male(70, 130, 180), female(220, 120, 60);
    // Steps lower than a line of text (single years of age) keep the labels of every fifth age and of the
    // last row, so that no two labels overlap.
    const bool thin = !g.bars.empty() && g.bars.front().height < p.fontMetrics().height();
    for (std::size_t i = 0; i < g.bars.size(); ++i) {
        const PyramidBar& b = g.bars[i];
        const double y = b.top + b.height * 0.1, h = b.height * 0.8;
        p.fillRect(QRectF(g.centre - b.maleLength, y, b.maleLength, h), male);
        p.fillRect(QRectF(g.centre, y, b.femaleLength, h), female);
        p.setPen(Qt::black);
        const bool last = i + 1 == g.bars.size();
        if (thin && !last && int(table[i].age) % 5 != 0)
            continue;
        const double textHeight = p.fontMetrics().height();
        p.drawText(QRectF(-left, b.top + b.height / 2 - textHeight / 2, left - 6, textHeight),
                   Qt::AlignRight | Qt::AlignVCenter, b.label);
    }
    // The axes: the base line, the centre, and the ticks on both sides.
    p.setPen(Qt::black);
    p.drawLine(QPointF(0, height), QPointF(width, height));
    p.drawLine(QPointF(g.centre, 0), QPointF(g.centre, height));
    for (const PyramidTick& t : g.ticks)
        for (double x : {g.centre - t.offset, g.centre + t.offset}) {
            p.drawLine(QPointF(x, height), QPointF(x, height + 5));
            p.drawText(QRectF(x - 30, height + 6, 60, 16), Qt::AlignHCenter | Qt::AlignTop, t.label);
        }
    p.drawText(QRectF(0, height + 24, g.centre, 18), Qt::AlignHCenter, text(pt::kMale));
    p.drawText(QRectF(g.centre, height + 24, g.centre, 18), Qt::AlignHCenter, text(pt::kFemale));
    p.drawText(QRectF(0, height + 44, width, 18), Qt::AlignHCenter, g.axisTitle);
}

void PyramidCanvas::paintEvent(QPaintEvent*) {
    QPainter p(this);
    paintPyramid(p, table_, size());
}

frmPopPrymd::frmPopPrymd(const Cell& arrPop4D, const Cell& units, QWidget* parent)
    : QWidget(parent), pop_(arrPop4D), units_(units) {
    count_ = units_.isArray() ? units_.array().size(0) : 0;
    build(true);
    FnDrawPP(0);
}

frmPopPrymd::frmPopPrymd(PyramidTable table, const QString& caption, QWidget* parent) : QWidget(parent) {
    build(false);
    lblBPU->setText(caption);
    picPyramid->setTable(std::move(table));
    lblAxis->setText(pyramidGeometry(picPyramid->table(), 1, 1).axisTitle);
}

void frmPopPrymd::build(bool paging) {
    setObjectName(QStringLiteral("frmPopPrymd"));
    setWindowTitle(text(pt::kToolCaption));
    setAttribute(Qt::WA_DeleteOnClose);
    lblBPU = new QLabel(this);
    lblBPU->setObjectName(QStringLiteral("lblBPU"));
    lblAxis = new QLabel(this);
    lblAxis->setObjectName(QStringLiteral("lblAxis"));
    picPyramid = new PyramidCanvas(this);
    picPyramid->setObjectName(QStringLiteral("picPyramid"));
    cmdTop = namedButton(this, QStringLiteral("cmdTop"), QStringLiteral("First"));
    cmdPrev = namedButton(this, QStringLiteral("cmdPrev"), QStringLiteral("Previous"));
    cmdNxt = namedButton(this, QStringLiteral("cmdNxt"), QStringLiteral("Next"));
    cmdlast = namedButton(this, QStringLiteral("cmdlast"), QStringLiteral("Last"));
    cmdCopy = namedButton(this, QStringLiteral("cmdCopy"), QStringLiteral("&Copy"));
    cmdPrint = namedButton(this, QStringLiteral("cmdPrint"), QStringLiteral("&Print"));
    cmdSave = namedButton(this, QStringLiteral("cmdSave"), QStringLiteral("&Save"));
    cmdClose = namedButton(this, QStringLiteral("cmdClose"), QStringLiteral("C&lose"));
    connect(cmdTop, &QPushButton::clicked, this, [this] { FnDrawPP(0); });
    connect(cmdPrev, &QPushButton::clicked, this, [this] { FnDrawPP(page_ - 1); });
    connect(cmdNxt, &QPushButton::clicked, this, [this] { FnDrawPP(page_ + 1); });
    connect(cmdlast, &QPushButton::clicked, this, [this] { FnDrawPP(count_ - 1); });
    connect(cmdCopy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(ArrPopPrymdatToClip(picPyramid->table())); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] { printImage(this, picture()); });
    connect(cmdSave, &QPushButton::clicked, this, [this] {
        const auto path = prompts().saveFileName(QStringLiteral("Save As"),
                                                 QStringLiteral("PNG Files (*.png)|*.png|SVG Files (*.svg)|*.svg|"
                                                                "PDF Files (*.pdf)|*.pdf"));
        if (path && !saveTo(*path))
            prompts().ask(QStringLiteral("Unable to save the picture in ") + *path);
    });
    connect(cmdClose, &QPushButton::clicked, this, &QWidget::close);
    auto* nav = new QHBoxLayout;
    for (QPushButton* b : {cmdTop, cmdPrev, cmdNxt, cmdlast}) {
        b->setVisible(paging);
        nav->addWidget(b);
    }
    nav->addStretch();
    for (QPushButton* b : {cmdCopy, cmdPrint, cmdSave, cmdClose})
        nav->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblBPU);
    layout->addWidget(picPyramid, 1);
    layout->addWidget(lblAxis);
    layout->addLayout(nav);
    resize(760, 600);
}

void frmPopPrymd::FnDrawPP(int unit) {
    if (count_ == 0)
        return;
    page_ = std::clamp(unit, 0, count_ - 1);
    picPyramid->setTable(pyramidOfUnit(pop_, page_));
    lblBPU->setText(units_.array()(units_.array().lbound(0) + page_).toString());
    lblAxis->setText(pyramidGeometry(picPyramid->table(), 1, 1).axisTitle);
    updateMoves();
}

void frmPopPrymd::updateMoves() {
    cmdNxt->setEnabled(page_ < count_ - 1);
    cmdlast->setEnabled(page_ < count_ - 1);
    cmdPrev->setEnabled(page_ > 0);
    cmdTop->setEnabled(page_ > 0);
}

QImage frmPopPrymd::picture(const QSize& size) const {
    QImage image(size, QImage::Format_ARGB32);
    QPainter p(&image);
    paintPyramid(p, picPyramid->table(), size);
    return image;
}

bool frmPopPrymd::saveTo(const QString& path) const {
    return savePyramid(picPyramid->table(), path);
}

bool savePyramid(const PyramidTable& table, const QString& path) {
    const QString kind = QFileInfo(path).suffix().toLower();
    const QSize size(800, 600);
    if (kind == QLatin1String("svg")) {
        QSvgGenerator svg;
        svg.setFileName(path);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(0, 0), size));
        QPainter p;
        if (!p.begin(&svg))
            return false;
        paintPyramid(p, table, size);
        return p.end();
    }
    if (kind == QLatin1String("pdf")) {
        QPdfWriter pdf(path);
        pdf.setResolution(96);
        QPainter p;
        if (!p.begin(&pdf))
            return false;
        paintPyramid(p, table, size);
        return p.end();
    }
    QImage image(size, QImage::Format_ARGB32);
    QPainter p(&image);
    paintPyramid(p, table, size);
    p.end();
    return image.save(path);
}

} // namespace vesk
