#include "inspect/records/Explain.h"

#include <algorithm>

#include "inspect/records/Records.h"
#include "inspect/report/Report.h"

namespace inspect {
namespace {

Explanation explain(uint32_t codecType, std::string_view key, Bytes record) {
    Annotator out(record);
    recordKind(codecType, key).explain(out);
    return {.key = std::string(key), .sizeBytes = record.size(), .rows = out.finish()};
}

}  // namespace

std::vector<Explanation> explainCodecData(const TrackReport& track) {
    const Stream& stream = track.stream;
    std::vector<Explanation> explanations;
    for (const auto& [key, value] : track.entries) {
        if (const auto* bytes = std::get_if<ByteVector>(&value)) {
            explanations.push_back(explain(stream.codecType, key, *bytes));
        }
    }
    std::ranges::sort(explanations, {}, &Explanation::key);
    const bool hasNumbers = explanations.empty() && !track.codecData.empty();
    if (hasNumbers && !stream.privateData.empty()) {
        explanations.push_back(explain(stream.codecType, kPrivateData, stream.privateData));
    }
    return explanations;
}

}  // namespace inspect
