#include "platform/progress.h"

#include "platform/service_slot.h"

namespace vesk {

namespace {
ServiceSlot<Progress, RecordingProgress> current;
} // namespace

Progress& progress() {
    return current.get();
}

void setProgress(Progress* p) {
    current.installed = p;
}

} // namespace vesk
