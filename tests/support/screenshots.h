#pragma once
// Pictures of windows taken by the form tests: where they go, and whether one shows anything.

#include <QImage>
#include <QSet>
#include <QString>
#include <QTemporaryDir>

namespace vesk::test {

// VESK_SCREENSHOT_DIR when it is set (docs/screenshots, to refresh the user's pictures); otherwise
// the test's scratch folder, so that only the taking of the pictures is tested.
inline QString screenshotFolder(const QTemporaryDir& scratch) {
    return qEnvironmentVariableIsSet("VESK_SCREENSHOT_DIR") ? qEnvironmentVariable("VESK_SCREENSHOT_DIR")
                                                            : scratch.path();
}

// Not blank: more than a handful of distinct colours.
inline bool hasContent(const QImage& image) {
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 3)
        for (int x = 0; x < image.width(); x += 3)
            colours.insert(image.pixel(x, y));
    return colours.size() > 8;
}

} // namespace vesk::test
