// Write_To_Vesk_Stp: the writer of Vesk.stp. Every line in its fixed order, CR LF after each. An
// empty preference is first given its default, in the global as in the file. The rewrite goes
// through a temporary file that replaces the old one only when it is complete, so that a failure
// leaves the old file whole.

#include "platform/prompts.h"
#include "platform/runtime.h"
#include "foundation/settings_file.h"
#include "foundation/settings_file_io.h"
#include "foundation/settings_file_keys.h"
#include "foundation/settings_texts.h"

#include <QFileInfo>
#include <QSaveFile>

namespace vesk {

namespace t = settings_texts;

namespace {

class StpWriter {
public:
    void line(const QString& text) { out_ += text + QStringLiteral("\r\n"); }
    void line(const char* literal, const QString& value = QString()) {
        line(QString::fromUtf8(literal) + value);
    }
    const QString& text() const { return out_; }

private:
    QString out_;
};

void writePaths(StpWriter& w, const PreferencesControls& p) {
    using namespace stp;
    w.line("[VESK]");
    w.line(kPathKey, p.txtwklocation);
    w.line(kObjectKey, p.txtVESKObj);
    w.line(kAdwKey, p.cmbVESKADW);
    w.line(kCsmKey, p.cmbVESKCSMP);
    w.line("[Working Location Path]");
    w.line(kPathKey, p.txtwklocation);
    w.line("[Statistical Output Path]");
    w.line(kPathKey, p.txtStatOut);
    w.line("[Temporary Location Path]");
    w.line(kPathKey, p.txtTempArea);
    w.line("[ImportData Location Path]");
    w.line(kPathKey, p.txtImpLoc);
}

void writePreferences(StpWriter& w, VeskSettings& s) {
    w.line("[Prefer]");
    for (const stp::PreferKey& k : stp::kPreferKeys) {
        if (k.number) {
            w.line(k.literal, QString::number(s.*k.number));
        } else {
            if ((s.*k.text).isEmpty())
                s.*k.text = QString::fromUtf8(k.textDefault);
            w.line(k.literal, s.*k.text);
        }
    }
    w.line("[COLUMN WIDTH]");
    for (int i = 0; i < kColumnWidthCount; ++i) {
        if (s.ColWdth[i] == 0)
            s.ColWdth[i] = kColumnWidthDefaults[i];
        w.line(QString::fromUtf8(kColumnWidthKeys[i]) + u'=' + QString::number(s.ColWdth[i]));
    }
    for (const stp::NameSection& section : stp::kNameSections) {
        w.line(section.heading);
        for (const stp::NameKey& k : section.keys) {
            if ((s.*k.member).isEmpty())
                s.*k.member = QString::fromUtf8(k.textDefault);
            w.line(k.key, s.*k.member);
        }
    }
}

Cell& defaulted(Cell& c, int fallback) {
    if (c.isEmpty() || c.isNull() || c.toString().isEmpty())
        c = Cell(fallback);
    return c;
}

void writeLifeTableOptions(StpWriter& w, VeskSettings& s) {
    using namespace stp;
    w.line("[MINMAX]");
    if (s.MinMaxAge == 0)
        s.MinMaxAge = settings_defaults::MinMaxAge;
    if (s.MaxMaxAge == 0)
        s.MaxMaxAge = settings_defaults::MaxMaxAge;
    w.line(kMinMaxAgeKey, QString::number(s.MinMaxAge));
    w.line(kMaxMaxAgeKey, QString::number(s.MaxMaxAge));
    w.line("[ABGLTBL]");
    w.line(kRadixKey, numberToText(s.LTRadix));
    w.line(kMethodKey, QString::number(s.LTMethod));
    if (s.LTMethod == 1 && !s.LTKFlwrLmt.isEmpty()) {
        w.line(kKFlwrlmtKey, s.LTKFlwrLmt);
        w.line(kKFupprlmtKey, s.LTKFupprLmt);
    }
    if (s.LTMethod == 3 && !s.LTGreval.isEmpty())
        w.line(kGrevalKey, s.LTGreval);
    w.line("[OPNCLSAGEINTVL]");
    w.line(kChoiceFiveYrsKey, defaulted(s.ChoiceFiveYrs, settings_defaults::ChoiceFiveYrs).toString());
    w.line(kUpperAgeIntvlKey, defaulted(s.UpperAgeIntvl, settings_defaults::UpperAgeIntvl).toString());
    w.line("[LIFE TABLE]");
    w.line(kLifeTableTypeKey, QString::number(s.LifeTblType));
}

// One column of a life table over all rows, each value followed by "|", the last "|" cut. A table
// read from the file holds its texts, which go out as they came; an imported one holds numbers,
// which go out as texts that read back to the same double.
QString ltsColumnText(const CellArray& table, int column) {
    if (table.rank() != 2 || table.size(1) <= column)
        return QString();
    QString text;
    for (int i = table.lbound(0); i <= table.ubound(0); ++i)
        text += valueText(table(i, column)) + u'|';
    text.chop(1);
    return text;
}

void writeLifeTable(StpWriter& w, const char* section, const CellArray& table) {
    w.line(section);
    w.line("[BAI]:", ltsColumnText(table, 0));
    w.line("[EXM]:", ltsColumnText(table, 2));
    w.line("[EXF]:", ltsColumnText(table, 1));
}

// The rows of a block, their values joined by "|"; cells a short row never had are left out.
void writeRows(StpWriter& w, const CellArray& table) {
    if (table.rank() != 2)
        return;
    for (int i = table.lbound(0); i <= table.ubound(0); ++i) {
        int last = table.ubound(1);
        while (last >= table.lbound(1) && table(i, last).isEmpty())
            --last;
        QStringList values;
        for (int j = table.lbound(1); j <= last; ++j)
            values << table(i, j).toString();
        w.line(values.join(u'|'));
    }
}

void writeNumericBlocks(StpWriter& w, const VeskSettings& s, const PreferencesControls& p) {
    w.line(stp::kRule27);
    w.line("[LTS]");
    w.line(stp::kRule27);
    writeLifeTable(w, stp::kLtsKro, s.MtxLTSKRO);
    writeLifeTable(w, stp::kLtsWho, s.MtxLTSWHO);
    if (p.userLifeTableLoaded && !p.userLifeTable.isEmpty())
        writeLifeTable(w, stp::kLtsUser, p.userLifeTable);
    w.line(stp::kRule28);
    w.line("[OAIGD]");
    w.line(stp::kRule28);
    writeRows(w, s.MtxOAIGD);
    w.line(stp::kRule27);
    w.line("[PANELS]");
    w.line(stp::kRule27);
    const CellArray* panels[] = {&s.MtxPanel0, &s.MtxPanel1, &s.MtxPanel2, &s.MtxPanel3, &s.MtxPanel4};
    for (int i = 0; i < 5; ++i) {
        w.line(QStringLiteral("[PANEL %1]").arg(i));
        writeRows(w, *panels[i]);
    }
    w.line(stp::kRule27);
}

// The numeric blocks come from the file and are passed on. The panels are loaded for the rewrite
// alone; a table that the reader has not loaded (it stopped early) is taken from the file as well,
// so that a save never drops what the file holds. Returns the reason a block was refused (too large
// for its file), which would be written back empty: empty when every block was read or is absent.
QString loadBlocks(VeskSettings& s, const QString& path) {
    QString refusal;
    const auto noteRefusal = [&refusal] {
        if (refusal.isEmpty())
            refusal = settingsBlockRefusal();
    };
    CellArray* panels[] = {&s.MtxPanel0, &s.MtxPanel1, &s.MtxPanel2, &s.MtxPanel3, &s.MtxPanel4};
    for (int i = 0; i < 5; ++i) {
        FnReadPanel(i, *panels[i], path);
        noteRefusal();
    }
    if (s.MtxLTSKRO.isEmpty())
        FnReadLTS(QString::fromUtf8(stp::kLtsKro), s.MtxLTSKRO, path);
    if (s.MtxLTSWHO.isEmpty())
        FnReadLTS(QString::fromUtf8(stp::kLtsWho), s.MtxLTSWHO, path);
    if (s.MtxOAIGD.isEmpty()) {
        FnReadOAIGD(s.MtxOAIGD, path);
        noteRefusal();
    }
    return refusal;
}

void releasePanels(VeskSettings& s) {
    for (CellArray* panel : {&s.MtxPanel0, &s.MtxPanel1, &s.MtxPanel2, &s.MtxPanel3, &s.MtxPanel4})
        *panel = CellArray();
}

// Replaces the file with `text`, or throws the runtime error of the failure.
void saveWhole(const QString& path, const QString& text) {
    const QFileInfo target(path);
    if (target.exists() && !target.isWritable())
        throw stp::openErrorFor(path, true);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw stp::openErrorFor(path, true);
    const QByteArray bytes = text.toUtf8();
    const bool written = file.write(bytes) == bytes.size();
    if (!written)
        file.cancelWriting();
    if (!file.commit()) {
        if (!written || file.error() == QFileDevice::WriteError)
            throw RuntimeError(runtime_error::kDiskFull);
        throw stp::openErrorFor(path, true);
    }
}

bool pathsMissing(const PreferencesControls& p) {
    return p.txtwklocation.isEmpty() || p.txtStatOut.isEmpty() || p.txtTempArea.isEmpty() ||
           p.cmbVESKADW.isEmpty() || p.cmbVESKCSMP.isEmpty();
}

} // namespace

WriteResult Write_To_Vesk_Stp(VeskSettings& s, PreferencesControls& p) {
    const QString refusal = loadBlocks(s, settingsFilePath(cutDriveRoot(s.AppPath)));
    if (!refusal.isEmpty()) {
        // Rewriting would drop the refused block: the file stays as it is, and the user hears why.
        prompts().ask(refusal, Buttons::Ok, Icon::Critical, QString());
        releasePanels(s);
        return WriteResult::Failed;
    }
    s.SampPct = p.txtSampPct.isEmpty() ? 100 : Val(p.txtSampPct);
    p.cmbVESKADW = QStringLiteral("DatADW");
    p.cmbVESKCSMP = QStringLiteral("DatCSM");
    if (pathsMissing(p)) {
        prompts().ask(QString::fromUtf8(t::kWriterPathsEmpty), Buttons::Ok, Icon::Warning,
                      QString::fromUtf8(t::kTitleVesk));
        return WriteResult::Refused;
    }
    s.AppPath = cutDriveRoot(s.AppPath);
    StpWriter w;
    writePaths(w, p);
    writePreferences(w, s);
    writeLifeTableOptions(w, s);
    writeNumericBlocks(w, s, p);
    WriteResult result = WriteResult::Written;
    try {
        saveWhole(settingsFilePath(s.AppPath), w.text());
    } catch (const RuntimeError& e) {
        if (e.number == 52)
            prompts().ask(QString::fromUtf8(t::kMachineMissing), Buttons::Ok, Icon::Warning,
                          QString::fromUtf8(t::kTitleSetupError));
        else
            prompts().ask(e.words, Buttons::Ok, Icon::None, QString());
        result = WriteResult::Failed;
    }
    releasePanels(s);
    return result;
}

} // namespace vesk
