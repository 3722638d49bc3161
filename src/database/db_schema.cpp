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
         {{.name = "BDSId", .type = "10", .size = "5", .key = "True"},
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
         {{.name = "BDSId", .type = "10", .size = "5", .key = "True"},
          {.name = "PAG1Id", .type = "10", .size = "3", .key = "True"},
          {.name = "PAG1Name", .type = "10", .size = "75"},
          {.name = "PAG2Id", .type = "10", .size = "3"}}},
        {"_DctPAG2",
         "Dct",
         {{.name = "BDSId", .type = "10", .size = "5", .key = "True"},
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
        {"DatADW",
         "Dat",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .mark = "True", .key = "True"},
          {.name = "COBCd", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"},
          {.name = "i", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "P", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "ago", .type = "6", .mark = "False"},
          {.name = "DURN", .type = "6", .dflt = "0", .mark = "False"},
          {.name = "agp", .type = "6", .mark = "False"},
          {.name = "UpdDt", .type = "8", .mark = "False"}}},
        {"DatASDR",
         "Dat",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "Bai", .type = "2", .dflt = "0", .required = "True", .mark = "True", .key = "True"},
          {.name = "F", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "M", .type = "7", .mark = "False"},
          {.name = "P", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "UpdDt", .type = "8", .mark = "False"}}},
        {"DatCSM",
         "Dat",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "COBCd", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"},
          {.name = "CSMP", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "UpdDt", .type = "8", .mark = "False"}}},
        {"DatDmgphyPrmtrs",
         "Dat",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "Cdmdl", .type = "10", .size = "50", .mark = "False"},
          {.name = "PGR", .type = "7", .dflt = "0", .required = "True", .mark = "False"},
          {.name = "IMR", .type = "7", .dflt = "0", .mark = "False"}}},
        {"DatPOP",
         "Dat",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "Bai", .type = "2", .dflt = "0", .required = "True", .mark = "True", .key = "True"},
          {.name = "M", .type = "4", .mark = "False"},
          {.name = "F", .type = "4", .dflt = "0", .mark = "False"},
          {.name = "UpdDt", .type = "8", .mark = "False"}}},
        {"RsltDALY",
         "Rslt",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "DAPID", .type = "3", .dflt = "0", .mark = "Fasle", .key = "True"},
          {.name = "COBCd", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"},
          {.name = "IDALY", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "PDALY", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "EstDt", .type = "8", .mark = "False"}}},
        {"RsltYLD",
         "Rslt",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "DAPID", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "COBCd", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "SqlaCd", .type = "10", .size = "12", .mark = "True", .key = "True"},
          {.name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"},
          {.name = "IYLD", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "PYLD", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "EstDt", .type = "8", .mark = "False"}}},
        // EstDt stands first in this table alone.
        {"RsltYLL",
         "Rslt",
         {{.name = "EstDt", .type = "8", .mark = "False"},
          {.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "DAPID", .type = "3", .dflt = "0", .mark = "True", .key = "True"},
          {.name = "COBCd", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"},
          {.name = "IYLL", .type = "7", .mark = "False", .nullDefault = true},
          {.name = "PYLL", .type = "7", .dflt = "0", .mark = "False"}}},
        {"UserComments",
         "Rslt",
         {{.name = "Cmt_Dt_tm", .type = "8"},
          {.name = "FldName", .type = "10 ", .size = "20"},
          {.name = "FldValue", .type = "10", .size = "50"},
          {.name = "Comment", .type = "12"}}},
        {"DatADWSqla",
         "Dat",
         {{.name = "BPUID", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .mark = "True", .key = "True"},
          {.name = "COBCd", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "SqlaCd", .type = "10", .size = "12", .mark = "True", .key = "True"},
          {.name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"},
          {.name = "i", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "P", .type = "7", .dflt = "0", .mark = "False"},
          {.name = "ago", .type = "6", .mark = "False"},
          {.name = "DURN", .type = "6", .dflt = "0", .mark = "False"},
          {.name = "agp", .type = "6", .mark = "False"},
          {.name = "UpdDt", .type = "8", .mark = "False"}}},
        // The first field is the study, not the unit; the cause has size 7 here, 5 elsewhere.
        {"DatDwt",
         "Dat",
         {{.name = "BDSId", .type = "10", .size = "5", .mark = "True", .key = "True"},
          {.name = "YEAR", .type = "3", .mark = "True", .key = "True"},
          {.name = "COBCd", .type = "10", .size = "7", .mark = "True", .key = "True"},
          {.name = "ASG", .type = "10", .size = "6", .required = "True", .mark = "True", .key = "True"},
          {.name = "Dwt", .type = "6", .dflt = "0", .mark = "False"}}},
        {"_MapBDMSqla",
         "Map",
         {{.name = "SqlaCd", .type = "10", .size = "12", .mark = "True", .key = "True"},
          {.name = "cobcd", .type = "10", .size = "5", .mark = "True", .key = "True"}}},
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
