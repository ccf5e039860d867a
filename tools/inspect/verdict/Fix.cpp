#include "inspect/verdict/Fix.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "inspect/base/Utf8.h"
#include "inspect/media/CodecMap.h"
#include "inspect/media/ContainerMap.h"
#include "inspect/media/LibAv.h"
#include "inspect/verdict/Targets.h"
#include "inspect/verdict/TrackFacts.h"
#include "zrcodecparser/CodecType.h"

namespace inspect {
namespace {

using namespace android;

// What a file can be written as: by its extension, with the name of the demuxer that reads it, and
// what else it may hold than its own tracks: libavcodec's names; none = all that libavformat takes.
struct Muxer {
    std::string_view extension;
    std::string_view format;
    std::string_view codecs = {};
};
// clang-format off
constexpr auto kMuxers = std::to_array<Muxer>({
    {"mp4",  "mov"},
    {"m4a",  "mov"},
    {"mov",  "mov"},
    {"3gp",  "mov"},
    {"mkv",  "matroska"},
    {"mka",  "matroska"},
    {"webm", "matroska", "vp8 vp9 opus vorbis"},
    {"ts",   "mpegts",   "h264 hevc aac mp3"},
    {"avi",  "avi",      "mpeg4 mp3 pcm_s16le"},
    {"flv",  "flv",      "h264 aac mp3"},
    {"ogg",  "ogg",      "opus vorbis flac"},
    {"wav",  "wav",      "pcm_s16le"},
    {"flac", "flac",     "flac"},
    {"mp3",  "mp3",      "mp3"},
});
// clang-format on

// The file's own first, and then those that hold nearly everything.
std::vector<Muxer> muxersFor(const MediaFile& file) {
    const bool hasVideo = std::ranges::any_of(
            file.streams, [](const Stream& each) { return each.kind == Kind::kVideo; });
    std::vector<Muxer> muxers;
    for (const Muxer& each : kMuxers) {
        const std::string extension(each.extension);
        const bool isOwn = av_match_ext(file.path.c_str(), extension.c_str()) != 0;
        if (isOwn && each.format == file.format) muxers.push_back(each);
    }
    const auto last = hasVideo ? std::to_array<Muxer>({{"mp4", "mov"}, {"mkv", "matroska"}})
                               : std::to_array<Muxer>({{"m4a", "mov"}, {"mka", "matroska"}});
    muxers.insert(muxers.end(), last.begin(), last.end());
    return muxers;
}

const AVOutputFormat* outputOf(const Muxer& muxer) {
    const std::string name = "x." + std::string(muxer.extension);
    return av_guess_format(nullptr, name.c_str(), nullptr);
}

AVCodecID codecOf(const Stream& stream) {
    const AVCodecDescriptor* codec = avcodec_descriptor_get_by_name(stream.codec.c_str());
    return codec != nullptr ? codec->id : AV_CODEC_ID_NONE;
}

bool holds(const Muxer& muxer, const Stream& stream) {
    const AVOutputFormat* format = outputOf(muxer);
    const AVCodecID codec = codecOf(stream);
    return format != nullptr && codec != AV_CODEC_ID_NONE &&
           avformat_query_codec(format, codec, FF_COMPLIANCE_NORMAL) == 1;
}

bool mayWrite(const Muxer& muxer, const Stream& stream) {
    const bool isMeant =
            muxer.codecs.empty() || muxer.codecs.find(stream.codec) != muxer.codecs.npos;
    return isMeant && holds(muxer, stream);
}

// The stream as a parser of another container names it: the same video may be DivX in one.
Stream movedTo(const Muxer& muxer, Stream stream) {
    const AVOutputFormat* format = outputOf(muxer);
    const AVCodecID codec = codecOf(stream);
    const uint32_t tag = format != nullptr ? av_codec_get_tag(format->codec_tag, codec) : 0;
    // Dolby Vision is a matter of the four-character code, which not every container can keep.
    if (stream.kind == Kind::kText || stream.codecType == kCodecTypeDolbyVision) return stream;
    stream.codecType = codecTypeOf(codec, tag, stream.profile.value_or(FF_PROFILE_UNKNOWN));
    return stream;
}

// Bytes that no terminal and no text in UTF-8 lets through, for a POSIX shell: "$(printf '\ddd')"
std::string printed(const std::string& word) {
    std::string text;
    for (const char c : word) {
        const auto byte = static_cast<unsigned char>(c);
        std::array<char, 5> octal{};
        std::snprintf(octal.data(), octal.size(), "\\%03o", byte);
        const bool isPlain = byte >= ' ' && byte < 0x7F && c != '\\' && c != '\'' && c != '%';
        text += isPlain ? std::string(1, c) : octal.data();
    }
    return "\"$(printf '" + text + "')\"";
}

// For a POSIX shell.
std::string quoted(const std::string& word) {
    constexpr std::string_view kPlain =
            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=:,./@%";
    if (!word.empty() && word.find_first_not_of(kPlain) == word.npos) return word;
    if (escaped(word) != word) return printed(word);
    std::string text = "'";
    for (const char c : word) text += c == '\'' ? std::string("'\"'\"'") : std::string(1, c);
    return text + "'";
}

// A name that neither an option nor a protocol can be taken for; "-" is standard input to both.
std::string fileWord(const std::string& path) {
    if (path == "-") return path;
    return path.starts_with('-') || path.find(':') != path.npos ? "file:" + path : path;
}

// A command in the making, and what will come of it.
class Plan {
public:
    Plan(const MediaFile& file, const Muxer& muxer, const PretendedDevice& device)
        : mFile(file), mMuxer(muxer), mDevice(device) {
        mOut.format = muxer.format;
    }

