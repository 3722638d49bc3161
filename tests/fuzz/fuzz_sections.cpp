// The reader of text files of sections (all dictionaries under their [NAME] lines, the three levels
// of population units each after a line with its name) under the fuzzer: whatever the text holds,
// a section is read or refused, and the reader returns.

#include "inputs/transfer_tables.h"

#include <QString>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QString error;
    (void)vesk::sectionRows(
        text, QStringLiteral("fuzz.txt"),
        [](const QString& line) { return line.toUpper() == QLatin1String("[_DCTBDM]"); },
        [](const QString& line) { return line.isEmpty() || line.startsWith(u'['); }, &error);
    (void)vesk::sectionRows(
        text, QStringLiteral("fuzz.txt"),
        [](const QString& line) { return line.contains(QLatin1String("_DctBPU")); },
        [](const QString& line) {
            return line.contains(QLatin1String("_DctPAG1")) || line.contains(QLatin1String("_DctPAG2"));
        },
        &error);
    return 0;
}
