// The schema definition: every table, field and attribute where it must stand.

#include "database/db_schema.h"
#include "qt_printers.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

class SchemaTest : public ::testing::Test {
protected:
    void SetUp() override { InitDBStruArr(); }

    static int slotOf(int table, const QString& field) {
        for (int s = 1; s <= dbFieldCount(table); ++s)
            if (dbAttr(table, s, AttrName) == field)
                return s;
        return -1;
    }
    static QString attr(const QString& table, const QString& field, int a) {
        const int t = dbTableIndex(table);
        const int s = slotOf(t, field);
        EXPECT_GE(s, 1) << table.toStdString() << "." << field.toStdString();
        return s < 1 ? QString() : dbAttr(t, s, a);
    }
    static QStringList fields(const QString& table) {
        QStringList out;
        const int t = dbTableIndex(table);
        for (int s = 1; s <= dbFieldCount(t); ++s)
            out << dbAttr(t, s, AttrName);
        return out;
    }
};

TEST_F(SchemaTest, ArrayHasTheBoundsOfTheDefinition) {
    EXPECT_EQ(ArrDBStru().rank(), 3);
    EXPECT_EQ(ArrDBStru().ubound(0), 24);
    EXPECT_EQ(ArrDBStru().ubound(1), 13);
    EXPECT_EQ(ArrDBStru().ubound(2), 10);
}

TEST_F(SchemaTest, TwentyFiveTablesInTheirOrderWithTheirClasses) {
    const QStringList names = {"_DctBDM",
                               "_DctBDMClstr",
                               "_DctBDMGrps",
                               "_DctBDMSGrps",
                               "_DctBDMSqla",
                               "_DctBDMSyn",
                               "_DctBDS",
                               "_DctBPU",
                               "_DctDAP",
                               "_DctPAG1",
                               "_DctPAG2",
                               "_DfnAgeGrps",
                               "_DfnBPUPAGDscrptrs",
                               "DatADW",
                               "DatASDR",
                               "DatCSM",
                               "DatDmgphyPrmtrs",
                               "DatPOP",
                               "RsltDALY",
                               "RsltYLD",
                               "RsltYLL",
                               "UserComments",
                               "DatADWSqla",
                               "DatDwt",
                               "_MapBDMSqla"};
    ASSERT_EQ(names.size(), kDbTableCount);
    for (int t = 0; t < kDbTableCount; ++t)
        EXPECT_EQ(dbTableName(t), names[t]) << t;
    EXPECT_EQ(dbAttr(0, 0, AttrType), "Dct");
    EXPECT_EQ(dbAttr(dbTableIndex("DatPOP"), 0, AttrType), "Dat");
    EXPECT_EQ(dbAttr(dbTableIndex("RsltYLL"), 0, AttrType), "Rslt");
    EXPECT_EQ(dbAttr(dbTableIndex("_MapBDMSqla"), 0, AttrType), "Map");
}

TEST_F(SchemaTest, FieldsOfEveryTableInOrder) {
    EXPECT_EQ(fields("_DctBDM"), QStringList({"CobCd", "Disease", "ClstrCd", "Sqla"}));
    EXPECT_EQ(fields("_DctBDS"), QStringList({"BDSId", "Year", "BDSTi", "PAGSch", "Slct"}));
    EXPECT_EQ(fields("DatADW"),
              QStringList({"BPUID", "YEAR", "COBCd", "ASG", "i", "P", "ago", "DURN", "agp", "UpdDt"}));
    EXPECT_EQ(fields("DatADWSqla"), QStringList({"BPUID", "YEAR", "COBCd", "SqlaCd", "ASG", "i", "P", "ago",
                                                 "DURN", "agp", "UpdDt"}));
    EXPECT_EQ(fields("RsltDALY"),
              QStringList({"BPUID", "YEAR", "DAPID", "COBCd", "ASG", "IDALY", "PDALY", "EstDt"}));
    EXPECT_EQ(fields("RsltYLD"),
              QStringList({"BPUID", "YEAR", "DAPID", "COBCd", "SqlaCd", "ASG", "IYLD", "PYLD", "EstDt"}));
    EXPECT_EQ(fields("UserComments"), QStringList({"Cmt_Dt_tm", "FldName", "FldValue", "Comment"}));
    EXPECT_EQ(fields("_MapBDMSqla"), QStringList({"SqlaCd", "cobcd"}));
}