    // Copied where that plays, else converted. Returns false when neither can be.
    bool add(const JudgedTrack& track) {
        const Stream& stream = *track.stream;
        if (holds(mMuxer, stream)) {
            const bool isMoved = mMuxer.format != mFile.format;
            const Stream copy = isMoved ? movedTo(mMuxer, stream) : stream;
            if (plays(judge(copy, kHasWholeFrames, *track.facts, {}, mDevice).play)) {
                take(stream, copy, *track.facts, {"-c", "copy"});
                return true;
            }
        }
        const auto target = findTarget(stream, mDevice, [&](const Stream& converted) {
            return mayWrite(mMuxer, converted);
        });
        if (!target) return false;
        mConverted++;
        note(nameOf(stream) + " becomes " + target->words);
        mIsTurned |= stream.video.rotation != 0;
        take(stream, target->stream, factsOf(target->stream, {}), target->options);
        return true;
    }

    void leaveOut(const Stream& stream) {
        mLeftOut++;
        note(nameOf(stream) + " (" + stream.codec + ") is left out");
    }

    // The less, the better.
    std::pair<int, int> cost() const { return {mLeftOut, mConverted}; }

    // Whether all of it plays.
    bool isGood() {
        mOut.container = containerOf(mOut);
        std::vector<Verdict> verdicts;
        for (size_t i = 0; i < mOut.streams.size(); i++) {
            verdicts.push_back(
                    judge(mOut.streams[i], mOut.container.hasWholeFrames, mFacts[i], {}, mDevice));
        }
        std::vector<JudgedTrack> tracks;
        for (size_t i = 0; i < verdicts.size(); i++) {
            tracks.push_back({&mOut.streams[i], &mFacts[i], &verdicts[i]});
        }
        return judge(mOut.container, tracks).play == FilePlay::kPlays;
    }

    Fix fix() const {
        std::filesystem::path out = mFile.path;
        if (!mFile.isFolderWritable) out = out.filename();
        // Files of one name and other extensions become others.
        const bool isOwn = out.extension().native().ends_with(mMuxer.extension);
        if (isOwn) out.replace_extension();
        out += ".fixed.";
        out += mMuxer.extension;
        Fix fix;
        fix.command = "ffmpeg";
        // What is converted would be turned, and its sides with it.
        if (mIsTurned) fix.command += " -noautorotate";
        if (mFile.container.fileKind == 0 && mFile.container.mime == nullptr) {
            fix.command += " -fflags +genpts";  // raw video has no timestamps
        }
        fix.command += " -i " + quoted(fileWord(mFile.path)) + mMaps + mOptions + " " +
                       quoted(fileWord(out.string()));
        fix.sentence = mNotes;
        if (mConverted == 0) {
            fix.sentence = "another container, and nothing is converted" +
                           (mNotes.empty() ? "" : "; " + mNotes);
        }
        if (!mFile.hasName) {
            fix.command.clear();
            fix.sentence += "; no command can name what comes through a pipe: save it to a file";
        }
        return fix;
    }

private:
    void note(const std::string& text) { mNotes += (mNotes.empty() ? "" : "; ") + text; }

