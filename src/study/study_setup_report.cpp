#include "study/study_setup_report.h"

namespace vesk {

void SetupRequests::ask(const FrameRequest& request) {
    if (handler_)
        handler_(request);
    else
        kept_.push_back(request);
}

FrameRequestHandler SetupRequests::setHandler(FrameRequestHandler handler) {
    FrameRequestHandler former = std::move(handler_);
    handler_ = std::move(handler);
    return former;
}

std::vector<FrameRequest> SetupRequests::takeKept() {
    return std::exchange(kept_, {});
}

SetupRequests& setupRequests() {
    static SetupRequests requests;
    return requests;
}

} // namespace vesk
