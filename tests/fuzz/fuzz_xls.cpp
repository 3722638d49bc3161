// The program's own reading of a legacy workbook's compound file and defined names under the
// fuzzer. The cells of an .xls are read by the freexl library in a child process, which a damaged
// file may bring down without harm; what runs inside the program is fuzzed here.

#include "fuzz_file.h"
#include "inputs/xls_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString path = vesk::fuzz::inputFile(data, size, QStringLiteral("T.xls"));
    const QList<vesk::XlsName> names = vesk::readXlsNames(path);
    (void)names;
    return 0;
}
