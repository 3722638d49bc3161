#pragma once
// The program's words are kept in catalogs, one per subsystem (src/<folder>/<name>.catalog), and the
// build turns each into the texts header that the code includes (<folder>/<name>.h). A catalog holds
// only the words; the header adds the C++ around them. The format, line by line:
//
//     // The words of ..., kept to the letter.         a comment, copied into the header
//                                                     a blank line, copied
//     namespace vesk::calculator_texts                once, before the first entry
//     kCaption = "Define Study"                       a text: C++ string literals
//     kLong =                                         an entry goes on while its lines are indented
//         "first part, "
//         "second part"
//     kHeads = ["Study Id", "Year",                   a list of texts, as a std::array
//         "Study Title"]
//
// The values are C++ string literals, so their escapes ("\"", "\n", "\xc3\xa9") are the language's,
// and the header holds them byte for byte. Source files are UTF-8.

#include <string>
#include <string_view>

namespace textcat {

struct Result {
    bool ok = false;
    std::string header; // the whole header, when ok
    std::string error;  // "line N: what is wrong", when not
};

// The texts header of `catalog`; `origin` is the catalog's name as the header's first comment gives it.
Result catalogToHeader(std::string_view catalog, std::string_view origin);

} // namespace textcat
