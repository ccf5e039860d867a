#include "inspect/report/CallsText.h"

#include "inspect/base/Utf8.h"
#include "inspect/report/ExplainText.h"
#include "inspect/report/TextEntries.h"

namespace inspect {

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
