// The one text() of the texts headers: a UTF-8 literal as the QString a prompt or caption takes.

#include "platform/texts.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

TEST(TextsTest, AnAsciiTextIsKeptToTheLetterBlanksIncluded) {
    EXPECT_EQ(text("Feesability Check"), QStringLiteral("Feesability Check"));
    EXPECT_EQ(text("              Apply Changes"), QStringLiteral("              Apply Changes"));
    EXPECT_EQ(text(""), QString());
}

TEST(TextsTest, TheLiteralsAreReadAsUtf8) {
    EXPECT_EQ(text("\xc3\xa9t\xc3\xa9"), QString::fromUtf8("été"));
    EXPECT_EQ(text("\xc3\xa9").size(), 1);
}

TEST(TextsTest, TwoConstantsJoinOnceTheFirstIsAText) {
    constexpr const char* a = "The field ";
    constexpr const char* b = " is not present in the table ";
    EXPECT_EQ(text(a) + b, QStringLiteral("The field  is not present in the table "));
}

} // namespace
