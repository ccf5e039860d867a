#include "inspect/report/TextReport.h"

#include <algorithm>
#include <string_view>

#include "inspect/base/Bytes.h"
#include "inspect/base/Utf8.h"
#include "inspect/callers/PcmFormat.h"
#include "inspect/report/TextParts.h"
#include "inspect/report/VerifyText.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"

namespace inspect {
namespace {

using namespace android;

// Where the lines about a file begin.
const std::string kFileIndent(6, ' ');

std::string joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::string bitRateText(int32_t bitRate) {
    constexpr int kThousand = 1000;
    if (bitRate < kThousand) return std::to_string(bitRate) + " b/s";
    return std::to_string((bitRate + kThousand / 2) / kThousand) + " kb/s";
}

std::string mimeOf(const Entries& entries) {
    const auto* mime = findValue<std::string>(entries, AMEDIAFORMAT_KEY_MIME);
    return mime != nullptr ? escaped(*mime) : "-";
}

// What the format says, in the words of a person. Values of 0 mean that nobody knows.
class Facts {
public:
    explicit Facts(const TrackReport& track)
        : mEntries(track.found.entries), mText(escaped(track.stream.codec)) {
        const int32_t width = number(AMEDIAFORMAT_KEY_WIDTH);
        const int32_t height = number(AMEDIAFORMAT_KEY_HEIGHT);
        if (width > 0) add(std::to_string(width) + "x" + std::to_string(height));
        addNumber(AMEDIAFORMAT_KEY_FRAME_RATE, " fps");
        addNumber(AMEDIAFORMAT_KEY_SAMPLE_RATE, " Hz");
        const int32_t channels = number(AMEDIAFORMAT_KEY_CHANNEL_COUNT);
        if (channels > 0)
            add(std::to_string(channels) + (channels == 1 ? " channel" : " channels"));
        if (hasPlainSamples(track.stream.codecType))
            addNumber(ZREAMEDIAFORMAT_KEY_SAMPLEBITS, " bits");
        const int32_t bitRate = number(AMEDIAFORMAT_KEY_BIT_RATE);
        if (bitRate > 0) add(bitRateText(bitRate));
        const auto* language = findValue<std::string>(mEntries, AMEDIAFORMAT_KEY_LANGUAGE);
        if (language != nullptr && *language != "und") add("language " + escaped(*language));
        const auto* duration = findValue<int64_t>(mEntries, AMEDIAFORMAT_KEY_DURATION);
        if (duration != nullptr) add(durationText(*duration));
    }
    const std::string& text() const { return mText; }

private:
    static bool hasPlainSamples(uint32_t codecType) {
        return codecType == kCodecTypePcm || codecType == kCodecTypeFlac ||
               codecType == kCodecTypeAlac;
    }
    int32_t number(const char* key) const {
        const auto* value = findValue<int32_t>(mEntries, key);
        return value != nullptr ? *value : 0;
    }
    void add(const std::string& fact) { mText += ", " + fact; }
    void addNumber(const char* key, const char* unit) {
        if (number(key) > 0) add(std::to_string(number(key)) + unit);
    }

