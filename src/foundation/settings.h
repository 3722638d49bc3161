#pragma once
// The settings of the program: the globals that come from Vesk.stp, and the texts of the
// preferences form that the settings file is read into and written from. The file routines
// (settings_file.h) fill and write these; the preferences form (shell/preferences_session.h) takes
// PreferencesControls as the controls of its paths, so that what is typed there is the setting.

#include "platform/cell_array.h"

#include <QString>
#include <array>

namespace vesk {

// The 24 column widths of [COLUMN WIDTH], in writing order. Each stem names a kind of grid and its
// suffix a column kind: 1 "Row Heading 1", 2 "Row Heading 2", 3 "Other Columns".
inline constexpr int kColumnWidthCount = 24;
inline constexpr std::array<const char*, kColumnWidthCount> kColumnWidthKeys = {
    "VWC1", "VDC1", "RDC1", "RSC1", "SICC1", "SIEC1", "VPC1", "SSCC1", //
    "VWC2", "VDC2", "RDC2", "RSC2", "SICC2", "SIEC2", "VPC2", "SSCC2", //
    "VWC3", "VDC3", "RDC3", "RSC3", "SICC3", "SIEC3", "VPC3", "SSCC3"};
// What the settings file's reader and writer put in place of an empty (or, writing, zero) width.
inline constexpr std::array<qint32, kColumnWidthCount> kColumnWidthDefaults = {
    900,  900,  900,  900,  900,  1000, 450,  700,  //
    4000, 4000, 4000, 4000, 4000, 1550, 450,  4500, //
    4000, 900,  900,  900,  900,  1550, 1200, 700};
// What the start-up chain loads when neither VWC1 nor VDC1 holds a value. The third columns differ
// from the file's defaults; they hold only until the first save.
inline constexpr std::array<qint32, kColumnWidthCount> kChainColumnWidthDefaults = {
    900,  900,  900,  900,  900,  1000, 450,  700,  //
    4000, 4000, 4000, 4000, 4000, 1550, 450,  4500, //
    800,  800,  800,  800,  800,  1550, 1200, 700};

// The index in ColWdth of a width key ("VWC1", "sscc3"...), -1 for an unknown key.
int ColWdthIndex(const QString& key);

// Defaults of the settings that the file's reader and writer put in place of an empty value.
namespace settings_defaults {
inline constexpr int NLdCauses = 10;
inline constexpr int ToolDecPlcs = 2;
inline constexpr int RsltDecPlcs = 0;
inline constexpr int RptDecPlcs = 2;
inline constexpr int LfTbDecPlcs = 2;
inline constexpr int LSumDecPlcs = 0;
inline constexpr int LDthDecPlcs = 0;
inline constexpr int LDaleDecPlcs = 2;
inline constexpr char sLSuccess[] = "C:\\WINDOWS\\MEDIA\\Office97\\Laser.wav";
inline constexpr char sLBussy[] = "C:\\WINDOWS\\MEDIA\\Office97\\Driveby.wav";
inline constexpr char sLFailure[] = "C:\\WINDOWS\\MEDIA\\Office97\\Camera.wav";
inline constexpr char GrpDctTblNm[] = "_DctBDMGrps";
inline constexpr char SGrpDctTblNm[] = "_DctBDMSGrps";
inline constexpr char ClstrDctTblNm[] = "_DctBDMClstr";
inline constexpr char COBDctTblNm[] = "_DctBDM";
inline constexpr char SqlaDctTblNm[] = "_DctBDMSqla";
inline constexpr char MapDctTblNm[] = "_MapBDMSqla";
inline constexpr char BPUTblNm[] = "_DctBPU";
inline constexpr char PAG1TblNm[] = "_DctPAG1";
inline constexpr char PAG2TblNm[] = "_DctPAG2";
inline constexpr char POPTblNm[] = "POPDATA";
inline constexpr char DTHSTblNm[] = "DTHSDATA";
inline constexpr char BOTHTblNm[] = "TOTDATA";
inline constexpr char UsrLTSTblNm[] = "USRLTS";
inline constexpr qint16 MinMaxAge = 45; // written in place of 0
inline constexpr qint16 MaxMaxAge = 85; // written in place of 0
inline constexpr double LTRadix = 1;    // read in place of an empty value or 0
inline constexpr int ChoiceFiveYrs = 0;
inline constexpr int UpperAgeIntvl = 1;
} // namespace settings_defaults

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
// from. They live here, below the form, so that the settings file and the chain reach them without
// it; the form's fields of the paths are these texts.
struct PreferencesControls {
    QString txtwklocation; // database folder
    QString txtVESKObj;    // database file name
    QString cmbVESKADW;
    QString cmbVESKCSMP;
    QString txtStatOut;
    QString txtTempArea;
    QString txtImpLoc;
    QString txtSampPct;
    bool loaded = false;     // the form has been loaded
    bool changed = false;    // something on the form was changed
    CellArray userLifeTable; // the user defined standard life table, when one is loaded
    bool userLifeTableLoaded = false;
};

VeskSettings& settings();
PreferencesControls& preferences();

// The start-up chain's widths, used when VWC1 or VDC1 is zero.
void loadChainDefaultWidths(VeskSettings& s = settings());

} // namespace vesk
