// Every input of the fuzz corpus (the seed files and each input that ever crashed, hung or
// exhausted a reader) read in the ordinary suite under every name the fuzz targets know, so that a
// fixed fault stays fixed whichever name the fuzzer's run gives an input, and the sanitizer build
// of the suite reads them too. Each read returns, and no table is larger than its file allows.

#include "../fuzz/fuzz_names.h"
#include "inputs/foreign_file.h"
#include "platform/prompts.h"
#include "platform/table_limits.h"
#include "test_support.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <optional>

namespace vesk::test {
namespace {

QFileInfoList corpus(const QString& target) {
    const QDir dir(QStringLiteral(VESK_SOURCE_DIR "/tests/fuzz/corpus/") + target);
    return dir.entryInfoList(QDir::Files, QDir::Name);
}

class KeptFuzzInputs : public ScratchTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        scope_.emplace(&prompts_);
    }
    // The kept input as the one file of its kind in the scratch folder, as the fuzz target writes it.
    QString placed(const QFileInfo& input, const QString& name) {
        const QString target = path(name);
        QFile::remove(target);
        EXPECT_TRUE(QFile::copy(input.filePath(), target)) << qPrintable(input.filePath());
        return target;
    }
    ScriptedPrompts prompts_;
    std::optional<ScopedPromptService> scope_;
};

TEST_F(KeptFuzzInputs, EveryForeignInputIsReadOrRefusedWithinItsSize) {
    struct Kind {
        const char* target;
        const char* file;
    };
    int inputs = 0;
    for (const Kind kind : {Kind{"wk1", "T.WK1"}, Kind{"xlsx", "T.xlsx"}, Kind{"dbf", "T.dbf"}, Kind{"text", "T.txt"}}) {
        const QString fileName = QString::fromLatin1(kind.file);
        for (const QFileInfo& input : corpus(QString::fromLatin1(kind.target))) {
            ++inputs;
            const QString file = placed(input, fileName);
            for (const QString& table : fuzz::tableNamesFor(QFileInfo(fileName).suffix())) {
                QStringList names;
                const CellArray rows = FnReadArrFile(file, table, &names);
                EXPECT_LE(qint64(rows.count()), cellsAllowedFor(input.size()))
                    << qPrintable(input.fileName()) << " as " << qPrintable(table);
                EXPECT_LE(qint64(names.size()), cellsAllowedFor(input.size()));
            }
        }
    }
    EXPECT_GE(inputs, 10); // the corpus was found: the seeds of four kinds and the kept inputs
}

TEST_F(KeptFuzzInputs, EverySettingsInputIsReadOrRefusedWithinItsSize) {
    const QFileInfoList inputs = corpus(QStringLiteral("settings"));
    ASSERT_GE(inputs.size(), 2);
    for (const QFileInfo& input : inputs) {
        const QString file = placed(input, QStringLiteral("Vesk.stp"));
        for (int which = 0; which < fuzz::kSettingsReaders; ++which) {
            CellArray table;
            fuzz::readSettingsBlock(which, file, table);
            EXPECT_LE(qint64(table.count()), cellsAllowedFor(input.size()))
                << qPrintable(input.fileName()) << " by reader " << which;
        }
    }
}

// The seeds are files of the program's own kinds that read whole: each gives a table under at
// least one of the names, so a seed that no longer reads (and would start the fuzzer nowhere) shows.
TEST_F(KeptFuzzInputs, EverySeedFileHoldsATable) {
    for (const char* target : {"wk1", "xlsx", "dbf", "text"}) {
        for (const QFileInfo& input : corpus(QString::fromLatin1(target))) {
            if (input.fileName().startsWith(QLatin1String("crash-")) ||
                input.fileName().startsWith(QLatin1String("timeout-")) ||
                input.fileName().startsWith(QLatin1String("oom-")))
                continue;
            const QString fileName = QStringLiteral("T.") + input.suffix();
            const QString file = placed(input, fileName);
            bool any = false;
            for (const QString& table : fuzz::tableNamesFor(input.suffix()))
                any = any || FnReadArrFile(file, table).count() > 0;
            EXPECT_TRUE(any) << qPrintable(input.filePath());
        }
    }
}

} // namespace
} // namespace vesk::test