TEST_F(SchemaTest, RsltYLLHasEstDtFirstUnlikeTheOtherResults) {
    EXPECT_EQ(fields("RsltYLL"),
              QStringList({"EstDt", "BPUID", "YEAR", "DAPID", "COBCd", "ASG", "IYLL", "PYLL"}));
    EXPECT_EQ(fields("RsltDALY").last(), "EstDt");
    EXPECT_EQ(fields("RsltYLD").last(), "EstDt");
}

TEST_F(SchemaTest, SizesAsDefinedIncludingTheOddOnes) {
    EXPECT_EQ(attr("DatDwt", "COBCd", AttrSize), "7");
    EXPECT_EQ(attr("DatADW", "COBCd", AttrSize), "5");
    EXPECT_EQ(attr("_DctBDMClstr", "SGrpCd", AttrSize), "240");
    EXPECT_EQ(attr("_DctBDMSGrps", "SGrpCd", AttrSize), "2");
    EXPECT_EQ(attr("_DctBDMSGrps", "GrpCd", AttrSize), "2");
    EXPECT_EQ(attr("_DctBPU", "Prty", AttrSize), "2");
    EXPECT_EQ(attr("_DctBDMGrps", "GrpCd", AttrSize), "");
    EXPECT_EQ(attr("UserComments", "Comment", AttrSize), "");
}

TEST_F(SchemaTest, TypesAsCodesSomeWithATrailingBlank) {
    EXPECT_EQ(attr("_DctBDM", "Sqla", AttrType), "1");
    EXPECT_EQ(attr("DatASDR", "Bai", AttrType), "2");
    EXPECT_EQ(attr("_DctBDS", "Year", AttrType), "3");
    EXPECT_EQ(attr("DatPOP", "M", AttrType), "4");
    EXPECT_EQ(attr("_DctDAP", "r", AttrType), "6");
    EXPECT_EQ(attr("DatADW", "i", AttrType), "7");
    EXPECT_EQ(attr("RsltYLL", "EstDt", AttrType), "8");
    EXPECT_EQ(attr("_DctBDM", "CobCd", AttrType), "10");
    EXPECT_EQ(attr("UserComments", "Comment", AttrType), "12");
    EXPECT_EQ(attr("_DfnBPUPAGDscrptrs", "BPU", AttrType), "10 ");
}

TEST_F(SchemaTest, DefaultsRulesAndTexts) {
    EXPECT_EQ(attr("_DctBDMGrps", "GrpCd", AttrDefault), "0");
    EXPECT_EQ(attr("_DctBDMGrps", "GrpCd", AttrValidationRule), ">0 And <=9");
    EXPECT_EQ(
        attr("_DctBDMGrps", "GrpCd", AttrValidationText),
        "The Burden groups should be single Digit Integers, you are trying to enter an invalid code for the "
        "group");
    EXPECT_EQ(attr("_DctBDMSGrps", "GrpCd", AttrValidationRule), ">0 And <=9");
    EXPECT_EQ(attr("_DctBDMSGrps", "GrpCd", AttrValidationText),
              "The Burden groups should be single Digit Integers");
    EXPECT_EQ(attr("_DctBDMSGrps", "GrpCd", AttrDefault), "");
    EXPECT_EQ(attr("_DctDAP", "K", AttrValidationRule), ">=0 And <=1");
    EXPECT_EQ(attr("_DctDAP", "K", AttrValidationText), "");
    EXPECT_EQ(attr("_DctDAP", "C", AttrDefault), "");
    EXPECT_EQ(attr("DatASDR", "M", AttrDefault), "");
    EXPECT_EQ(attr("DatPOP", "F", AttrDefault), "0");
    // The one default that is Null rather than Empty; both read as not stated.
    const int t = dbTableIndex("RsltYLL");
    EXPECT_TRUE(ArrDBStru().at({t, 7, AttrDefault}).isNull());
    EXPECT_TRUE(ArrDBStru().at({t, 8, AttrDefault}).isText());
    EXPECT_TRUE(ArrDBStru().at({0, 1, AttrDefault}).isEmpty());
}

