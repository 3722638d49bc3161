#pragma once
// A program folder in a temporary directory with the fixture settings file, the folders it names,
// and a scripted prompt service that records every message.

#include "platform/prompts.h"
#include "qt_printers.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>

namespace vesk::test {

class StpTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        settings() = VeskSettings{};
        preferences() = PreferencesControls{};
        scope_.emplace(&prompts_);
        const QDir root(dir_.path());
        for (const char* sub : {"app", "Work", "Output", "Temp", "Import", "sounds"})
            ASSERT_TRUE(root.mkpath(QString::fromLatin1(sub)));
        QFile study(root.filePath(QStringLiteral("Work/study.vdb")));
        ASSERT_TRUE(study.open(QIODevice::WriteOnly));
    }
    void TearDown() override {
        scope_.reset();
        settings() = VeskSettings{};
        preferences() = PreferencesControls{};
    }

    QString root() const { return dir_.path(); }
    QString appDir() const { return dir_.path() + QStringLiteral("/app"); }
    QString stpPath() const { return appDir() + QStringLiteral("/Vesk.stp"); }

    // The complete fixture, its folders pointing into this test's directory.
    QByteArray completeFile() const {
        QFile f(QStringLiteral(VESK_TEST_DATA "/settings/complete.stp.in"));
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().replace("@DIR@", dir_.path().toUtf8());
    }

    // Writes `content` as the program folder's Vesk.stp and points AppPath there.
    void install(const QByteArray& content) {
        writeFile(stpPath(), content);
        settings().AppPath = appDir();
    }
    static void writeFile(const QString& path, const QByteArray& content) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(f.write(content), content.size());
    }
    static QByteArray readFile(const QString& path) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly))
            return {};
        return f.readAll();
    }
    QByteArray installed() const { return readFile(stpPath()); }

    // Replaces one whole line (without its CR LF) of `content`; the line must be there.
    static QByteArray withLine(QByteArray content, const QByteArray& from, const QByteArray& to) {
        const QByteArray needle = "\r\n" + from + "\r\n";
        const qsizetype at = content.indexOf(needle);
        EXPECT_GE(at, 0) << from.constData();
        if (at >= 0)
            content.replace(at, needle.size(), "\r\n" + to + "\r\n");
        return content;
    }
    // Removes one whole line.
    static QByteArray withoutLine(QByteArray content, const QByteArray& line) {
        const QByteArray needle = "\r\n" + line + "\r\n";
        const qsizetype at = content.indexOf(needle);
        EXPECT_GE(at, 0) << line.constData();
        if (at >= 0)
            content.replace(at, needle.size(), "\r\n");
        return content;
    }

    ScriptedPrompts prompts_;

private:
    QTemporaryDir dir_;
    std::optional<ScopedPromptService> scope_;
};

} // namespace vesk::test
