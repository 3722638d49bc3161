// The WK1 reader under the fuzzer: whatever the file holds, it reads or refuses, and returns.

#include "fuzz_foreign.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return vesk::fuzz::readForeign(data, size, QStringLiteral("T.WK1"));
}
