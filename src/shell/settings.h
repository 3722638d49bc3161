#pragma once
// The settings of the program: the globals that come from Vesk.stp, and the texts of the
// preferences form that the settings file is read into and written from. The file routines
// (settings_file.h) fill and write these; the preferences form binds its controls to
// PreferencesControls when it exists.

#include "platform/cell_array.h"

#include <QString>

#include <array>

namespace vesk {

// The 24 column widths of [COLUMN WIDTH], in writing order.
inline constexpr int kColumnWidthCount = 24;

struct VeskSettings {
    // Paths.
    QString AppPath;     // program folder ("" when it is the root)
    QString DBFullPath;  // folder, separator and file name of the study database
    QString WorkPath;    // [Working Location Path]
    QString StatOutPath; // [Statistical Output Path]
    QString TempPath;    // [Temporary Location Path]
    QString ImportPath;  // [ImportData Location Path]

    // [Prefer]
    int NLdCauses = 10;
    int ToolDecPlcs = 2;
    int RsltDecPlcs = 0;
    int RptDecPlcs = 2;
    int LfTbDecPlcs = 2;
    int LSumDecPlcs = 0;
    int LDthDecPlcs = 0;
    int LDaleDecPlcs = 2;
    QString sLSuccess;
    QString sLBussy; // empty until the settings are read: the splash's first play is silent
    QString sLFailure;

    // [COLUMN WIDTH], grid twips, in the order VWC1, VDC1, ... SSCC3.
    std::array<qint32, kColumnWidthCount> ColWdth{};

    // [DCTTBLNM], [POPDCTTBLNM], [INTPLTRTBLNM], [USRLTS]: names of tables in foreign files.
    QString GrpDctTblNm, SGrpDctTblNm, ClstrDctTblNm, COBDctTblNm, SqlaDctTblNm, MapDctTblNm;
    QString BPUTblNm, PAG1TblNm, PAG2TblNm;
    QString POPTblNm, DTHSTblNm, BOTHTblNm;
    QString UsrLTSTblNm;

    // [MINMAX]
    qint16 MinMaxAge = 0;
    qint16 MaxMaxAge = 0;

    // [ABGLTBL]: life table options.
    double LTRadix = 1;
    qint16 LTMethod = 0;
    QString LTKFlwrLmt, LTKFupprLmt, LTGreval;

    // [OPNCLSAGEINTVL]
    Cell ChoiceFiveYrs;
    Cell UpperAgeIntvl;

    // [LIFE TABLE TYPE]: 1 KRO, 2 user defined, 3 WHO.
    int LifeTblType = 0;

    // Numeric blocks, arrays of text cells as read: (0..n-1, 0..2) age, female, male.
    CellArray MtxLTSKRO, MtxLTSWHO;
    CellArray MtxOAIGD;
    CellArray MtxPanel0, MtxPanel1, MtxPanel2, MtxPanel3, MtxPanel4;

    // Sample percent of the preferences (100 unless set).
    double SampPct = 100;
};

// The texts of the preferences form's controls that the settings file is read into and written
// from. Without the form they are plain texts; the form binds its widgets to them.
struct PreferencesControls {
    QString txtwklocation; // database folder
    QString txtVESKObj;    // database file name
    QString cmbVESKADW;
    QString cmbVESKCSMP;
    QString txtStatOut;
    QString txtTempArea;
    QString txtImpLoc;
    QString txtSampPct;
    bool loaded = false;  // the form has been loaded
    bool changed = false; // something on the form was changed
    CellArray userLifeTable; // the user defined standard life table, when one is loaded
    bool userLifeTableLoaded = false;
};

VeskSettings& settings();
PreferencesControls& preferences();

} // namespace vesk
