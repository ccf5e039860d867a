// What the library says beside its results: log lines and fatal assertions.

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

}  // namespace inspect
