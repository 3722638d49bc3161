#include "study/asg_map.h"

#include "foundation/array_helpers.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "study/asg_labels.h"
#include "study/asg_texts.h"

#include <optional>
#include <vector>

namespace vesk {

namespace {

const Cell kTrue(-1);
const Cell kFalse(0);

// One row of a working list: the label and its index in the list as passed.
struct Entry {
    QString label;
    int index = 0;
    Cell start;
    Cell end;
};

using WorkList = std::vector<Entry>;

// The labels of a list, sorted as text by the program's exchange sort, each with its index before
// sorting.
WorkList sortedWorkList(const CellArray& list) {
    const int n = list.size(0);
    CellArray pairs({n, 2});
    for (int i = 0; i < n; ++i) {
        pairs(i, 0) = list(list.lbound(0) + i);
        pairs(i, 1) = Cell(list.lbound(0) + i);
    }
    FnSortArr(pairs, 0, 1);
    WorkList out;
    for (int i = 0; i < n; ++i) {
        const QString label = pairs(i, 0).toString();
        out.push_back(
            {label, static_cast<int>(pairs(i, 1).toDouble()), Cell(FnAsgStart(label)), FnAsgEnd(label)});
    }
    return out;
}

CellArray notFeasible() {
    CellArray record({4});
    record(kAsgMapFeasible) = kFalse;
    return record;
}

CellArray mapFor(const CellArray& longer) {
    return CellArray(std::vector<Bound>{{longer.lbound(0), longer.ubound(0)}, {0, 2}});
}

void writeMapRow(CellArray& map, const Entry& piece, const Entry& group) {
    map(piece.index, 0) = Cell(piece.label);
    map(piece.index, 1) = Cell(group.label);
    map(piece.index, 2) = Cell(group.index);
}

CellArray feasible(int firstSide, CellArray&& map) {
    CellArray record({4});
    record(kAsgMapFeasible) = kTrue;
    record(kAsgMapFirstSide) = Cell(firstSide);
    record(kAsgMapSecondSide) = Cell(1 - firstSide);
    record(kAsgMapRows) = Cell(std::move(map));
    return record;
}

bool isList(const Cell& c) {
    return c.isArray() && c.array().rank() >= 1;
}

// Whether two lists are as long as each other; std::nullopt when either is no list.
std::optional<bool> sameLengthLists(const Cell& first, const Cell& second) {
    if (!isList(first) || !isList(second))
        return std::nullopt;
    return first.array().ubound(0) == second.array().ubound(0);
}

// Neighbours of a sorted list with the same lower age, or the same end; with `sameLetter`, only
// neighbours whose first letters agree (case-blind) count.
bool hasDuplicates(const WorkList& list, bool sameLetter) {
    for (std::size_t k = 0; k + 1 < list.size(); ++k) {
        const Entry& a = list[k];
        const Entry& b = list[k + 1];
        if (sameLetter && a.label.left(1).compare(b.label.left(1), Qt::CaseInsensitive) != 0)
            continue;
        if (cellEquals(a.start, b.start) || cellEquals(a.end, b.end))
            return true;
    }
    return false;
}

} // namespace

CellArray FnAsgMapEq(const Cell& first, const Cell& second) {
    if (sameLengthLists(first, second) != true)
        return notFeasible();
    WorkList one = sortedWorkList(first.array());
    WorkList two = sortedWorkList(second.array());
    CellArray map = mapFor(second.array());
    while (!one.empty()) {
        const Entry& row = one.front();
        auto partner = two.begin();
        for (; partner != two.end(); ++partner)
            if (cellEquals(partner->start, row.start) && cellEquals(partner->end, row.end))
                break;
        if (partner == two.end())
            return notFeasible();
        writeMapRow(map, *partner, row);
        two.erase(partner);
        one.erase(one.begin());
    }
    if (!two.empty())
        return notFeasible();
    return feasible(0, std::move(map));
}

namespace {

enum class LastEvent { Nothing, Completed, Piece, TooLong };

// Steps 5 to 7 of the unequal map: build the groups of S from pieces of L.
bool buildUnequalMap(WorkList& shorter, WorkList& longer, CellArray& map) {
    LastEvent last = LastEvent::Nothing;
    std::size_t k = 0; // the row of S in hand
    while (!shorter.empty() && !longer.empty()) {
        if (k >= shorter.size())
            return true; // passed the end of S over groups that met no piece
        const Entry s = shorter[k];
        Cell need = s.start;
        bool completed = false;
        bool rescan = true;
        while (rescan && !completed) {
            rescan = false;
            for (auto w = longer.begin(); w != longer.end(); ++w) {
                if (!cellEquals(w->start, need))
                    continue;
                if (cellEquals(w->end, s.end)) {
                    writeMapRow(map, *w, s);
                    longer.erase(w);
                    shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(k));
                    last = LastEvent::Completed;
                    completed = true;
                    break;
                }
                if (cellGreater(s.end, w->end)) {
                    writeMapRow(map, *w, s);
                    need = w->end;
                    longer.erase(w);
                    last = LastEvent::Piece;
                    rescan = true;
                    break;
                }
                last = LastEvent::TooLong;
            }
        }
        if (completed) {
            k = 0;
            continue;
        }
        if (last != LastEvent::Completed)
            return false;
        ++k;
    }
    return shorter.empty() && longer.empty();
}

} // namespace

CellArray FnAsgMapUneq(const Cell& first, const Cell& second) {
    if (sameLengthLists(first, second) != false)
        return notFeasible();
    const CellArray& a = first.array();
    const CellArray& b = second.array();
    const bool firstShorter = a.size(0) < b.size(0);
    const CellArray& s = firstShorter ? a : b;
    const CellArray& l = firstShorter ? b : a;
    WorkList shorter = sortedWorkList(s);
    WorkList longer = sortedWorkList(l);
    if (hasDuplicates(shorter, true) || hasDuplicates(longer, false))
        return notFeasible();
    CellArray map = mapFor(l);
    if (!buildUnequalMap(shorter, longer, map))
        return notFeasible();
    return feasible(firstShorter ? 0 : 1, std::move(map));
}

CellArray FnAsgMap(const Cell& first, const Cell& second) {
    if (sameLengthLists(first, second) == true)
        return FnAsgMapEq(first, second);
    return FnAsgMapUneq(first, second);
}

bool asgMapFeasible(const CellArray& record) {
    return record.rank() == 1 && record.size(0) > 0 && record(kAsgMapFeasible).toDouble() != 0;
}

bool FnChkAsgFeasible(const Cell& yldLabels, const Cell& yllLabels) {
    if (asgMapFeasible(FnAsgMap(yldLabels, yllLabels)))
        return true;
    prompts().ask(QString::fromLatin1(asg_texts::kNotFeasible), Buttons::Ok, Icon::Warning,
                  QString::fromLatin1(asg_texts::kFeasibilityTitle));
    return false;
}

bool FnAsgRowRuleHolds(const Cell& yll, const Cell& yld, const Cell& pnd) {
    auto same = [](const Cell& x, const Cell& y) { return isBlankCell(y) || x.toDouble() == y.toDouble(); };
    if (!isBlankCell(yll))
        return same(yll, yld) && same(yll, pnd);
    return isBlankCell(yld) || same(yld, pnd);
}

bool FnChkAsgRowRule(const Cell& yll, const Cell& yld, const Cell& pnd) {
    if (FnAsgRowRuleHolds(yll, yld, pnd))
        return true;
    prompts().ask(QString::fromLatin1(asg_texts::kRowRule), Buttons::Ok, Icon::Warning);
    return false;
}

} // namespace vesk
