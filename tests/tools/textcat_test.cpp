// The texts catalogs: the header made from a catalog holds each text byte for byte, and a catalog
// that does not read whole stops the build with the line that is wrong.

#include "sample_texts.h" // made by the build from sample_texts.catalog
#include "textcat.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using textcat::catalogToHeader;

namespace {

// The sample catalog, as the build turned it into a header and the compiler read it.
TEST(TextCatalog, TheBuiltHeaderHoldsEachTextByteForByte) {
    namespace s = vesk::sample_texts;
    EXPECT_STREQ(s::kPlain, "Feesability Check");
    EXPECT_STREQ(s::kBlanks, "              Apply Changes  ");
    EXPECT_STREQ(s::kEmpty, "");
    EXPECT_STREQ(s::kQuoteAndSemicolon, "He said \"no\"; then left; ");
    EXPECT_STREQ(s::kLineBreak, "first line\nsecond line");
    EXPECT_EQ(vesk::text(s::kNonLatin), QString::fromUtf8(u8"\u00e9t\u00e9 \u043c\u0438\u0440 \u5e74"));
    EXPECT_STREQ(s::kSlashesAndBrackets, "// not a comment [not a list] = not an entry");
    EXPECT_STREQ(s::kLong, "joined over three lines");
}

TEST(TextCatalog, AListBecomesAnArrayOfItsTextsInOrder) {
    namespace s = vesk::sample_texts;
    static_assert(s::kList.size() == 4);
    EXPECT_STREQ(s::kList[0], "Study Id");
    EXPECT_STREQ(s::kList[1], "Year");
    EXPECT_STREQ(s::kList[2], "Study, Title");
    EXPECT_STREQ(s::kList[3], "[x]");
    static_assert(s::kOneItem.size() == 1);
    EXPECT_STREQ(s::kOneItem[0], "007");
}

TEST(TextCatalog, TheHeaderKeepsTheCommentsAndNamesItsCatalog) {
    const auto r = catalogToHeader("// The words of X.\n\nnamespace vesk::x\n\n// Heads.\nkA = \"a\"\n",
                                   "src/x/x_texts.catalog");
    ASSERT_TRUE(r.ok) << r.error;
    EXPECT_EQ(r.header.rfind("#pragma once\n// The words of X.\n// Made by the build from src/x/x_texts.catalog", 0),
              0u)
        << r.header;
    EXPECT_NE(r.header.find("namespace vesk::x {\n"), std::string::npos);
    EXPECT_NE(r.header.find("// Heads.\ninline constexpr const char* kA = \"a\";\n"), std::string::npos);
    EXPECT_NE(r.header.find("} // namespace vesk::x\n"), std::string::npos);
}

TEST(TextCatalog, ACatalogWithWindowsLineEndsReadsTheSame) {
    const auto unix = catalogToHeader("namespace vesk::x\nkA =\n    \"a\"\n    \"b\"\n", "c");
    const auto dos = catalogToHeader("namespace vesk::x\r\nkA =\r\n    \"a\"\r\n    \"b\"\r\n", "c");
    ASSERT_TRUE(unix.ok && dos.ok);
    EXPECT_EQ(unix.header, dos.header);
}

// Each fault names its line, so that the build says where the catalog is wrong.
struct Fault {
    const char* catalog;
    const char* error;
};

class TextCatalogFault : public testing::TestWithParam<Fault> {};

TEST_P(TextCatalogFault, IsRefusedWithItsLine) {
    const auto r = catalogToHeader(GetParam().catalog, "c");
    EXPECT_FALSE(r.ok);
    EXPECT_EQ(r.error, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, TextCatalogFault,
    testing::Values(
        Fault{"kA = \"a\"\n", "line 1: the namespace line comes before the first entry"},
        Fault{"// only words\n", "the catalog names no namespace"},
        Fault{"namespace vesk::x\nnamespace vesk::y\n", "line 2: a catalog names its namespace once"},
        Fault{"namespace other::x\n", "line 1: the namespace is vesk::<name>"},
        Fault{"namespace vesk::x\nkA \"a\"\n", "line 2: an entry reads: kName = \"text\""},
        Fault{"namespace vesk::x\n2k = \"a\"\n", "line 2: '2k' is not a name"},
        Fault{"namespace vesk::x\nkA = \"a\n", "line 2: kA: a text literal is not closed on its line"},
        Fault{"namespace vesk::x\nkA = a\n", "line 2: kA: a text is one or more \"...\" literals; found 'a'"},
        Fault{"namespace vesk::x\nkA =\n", "line 2: kA: the entry has no text"},
        Fault{"namespace vesk::x\nkA = [\"a\" \"b\"]\n",
              "line 2: kA: a comma is missing between two texts of the list"},
        Fault{"namespace vesk::x\nkA = [\"a\",\n", "line 2: kA: the list has no closing ]"},
        Fault{"namespace vesk::x\nkA = []\n", "line 2: kA: a list holds one text at least"},
        Fault{"namespace vesk::x\nkA = [\"a\"] \"b\"\n", "line 2: kA: nothing may follow the ] of a list"},
        Fault{"namespace vesk::x\n\n    \"a\"\n", "line 3: an indented line continues an entry, and none is open"},
        Fault{"namespace vesk::x\n  // aside\n", "line 2: a comment stands at the start of its line"}));

} // namespace
