#include "platform/sound.h"

namespace vesk {

namespace {
class SilentSound : public SoundService {
public:
    void play(const QString&) override {}
};
SilentSound fallback;
SoundService* installed = nullptr;
} // namespace

SoundService& sounds() {
    return installed ? *installed : fallback;
}

void setSoundService(SoundService* s) {
    installed = s;
}

} // namespace vesk
