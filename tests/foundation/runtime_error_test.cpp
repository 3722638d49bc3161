// The one run-time error: its number, the runtime's words for it, and words of its own.

#include "foundation/runtime_error.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

TEST(RuntimeErrorTest, ANumberAloneTakesTheRuntimesWords) {
    const RuntimeError e(runtime_error::kSubscriptOutOfRange);
    EXPECT_EQ(e.number, 9);
    EXPECT_EQ(e.words, QStringLiteral("Subscript out of range"));
    EXPECT_STREQ(e.what(), "Subscript out of range");
}

TEST(RuntimeErrorTest, TheTableHoldsTheWordsTheProgramRaises) {
    const std::pair<int, const char*> cases[] = {
        {5, "Invalid procedure call or argument"}, {6, "Overflow"},
        {7, "Out of memory"},                      {11, "Division by zero"},
        {13, "Type mismatch"},                     {52, "Bad file name or number"},
        {53, "File not found"},                    {61, "Disk full"},
        {62, "Input past end of file"},            {70, "Permission denied"},
        {75, "Path/File access error"},            {76, "Path not found"},
        {94, "Invalid use of Null"}};
    for (const auto& [number, words] : cases)
        EXPECT_EQ(runtimeWords(number), QString::fromLatin1(words)) << number;
}

TEST(RuntimeErrorTest, AnUnknownNumberGetsTheRuntimesWordsForItsOwn) {
    EXPECT_EQ(runtimeWords(31999), QStringLiteral("Application-defined or object-defined error"));
}

TEST(RuntimeErrorTest, WordsOfItsOwnAreKeptWholeAndCaughtAsAStandardException) {
    try {
        throw RuntimeError(3044, QStringLiteral("'C:\\Ω;\"x\"' is not a valid path."));
    } catch (const std::exception& e) {
        EXPECT_EQ(QString::fromStdString(e.what()), QStringLiteral("'C:\\Ω;\"x\"' is not a valid path."));
    }
}

} // namespace
