#include "inspect/report/VerifyText.h"

#include <utility>
#include <vector>

namespace inspect {
namespace {

struct Remark {
    std::string text;
    bool isFault;
};

// "1 of 250 samples cut off, the first at 9.880 s (sample 248, offset 4711)".
Remark fault(const FaultySamples& samples, uint64_t total, const std::string& what) {
    const auto& [sample, timeUs, offset] = samples.first;
    std::string text = std::to_string(samples.count) + " of " + std::to_string(total) +
                       " samples " + what + ", the first ";
    if (timeUs) text += "at " + durationText(*timeUs) + " ";
    text += "(sample " + std::to_string(sample);
    if (offset) text += ", offset " + std::to_string(*offset);
    return {text + ")", true};
}

Remark presence(const Verification& found) {
    if (found.samples == 0) return {"no samples", !found.mayBeEmpty};
    if (found.outside.count > 0) {
        const std::string missing = std::to_string(found.missingBytes) + " bytes missing";
        return fault(found.outside, found.samples, "not inside the file, " + missing);
    }
    if (found.cut.count > 0) return fault(found.cut, found.samples, "cut off");
    std::string text =
            std::to_string(found.samples) + (found.samples == 1 ? " sample" : " samples");
    if (found.hasIndex) return {text + ", all inside the file", false};
    if (found.endUs) text += ", up to " + durationText(*found.endUs);
    return {text, false};
}

std::string keyFrameText(const Verification& found) {
    if (found.keyFrames == 0) return "no key frame";
    if (found.keyFrames == 1) return "no key frame after the first";
    return "key frames at most " + std::to_string(found.keyDistance) +
           (found.keyDistance == 1 ? " sample (" : " samples (") +
           durationText(found.keyDistanceUs) + ") apart";
}

std::vector<Remark> remarks(const Verification& found) {
    std::vector<Remark> list = {presence(found)};
    if (!found.isReadToEnd) list.push_back({"cannot be read to the end", true});
    if (found.brokenUnits.count > 0) {
        list.push_back(fault(found.brokenUnits, found.readable, "not filled by NAL lengths"));
    } else if (found.hasUnitLengths && found.readable > 0) {
        list.push_back({"NAL lengths fill them", false});
    }
    if (found.backward.count > 0) {
        list.push_back(fault(found.backward, found.samples, "out of order in time"));
    } else if (found.readable > 1 && found.endUs && !found.mayBeEmpty) {
        list.push_back({"timestamps go on", false});
    }
    if (found.gapAtUs) {
        list.push_back({"a gap of " + durationText(found.gapUs) + " behind " +
                                durationText(*found.gapAtUs),
                        false});
    }
    if (found.isVideo && found.readable > 1) list.push_back({keyFrameText(found), false});
    return list;
}

}  // namespace

std::string faultText(const Verification& found) {
    std::string text;
    for (const Remark& each : remarks(found)) {
        if (each.isFault) text += (text.empty() ? "" : "; ") + each.text;
    }
    return text;
}

void printVerification(std::ostream& out, const Verification& found, const TextStyle& style) {
    out << kIndent << "verify  ";
    const char* separator = "";
    for (const auto& [text, isFault] : remarks(found)) {
        out << std::exchange(separator, "; ") << (isFault ? paint(style, kRed, text) : text);
    }
    out << '\n';
}

}  // namespace inspect
