#include "inspect/collection/Signals.h"

namespace inspect {
namespace {

constexpr int kAll[] = {SIGHUP, SIGINT, SIGTERM};

volatile std::sig_atomic_t gSignal = 0;

void noteSignal(int signal) {
    gSignal = signal;
}

}  // namespace

Signals::Signals() {
    sigemptyset(&mHeld);
    for (const int signal : kAll) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_DFL) continue;
        sigaddset(&mHeld, signal);
        action.sa_handler = noteSignal;
        action.sa_flags = 0;
        sigaction(signal, &action, nullptr);
    }
    sigprocmask(SIG_BLOCK, &mHeld, &mFormer);
}

Signals::~Signals() {
    for (const int signal : kAll) {
        if (sigismember(&mHeld, signal) == 1) std::signal(signal, SIG_DFL);
    }
    sigprocmask(SIG_SETMASK, &mFormer, nullptr);
}

int Signals::caught() {
    return gSignal;
}

}  // namespace inspect
