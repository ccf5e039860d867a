// SIGHUP, SIGINT and SIGTERM while a run is under way.

#pragma once

#include <csignal>

namespace inspect {

// Held back but while somebody waits for them; those that are ignored stay so.
class Signals {
public:
    Signals();
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    // The mask to wait with, as of ppoll().
    const sigset_t& whileWaiting() const { return mFormer; }

    // The last that came; 0 = none.
    static int caught();

private:
    sigset_t mHeld{};
    sigset_t mFormer{};
};

}  // namespace inspect
