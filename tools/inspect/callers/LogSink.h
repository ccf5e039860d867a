// The library's log lines, sent somewhere else for a while.

#pragma once

#include <utility>

#include "platform/Host.h"

namespace inspect {

class LogSink {
public:
    explicit LogSink(host::LogSink sink) : mFormer(host::setLogSink(std::move(sink))) {}
    ~LogSink() { host::setLogSink(mFormer); }
    LogSink(const LogSink&) = delete;
    LogSink& operator=(const LogSink&) = delete;

private:
    host::LogSink mFormer;
};

}  // namespace inspect
