#include "inspect/report/TextParts.h"

#include <algorithm>
#include <string_view>

#include "inspect/base/Bytes.h"
#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

// Of a buffer that is longer, such as a picture, only the beginning is shown.
constexpr size_t kMaxShownBytes = 4096;

struct ValueText {
    std::string operator()(int32_t value) const { return "int32   " + std::to_string(value); }
    std::string operator()(int64_t value) const { return "int64   " + std::to_string(value); }
    std::string operator()(const std::string& value) const { return "string  " + escaped(value); }
    std::string operator()(const ByteVector& value) const {
        const std::string rest = " of " + std::to_string(value.size()) + " bytes";
        return "buffer  " +
               (value.size() <= kMaxShownBytes ? hex(value, " ") : shortHex(value) + rest);
    }
};

}  // namespace

void printKeys(std::ostream& out, const Entries& entries, const std::string& indent) {
    size_t width = 0;
    for (const auto& entry : entries) width = std::max(width, entry.key.size());
    for (const auto& entry : entries) {
        out << indent << padded(entry.key, width) << "  " << std::visit(ValueText{}, entry.value)
            << '\n';
    }
}

void printLog(std::ostream& out, const std::vector<host::LogLine>& log, const TextStyle& style) {
    constexpr std::string_view kLetters = "??VDIWEF";
    for (const auto& [priority, tag, text] : log) {
        const auto index = static_cast<size_t>(std::clamp(priority, 0, 7));
        const std::string line = std::string(1, kLetters[index]) + "/" + tag + ": " + text;
        out << kIndent << paint(style, kDim, escaped(line)) << '\n';
    }
}

void printCalls(std::ostream& out, const char* heading, const std::vector<Call>& calls,
                const TextStyle& style) {
    for (const Call& call : calls) {
        out << kIndent << heading << "  " << call.operation << (call.result.empty() ? "" : ": ")
            << escaped(call.result) << '\n';
        for (const Record& each : call.parameters) printRecord(out, each, style);
        for (const auto& entry : call.entries) {
            const auto* bytes = std::get_if<ByteVector>(&entry.value);
            if (bytes == nullptr) {
                printKeys(out, {entry}, std::string(kIndent) + "  ");
            } else {
                out << kIndent << "  " << entry.key << "  buffer  " << bytes->size() << " bytes, "
                    << shortHex(*bytes) << '\n';
            }
        }
    }
}

}  // namespace inspect
