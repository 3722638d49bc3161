#include "platform/progress.h"

namespace vesk {

namespace {
RecordingProgress fallback;
Progress* installed = nullptr;
} // namespace

Progress& progress() {
    return installed ? *installed : fallback;
}

void setProgress(Progress* p) {
    installed = p;
}

} // namespace vesk
