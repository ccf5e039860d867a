#include "inspect/media/OpenFile.h"

extern "C" {
#include <libavutil/mem.h>
}

#include <algorithm>
#include <array>
#include <string_view>

#include "inspect/base/FileKinds.h"
#include "inspect/media/Comments.h"
#include "inspect/media/Id3Header.h"

namespace inspect {
namespace {

// What libavformat takes for media although nobody would: text drawn on a screen, pictures, lists
// of other files.
constexpr auto kNotMediaFormats = std::to_array<std::string_view>(
        {"tty", "xbin", "bin", "idf", "adf", "image2", "image2pipe", "ico", "ffmetadata", "concat",
         "hls", "dash", "imf", "sdp"});

const FileKind* kindOf(const InputFile& file) {
    ByteVector head(kFileKindBytes);
    head.resize(static_cast<size_t>(std::max<int64_t>(file.readAt(0, head), 0)));
    return findFileKind(head);
}

}  // namespace

void failAsNotMedia(const InputFile& file) {
    const FileKind* kind = kindOf(file);
    std::string text = "is not a media file";
    if (kind != nullptr) text.append(": ").append(kind->name);
    throw NotMedia(text);
}

OpenFile::OpenFile(const InputFile& input) : mInput(input) {
    setLibAvListener(nullptr);
    av_max_alloc(kMaxAllocatedBytes);
    // No file is known by what one byte over and over says.
    constexpr int64_t kLeastProbed = 64 << 10;
    const Fill fill = findFill(input);
    const FileStream stream(input, std::min(input.size(), std::max(fill.begin, kLeastProbed)));
    const char* path = input.path().c_str();
    const int score = av_probe_input_buffer2(stream.get(), &mDemuxer, path, nullptr, 0, 0);
    if (score <= 0 || mDemuxer == nullptr) failAsNotMedia(input);

    const std::string_view names = mDemuxer->name;
    mFormat = names.substr(0, names.find(','));
    mFormatName = mDemuxer->long_name != nullptr ? mDemuxer->long_name : mFormat;
    const bool isPicture = mFormat.ends_with("_pipe");
    if (isPicture || std::ranges::count(kNotMediaFormats, mFormat) > 0) failAsNotMedia(input);
    const FileKind* kind = kindOf(input);
    const bool isRifx = mFormat == "wav" && kind != nullptr && kind->name.starts_with("WAV");
    if (isRifx) failAsNotMedia(input);  // its demuxer only complains
    mIsSure = score > AVPROBE_SCORE_RETRY;
    const bool canBe = !input.hasName() || (mDemuxer->extensions != nullptr &&
                                            av_match_ext(path, mDemuxer->extensions) != 0);
    if (!mIsSure && (!canBe || kind != nullptr)) failAsNotMedia(input);
    mExtent = measure(mFormat, input, fill);
}

bool isNamedAsMedia(const std::string& path) {
    const AVOutputFormat* muxer = av_guess_format(nullptr, path.c_str(), nullptr);
    if (muxer == nullptr || (muxer->flags & AVFMT_NOFILE) != 0) return false;
    const bool isPicture =
            muxer->mime_type != nullptr && std::string_view(muxer->mime_type).starts_with("image/");
    return muxer->audio_codec != AV_CODEC_ID_NONE ||
           (muxer->video_codec != AV_CODEC_ID_NONE && !isPicture);
}

std::string faultBeforeMedia(const InputFile& file) {
    if (const auto header = readId3Header(file, 0)) {
        const std::string fault = id3Fault(file, *header);
        if (!fault.empty()) return "malformed ID3v2 tag: " + fault;
    }
    std::array<uint8_t, 4> magic{};
    file.readAt(0, magic);
    const std::string name(magic.begin(), magic.end());
    CommentHeaders headers;
    if (name == "OggS") headers = findOggComments(file);
    if (name == "fLaC") headers = findFlacComments(file);
    return headers.notes.empty() ? std::string() : headers.notes.front();
}

}  // namespace inspect
