#include "platform/program_end.h"

#include "platform/service_slot.h"

namespace vesk {

namespace {

ServiceSlot<ProgramEnd, CountingProgramEnd>& slot() {
    static ServiceSlot<ProgramEnd, CountingProgramEnd> s;
    return s;
}

} // namespace

ProgramEnd& programEnd() {
    return slot().get();
}

void setProgramEnd(ProgramEnd* end) {
    slot().installed = end;
}

} // namespace vesk
