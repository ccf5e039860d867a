#include "inspect/report/VerifyText.h"

#include <utility>
#include <vector>

namespace inspect {
namespace {

std::string counted(uint64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

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
    std::string text = counted(found.samples, "sample");
    if (found.hasIndex) return {text + ", all inside the file", false};
    if (found.endUs) text += ", up to " + durationText(*found.endUs);
    return {text, false};
}

std::string keyFrameText(const Verification& found) {
    if (found.keyFrames == 0) return "no key frame";
    if (found.keyFrames == 1) return "no key frame after the first";
    return "key frames at most " + counted(found.keyDistance, "sample") + " (" +
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

void printSamples(std::ostream& out, const KeyFrames& frames) {
    if (frames.library == 0) return;
    out << kIndent << "  to the library: sample";
    for (const uint64_t sample : frames.firstOfLibrary) out << ' ' << sample;
    out << (frames.library > frames.firstOfLibrary.size() ? " ...\n" : "\n");
}

void printDisputes(std::ostream& out, const KeyFrames& frames, const std::string& marker) {
    const std::string indent = std::string(kIndent) + "  ";
    for (const auto& [sample, timeUs, libraryCallsKey] : frames.firstDisputed) {
        out << indent << "sample " << sample;
        if (timeUs) out << ", " << durationText(*timeUs);
        out << ": key frame to the " << (libraryCallsKey ? "library" : marker) << " only\n";
    }
    const uint64_t more = frames.disputed - frames.firstDisputed.size();
    if (more > 0) out << indent << "and " << more << " more\n";
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

void printKeyFrames(std::ostream& out, const KeyFrames& frames) {
    const std::string marker = frames.isMarkedByContainer ? "container" : "demuxer";
    out << kIndent << "key frames among " << counted(frames.samples, "sample") << ": ";
    if (!frames.isExamined) {
        out << marker << ' ' << frames.marked << "; the library does not examine this codec\n";
        return;
    }
    out << "library " << frames.library << ", " << marker << ' ' << frames.marked;
    if (frames.disputed > 0) {
        out << "; they disagree on " << frames.disputed << '\n';
    } else {
        out << (frames.library > 0 ? "; they agree\n" : "; there is nothing to agree on\n");
    }
    printSamples(out, frames);
    if (frames.unreadable > 0) {
        out << kIndent << "  " << counted(frames.unreadable, "sample") << " cannot be read\n";
    }
    printDisputes(out, frames, marker);
}

}  // namespace inspect
