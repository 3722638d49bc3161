#pragma once
// What Study Setup asks of the frame. Study Setup switches no menu item and arms no timer itself: at
// the moment such a thing is due it asks for it here, and the frame does it through the handler it
// installs (for the program, and on the Study Setup form it opens). The request comes at the same
// point as the old program's switch, so the order against the messages stays. Without a handler the
// requests are kept, in order, for whoever reads them.

#include "database/study_context.h"

#include <QStringList>
#include <functional>
#include <vector>

namespace vesk {

struct FrameRequest {
    enum class Kind {
        Finding,       // a loader's finding (`finding`), with whatever the frame makes of it
        SwitchItems,   // the menu items `items`, each switched to `enabled`
        StudyComplete, // a new database holds its minimum: the menu as the chain leaves a ready database
        LevelCaptions, // the Results branches named after the study's levels
        RearmChain,    // Timer1 armed again, so that the chain loads the database the settings name
    };
    Kind kind = Kind::Finding;
    StudyFinding finding = StudyFinding::Loaded;
    QStringList items;
    bool enabled = false;

    static FrameRequest of(LoadReport report) { return {Kind::Finding, report.finding, {}, false}; }
    static FrameRequest plain(Kind kind) { return {kind, StudyFinding::Loaded, {}, false}; }
    static FrameRequest switchItems(const QStringList& items, bool enabled) {
        return {Kind::SwitchItems, StudyFinding::Loaded, items, enabled};
    }
};

using FrameRequestHandler = std::function<void(const FrameRequest&)>;

class SetupRequests {
public:
    void ask(const FrameRequest& request);
    void ask(LoadReport report) { ask(FrameRequest::of(report)); }
    // Installs `handler` (an empty one keeps the requests) and gives back the one it replaces.
    FrameRequestHandler setHandler(FrameRequestHandler handler);
    // The requests kept since the last call, in order.
    std::vector<FrameRequest> takeKept();

private:
    FrameRequestHandler handler_;
    std::vector<FrameRequest> kept_;
};

// The one channel of the program.
SetupRequests& setupRequests();

// Installs a handler for the life of the object and puts the former one back after it.
class ScopedSetupHandler {
public:
    explicit ScopedSetupHandler(FrameRequestHandler handler)
        : former_(setupRequests().setHandler(std::move(handler))) {}
    ~ScopedSetupHandler() { setupRequests().setHandler(std::move(former_)); }
    ScopedSetupHandler(const ScopedSetupHandler&) = delete;
    ScopedSetupHandler& operator=(const ScopedSetupHandler&) = delete;

private:
    FrameRequestHandler former_;
};

} // namespace vesk
