#include "support/Platform.h"

#include <utility>

namespace test {
namespace {

struct Fatal {
    std::string text;
};

void throwFatal(const char* text) {
    throw Fatal{text};
}

}  // namespace

Bytes fromHex(const std::string& text) {
    std::string digits = text;
    std::erase(digits, ' ');
    Bytes bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes.push_back(static_cast<uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

std::string dataText(const Bytes& data) {
    std::string text = "data(";
    for (const uint8_t byte : data) {
        for (const int digit : {byte >> 4, byte & 15}) text += "0123456789abcdef"[digit];
    }
    return text + ")";
}

std::optional<Bytes> Format::buffer(const char* key) const {
    void* data;
    size_t size;
    if (!AMediaFormat_getBuffer(get(), key, &data, &size)) return std::nullopt;
    const auto* bytes = static_cast<const uint8_t*>(data);
    return Bytes(bytes, bytes + size);
}

std::ostream& operator<<(std::ostream& out, const Line& line) {
    return out << line.priority << " \"" << line.text << '"';
}

LogCapture::LogCapture(std::string tag)
    : mFormer(host::setLogSink([this, tag = std::move(tag)](const host::LogLine& line) {
          if (line.tag == tag) mLines.push_back({line.priority, line.text});
      })) {}

LogCapture::~LogCapture() {
    host::setLogSink(mFormer);
}

std::string trace(const Format& format, const std::function<void()>& call, const std::string& tag) {
    std::string trace;
    size_t storedBefore = 0;
    const auto add = [&trace](const std::string& line) {
        if (!line.empty()) trace += (trace.empty() ? "" : "\n") + line;
    };
    const auto addStores = [&] {
        const std::string stored = format.text();
        std::string text = stored.substr(std::exchange(storedBefore, stored.size()));
        if (text.starts_with(", ")) text.erase(0, 2);
        add(text);
    };
    const host::LogSink former = host::setLogSink([&](const host::LogLine& line) {
        if (line.tag != tag) return;
        addStores();
        add(std::to_string(line.priority) + " \"" + line.text + '"');
    });
    call();
    host::setLogSink(former);
    addStores();
    return trace;
}

std::string fatalText(const std::function<void()>& call) {
    const host::FatalHandler former = host::setFatalHandler(throwFatal);
    std::string text;
    try {
        call();
    } catch (const Fatal& fatal) {
        text = fatal.text;
    }
    host::setFatalHandler(former);
    return text;
}

}  // namespace test
