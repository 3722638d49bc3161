#pragma once
// Event sounds: fire and forget. Playing an empty name stops whatever plays; a path that names no
// readable sound does nothing and says nothing.

#include <QString>
#include <QStringList>

namespace vesk {

class SoundService {
public:
    virtual ~SoundService() = default;
    virtual void play(const QString& path) = 0;
};

// Keeps the names played; the default without a screen, and the double of tests.
class RecordingSound : public SoundService {
public:
    void play(const QString& path) override { played << path; }
    QStringList played;
};

SoundService& sounds();
void setSoundService(SoundService* s); // not owned; nullptr goes back to the default

// Plays `path` asynchronously; an empty path stops the sound.
inline void playSound(const QString& path) {
    sounds().play(path);
}
inline void stopSound() {
    sounds().play(QString());
}

} // namespace vesk
