#include "platform/sound.h"

#include "platform/service_slot.h"

namespace vesk {

namespace {
class SilentSound : public SoundService {
public:
    void play(const QString&) override {}
};
ServiceSlot<SoundService, SilentSound> current;
} // namespace

SoundService& sounds() {
    return current.get();
}

void setSoundService(SoundService* s) {
    current.installed = s;
}

} // namespace vesk
