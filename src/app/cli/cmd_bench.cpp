// vesk-cli bench [--study nation|districts|tiny] [--keep FILE] [--settings FILE]: a synthetic study
// made by vesk-studygen, computed as `vesk-cli compute` computes it, with the seconds of each step,
// the rows stored, the kernel's cells a second, the peak memory, and SQLite's own floor for storing
// as many rows of the same shape into the same tables.

#include "app/cli/cli.h"
#include "burden/calculator_models.h"
#include "burden/compute_run.h"
#include "database/bulk_insert.h"
#include "database/db_create.h"
#include "demography/standard_life_table.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <sys/resource.h>

namespace vesk::cli {

namespace {

int fail(const QString& why, int code = 1) {
    err(QStringLiteral("vesk-cli bench: ") + why);
    return code;
}

double peakMegabytes() {
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    return double(use.ru_maxrss) / 1024.0; // kilobytes on Linux
}

// The cells of a result array and of the nested sequela arrays it holds.
qint64 cellsOf(const Cell& a) {
    if (!a.isArray())
        return 0;
    qint64 n = qint64(a.array().count());
    for (std::size_t k = 0; k < a.array().count(); ++k)
        if (a.array().flat(k).isArray())
            n += cellsOf(a.array().flat(k));
    return n;
}

qint64 rowCount(const DbConnection& db, const char* table) {
    auto q = db.query(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table)));
    return q && q->next() ? q->value(0).toLongLong() : 0;
}

// SQLite's floor: `rows` rows of each result table's shape (its keys as text and numbers, its
// measures as doubles) inserted into a new study file in one transaction through one prepared
// statement each. Seconds of the inserts and the commit.
double sqliteFloor(const QString& path, const qint64 rows[3], QString* error) {
    if (!createStudyFile(path, error))
        return -1;
    auto db = DbConnection::open(path, error);
    if (!db)
        return -1;
    struct Shape {
        const char* sql;
        bool sequela;
        int measures;
    };
    const Shape shapes[3] = {
        {"INSERT INTO RsltYLD (BPUID, YEAR, DAPID, COBCd, SqlaCd, ASG, IYLD, PYLD) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
         true, 2},
        {"INSERT INTO RsltYLL (BPUID, YEAR, DAPID, COBCd, ASG, IYLL) VALUES (?, ?, ?, ?, ?, ?)", false, 1},
        {"INSERT INTO RsltDALY (BPUID, YEAR, DAPID, COBCd, ASG, IDALY, PDALY) VALUES (?, ?, ?, ?, ?, ?, ?)", false,
         2}};
    QElapsedTimer clock;
    clock.start();
    db->database().transaction();
    for (int t = 0; t < 3; ++t) {
        BulkInsert q(*db, QString::fromLatin1(shapes[t].sql));
        if (!q.ok()) {
            *error = q.error().databaseText();
            return -1;
        }
        // Keys in the order a computation stores them: unit, set, cause, group.
        for (qint64 n = 0; n < rows[t]; ++n) {
            const qint64 group = n % 38, cause = (n / 38) % 200, set = (n / 7600) % 4, unit = n / 30400;
            int i = 0;
            q.bindText(i++, QStringLiteral("B%1").arg(unit + 1, 4, 10, QChar('0')));
            q.bindInteger(i++, 2020);
            q.bindInteger(i++, set);
            q.bindText(i++, QStringLiteral("C%1").arg(cause, 4, 10, QChar('0')));
            if (shapes[t].sequela)
                q.bindText(i++, QStringLiteral("xxxxxxx"));
            q.bindText(i++, QStringLiteral("F%1").arg(group, 2, 10, QChar('0')));
            for (int m = 0; m < shapes[t].measures; ++m)
                q.bindDouble(i++, 1.0 / double(n + m + 1));
            if (!q.insert()) {
                *error = q.error().databaseText();
                return -1;
            }
        }
    }
    db->database().commit();
    return clock.elapsed() / 1000.0;
}

QString seconds(double s) {
    return QString::number(s, 'f', 2);
}

