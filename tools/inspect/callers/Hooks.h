// The device on which the library runs, and what it says beside its results.

#pragma once

#include <stdexcept>
#include <utility>

#include "platform/Host.h"

namespace inspect {

// A fatal assertion of the library: on a device the process would have ended.
struct LibraryFatal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The library's log lines, sent somewhere else for a while.
class LogSink {
public:
    explicit LogSink(host::LogSink sink) : mFormer(host::setLogSink(std::move(sink))) {}
    ~LogSink() { host::setLogSink(mFormer); }
    LogSink(const LogSink&) = delete;
    LogSink& operator=(const LogSink&) = delete;

    static void drop(const host::LogLine&) {}

private:
    host::LogSink mFormer;
};

// While it lives, the library is on this device, and its fatal assertions throw a LibraryFatal.
class OnDevice {
public:
    explicit OnDevice(host::Device device)
        : mFormer(host::setDevice(std::move(device))),
          mFormerHandler(host::setFatalHandler(throwFatal)) {}
    ~OnDevice() {
        host::setFatalHandler(mFormerHandler);
        host::setDevice(std::move(mFormer));
    }
    OnDevice(const OnDevice&) = delete;
    OnDevice& operator=(const OnDevice&) = delete;

private:
    [[noreturn]] static void throwFatal(const char* text) { throw LibraryFatal(text); }

    host::Device mFormer;
    host::FatalHandler mFormerHandler;
};

}  // namespace inspect
