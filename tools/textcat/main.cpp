// vesk-textcat <catalog> <header>: writes the texts header of a catalog, and leaves the header as it
// is when it would not change, so that nothing that includes it is built again.

#include "textcat.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

bool readWhole(const char* path, std::string& out) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    std::ostringstream s;
    s << in.rdbuf();
    out = s.str();
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: vesk-textcat <catalog> <header>\n";
        return 2;
    }
    std::string catalog;
    if (!readWhole(argv[1], catalog)) {
        std::cerr << argv[1] << ": cannot be read\n";
        return 1;
    }
    std::string origin = argv[1];
    if (const size_t src = origin.rfind("/src/"); src != std::string::npos)
        origin = origin.substr(src + 1);
    const textcat::Result r = textcat::catalogToHeader(catalog, origin);
    if (!r.ok) {
        std::cerr << argv[1] << ": " << r.error << "\n";
        return 1;
    }
    std::string old;
    if (readWhole(argv[2], old) && old == r.header)
        return 0;
    std::ofstream out(argv[2], std::ios::binary | std::ios::trunc);
    out << r.header;
    out.close();
    if (!out) {
        std::cerr << argv[2] << ": cannot be written\n";
        return 1;
    }
    return 0;
}