int bench(const QStringList& arguments) {
    QStringList args = arguments;
    const QString study = takeOption(args, QStringLiteral("--study")).value_or(QStringLiteral("nation"));
    const auto keep = takeOption(args, QStringLiteral("--keep"));
    const QString stp = takeOption(args, QStringLiteral("--settings")).value_or(defaultSettingsPath());
    if (!args.isEmpty() || !QStringList({"nation", "districts", "tiny"}).contains(study))
        return fail(QStringLiteral("give --study nation, districts or tiny; `vesk-cli bench --help` tells more"), 2);
    if (!QFileInfo(stp).isFile())
        return fail(QStringLiteral("no settings file at %1").arg(stp));
    QTemporaryDir scratch(QDir::current().filePath(QStringLiteral("vesk-bench-XXXXXX")));
    if (!scratch.isValid())
        return fail(QStringLiteral("cannot make a scratch folder in %1").arg(QDir::currentPath()));
    const QString file = keep.value_or(scratch.filePath(QStringLiteral("study.vdb")));
    if (QFileInfo::exists(file))
        return fail(QStringLiteral("%1 already exists").arg(file));

    // The study, made by the generator beside this program.
    QElapsedTimer clock;
    clock.start();
    QProcess gen;
    gen.start(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("vesk-studygen")), {study, file});
    if (!gen.waitForStarted() || !gen.waitForFinished(-1) || gen.exitCode() != 0)
        return fail(QStringLiteral("vesk-studygen could not make the study: ") +
                    QString::fromUtf8(gen.readAllStandardError()).trimmed());
    const double generated = clock.elapsed() / 1000.0;

    setErrorLogEnabled(false);
    readSettingsFile(stp, settings(), preferences());
    settings().ChoiceFiveYrs = Cell(1); // the studies split 0 and 1-4
    settings().StatOutPath = scratch.path() + u'/';
    preferences().txtwklocation = QFileInfo(file).absolutePath();
    preferences().txtVESKObj = QFileInfo(file).fileName();
    const StandardLifeTable table = standardLifeTable();
    if (!table.table)
        return fail(QStringLiteral("the settings file chooses no standard life table that is there"));
    if (!openComputationStudy(studyContext()))
        return fail(QStringLiteral("the generated study could not be opened"));
    const double before = peakMegabytes();
    Computation& comp = computation();
    DapGridModel sets(DapRowTexts::Computation);
    for (int r = 0; r < DapGridModel::kCustomRow; ++r)
        sets.chooseRow(r, kCompModeSensitivity);
    comp.MtxDAP = sets.chosenDaps();
    TimeLog log;
    clock.restart();
    const RunOutcome outcome = runComputation(studyContext(), comp, *table.table, nullptr, log, stp);
    const double whole = clock.elapsed() / 1000.0;
    const double peak = peakMegabytes();
    const qint64 cells = cellsOf(comp.ArrYld) + cellsOf(comp.ArrYll) + cellsOf(comp.ArrDaly);
    const qint64 rows[3] = {rowCount(*studyContext().StudyDB, "RsltYLD"), rowCount(*studyContext().StudyDB, "RsltYLL"),
                            rowCount(*studyContext().StudyDB, "RsltDALY")};
    const qint64 stored = rows[0] + rows[1] + rows[2];
    const int units = studyContext().VctrBPULst.isArray() ? int(studyContext().VctrBPULst.array().count()) : 0;
    const int causes = studyContext().MtxCobCd.isArray() ? studyContext().MtxCobCd.array().size(0) : 0;
    computation() = Computation{};
    studyContext() = StudyContext{};
    if (outcome.end != RunEnd::Stored)
        return fail(QStringLiteral("the run ended early: ") + outcome.message);

    QString error;
    const double floor = sqliteFloor(scratch.filePath(QStringLiteral("floor.vdb")), rows, &error);
    if (floor < 0)
        return fail(QStringLiteral("the floor could not be measured: ") + error);

    // The compute step's seconds, from its line of Time.stp.
    double compute = 0;
    for (const QString& line : log.lines())
        if (line.startsWith(timePhaseLiteral(TimePhase::Compute)))
            compute = line.mid(timePhaseLiteral(TimePhase::Compute).size()).toDouble();
    out(QStringLiteral("study,%1\nunits,%2\ncauses,%3\nparameter sets,4\n").arg(study).arg(units).arg(causes));
    out(QStringLiteral("generated in (s),%1\n").arg(seconds(generated)));
    for (const QString& line : log.lines().mid(1)) {
        const qsizetype at = line.lastIndexOf(QStringLiteral("=  "));
        out(csvLine({line.left(at).trimmed() + QStringLiteral(" (s)"), line.mid(at + 3).trimmed()}) + u'\n');
    }
    out(QStringLiteral("whole computation (s),%1\n").arg(seconds(whole)));
    out(QStringLiteral("rows stored,%1\nrows a second,%2\n").arg(stored).arg(qint64(double(stored) / whole)));
    out(QStringLiteral("result cells,%1\nkernel cells a second,%2\n")
            .arg(cells)
            .arg(compute > 0 ? QString::number(qint64(double(cells) / compute)) : QStringLiteral("(under 0.01 s)")));
    out(QStringLiteral("peak memory (MB),%1\nmemory before the run (MB),%2\nbytes a result cell,%3\n")
            .arg(seconds(peak), seconds(before), seconds((peak - before) * 1024 * 1024 / double(std::max<qint64>(cells, 1)))));
    out(QStringLiteral("SQLite floor (s),%1\nwhole / floor,%2\n").arg(seconds(floor), seconds(whole / floor)));
    if (errorStoreCount() > 0)
        err(QStringLiteral("%1 errors were stored on the way").arg(errorStoreCount()));
    return 0;
}

const Registrar benchCommand({
    QStringLiteral("bench"),
    QStringLiteral("measure a whole computation on a synthetic study"),
    QStringLiteral(
        "Usage: vesk-cli bench [--study nation|districts|tiny] [--keep FILE] [--settings FILE]\n\n"
        "Makes a synthetic study with vesk-studygen (beside vesk-cli): nation has 36 units in 6 regions,\n"
        "135 causes of which 30 have 2 to 4 sequelae, 38 age-sex groups for YLL, YLD and PND; districts\n"
        "the same with 700 units; tiny 3 units and 12 causes. Computes it for the four built-in\n"
        "parameter sets as `vesk-cli compute --sensitivity` does, then inserts as many rows of the\n"
        "same shape into the same tables of a new study file in one prepared, transactional loop:\n"
        "the floor that SQLite itself sets for storing them.\n\n"
        "  --study     the study to make (default nation)\n"
        "  --keep      keep the computed study in FILE (otherwise it goes with the scratch folder)\n"
        "  --settings  the settings file (default: Vesk.stp beside vesk-cli)\n\n"
        "Standard output, as CSV (measure,value): the seconds of generation and of each step of the\n"
        "run (those of Time.stp), the whole computation, rows stored and rows a second, the cells of\n"
        "the result arrays and the kernel's cells a second, the peak resident memory and the bytes a\n"
        "result cell it grew by, the floor's seconds and the ratio of the whole computation to it.\n"
        "The scratch files go in a folder made in the current folder, removed at the end."),
    bench,
});

} // namespace

} // namespace vesk::cli
