// The CSV parser of vesk-cli under the fuzzer: whatever the text holds, it parses or refuses.

#include "platform/csv.h"

#include <QString>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QString error;
    const auto table = vesk::parseCsv(QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)), &error);
    (void)table;
    return 0;
}
