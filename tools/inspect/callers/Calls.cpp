// Calls on the library, in words.

#include "inspect/callers/Component.h"
#include "inspect/report/ExplainText.h"
#include "inspect/report/Report.h"
#include "inspect/report/TextEntries.h"

namespace inspect {
namespace {

const char* statusWords(int32_t status) {
    switch (status) {
        case android::OK: return ", ok";
        case -1: return ", does not apply";
        case android::BAD_VALUE: return ", bad value";
        case android::INVALID_OPERATION: return ", invalid operation";
        case -1010: return ", unsupported";
        case android::UNKNOWN_ERROR: return ", unknown error";
        default: return "";
    }
}

}  // namespace

Call callLibrary(const char* name, const std::function<std::optional<int32_t>()>& operation) {
    try {
        const auto status = operation();
        return {name, status ? std::to_string(*status) + statusWords(*status) : "", {}, {}};
    } catch (const LibraryFatal& fatal) {
        return {name, std::string("the library would end the process: ") + fatal.what(), {}, {}};
    }
}

void printCalls(std::ostream& out, const char* heading, const std::vector<Call>& calls,
                const TextStyle& style) {
    for (const Call& call : calls) {
        out << kIndent << heading << "  " << call.operation << (call.result.empty() ? "" : ": ")
            << printable(call.result) << '\n';
        for (const Explanation& each : call.parameters) printExplanation(out, each, style);
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
