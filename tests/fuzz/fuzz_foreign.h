#pragma once
// One foreign-file reader under the fuzzer: the input as a file of the kind's extension, read by
// FnReadArrFile under the names the seed files use, so that the fuzzer starts inside the tables.

#include "fuzz_file.h"
#include "inputs/foreign_file.h"
#include "platform/prompts.h"

namespace vesk::fuzz {

inline int readForeign(const uint8_t* data, size_t size, const QString& fileName, const QStringList& tables) {
    static ScriptedPrompts quiet; // a refusal's message goes here, not to a dialog
    static const bool installed = (setPromptService(&quiet), true);
    (void)installed;
    quiet.clear();
    const QString path = inputFile(data, size, fileName);
    for (const QString& table : tables) {
        QStringList names;
        const CellArray rows = FnReadArrFile(path, table, &names);
        (void)rows;
    }
    return 0;
}

} // namespace vesk::fuzz
