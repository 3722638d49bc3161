#pragma once
// One foreign-file reader under the fuzzer: the input as a file of the kind's extension, read by
// FnReadArrFile under one of the names the seed files use, so that the fuzzer starts inside the
// tables. Which name is asked for follows from the input's length: every input asks for one, the
// same one each time it is run, and the mutations that change a length try the others, at a
// fraction of the cost of reading the whole file once per name. tests/inputs/kept_fuzz_inputs_test.cpp
// reads every kept input under every name.

#include "fuzz_file.h"
#include "fuzz_names.h"
#include "inputs/foreign_file.h"
#include "platform/prompts.h"

#include <QFileInfo>

namespace vesk::fuzz {

inline int readForeign(const uint8_t* data, size_t size, const QString& fileName) {
    static ScriptedPrompts quiet; // a refusal's message goes here, not to a dialog
    static const bool installed = (setPromptService(&quiet), true);
    (void)installed;
    quiet.clear();
    const QString path = inputFile(data, size, fileName);
    static const QStringList tables = tableNamesFor(QFileInfo(fileName).suffix()); // one kind per target
    QStringList names;
    const CellArray rows = FnReadArrFile(path, tables.at(qsizetype(size % size_t(tables.size()))), &names);
    (void)rows;
    return 0;
}

} // namespace vesk::fuzz