TEST_F(SchemaTest, RequiredZeroLengthAndKeys) {
    EXPECT_EQ(attr("_DctBDMSyn", "COBCd", AttrRequired), "True");
    EXPECT_EQ(attr("DatASDR", "Bai", AttrRequired), "True");
    EXPECT_EQ(attr("DatDmgphyPrmtrs", "PGR", AttrRequired), "True");
    EXPECT_EQ(attr("DatDmgphyPrmtrs", "IMR", AttrRequired), "False");
    for (int t = 0; t < kDbTableCount; ++t)
        for (int s = 1; s <= dbFieldCount(t); ++s)
            EXPECT_EQ(dbAttr(t, s, AttrAllowZeroLength), "False");
    EXPECT_EQ(attr("_DctBDS", "BDSId", AttrPrimaryKey), "True");
    EXPECT_EQ(attr("_DctBDS", "Year", AttrPrimaryKey), "True");
    EXPECT_EQ(attr("_DctBDS", "BDSTi", AttrPrimaryKey), "False");
    for (const char* none : {"_DctBDMSqla", "_DctBDMSyn", "_DfnAgeGrps", "UserComments"}) {
        const int t = dbTableIndex(none);
        for (int s = 1; s <= dbFieldCount(t); ++s)
            EXPECT_NE(dbAttr(t, s, AttrPrimaryKey), "True") << none;
    }
}

TEST_F(SchemaTest, RsltDALYDapIdCarriesTheFasleMark) {
    EXPECT_EQ(attr("RsltDALY", "DAPID", AttrReserved), "Fasle");
    EXPECT_EQ(attr("RsltYLD", "DAPID", AttrReserved), "True");
    // The mark changes nothing: the field is a key member with its default like its neighbours.
    EXPECT_EQ(attr("RsltDALY", "DAPID", AttrPrimaryKey), "True");
    EXPECT_EQ(attr("RsltDALY", "DAPID", AttrDefault), "0");
}

TEST_F(SchemaTest, SixRelationTexts) {
    EXPECT_EQ(attr("_DctBDM", "ClstrCd", AttrRelation), "ClstrCd|_DctBDMClstr|_DCTBDM");
    EXPECT_EQ(attr("_DctBDMClstr", "SGrpCd", AttrRelation), "Sgrpcd|_DctBDMSGrps|_DctBDMClstr");
    EXPECT_EQ(attr("_DctBDMSGrps", "GrpCd", AttrRelation), "Grpcd|_DctBDMGrps|_DCTBDMSGrps");
    EXPECT_EQ(attr("_DctBDMSyn", "COBCd", AttrRelation), "bds|_DctBDM|_DctBDMSyn|dbRelationDontEnforce");
    EXPECT_EQ(attr("_DctBPU", "BDSId", AttrRelation), "BDSId|_DctBDS|_DctBPU|dbRelationDontEnforce");
    EXPECT_EQ(attr("_DfnAgeGrps", "BDSId", AttrRelation), "Bdsid1|_DctBDS|_DfnAgeGrps|dbRelationDontEnforce");
    int count = 0;
    for (int t = 0; t < kDbTableCount; ++t)
        for (int s = 1; s <= dbFieldCount(t); ++s)
            count += dbAttr(t, s, AttrRelation).isEmpty() ? 0 : 1;
    EXPECT_EQ(count, 6);
}

TEST_F(SchemaTest, InitRewritesEverything) {
    ArrDBStru().at({0, 1, AttrName}) = Cell("Changed");
    ArrDBStru().at({0, 13, AttrName}) = Cell("Stray");
    InitDBStruArr();
    EXPECT_EQ(dbAttr(0, 1, AttrName), "CobCd");
    EXPECT_EQ(dbAttr(0, 13, AttrName), "");
}

TEST_F(SchemaTest, TableNamesMatchCaseBlind) {
    EXPECT_EQ(dbTableIndex("_DCTBDM"), 0);
    EXPECT_EQ(dbTableIndex(" _dctbdmsgrps "), 3);
    EXPECT_EQ(dbTableIndex("NoSuchTable"), -1);
}

} // namespace
