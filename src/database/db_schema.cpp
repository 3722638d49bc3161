#include "database/db_schema.h"

#include <QList>

namespace vesk {

namespace {

// One field of the definition, attribute by attribute. An empty text is an attribute not stated.
struct FieldDef {
    const char* name;
    const char* type;
    const char* size = "";
    const char* dflt = "";
    const char* rule = "";
    const char* text = "";
    const char* required = "False";
    const char* mark = "";
    const char* key = "False";
    const char* relation = "";
    bool nullDefault = false; // the default is Null rather than Empty (RsltYLL.IYLL)
};

struct TableDef {
    const char* name;
    const char* cls;
    QList<FieldDef> fields;
};

// Fields that many tables share: the keys of the data and result tables and their stamps.
const FieldDef kUnitKey{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"};
const FieldDef kYearKey{.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"};
const FieldDef kYearKeyNoDefault{.name = "YEAR", .type = "3", .mark = "True", .key = "True"};
const FieldDef kCauseKey{.name = "COBCd", .type = "10", .size = "5", .mark = "True", .key = "True"};
const FieldDef kSequelaKey{.name = "SqlaCd", .type = "10", .size = "12", .mark = "True", .key = "True"};
const FieldDef kAgeKey{
    .name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"};
const FieldDef kAgeIndexKey{
    .name = "Bai", .type = "2", .dflt = "0", .required = "True", .mark = "True", .key = "True"};
const FieldDef kDisabilityKey{.name = "DAPID", .type = "3", .dflt = "0", .mark = "True", .key = "True"};
const FieldDef kStudyKey{.name = "BDSId", .type = "10", .size = "5", .key = "True"};
const FieldDef kUpdated{.name = "UpdDt", .type = "8", .mark = "False"};
const FieldDef kEstimated{.name = "EstDt", .type = "8", .mark = "False"};
// The measures of the two tables of disability weights, after their keys.
const QList<FieldDef> kAdwMeasures = {{.name = "i", .type = "7", .dflt = "0", .mark = "False"},
                                      {.name = "P", .type = "7", .dflt = "0", .mark = "False"},
                                      {.name = "ago", .type = "6", .mark = "False"},
                                      {.name = "DURN", .type = "6", .dflt = "0", .mark = "False"},
                                      {.name = "agp", .type = "6", .mark = "False"},
                                      kUpdated};

const char* const kGrpRule = ">0 And <=9";

// The 25 tables in the order of creation and of the check.
const QList<TableDef>& definition() {
    static const QList<TableDef> tables = {
        {"_DctBDM",
         "Dct",
         {{.name = "CobCd", .type = "10", .size = "5", .key = "True"},
          {.name = "Disease", .type = "10", .size = "255"},
          {.name = "ClstrCd", .type = "10", .size = "4", .relation = "ClstrCd|_DctBDMClstr|_DCTBDM"},
          {.name = "Sqla", .type = "1"}}},
        {"_DctBDMClstr",
         "Dct",
         {{.name = "ClstrCd", .type = "10 ", .size = "4", .key = "True"},
          {.name = "Cluster", .type = "10 ", .size = "240"},
          {.name = "SGrpCd", .type = "10 ", .size = "240", .relation = "Sgrpcd|_DctBDMSGrps|_DctBDMClstr"}}},
        {"_DctBDMGrps",
         "Dct",
         {{.name = "GrpCd",
           .type = "3",
           .dflt = "0",
           .rule = kGrpRule,
           .text =
               "The Burden groups should be single Digit Integers, you are trying to enter an invalid code "
               "for the group",
           .key = "True"},
          {.name = "Group", .type = "10", .size = "75"}}},
        {"_DctBDMSGrps",
         "Dct",
         {{.name = "SGrpCd", .type = "10", .size = "2", .key = "True"},
          {.name = "Subgroup", .type = "10", .size = "255"},
          {.name = "GrpCd",
           .type = "3",
           .size = "2",
           .rule = kGrpRule,
           .text = "The Burden groups should be single Digit Integers",
           .relation = "Grpcd|_DctBDMGrps|_DCTBDMSGrps"}}},
        {"_DctBDMSqla",
         "Dct",
         {{.name = "SqlaCd", .type = "10", .size = "12"}, {.name = "Sequela", .type = "10", .size = "150"}}},
        {"_DctBDMSyn",
         "Dct",
         {{.name = "COBCd",
           .type = "10",
           .size = "5",
           .required = "True",
           .relation = "bds|_DctBDM|_DctBDMSyn|dbRelationDontEnforce"},
          {.name = "Synonym", .type = "10", .size = "255"}}},
        {"_DctBDS",
         "Dct",
         {kStudyKey,
          {.name = "Year", .type = "3", .dflt = "0", .key = "True"},
          {.name = "BDSTi", .type = "10", .size = "75"},
          {.name = "PAGSch", .type = "10", .size = "5"},
          {.name = "Slct", .type = "1"}}},
        {"_DctBPU",
         "Dct",
         {{.name = "BDSId",
           .type = "10",
           .size = "5",
           .key = "True",
           .relation = "BDSId|_DctBDS|_DctBPU|dbRelationDontEnforce"},
          {.name = "BPUID", .type = "10", .size = "5", .key = "True"},
          {.name = "BPUName", .type = "10", .size = "75"},
          {.name = "Prty", .type = "3", .size = "2", .dflt = "0"},
          {.name = "PAG1Id", .type = "10", .size = "3"}}},
        {"_DctDAP",
         "Dct",
         {{.name = "DAPID", .type = "3", .dflt = "0", .key = "True"},
          {.name = "r", .type = "6", .dflt = "0"},
          {.name = "K", .type = "6", .rule = ">=0 And <=1"},
          {.name = "Beta", .type = "6", .dflt = "0"},
          {.name = "C", .type = "6"}}},
        {"_DctPAG1",
         "Dct",
         {kStudyKey,
          {.name = "PAG1Id", .type = "10", .size = "3", .key = "True"},
          {.name = "PAG1Name", .type = "10", .size = "75"},
          {.name = "PAG2Id", .type = "10", .size = "3"}}},
        {"_DctPAG2",
         "Dct",
         {kStudyKey,
          {.name = "PAG2Id", .type = "10", .size = "3", .key = "True"},
          {.name = "PAG2Name", .type = "10", .size = "75"}}},
        {"_DfnAgeGrps",
         "Dct",
         {{.name = "BDSId",
           .type = "10",
           .size = "5",
           .relation = "Bdsid1|_DctBDS|_DfnAgeGrps|dbRelationDontEnforce"},
          {.name = "YLL", .type = "3"},
          {.name = "YLD", .type = "3"},
          {.name = "PND", .type = "3"}}},
        {"_DfnBPUPAGDscrptrs",
         "Dct",
         {{.name = "PAGSch", .type = "10 ", .size = "5", .key = "True"},
          {.name = "BPU", .type = "10 ", .size = "50"},
          {.name = "PAG1", .type = "10 ", .size = "50"},
          {.name = "PAG2", .type = "10 ", .size = "50"}}},
        {"DatADW", "Dat", QList<FieldDef>{kUnitKey, kYearKeyNoDefault, kCauseKey, kAgeKey} + kAdwMeasures},
        {"DatASDR",
         "Dat",
         {kUnitKey,
          kYearKey,
          kAgeIndexKey,
          {.name = "F", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "M", .type = "7", .mark = "False"},
          {.name = "P", .type = "7", .dflt = "0", .mark = "False"},
          kUpdated}},
        {"DatCSM",
         "Dat",
         {kUnitKey,
          kYearKey,
          kCauseKey,
          kAgeKey,
          {.name = "CSMP", .type = "7", .dflt = "0", .mark = "False"},
          kUpdated}},
        {"DatDmgphyPrmtrs",
         "Dat",
         {kUnitKey,
          kYearKey,
          {.name = "Cdmdl", .type = "10", .size = "50", .mark = "False"},
          {.name = "PGR", .type = "7", .dflt = "0", .required = "True", .mark = "False"},
          {.name = "IMR", .type = "7", .dflt = "0", .mark = "False"}}},
        {"DatPOP",
         "Dat",
         {kUnitKey,
          kYearKey,
          kAgeIndexKey,
          {.name = "M", .type = "4", .mark = "False"},
          {.name = "F", .type = "4", .dflt = "0", .mark = "False"},
          kUpdated}},
        {"RsltDALY",
         "Rslt",
         {kUnitKey,
          kYearKey,
          {.name = "DAPID", .type = "3", .dflt = "0", .mark = "Fasle", .key = "True"},
          kCauseKey,
          kAgeKey,
          {.name = "IDALY", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "PDALY", .type = "7", .dflt = "0", .mark = "False"},
          kEstimated}},
        {"RsltYLD",
         "Rslt",
         {kUnitKey,
          kYearKey,
          kDisabilityKey,
          kCauseKey,
          kSequelaKey,
          kAgeKey,
          {.name = "IYLD", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "PYLD", .type = "7", .dflt = "0", .mark = "False"},
          kEstimated}},
        // EstDt stands first in this table alone.
        {"RsltYLL",
         "Rslt",
         {kEstimated,
          kUnitKey,
          kYearKey,
          kDisabilityKey,
          kCauseKey,
          kAgeKey,
          {.name = "IYLL", .type = "7", .mark = "False", .nullDefault = true},
          {.name = "PYLL", .type = "7", .dflt = "0", .mark = "False"}}},
        {"UserComments",
         "Rslt",
         {{.name = "Cmt_Dt_tm", .type = "8"},
          {.name = "FldName", .type = "10 ", .size = "20"},
          {.name = "FldValue", .type = "10", .size = "50"},
          {.name = "Comment", .type = "12"}}},
        {"DatADWSqla", "Dat",
         QList<FieldDef>{kUnitKey, kYearKeyNoDefault, kCauseKey, kSequelaKey, kAgeKey} + kAdwMeasures},
        // The first field is the study, not the unit; the cause has size 7 here, 5 elsewhere.
        {"DatDwt",
         "Dat",
         {{.name = "BDSId", .type = "10", .size = "5", .mark = "True", .key = "True"},
          kYearKeyNoDefault,
          {.name = "COBCd", .type = "10", .size = "7", .mark = "True", .key = "True"},
          kAgeKey,
          {.name = "Dwt", .type = "6", .dflt = "0", .mark = "False"}}},
        {"_MapBDMSqla",
         "Map",
         {kSequelaKey, {.name = "cobcd", .type = "10", .size = "5", .mark = "True", .key = "True"}}},
    };
    return tables;
}

Cell textOrEmpty(const char* text) {
    return *text ? Cell(QString::fromUtf8(text)) : Cell();
}

} // namespace

CellArray& ArrDBStru() {
    static CellArray array{kDbTableCount, kDbSlotCount, kDbAttributeCount};
    return array;
}

void InitDBStruArr() {
    CellArray& a = ArrDBStru();
    a = CellArray{kDbTableCount, kDbSlotCount, kDbAttributeCount};
    const auto& tables = definition();
    for (int t = 0; t < tables.size(); ++t) {
        const TableDef& table = tables[t];
        a.at({t, 0, AttrName}) = Cell(QString::fromUtf8(table.name));
        a.at({t, 0, AttrType}) = Cell(QString::fromUtf8(table.cls));
        for (int f = 0; f < table.fields.size(); ++f) {
            const FieldDef& d = table.fields[f];
            const int s = f + 1;
            a.at({t, s, AttrName}) = textOrEmpty(d.name);
            a.at({t, s, AttrType}) = textOrEmpty(d.type);
            a.at({t, s, AttrSize}) = textOrEmpty(d.size);
            a.at({t, s, AttrDefault}) = d.nullDefault ? Cell::null() : textOrEmpty(d.dflt);
            a.at({t, s, AttrValidationRule}) = textOrEmpty(d.rule);
            a.at({t, s, AttrValidationText}) = textOrEmpty(d.text);
            a.at({t, s, AttrRequired}) = textOrEmpty(d.required);
            a.at({t, s, AttrAllowZeroLength}) = Cell("False");
            a.at({t, s, AttrReserved}) = textOrEmpty(d.mark);
            a.at({t, s, AttrPrimaryKey}) = textOrEmpty(d.key);
            a.at({t, s, AttrRelation}) = textOrEmpty(d.relation);
        }
    }
}

QString dbAttr(int table, int slot, int attribute) {
    return ArrDBStru().at({table, slot, attribute}).toString();
}

QString dbTableName(int table) {
    return dbAttr(table, 0, AttrName);
}

int dbFieldCount(int table) {
    int n = 0;
    while (n + 1 < kDbSlotCount && !dbAttr(table, n + 1, AttrName).isEmpty())
        ++n;
    return n;
}

int dbTableIndex(const QString& name) {
    const QString wanted = name.trimmed().toUpper();
    for (int t = 0; t < kDbTableCount; ++t)
        if (dbTableName(t).trimmed().toUpper() == wanted)
            return t;
    return -1;
}

} // namespace vesk