    const Entries& mEntries;
    std::string mText;
};

std::string verdictText(const Verdict& verdict, const std::string& mime, const TextStyle& style) {
    std::string text;
    if (plays(verdict.play)) {
        const bool isInSoftware = verdict.play == Play::kPlaysInSoftware;
        text = paint(style, isInSoftware ? kYellow : kGreen,
                     isInSoftware ? "plays in software" : "plays");
    } else {
        text = paint(style, kRed, "does not play");
    }
    const std::string decoder = escaped(verdict.decoder);
    if (!decoder.empty() && decoder != mime) text += " with " + decoder;
    if (!verdict.reason.empty()) text += ": " + escaped(verdict.reason);
    return text;
}

// " plays in part", as the file's first line ends.
std::string verdictText(const FileVerdict& verdict, const TextStyle& style) {
    std::string words(toString(verdict.play));
    std::ranges::replace(words, '-', ' ');
    const bool isGood = verdict.play == FilePlay::kPlays;
    const bool isHalf = verdict.play == FilePlay::kPlaysInPart;
    return paint(style, isGood ? kGreen : isHalf ? kYellow : kRed, words);
}

void printDim(std::ostream& out, const std::string& text, const TextStyle& style) {
    if (!text.empty()) out << kIndent << paint(style, kDim, escaped(text)) << '\n';
}

// What led to a verdict that is not good, without what its reason says; each step once.
std::string chainText(const Verdict& verdict) {
    if (plays(verdict.play)) return {};
    std::vector<std::string> steps;
    for (const auto& [what, answer] : verdict.chain) {
        const std::string step = what + ": " + answer;
        const bool isSaid = verdict.reason.find(answer) != std::string::npos &&
                            verdict.reason.find(what) != std::string::npos;
        if (!isSaid && std::ranges::count(steps, step) == 0) steps.push_back(step);
    }
    return joined(steps, "; ");
}

std::string notKnownText(const Verdict& verdict) {
    return verdict.notKnown.empty() ? "" : verdict.decoder + ": " + joined(verdict.notKnown, "; ");
}

void printCodecData(std::ostream& out, const std::vector<CodecDatum>& data) {
    size_t keyWidth = 0;
    size_t sizeWidth = 0;
    const auto sizeText = [](const CodecDatum& datum) {
        return datum.sizeBytes ? std::to_string(*datum.sizeBytes) + " bytes" : std::string();
    };
    for (const CodecDatum& datum : data) {
        keyWidth = std::max(keyWidth, datum.key.size());
        sizeWidth = std::max(sizeWidth, sizeText(datum).size());
    }
    for (const CodecDatum& datum : data) {
        out << kIndent << padded(datum.key, keyWidth) << "  "
            << rightAligned(sizeText(datum), sizeWidth) << (sizeWidth > 0 ? "  " : "")
            << escaped(datum.words) << '\n';
    }
}

void printTrack(std::ostream& out, const TrackReport& track, size_t mimeWidth,
                const TextStyle& style) {
    const std::string index = rightAligned(std::to_string(track.stream.index), 4);
    out << index << "  " << padded(toString(track.stream.kind), 5) << "  ";
    if (track.stream.kind == Kind::kOther) {
        const std::string& why = track.stream.nothingReadable;
        out << escaped(track.stream.codec) << ": "
            << (why.empty() ? "not a track to the library" : escaped(why)) << '\n';
        return;
    }
    out << paint(style, kBold, padded(mimeOf(track.found.entries), mimeWidth)) << "  "
        << verdictText(track.verdicts.front(), mimeOf(track.found.entries), style) << '\n'
        << kIndent << Facts(track).text() << '\n';
    printDim(out, chainText(track.verdicts.front()), style);
    if (style.notKnown) printDim(out, notKnownText(track.verdicts.front()), style);
    if (const PcmFormat* pcm = findPcmFormat(track.stream)) {
        out << kIndent << "conversion to 16 bits: " << pcm->conversion << '\n';
    }
    if (track.dump) {
        out << kIndent << "dumped " << track.dump->frames << " frames -> "
            << escaped(track.dump->path) << '\n';
    }
    printCodecData(out, track.found.codecData);
    for (const std::string& note : track.found.notes) {
        out << kIndent << paint(style, kYellow, escaped(note)) << '\n';
    }
    if (track.keyFrames) printKeyFrames(out, *track.keyFrames);
    if (track.verification) printVerification(out, *track.verification, style);
    for (const Record& each : track.explanations) printRecord(out, each, style);
    printCalls(out, "component", track.component, style);
    printCalls(out, "older parsers", track.legacy, style);
    if (style.keys) printKeys(out, track.found.entries, kIndent);
    if (style.log) printLog(out, track.found.log, style);
}

// Of a verdict that no track's line explains.
bool isUnexplained(const FileReport& report) {
    const std::string& reason = report.verdicts.front().reason;
    return std::ranges::none_of(report.tracks, [&](const TrackReport& track) {
        const std::string& own = track.verdicts.front().reason;
        return !own.empty() && reason.find(own) != std::string::npos;
    });
}

// The first device's verdict is that of the file.
void printOtherDevices(std::ostream& out, const FileReport& report,
                       std::span<const PretendedDevice> devices, const TextStyle& style) {
    for (size_t i = 1; i < devices.size(); i++) {
        const FileVerdict& verdict = report.verdicts[i];
        out << kFileIndent << "on " << escaped(devices[i].description.name) << ": "
            << verdictText(verdict, style) << (verdict.reason.empty() ? "" : ": ")
            << escaped(verdict.reason) << '\n';
    }
}

}  // namespace

void printText(std::ostream& out, const FileReport& report,
               std::span<const PretendedDevice> devices, const TextStyle& style) {
    const bool hasMime = findValue<std::string>(report.entries, AMEDIAFORMAT_KEY_MIME) != nullptr;
    out << paint(style, kBold, escaped(report.path)) << "  "
        << (hasMime ? mimeOf(report.entries) : "no container MIME type") << ", "
        << escaped(report.formatName);
    const auto* duration = findValue<int64_t>(report.entries, AMEDIAFORMAT_KEY_DURATION);
    if (duration != nullptr) out << ", " << durationText(*duration);
    const FileVerdict& verdict = report.verdicts.front();
    out << ": " << verdictText(verdict, style);
    if (devices.size() > 1) out << " on " << escaped(devices.front().description.name);
    if (isUnexplained(report) && !verdict.reason.empty()) out << ": " << escaped(verdict.reason);
    out << '\n';
    printOtherDevices(out, report, devices, style);
    if (report.truncation) {
        out << kFileIndent << paint(style, kRed, "truncated") << ": " << *report.truncation << '\n';
    }
    if (report.junk) {
        out << kFileIndent << paint(style, kYellow, "junk") << ": " << *report.junk << '\n';
    }
    if (style.keys) printKeys(out, report.entries, kFileIndent);
    size_t mimeWidth = 0;
    for (const TrackReport& track : report.tracks) {
        if (track.stream.kind == Kind::kOther) continue;
        mimeWidth = std::max(mimeWidth, mimeOf(track.found.entries).size());
    }
    for (const TrackReport& track : report.tracks) printTrack(out, track, mimeWidth, style);
    printTags(out, report.tags, style);
}

void printFixes(std::ostream& out, const FileReport& report,
                std::span<const PretendedDevice> devices, const TextStyle& style, size_t columns) {
    const auto print = [&](const std::string& text) {
        out << wrapped(kFileIndent + text, columns) << '\n';
    };
    for (size_t i = 0; i < report.fixes.size(); i++) {
        const auto isIt = [&](const auto& fix) { return fix == report.fixes[i]; };
        const auto last = report.fixes.begin() + static_cast<ptrdiff_t>(i);
        if (!report.fixes[i] || std::any_of(report.fixes.begin(), last, isIt)) continue;
        std::vector<std::string> names;
        for (size_t other = i; other < devices.size(); other++) {
            if (isIt(report.fixes[other])) names.push_back(devices[other].description.name);
        }
        const std::string heading =
                devices.size() > 1 ? "fix for " + escaped(joined(names, ", ")) : "fix";
        const Fix& fix = *report.fixes[i];
        print(paint(style, kBold, heading) + ": " + escaped(fix.sentence));
        if (!fix.command.empty()) out << kFileIndent << fix.command << '\n';
        if (!fix.device.empty()) print("or what the device lacks: " + escaped(fix.device));
    }
}

}  // namespace inspect
