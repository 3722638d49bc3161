// Validation rules to CHECK expressions and back, and the reading of stored CREATE TABLE text.

#include "database/db_structure.h"
#include "database/ddl_parser.h"
#include "database/validation_rule.h"
#include "qt_printers.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

QString roundTrip(const QString& rule, const QString& field) {
    const auto check = ruleToCheck(rule, field);
    EXPECT_TRUE(check.has_value()) << rule.toStdString();
    return checkToRule(sql::tokenize(check.value_or(QString()), sql::Dialect::Sqlite), field);
}

TEST(ValidationRule, ComparisonsWithoutALeftSideTakeTheField) {
    EXPECT_EQ(ruleToCheck(">0 And <=9", "GrpCd").value(), "\"GrpCd\" > 0 AND \"GrpCd\" <= 9");
    EXPECT_EQ(ruleToCheck(">=0 And <=1", "K").value(), "\"K\" >= 0 AND \"K\" <= 1");
}

TEST(ValidationRule, OtherFormsOfTheRuleLanguage) {
    EXPECT_EQ(ruleToCheck("Between 1 And 9", "F").value(), "\"F\" BETWEEN 1 AND 9");
    EXPECT_EQ(ruleToCheck("Is Not Null", "F").value(), "\"F\" IS NOT NULL");
    EXPECT_EQ(ruleToCheck("In (\"M\",\"F\")", "S").value(), "\"S\" IN ('M', 'F')");
    EXPECT_EQ(ruleToCheck("Like \"A*\"", "S").value(), "\"S\" LIKE 'A%'");
    EXPECT_EQ(ruleToCheck("<>0 Or Is Null", "F").value(), "\"F\" <> 0 OR \"F\" IS NULL");
    EXPECT_EQ(ruleToCheck("[F]>=[G]", "F").value(), "\"F\" >= \"G\"");
}

TEST(ValidationRule, UnreadableRulesAreRefusedWithAReason) {
    QString error;
    EXPECT_FALSE(ruleToCheck("Len([F])>2", "F", &error).has_value());
    EXPECT_TRUE(error.contains("Len")) << error.toStdString();
    EXPECT_FALSE(ruleToCheck("\"open", "F", &error).has_value());
    EXPECT_FALSE(ruleToCheck("  ", "F", &error).has_value());
}

TEST(ValidationRule, RulesComeBackAsWritten) {
    for (const char* rule : {">0 And <=9", ">=0 And <=1", "Between 1 And 9", "Is Not Null", "<>0 Or Is Null",
                             "Like \"A*\"", "Not In (1, 2)"})
        EXPECT_EQ(roundTrip(rule, "GrpCd"), rule);
}

TEST(ValidationRule, HandWrittenChecksReadInTheRuleLanguage) {
    auto rule = [](const char* sqlText, const char* field) {
        return checkToRule(sql::tokenize(sqlText, sql::Dialect::Sqlite), field);
    };
    EXPECT_EQ(rule("grpcd > 0 and GRPCD <= 9", "GrpCd"), ">0 And <=9");
    EXPECT_EQ(rule("GrpCd>0", "GrpCd"), ">0");
    EXPECT_EQ(rule("GrpCd != 3", "GrpCd"), "<>3");
    EXPECT_EQ(rule("GrpCd NOT IN (1,2)", "GrpCd"), "Not In (1, 2)");
}

TEST(DdlParser, ColumnsWithTheirChecksAndNames) {
    const QString ddl =
        "CREATE TABLE \"T\" (\n"
        "  \"A\" VARCHAR(5) COLLATE NOCASE NOT NULL DEFAULT 'x' CONSTRAINT \"no, blanks\" CHECK (\"A\" <> "
        "''),\n"
        "  B SMALLINT CHECK (B > 0 AND (B < 9 OR B = 11)) CONSTRAINT [named] CHECK (B <> 5), -- a comment\n"
        "  \"Check\" INTEGER /* quoted keyword as a name */,\n"
        "  CONSTRAINT \"NumIndex\" PRIMARY KEY (\"A\", B),\n"
        "  CHECK (B < 100)\n"
        ")";
    const QList<ColumnDdl> cols = parseCreateTable(ddl);
    ASSERT_EQ(cols.size(), 3);
    EXPECT_EQ(cols[0].name, "A");
    ASSERT_EQ(cols[0].checks.size(), 1);
    EXPECT_EQ(cols[0].checks[0].name, "no, blanks");
    EXPECT_EQ(cols[1].name, "B");
    ASSERT_EQ(cols[1].checks.size(), 2);
    EXPECT_EQ(cols[1].checks[0].name, "");
    EXPECT_EQ(cols[1].checks[0].expression.size(), 13);
    EXPECT_EQ(cols[1].checks[1].name, "named");
    EXPECT_EQ(cols[2].name, "Check");
    EXPECT_TRUE(cols[2].checks.isEmpty());
}

TEST(DdlParser, UnreadableTextGivesNoColumns) {
    EXPECT_TRUE(parseCreateTable("CREATE TABLE T (A INTEGER").isEmpty());
    EXPECT_TRUE(parseCreateTable("CREATE TABLE T (A 'unclosed)").isEmpty());
}

TEST(DeclaredTypes, CodesAndSizesAsTheOldEngineGaveThem) {
    auto read = [](const char* declared) {
        QString code, size;
        typeFromDeclared(declared, &code, &size);
        return code + u'/' + size;
    };
    EXPECT_EQ(read("VARCHAR(5)"), "10/5");
    EXPECT_EQ(read("varchar ( 240 )"), "10/240");
    EXPECT_EQ(read("SMALLINT"), "3/2");
    EXPECT_EQ(read("BYTE"), "2/1");
    EXPECT_EQ(read("LONG"), "4/4");
    EXPECT_EQ(read("SINGLE"), "6/4");
    EXPECT_EQ(read("DOUBLE"), "7/8");
    EXPECT_EQ(read("DATETIME"), "8/8");
    EXPECT_EQ(read("BOOLEAN"), "1/1");
    EXPECT_EQ(read("LONGTEXT"), "12/0");
    EXPECT_EQ(read("TEXT"), "10/255");
    EXPECT_EQ(read("BLOB"), "BLOB/");
    EXPECT_EQ(read(""), "/");
}

} // namespace
