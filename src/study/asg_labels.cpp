#include "study/asg_labels.h"

#include "database/study_context.h"
#include "foundation/array_helpers.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "study/asg_texts.h"

#include <exception>

namespace vesk {

namespace {

// The numeric entries of one column, in row order.
QList<double> numericColumn(const CellArray& boundaries, int column) {
    if (boundaries.rank() == 0)
        throw RuntimeError(runtime_error::kTypeMismatch);
    if (boundaries.rank() != 2 || column < boundaries.lbound(1) || column > boundaries.ubound(1))
        throw RuntimeError(runtime_error::kSubscriptOutOfRange);
    QList<double> ages;
    for (int i = boundaries.lbound(0); i <= boundaries.ubound(0); ++i) {
        const Cell& c = boundaries(i, column);
        if (isNumericCell(c) && !isBlankCell(c))
            ages.push_back(c.toDouble());
    }
    return ages;
}

CellArray sortedLabels(const QStringList& labels) {
    // Two labels per entry and no entry: the array cannot be sized.
    if (labels.isEmpty())
        throw RuntimeError(runtime_error::kSubscriptOutOfRange);
    CellArray out({static_cast<int>(labels.size())});
    for (int i = 0; i < labels.size(); ++i)
        out(i) = Cell(labels[i]);
    FnSortArr(out, -1, 1);
    return out;
}

// The lower age of a closed interval: padded with a zero strictly between 0 and 10.
QString paddedLower(double age) {
    const QString text = numberToText(age);
    return age > 0 && age < 10 ? QStringLiteral("0") + text : text;
}

} // namespace

QStringList asgLabelsFor(const QList<double>& ages, const QStringList& letters) {
    QStringList out;
    for (int i = 0; i < ages.size(); ++i) {
        QString range;
        if (i == ages.size() - 1)
            range = numberToText(ages[i]) + QStringLiteral("-w");
        else if (ages[i + 1] - 1 == 0)
            range = numberToText(ages[i]);
        else
            range = paddedLower(ages[i]) + u'-' + numberToText(ages[i + 1] - 1);
        for (const QString& letter : letters)
            out.push_back(letter + range);
    }
    return out;
}

CellArray FnAsgLabels(const CellArray& boundaries, int column) {
    return sortedLabels(
        asgLabelsFor(numericColumn(boundaries, column), {QStringLiteral("M"), QStringLiteral("F")}));
}

CellArray FnAsgLabelsP(const CellArray& boundaries, int column) {
    return sortedLabels(asgLabelsFor(numericColumn(boundaries, column), {QStringLiteral("P")}));
}

double FnAsgStart(const QString& label) {
    const int dash = label.indexOf(u'-');
    if (dash < 0)
        return Val(label.mid(1));
    return Val(label.mid(1, dash >= 1 ? dash - 1 : 0));
}

Cell FnAsgEnd(const QString& label) {
    const int dash = label.indexOf(u'-');
    if (dash < 0)
        return Cell(FnAsgStart(label) + 1);
    const QString rest = label.mid(dash + 1);
    if (isNumericCell(Cell(rest)))
        return Cell(Val(rest) + 1);
    if (rest.startsWith(u'w', Qt::CaseInsensitive))
        return Cell(QStringLiteral("W"));
    return Cell();
}

Cell FnAsgWidth(const QString& label) {
    const Cell end = FnAsgEnd(label);
    if (end.isText())
        return Cell(QStringLiteral("W"));
    return Cell(roundHalfEven(end.toDouble() - FnAsgStart(label) + 1));
}

namespace {

void parseLabels(const CellArray* labels, CellArray& result) {
    if (!labels || labels->rank() != 1)
        throw RuntimeError(runtime_error::kTypeMismatch);
    result = CellArray(std::vector<Bound>{{labels->lbound(0), labels->ubound(0)}, {0, 2}});
    for (int i = labels->lbound(0); i <= labels->ubound(0); ++i) {
        const QString label = (*labels)(i).toString();
        const double lower = FnAsgStart(label);
        const Cell end = FnAsgEnd(label);
        result(i, 0) = (*labels)(i);
        result(i, 1) = Cell(lower);
        result(i, 2) = end.isText() ? Cell(999) : Cell(end.toDouble() - lower + 1);
    }
}

} // namespace

bool ASGDfn(const CellArray& boundaries, int mode, CellArray& result, const CellArray* labels) {
    try {
        if (mode >= 0 && mode <= 2)
            result = FnAsgLabels(boundaries, mode);
        else if (mode >= 3 && mode <= 5)
            parseLabels(labels, result);
        else if (mode >= 7 && mode <= 9)
            result = FnAsgLabelsP(boundaries, mode - 7);
        return true;
    } catch (const std::exception& e) {
        prompts().ask(QString::fromLatin1(asg_texts::kAsgDfnError) + QString::fromStdString(e.what()),
                      Buttons::Ok, Icon::Critical);
        return false;
    }
}

bool buildAgeGroupVectors(const CellArray& arrAgeDfn, CellArray& VctrYLLAsg, CellArray& VctrYLDAsg,
                          CellArray& VctrPNDAge) {
    const bool yll = ASGDfn(arrAgeDfn, kAsgYll, VctrYLLAsg);
    const bool yld = ASGDfn(arrAgeDfn, kAsgYld, VctrYLDAsg);
    if (arrAgeDfn.rank() == 2 && arrAgeDfn.ubound(1) >= kAsgPnd) {
        VctrPNDAge = CellArray({arrAgeDfn.size(0)});
        for (int i = 0; i < arrAgeDfn.size(0); ++i)
            VctrPNDAge(i) = arrAgeDfn(arrAgeDfn.lbound(0) + i, kAsgPnd);
    }
    return yll && yld;
}

bool buildAgeGroupLabels(StudyContext& context) {
    if (!context.ArrAgeDfn.isArray())
        return false;
    CellArray yll, yld, pnd;
    if (!buildAgeGroupVectors(context.ArrAgeDfn.array(), yll, yld, pnd))
        return false; // ASGDfn has shown why
    context.VctrYLLAsg = Cell(std::move(yll));
    context.VctrYLDAsg = Cell(std::move(yld));
    context.VctrPNDAge = Cell(std::move(pnd));
    return true;
}

} // namespace vesk
