#pragma once
// The ground of the import, export and zap tests: the demonstration study copied into a temporary
// folder and opened as the loading chain opens it, scripted prompts, and the tables read back as
// rows (in their stored order, or sorted, for a round trip that may store them in another order).

#include "burden/compute_run.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "platform/prompts.h"
#include "query_rows.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

namespace vesk::test {

class TransferTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        const QString file = dir.filePath(QStringLiteral("demo.vdb"));
        ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_BIN_DIR "/demo.vdb"), file));
        QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        readSettingsFile(QStringLiteral(VESK_BIN_DIR "/Vesk.stp"), settings(), preferences());
        settings().AppPath = QStringLiteral(VESK_BIN_DIR);
        settings().StatOutPath = dir.path() + u'/';
        setErrorLogEnabled(false);
        preferences().txtwklocation = dir.path();
        preferences().txtVESKObj = QStringLiteral("demo.vdb");
        studyContext() = StudyContext{};
        installed = std::make_unique<ScopedPromptService>(&prompts);
        ASSERT_TRUE(openComputationStudy(studyContext()));
        prompts.clear();
    }
    void TearDown() override {
        studyContext() = StudyContext{};
        clearErrorStore();
        installed.reset();
    }

    const DbConnection& db() const { return *studyContext().StudyDB; }
    QString path(const QString& name) const { return dir.filePath(name); }
    void exec(const QString& sql, const QVariantList& values = {}) const {
        QSqlError e;
        EXPECT_TRUE(db().exec(sql, values, &e)) << e.text().toStdString();
    }

    // The rows of a table in their stored order.
    QStringList dump(const QString& table) const {
        QString error;
        const QStringList rows =
            queryRows(db(), QStringLiteral("SELECT * FROM \"%1\" ORDER BY rowid").arg(table), {}, &error);
        EXPECT_TRUE(error.isEmpty()) << error.toStdString();
        return rows;
    }
    // The same, sorted and joined a row a line: the rows a round trip must bring back, whatever
    // their order.
    std::string sorted(const QString& table) const {
        QStringList rows = dump(table);
        rows.sort();
        return rows.join(u'\n').toStdString();
    }
    // Every table of the file with its statement and its rows in order: what a failed import must
    // leave exactly as it was.
    std::string dumpAll() const {
        QStringList out;
        for (const auto& t : db().tables())
            out << t.sql << dump(t.name);
        return out.join(u'\n').toStdString();
    }

    // Answers queued for the next questions.
    void answer(std::initializer_list<Answer> answers) {
        for (Answer a : answers)
            prompts.answer(a);
    }
    QString lastMessage() const {
        const QStringList m = prompts.messages();
        return m.isEmpty() ? QString() : m.last();
    }

    QTemporaryDir dir;
    ScriptedPrompts prompts;
    std::unique_ptr<ScopedPromptService> installed;
};

// A file's bytes, and a file written anew with `bytes` (a test's hand-made or damaged file).
inline QByteArray readBytes(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
inline bool writeBytes(const QString& file, const QByteArray& bytes) {
    QFile::remove(file);
    QFile f(file);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

// The kinds of file every round trip is made through.
inline const QStringList& transferKinds() {
    static const QStringList kinds = {QStringLiteral("txt"), QStringLiteral("WK1"), QStringLiteral("xlsx"),
                                      QStringLiteral("dbf"), QStringLiteral("vdb")};
    return kinds;
}

} // namespace vesk::test