    void take(const Stream& from, const Stream& to, const TrackFacts& facts,
              const std::vector<std::string>& options) {
        const std::string index = std::to_string(mOut.streams.size());
        mMaps += " -map 0:" + std::to_string(from.index);
        for (size_t i = 0; i + 1 < options.size(); i += 2) {
            mOptions += " " + options[i] + ":" + index + " " + quoted(options[i + 1]);
        }
        mOut.streams.push_back(to);
        mFacts.push_back(facts);
    }

    const MediaFile& mFile;
    Muxer mMuxer;
    const PretendedDevice& mDevice;
    std::string mMaps;
    std::string mOptions;
    std::string mNotes;
    MediaFile mOut;
    std::vector<TrackFacts> mFacts;
    bool mIsTurned = false;
    int mLeftOut = 0;
    int mConverted = 0;
};

std::optional<Plan> planFor(const MediaFile& file, std::span<const JudgedTrack> tracks,
                            const Muxer& muxer, const PretendedDevice& device) {
    Plan plan(file, muxer, device);
    for (const JudgedTrack& track : tracks) {
        const Kind kind = track.stream->kind;
        if (kind != Kind::kOther && plan.add(track)) continue;
        if (kind != Kind::kOther && kind != Kind::kText) return {};
        plan.leaveOut(*track.stream);
    }
    if (!plan.isGood()) return {};
    return plan;
}

// Why no conversion can be told for a track; empty = one may be found.
std::string whyBeyondRepair(const JudgedTrack& track) {
    const Stream& stream = *track.stream;
    const bool isNoTrack = stream.kind == Kind::kOther;  // to the library
    if (isNoTrack && stream.nothingReadable.empty()) return {};
    const std::string name = nameOf(stream) + ": ";
    switch (track.verdict->play) {
        case Play::kEncrypted:
            return name + "wants the key of its owner; no conversion goes without";
        case Play::kCodecDataBroken:
            return name + "no decoder starts from it, nor a converter; get or write the file anew";
        case Play::kEndsProcess: return name + track.verdict->reason + "; no conversion mends that";
        case Play::kNothingReadable: return name + stream.nothingReadable + "; get the whole file";
        default: break;
    }
    const bool isConverted = !plays(track.verdict->play) && stream.kind != Kind::kText;
    if (!isConverted || avcodec_find_decoder(codecOf(stream)) != nullptr) return {};
    return name + "no converter is known for " + stream.codec;
}

}  // namespace

Fix proposeFix(const MediaFile& file, std::span<const JudgedTrack> tracks,
               const PretendedDevice& device) {
    for (const JudgedTrack& track : tracks) {
        const std::string why = whyBeyondRepair(track);
        if (!why.empty()) return {why, {}, {}};
    }
    std::string lack;
    for (const JudgedTrack& track : tracks) {
        if (track.stream->kind == Kind::kOther) continue;
        const std::string& each = track.verdict->lack;
        if (!each.empty() && lack.find(each) == lack.npos)
            lack += (lack.empty() ? "" : "; ") + each;
    }
    std::optional<Plan> best;
    for (const Muxer& muxer : muxersFor(file)) {
        auto plan = planFor(file, tracks, muxer, device);
        if (plan && (!best || plan->cost() < best->cost())) best.emplace(*plan);
    }
    if (best) {
        Fix fix = best->fix();
        fix.device = lack;
        return fix;
    }
    return {"no conversion is known to this program that the device takes", {}, lack};
}

}  // namespace inspect
