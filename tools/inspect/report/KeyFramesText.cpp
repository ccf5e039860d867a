#include "inspect/report/TextParts.h"

namespace inspect {
namespace {

std::string counted(uint64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
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
