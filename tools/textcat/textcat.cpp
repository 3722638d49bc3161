#include "textcat.h"

#include <cctype>
#include <vector>

namespace textcat {

namespace {

struct Line {
    int number;
    std::string text;
};

std::vector<Line> splitLines(std::string_view s) {
    std::vector<Line> lines;
    int number = 1;
    size_t start = 0;
    while (start <= s.size()) {
        size_t end = s.find('\n', start);
        if (end == std::string_view::npos)
            end = s.size();
        std::string text(s.substr(start, end - start));
        if (!text.empty() && text.back() == '\r')
            text.pop_back();
        if (end == s.size() && text.empty())
            break; // the newline at the end of the file
        lines.push_back({number++, std::move(text)});
        start = end + 1;
    }
    return lines;
}

bool isBlank(std::string_view s) {
    for (char c : s)
        if (!std::isspace(static_cast<unsigned char>(c)))
            return false;
    return true;
}

bool isIndented(std::string_view s) {
    return !s.empty() && (s[0] == ' ' || s[0] == '\t');
}

std::string_view trim(std::string_view s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front())))
        s.remove_prefix(1);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back())))
        s.remove_suffix(1);
    return s;
}

bool isIdentifier(std::string_view s) {
    if (s.empty() || std::isdigit(static_cast<unsigned char>(s[0])))
        return false;
    for (char c : s)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_')
            return false;
    return true;
}

// Scans the values of one entry: string literals, and for a list the commas between them and the
// closing bracket. Returns what is wrong, or "" when the entry reads whole.
class ValueScanner {
public:
    ValueScanner(std::string_view text, bool list) : s_(text), list_(list) {}

    std::string scan() {
        if (list_ && !take('['))
            return "a list opens with [";
        int literals = 0;
        bool wantLiteral = true;
        for (skipSpace(); pos_ < s_.size(); skipSpace()) {
            const char c = s_[pos_];
            if (c == '"') {
                if (list_ && !wantLiteral)
                    return "a comma is missing between two texts of the list";
                if (std::string e = literal(); !e.empty())
                    return e;
                ++literals;
                wantLiteral = false;
            } else if (list_ && c == ',' && !wantLiteral) {
                ++pos_;
                wantLiteral = true;
            } else if (list_ && c == ']') {
                ++pos_;
                skipSpace();
                if (pos_ != s_.size())
                    return "nothing may follow the ] of a list";
                return literals == 0 ? "a list holds one text at least" : "";
            } else {
                return std::string("a text is one or more \"...\" literals; found '") + c + "'";
            }
        }
        if (list_)
            return "the list has no closing ]";
        return literals == 0 ? "the entry has no text" : "";
    }

private:
    bool take(char c) {
        skipSpace();
        if (pos_ < s_.size() && s_[pos_] == c) {
            ++pos_;
            return true;
        }
        return false;
    }
    void skipSpace() {
        while (pos_ < s_.size() && std::isspace(static_cast<unsigned char>(s_[pos_])))
            ++pos_;
    }
    std::string literal() {
        for (++pos_; pos_ < s_.size(); ++pos_) {
            if (s_[pos_] == '\\')
                ++pos_;
            else if (s_[pos_] == '"') {
                ++pos_;
                return "";
            } else if (s_[pos_] == '\n')
                break;
        }
        return "a text literal is not closed on its line";
    }

    std::string_view s_;
    bool list_;
    size_t pos_ = 0;
};

// One entry: "kName = value" and the indented lines after it.
struct Entry {
    std::string name;
    std::vector<std::string> parts; // the first line's value (may be empty), then each continuation
};

std::string declaration(const Entry& e, bool list) {
    // The first line's value stays on the name's line; each continuation goes on a line of its own.
    std::string value;
    for (size_t i = 0; i < e.parts.size(); ++i) {
        const std::string_view part = trim(e.parts[i]);
        if (i > 0)
            value += "\n    ";
        value += part;
    }
    if (list) {
        // The scanner has seen the opening [ before the first literal and nothing after the ].
        value.erase(value.find('['), 1);
        value.erase(value.rfind(']'), 1);
        return "inline constexpr std::array " + e.name + "{" + std::string(trim(value)) + "};\n";
    }
    const bool onNextLine = value.empty() || value.front() == '\n';
    return "inline constexpr const char* " + e.name + " =" + (onNextLine ? "" : " ") + value + ";\n";
}

std::string lineError(int line, std::string_view what) {
    return "line " + std::to_string(line) + ": " + std::string(what);
}

} // namespace

Result catalogToHeader(std::string_view catalog, std::string_view origin) {
    const std::vector<Line> lines = splitLines(catalog);
    std::string preamble;
    std::string body;
    std::string ns;
    for (size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        const std::string_view t = trim(line.text);
        if (t.empty() || t.starts_with("//")) {
            if (isIndented(line.text) && !t.empty())
                return {false, {}, lineError(line.number, "a comment stands at the start of its line")};
            (ns.empty() ? preamble : body) += std::string(t) + "\n";
            continue;
        }
        if (isIndented(line.text))
            return {false, {}, lineError(line.number, "an indented line continues an entry, and none is open")};
        if (t.starts_with("namespace ")) {
            if (!ns.empty())
                return {false, {}, lineError(line.number, "a catalog names its namespace once")};
            ns = std::string(trim(t.substr(10)));
            if (!ns.starts_with("vesk::") || !isIdentifier(ns.substr(6)))
                return {false, {}, lineError(line.number, "the namespace is vesk::<name>")};
            continue;
        }
        const size_t eq = t.find('=');
        if (eq == std::string_view::npos)
            return {false, {}, lineError(line.number, "an entry reads: kName = \"text\"")};
        if (ns.empty())
            return {false, {}, lineError(line.number, "the namespace line comes before the first entry")};
        Entry e{std::string(trim(t.substr(0, eq))), {std::string(t.substr(eq + 1))}};
        if (!isIdentifier(e.name))
            return {false, {}, lineError(line.number, "'" + e.name + "' is not a name")};
        while (i + 1 < lines.size() && isIndented(lines[i + 1].text) && !isBlank(lines[i + 1].text))
            e.parts.push_back(lines[++i].text);
        std::string value;
        for (const std::string& p : e.parts)
            value += p + "\n";
        const bool list = trim(value).starts_with("[");
        if (std::string what = ValueScanner(value, list).scan(); !what.empty())
            return {false, {}, lineError(line.number, e.name + ": " + what)};
        body += declaration(e, list);
    }
    if (ns.empty())
        return {false, {}, "the catalog names no namespace"};
    while (body.ends_with("\n\n"))
        body.pop_back();
    while (preamble.ends_with("\n\n"))
        preamble.pop_back();
    std::string h = "#pragma once\n" + preamble;
    h += "// Made by the build from " + std::string(origin) + "; the words are edited there.\n\n";
    h += "#include \"platform/texts.h\"\n\n#include <array>\n\nnamespace " + ns + " {\n\n";
    h += "// The one text() of every texts header, for the places that name it as this header's own.\n";
    h += "using vesk::text;\n" + body + "\n} // namespace " + ns + "\n";
    return {true, std::move(h), {}};
}

} // namespace textcat
