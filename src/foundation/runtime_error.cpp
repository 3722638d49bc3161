#include "foundation/runtime_error.h"

#include <array>
#include <utility>

namespace vesk {

namespace {

struct Words {
    int number;
    const char* words;
};

// The runtime's own words, to the letter.
constexpr std::array<Words, 14> kWords = {{
    {runtime_error::kInvalidProcedureCall, "Invalid procedure call or argument"},
    {runtime_error::kOverflow, "Overflow"},
    {runtime_error::kOutOfMemory, "Out of memory"},
    {runtime_error::kSubscriptOutOfRange, "Subscript out of range"},
    {runtime_error::kDivisionByZero, "Division by zero"},
    {runtime_error::kTypeMismatch, "Type mismatch"},
    {runtime_error::kBadFileNameOrNumber, "Bad file name or number"},
    {runtime_error::kFileNotFound, "File not found"},
    {runtime_error::kDiskFull, "Disk full"},
    {runtime_error::kInputPastEnd, "Input past end of file"},
    {runtime_error::kPermissionDenied, "Permission denied"},
    {runtime_error::kPathFileAccess, "Path/File access error"},
    {runtime_error::kPathNotFound, "Path not found"},
    {runtime_error::kInvalidUseOfNull, "Invalid use of Null"},
}};

} // namespace

QString runtimeWords(int number) {
    for (const Words& w : kWords)
        if (w.number == number)
            return QString::fromLatin1(w.words);
    return QStringLiteral("Application-defined or object-defined error");
}

RuntimeError::RuntimeError(int number) : RuntimeError(number, runtimeWords(number)) {}

RuntimeError::RuntimeError(int number, QString words)
    : number(number), words(std::move(words)), what_(this->words.toStdString()) {}

} // namespace vesk
