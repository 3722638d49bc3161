// openfile: the reader of Vesk.stp.
//
// One loop over the lines. On each pass one line is read and compared with the section headings,
// one after the other and in a fixed order; a block that reads further lines leaves the last of them
// as the line that the later comparisons of the same pass see. Two consequences are part of the
// format: after [OPNCLSAGEINTVL] one more line is read, which normally is "[LIFE TABLE]" and falls
// to the next comparison; and with "Method=1" the two lines after the method are taken as the
// Keyfitz limits whether the writer put them there or not, so that after a save without limits
// [OPNCLSAGEINTVL] is swallowed and its values keep their former state.

#include "foundation/settings_file.h"
#include "foundation/settings_file_io.h"
#include "foundation/settings_file_keys.h"
#include "foundation/settings_texts.h"
#include "platform/prompts.h"
#include "platform/runtime.h"

#include <QFileInfo>

namespace vesk {

namespace t = settings_texts;
using stp::Trim;

namespace {

// Thrown after a message that ends the program.
struct EndTheProgram {};

struct Reader {
    VeskSettings& s;
    PreferencesControls& p;
    stp::StpLines& in;
    SettingsResult& result;
    QString path; // the settings file, for the block readers
    QString line; // the line of this pass, handed on from block to block
};

[[noreturn]] void endProgram(const QString& text, Icon icon) {
    prompts().ask(text, Buttons::Ok, icon, QString());
    throw EndTheProgram{};
}

[[noreturn]] void endProgram(const char* text, Icon icon) {
    endProgram(QString::fromUtf8(text), icon);
}

// The line's start, as long as the key, upper-cased and trimmed, is the key.
bool startsWithKey(const QString& line, const QString& key) {
    return Trim(line.left(key.size()).toUpper()) == Trim(key.toUpper());
}

void readWorkingLocation(Reader& r) {
    r.line = r.in.next();
    r.s.WorkPath = stp::upperWhereCaseBlind(Trim(Mid(r.line, 8)));
    r.p.txtwklocation = r.s.WorkPath;
}

void readImportLocation(Reader& r) {
    r.line = r.in.next();
    r.s.ImportPath = stp::upperWhereCaseBlind(Trim(Mid(r.line, 8)));
    r.p.txtImpLoc = r.s.ImportPath;
}

// Four lines that count by their position alone: folder, file, and the two table names.
void readVesk(Reader& r) {
    QString values[4];
    for (QString& v : values) {
        r.line = r.in.next();
        v = Trim(Mid(r.line, 8));
    }
    r.s.DBFullPath = values[0] + stp::pathSeparator() + values[1];
    r.p.txtwklocation = values[0];
    r.p.txtVESKObj = values[1];
    r.p.cmbVESKADW = values[2];
    r.p.cmbVESKCSMP = values[3];
    if (!QFileInfo(r.s.DBFullPath).isFile() || !Like(r.s.DBFullPath, QStringLiteral("*.???"))) {
        prompts().ask(QString::fromUtf8(t::kCheckVeskPath), Buttons::Ok, Icon::Warning,
                      QString::fromUtf8(t::kTitleVesk));
        r.result.SettingsOK = false;
    }
}

// A folder's line: the text after its 8-character key, kept in the settings and shown in the
// preferences; a warning when it is blank.
void readFolder(Reader& r, QString& setting, QString& shown, const char* missing) {
    r.line = r.in.next();
    setting = Trim(Mid(r.line, 8));
    shown = setting;
    if (setting.isEmpty())
        prompts().ask(QString::fromUtf8(missing), Buttons::Ok, Icon::Warning,
                      QString::fromUtf8(t::kTitleVesk));
}

void readStatOut(Reader& r) {
    readFolder(r, r.s.StatOutPath, r.p.txtStatOut, t::kStatOutMissing);
}

void readTemp(Reader& r) {
    readFolder(r, r.s.TempPath, r.p.txtTempArea, t::kTempMissing);
}

// Each key in its order tries the next line; a line that is not the key leaves the value as it was.
void readPrefer(Reader& r) {
    for (const stp::PreferKey& k : stp::kPreferKeys) {
        r.line = r.in.next();
        if (!startsWithKey(r.line, QString::fromUtf8(k.key)))
            continue;
        const QString value = Trim(Mid(r.line, k.column));
        if (k.number)
            r.s.*k.number = value.isEmpty() ? k.numberDefault : stp::toInt32(value);
        else
            r.s.*k.text = value.isEmpty() ? QString::fromUtf8(k.textDefault) : value;
    }
}

// A width key is matched by its first 4 or 5 characters, upper-cased; the value follows the "=".
void readColumnWidths(Reader& r) {
    for (int i = 0; i < kColumnWidthCount; ++i) {
        r.line = r.in.next();
        const QString stem = QString::fromUtf8(kColumnWidthKeys[i]);
        if (r.line.left(stem.size()).toUpper() != stem)
            continue;
        const QString value = Trim(Mid(r.line, static_cast<int>(stem.size()) + 2));
        r.s.ColWdth[i] = value.isEmpty() ? kColumnWidthDefaults[i] : stp::toInt32(value);
    }
}

void readNames(Reader& r, const stp::NameSection& section) {
    for (const stp::NameKey& k : section.keys) {
        r.line = r.in.next();
        if (!startsWithKey(r.line, QString::fromUtf8(k.key)))
            continue;
        const QString value = Trim(Mid(r.line, stp::valueColumn(k.key)));
        r.s.*k.member = value.isEmpty() ? QString::fromUtf8(k.textDefault) : value;
    }
}

// Two lines by position; a zero is kept, and the writer makes it 45 or 85.
void readMinMax(Reader& r) {
    r.line = r.in.next();
    r.s.MinMaxAge = stp::toInt16(Mid(r.line, stp::valueColumn(stp::kMinMaxAgeKey)));
    r.line = r.in.next();
    r.s.MaxMaxAge = stp::toInt16(Mid(r.line, stp::valueColumn(stp::kMaxMaxAgeKey)));
}

void readLifeTableMethod(Reader& r) {
    r.line = r.in.next();
    r.s.LTRadix = Val(Mid(r.line, stp::valueColumn(stp::kRadixKey)));
    if (r.s.LTRadix == 0)
        r.s.LTRadix = settings_defaults::LTRadix;
    r.line = r.in.next();
    if (r.line.left(6) != QLatin1String("Method"))
        return;
    const QString methodLine = r.line;
    r.s.LTMethod = stp::toInt16(Mid(methodLine, stp::valueColumn(stp::kMethodKey)));
    if (r.s.LTMethod == 3) {
        r.line = r.in.next();
        r.s.LTGreval = Mid(r.line, stp::valueColumn(stp::kGrevalKey));
    } else if (Like(methodLine, QStringLiteral("Method=1"))) {
        // Taken whether or not the writer put the limits there.
        r.line = r.in.next();
        r.s.LTKFlwrLmt = Mid(r.line, stp::valueColumn(stp::kKFlwrlmtKey));
        r.line = r.in.next();
        r.s.LTKFupprLmt = Mid(r.line, stp::valueColumn(stp::kKFupprlmtKey));
    }
}

Cell numberOr(const QString& text, int fallback) {
    const QString value = Trim(text);
    return value.isEmpty() ? Cell(fallback) : Cell(Val(value));
}

void readOpenInterval(Reader& r) {
    r.line = r.in.next();
    r.s.ChoiceFiveYrs =
        numberOr(Mid(r.line, stp::valueColumn(stp::kChoiceFiveYrsKey)), settings_defaults::ChoiceFiveYrs);
    r.line = r.in.next();
    r.s.UpperAgeIntvl =
        numberOr(Mid(r.line, stp::valueColumn(stp::kUpperAgeIntvlKey)), settings_defaults::UpperAgeIntvl);
    // Normally "[LIFE TABLE]", which falls to the next comparison of this pass.
    r.line = r.in.next();
    if (r.line.isEmpty())
        endProgram(t::kValuesMissed, Icon::Critical);
}

void readLifeTable(Reader& r) {
    r.line = r.in.next();
    if (!r.line.startsWith(QLatin1String("[LIFE TABLE TYPE]")))
        endProgram(t::kLifeTableTypeMissing, Icon::None);
    const QString type = Trim(Mid(r.line, stp::valueColumn(stp::kLifeTableTypeKey)));
    const bool kro = FnReadLTS(QString::fromUtf8(stp::kLtsKro), r.s.MtxLTSKRO, r.path);
    const bool who = FnReadLTS(QString::fromUtf8(stp::kLtsWho), r.s.MtxLTSWHO, r.path);
    if (!kro || !who)
        endProgram(t::kLtsMissing, Icon::Critical);
    CellArray user;
    if (FnReadLTS(QString::fromUtf8(stp::kLtsUser), user, r.path)) {
        r.p.userLifeTable = std::move(user);
        r.p.userLifeTableLoaded = true;
    }
    if (type == QLatin1String("1") || type == QLatin1String("2") || type == QLatin1String("3"))
        r.s.LifeTblType = type.toInt();
}

struct Block {
    const char* heading;
    void (*read)(Reader&);
};

// The order of the comparisons within a pass.
const Block kBlocks[] = {
    {"[Working Location Path]", readWorkingLocation},
    {"[ImportData Location Path]", readImportLocation},
    {"[VESK]", readVesk},
    {"[Statistical Output Path]", readStatOut},
    {"[Temporary Location Path]", readTemp},
    {"[Prefer]", readPrefer},
    {"[COLUMN WIDTH]", readColumnWidths},
    {"[DCTTBLNM]", [](Reader& r) { readNames(r, stp::kNameSections[0]); }},
    {"[POPDCTTBLNM]", [](Reader& r) { readNames(r, stp::kNameSections[1]); }},
    {"[INTPLTRTBLNM]", [](Reader& r) { readNames(r, stp::kNameSections[2]); }},
    {"[USRLTS]", [](Reader& r) { readNames(r, stp::kNameSections[3]); }},
    {"[MINMAX]", readMinMax},
    {"[ABGLTBL]", readLifeTableMethod},
    {"[OPNCLSAGEINTVL]", readOpenInterval},
    {"[LIFE TABLE]", readLifeTable},
};

void readAll(Reader& r) {
    while (!r.in.atEnd()) {
        r.line = r.in.next();
        for (const Block& b : kBlocks)
            if (stp::heading(r.line) == stp::heading(QString::fromUtf8(b.heading)))
                b.read(r);
    }
}

void showReaderError(const RuntimeError& e) {
    if (e.number == 52)
        prompts().ask(QString::fromUtf8(t::kPleaseCheckPath), Buttons::Ok, Icon::Warning,
                      QString::fromUtf8(t::kTitleOpenFile));
    else
        prompts().ask(e.words, Buttons::Ok, Icon::None, QString());
}

} // namespace

SettingsResult openfile(VeskSettings& s, PreferencesControls& p) {
    return readSettingsFile(settingsFilePath(s.AppPath), s, p);
}

SettingsResult readSettingsFile(const QString& path, VeskSettings& s, PreferencesControls& p) {
    SettingsResult result;
    try {
        stp::StpLines in = stp::StpLines::open(path);
        if (s.LTRadix == 0)
            s.LTRadix = settings_defaults::LTRadix;
        if (!FnReadOAIGD(s.MtxOAIGD, path)) {
            // A block that is there but too large for its file is told as such, not as missing.
            if (!settingsBlockRefusal().isEmpty())
                endProgram(settingsBlockRefusal(), Icon::Critical);
            endProgram(t::kOaigdMissing, Icon::Warning);
        }
        Reader r{s, p, in, result, path, QString()};
        readAll(r);
    } catch (const EndTheProgram&) {
        result.outcome = SettingsOutcome::EndProgram;
    } catch (const RuntimeError& e) {
        // The file was read whole into memory, so nothing is left open here.
        result.errorNumber = e.number;
        showReaderError(e);
    } catch (const std::exception& e) {
        // A subscript out of range and the like: shown as its description, reading stops.
        prompts().ask(QString::fromUtf8(e.what()), Buttons::Ok, Icon::None, QString());
    }
    return result;
}

} // namespace vesk
