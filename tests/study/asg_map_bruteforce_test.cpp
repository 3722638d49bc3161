// The map functions on every pair of a set of realistic age definitions, against an independent
// test by interval unions: each group of the shorter set must be exactly the union of groups of the
// longer set of the same sex, every group of the longer set lying in exactly one; sets of equal size
// must hold the same groups.

#include "asg_test_support.h"
#include "study/asg_labels.h"
#include "study/asg_map.h"

#include <QRegularExpression>
#include <algorithm>
#include <limits>
#include <map>
#include <optional>

using namespace vesk;
using vesk::test::boundaryColumn;

namespace {

constexpr double kOpen = std::numeric_limits<double>::infinity();

// A group read from its label with a regular expression of its own: letter, lower age, and an
// inclusive last age or "w".
struct Group {
    QChar sex;
    double lo = 0;
    double hi = 0; // exclusive
};

Group parse(const QString& label) {
    static const QRegularExpression re(QStringLiteral("^([MFP])(\\d+)(?:-(\\d+|w))?$"));
    const auto m = re.match(label);
    EXPECT_TRUE(m.hasMatch()) << label.toStdString();
    Group g;
    g.sex = m.captured(1).at(0);
    g.lo = m.captured(2).toDouble();
    if (m.captured(3).isEmpty())
        g.hi = g.lo + 1;
    else if (m.captured(3) == QLatin1String("w"))
        g.hi = kOpen;
    else
        g.hi = m.captured(3).toDouble() + 1;
    return g;
}

// For each group of `longer`, the index in `shorter` of the group that holds it, or std::nullopt
// when the two do not nest exactly.
std::optional<std::vector<int>> bruteForce(const QStringList& shorter, const QStringList& longer) {
    std::vector<Group> s, l;
    for (const auto& x : shorter)
        s.push_back(parse(x));
    for (const auto& x : longer)
        l.push_back(parse(x));
    std::vector<int> owner(l.size(), -1);
    for (std::size_t j = 0; j < l.size(); ++j) {
        for (std::size_t i = 0; i < s.size(); ++i) {
            if (s[i].sex == l[j].sex && l[j].lo >= s[i].lo && l[j].hi <= s[i].hi) {
                if (owner[j] >= 0)
                    return std::nullopt;
                owner[j] = static_cast<int>(i);
            }
        }
        if (owner[j] < 0)
            return std::nullopt;
    }
    // The pieces of each group must cover it without gap or overlap.
    for (std::size_t i = 0; i < s.size(); ++i) {
        std::vector<std::pair<double, double>> pieces;
        for (std::size_t j = 0; j < l.size(); ++j)
            if (owner[j] == static_cast<int>(i))
                pieces.push_back({l[j].lo, l[j].hi});
        std::sort(pieces.begin(), pieces.end());
        double at = s[i].lo;
        for (const auto& p : pieces) {
            if (p.first != at)
                return std::nullopt;
            at = p.second;
        }
        if (at != s[i].hi)
            return std::nullopt;
    }
    return owner;
}

struct Definition {
    const char* name;
    std::vector<double> ages;
};

std::vector<double> ladder(std::vector<double> start, double from, double to) {
    for (double a = from; a <= to; a += 5)
        start.push_back(a);
    return start;
}

const std::vector<Definition>& definitions() {
    static const std::vector<Definition> defs{
        {"GBD five groups", {0, 5, 15, 45, 60}},
        {"seven groups", {0, 5, 15, 30, 45, 60, 70}},
        {"five-year ladder to 85", ladder({0}, 5, 85)},
        {"ladder 0, 1-4 to 85", ladder({0, 1}, 5, 85)},
        {"ladder 0, 1, 2-4 to 85", ladder({0, 1, 2}, 5, 85)},
        {"ladder 0, 1-4 to 80", ladder({0, 1}, 5, 80)},
        {"ladder 0, 1-4 to 60", ladder({0, 1}, 5, 60)},
        {"five groups with infants", {0, 1, 5, 15, 45, 60}},
        {"GBD eight with infants", {0, 1, 5, 15, 30, 45, 60, 70, 80}},
        {"ten-year ladder", {0, 10, 20, 30, 40, 50, 60, 70, 80}},
        {"mixed ladder", {0, 5, 10, 15, 20, 30, 40, 50, 60, 70}},
        {"odd-decade ladder", {0, 1, 5, 15, 25, 35, 45, 55, 65, 75}},
        {"broad groups", {0, 15, 45, 60}},
        {"seven with elderly split", {0, 1, 5, 15, 45, 60, 70, 80}},
        {"whole life", {0}},
    };
    return defs;
}

QStringList labels(const Definition& d) {
    return vesk::test::texts(FnAsgLabels(boundaryColumn(d.ages), 0));
}

} // namespace

TEST(AsgMapBruteForce, EveryPairAgreesWithIntervalUnions) {
    vesk::ScriptedPrompts quiet;
    vesk::ScopedPromptService scope(&quiet);
    int feasiblePairs = 0, pairs = 0;
    for (const Definition& a : definitions()) {
        for (const Definition& b : definitions()) {
            SCOPED_TRACE(std::string(a.name) + " / " + b.name);
            const QStringList first = labels(a), second = labels(b);
            const CellArray r =
                FnAsgMap(Cell(vesk::test::labelArray(first)), Cell(vesk::test::labelArray(second)));
            ++pairs;
            std::optional<std::vector<int>> expected;
            const bool firstShorter = first.size() <= second.size();
            const QStringList& s = firstShorter ? first : second;
            const QStringList& l = firstShorter ? second : first;
            if (first.size() == second.size())
                expected = first == second ? bruteForce(s, l) : std::nullopt;
            else
                expected = bruteForce(s, l);
            ASSERT_EQ(asgMapFeasible(r), expected.has_value());
            if (!expected)
                continue;
            ++feasiblePairs;
            EXPECT_EQ(r(kAsgMapFirstSide), Cell(firstShorter ? 0 : 1));
            EXPECT_EQ(r(kAsgMapSecondSide), Cell(firstShorter ? 1 : 0));
            const CellArray& m = r(kAsgMapRows).array();
            ASSERT_EQ(m.size(0), l.size());
            for (int j = 0; j < l.size(); ++j) {
                EXPECT_EQ(m(j, 0), Cell(l[j]));
                EXPECT_EQ(m(j, 1), Cell(s[(*expected)[j]]));
                EXPECT_EQ(m(j, 2), Cell((*expected)[j]));
            }
        }
    }
    EXPECT_EQ(pairs, 225);
    // Both kinds are exercised: the ladders nest into the broad groups, and many pairs do not nest.
    EXPECT_GT(feasiblePairs, 40);
    EXPECT_LT(feasiblePairs, pairs - 40);
}
