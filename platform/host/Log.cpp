#include "platform/Log.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/Host.h"

namespace {

using android::host::FatalHandler;
using android::host::LogLine;
using android::host::LogSink;

std::string formatted(const char* format, va_list arguments) {
    char shortText[256];
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(shortText, sizeof(shortText), format, arguments);
    std::string text;
    if (length < 0) {
        text = format;
    } else if (static_cast<size_t>(length) < sizeof(shortText)) {
        text.assign(shortText, static_cast<size_t>(length));
    } else {
        text.resize(static_cast<size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

void printToStandardError(const LogLine& line) {
    if (line.priority < ANDROID_LOG_WARN) return;
    const char letter = line.priority == ANDROID_LOG_WARN ? 'W' : 'E';
    const char* end = line.text.empty() || line.text.back() != '\n' ? "\n" : "";
    std::fprintf(stderr, "%c %s: %s%s", letter, line.tag.c_str(), line.text.c_str(), end);
}

// Held by a shared pointer so that a sink may be replaced while a line is on its way to it.
struct LogState {
    std::mutex mutex;
    std::shared_ptr<const LogSink> sink;
    FatalHandler fatalHandler = nullptr;
};

// Never destroyed: a program's static objects may use the library from their destructors.
LogState& state() {
    static auto& instance = *new LogState;
    return instance;
}

void deliver(const LogLine& line) {
    std::shared_ptr<const LogSink> sink;
    {
        const std::lock_guard lock(state().mutex);
        sink = state().sink;
    }
    if (sink != nullptr) {
        (*sink)(line);
    } else {
        printToStandardError(line);
    }
}

}  // namespace

extern "C" {

int __android_log_print(int priority, const char* tag, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const LogLine line{priority, tag, formatted(format, arguments)};
    va_end(arguments);
    deliver(line);
    return 1;
}

int __android_log_error_write(int tag, const char* subTag, int32_t, const char*, uint32_t) {
    char number[16];
    std::snprintf(number, sizeof(number), "0x%x", static_cast<unsigned>(tag));
    deliver({ANDROID_LOG_ERROR, "security", std::string(number) + " " + subTag});
    return 1;
}

void __android_log_assert(const char* condition, const char*, const char* format, ...) {
    std::string text = condition != nullptr ? condition : "";
    if (format != nullptr) {
        va_list arguments;
        va_start(arguments, format);
        text = formatted(format, arguments);
        va_end(arguments);
    }

    FatalHandler handler;
    {
        const std::lock_guard lock(state().mutex);
        handler = state().fatalHandler;
    }
    if (handler != nullptr) handler(text.c_str());
    std::fprintf(stderr, "F %s\n", text.c_str());
    std::abort();
}

}  // extern "C"

namespace android::host {

LogSink setLogSink(LogSink sink) {
    auto next = sink ? std::make_shared<const LogSink>(std::move(sink)) : nullptr;
    const std::lock_guard lock(state().mutex);
    std::swap(state().sink, next);
    return next != nullptr ? *next : LogSink();
}

FatalHandler setFatalHandler(FatalHandler handler) {
    const std::lock_guard lock(state().mutex);
    return std::exchange(state().fatalHandler, handler);
}

}  // namespace android::host
