// The settings file's readers under the fuzzer: the numeric blocks, whatever the file holds. Which
// of the seven readers runs follows from the input's length, so that each input is read once (the
// same way each time it is run) and the mutations that change a length try the other readers.
// tests/inputs/kept_fuzz_inputs_test.cpp reads every kept input with all seven.

#include "fuzz_file.h"
#include "fuzz_names.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString path = vesk::fuzz::inputFile(data, size, QStringLiteral("Vesk.stp"));
    vesk::CellArray table;
    vesk::fuzz::readSettingsBlock(int(size % vesk::fuzz::kSettingsReaders), path, table);
    return 0;
}
