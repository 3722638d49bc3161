// The settings file's readers under the fuzzer: the numeric blocks, whatever the file holds.

#include "foundation/settings_file.h"
#include "fuzz_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString path = vesk::fuzz::inputFile(data, size, QStringLiteral("Vesk.stp"));
    vesk::CellArray table;
    vesk::FnReadLTS(QStringLiteral("[Standard Life Table-KRO]"), table, path);
    vesk::FnReadOAIGD(table, path);
    for (int panel = 0; panel <= 4; ++panel)
        vesk::FnReadPanel(panel, table, path);
    return 0;
}
