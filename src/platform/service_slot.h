#pragma once
// Where a platform service is installed: the screen side installs its own (not owned), and until
// it does, or after it takes it back with nullptr, a stand-in of the core answers.

namespace vesk {

template <typename Service, typename StandIn> struct ServiceSlot {
    Service& get() { return installed ? *installed : standIn; }

    StandIn standIn;
    Service* installed = nullptr;
};

} // namespace vesk
