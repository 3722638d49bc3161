// The batch builder of single-year tables on a study file: built once, left alone while up to date,
// built again when its source is newer, and the short series and the failures said.

#include "database/db_connection.h"
#include "demography/single_year_store.h"
#include "platform/prompts.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vesk;

namespace {

class SingleYearStore : public testing::Test {
protected:
    ScriptedPrompts prompts_;
    ScopedPromptService scope_{&prompts_};
    QTemporaryDir dir_;
    std::shared_ptr<DbConnection> db_;
    SpraguePanels panels_ = *ProcLoadPanels(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"));
    CellArray units_{CellArray({2})};
    CellArray breaks_{CellArray({7})};

    void SetUp() override {
        QString error;
        db_ = DbConnection::create(dir_.filePath("s.vdb"), &error);
        ASSERT_TRUE(db_) << error.toStdString();
        ASSERT_TRUE(db_->exec("CREATE TABLE POP (BPUID TEXT, YEAR INTEGER, M DOUBLE, F DOUBLE, upddt TEXT)"));
        ASSERT_TRUE(db_->exec("CREATE TABLE POPSNGYLR (BPUID TEXT, YEAR INTEGER, Bai INTEGER, m DOUBLE, f DOUBLE, "
                              "ESTDT TEXT)"));
        units_(0) = Cell("007");
        units_(1) = Cell("Ω;2");
        for (int i = 0; i < 7; ++i)
            breaks_(i) = Cell(5 * i);
    }
    void addRows(const QString& unit, int rows, const QString& date) {
        const double m[] = {500, 480, 470, 460, 450, 440, 2000};
        for (int i = 0; i < rows; ++i)
            ASSERT_TRUE(db_->exec("INSERT INTO POP VALUES (?, 2020, ?, ?, ?)", {unit, m[i], m[i] / 2, date}));
    }
    int count(const QString& unit) {
        auto q = db_->query("SELECT count(*) FROM POPSNGYLR WHERE BPUID = ?", {unit});
        return q && q->next() ? q->value(0).toInt() : -1;
    }
    QVariant value(const QString& sql) {
        auto q = db_->query(sql);
        return q && q->next() ? q->value(0) : QVariant();
    }
};

TEST_F(SingleYearStore, BuildsEachUnitOnceAndLeavesItWhileUpToDate) {
    addRows("007", 7, "2020-01-01");
    ASSERT_TRUE(BuildSnglYr1(*db_, units_, "POP", "POPSNGYLR", breaks_, &panels_));
    EXPECT_EQ(count("007"), 31);
    EXPECT_EQ(count("Ω;2"), 0); // no source rows: nothing
    EXPECT_EQ(value("SELECT max(ESTDT) FROM POPSNGYLR").toString(), QStringLiteral("2020-01-01"));
    EXPECT_EQ(value("SELECT m FROM POPSNGYLR WHERE Bai = 30").toDouble(), 2000.0);
    EXPECT_EQ(value("SELECT f FROM POPSNGYLR WHERE Bai = 30").toDouble(), 1000.0);
    // Equal dates: nothing is done, a value changed by hand stays.
    ASSERT_TRUE(db_->exec("UPDATE POPSNGYLR SET m = -1 WHERE Bai = 0"));
    ASSERT_TRUE(BuildSnglYr1(*db_, units_, "POP", "POPSNGYLR", breaks_, &panels_));
    EXPECT_EQ(value("SELECT m FROM POPSNGYLR WHERE Bai = 0").toDouble(), -1.0);
    EXPECT_TRUE(prompts_.shown().isEmpty());
}

TEST_F(SingleYearStore, NewerSourceIsBuiltAgainShowingWhatItCollects) {
    addRows("007", 7, "2020-01-01");
    ASSERT_TRUE(BuildSnglYr1(*db_, units_, "POP", "POPSNGYLR", breaks_, &panels_));
    ASSERT_TRUE(db_->exec("UPDATE POP SET upddt = '2021-03-04' WHERE M = 480"));
    ASSERT_TRUE(BuildSnglYr1(*db_, units_, "POP", "POPSNGYLR", breaks_, &panels_));
    EXPECT_EQ(count("007"), 31);
    EXPECT_EQ(value("SELECT min(ESTDT) FROM POPSNGYLR").toString(), QStringLiteral("2021-03-04"));
    EXPECT_EQ(prompts_.messages(), QStringList({"250", "240", "235", "230", "225", "220", "1000", "7"}));
}

TEST_F(SingleYearStore, FewerThanSixRowsSaySoAndLeaveNoRows) {
    addRows("007", 5, "2020-01-01");
    ASSERT_TRUE(BuildSnglYr1(*db_, units_, "POP", "POPSNGYLR", breaks_, &panels_));
    EXPECT_EQ(count("007"), 0);
    EXPECT_EQ(prompts_.messages(), QStringList{"les than 5 rows"});
}

TEST_F(SingleYearStore, MissingTargetStopsWithTheEnginesWords) {
    addRows("007", 7, "2020-01-01");
    EXPECT_FALSE(BuildSnglYr1(*db_, units_, "POP", "NOPE", breaks_, &panels_));
    ASSERT_EQ(prompts_.messages().size(), 1);
    EXPECT_TRUE(prompts_.messages()[0].contains("NOPE")) << prompts_.messages()[0].toStdString();
    EXPECT_FALSE(BuildSnglYr1(*db_, units_, "POP; DROP TABLE POP", "POPSNGYLR", breaks_, &panels_));
    EXPECT_TRUE(value("SELECT count(*) FROM POP").isValid());
}

} // namespace
