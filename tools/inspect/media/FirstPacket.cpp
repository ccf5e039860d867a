#include "inspect/media/FirstPacket.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "inspect/base/Bytes.h"
#include "inspect/media/Samples.h"

namespace inspect {
namespace {

struct Deleter {
    void operator()(AVCodecParserContext* parser) const { av_parser_close(parser); }
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};

// Else the rate comes from the codec's headers, or from what is between packets.
bool hasSteadyRate(const AVStream& stream) {
    const AVRational average = stream.avg_frame_rate;
    const AVRational base = stream.r_frame_rate;
    if (average.num <= 0 || average.den <= 0 || base.num <= 0 || base.den <= 0) return false;
    return std::fabs(1 - av_q2d(average) / av_q2d(base)) < 0.1;
}

// The times of enough samples are known, in small enough units, to find the base rate.
bool canMeasureRate(const AVStream& stream) {
    constexpr int kSamplesMeasured = 40;
    constexpr double kMostOfAFrame = 0.1;
    const AVRational average = stream.avg_frame_rate;
    return average.num > 0 && average.den > 0 && stream.r_frame_rate.num == 0 &&
           av_q2d(stream.time_base) * av_q2d(average) < kMostOfAFrame &&
           avformat_index_get_entries_count(&stream) > kSamplesMeasured;
}

// Of a record of ISO/IEC 14496-15, with what the packet itself has of parameter sets.
bool readParsed(const AVPacket& packet, AVCodecParameters& codec) {
    const std::unique_ptr<AVCodecContext, Deleter> context(avcodec_alloc_context3(nullptr));
    const std::unique_ptr<AVCodecParserContext, Deleter> parser(av_parser_init(codec.codec_id));
    if (context == nullptr || parser == nullptr) return false;
    if (avcodec_parameters_to_context(context.get(), &codec) < 0) return false;
    parser->flags |= PARSER_FLAG_COMPLETE_FRAMES;
    parser->format = AV_PIX_FMT_NONE;
    uint8_t* data = nullptr;
    int size = 0;
    av_parser_parse2(parser.get(), context.get(), &data, &size, packet.data, packet.size,
                     packet.pts, packet.dts, packet.pos);
    // A decoder follows the container where that crops more.
    const bool isSame = hasWholeUnits(packet, codec) && parser->width == codec.width &&
                        parser->height == codec.height;
    if (parser->format == AV_PIX_FMT_NONE || !isSame) return false;
    codec.format = parser->format;
    codec.profile = context->profile;
    codec.level = context->level;
    return true;
}

class BitReader {
public:
    explicit BitReader(Bytes bytes) : mBytes(bytes) {}

    // Zeros behind the end.
    unsigned take(unsigned count) {
        unsigned value = 0;
        for (; count > 0; count--, mPosition++) {
            const size_t byte = mPosition / 8;
            const bool isSet =
                    byte < mBytes.size() && (mBytes[byte] >> (7 - mPosition % 8) & 1) != 0;
            value = value << 1 | (isSet ? 1u : 0u);
        }
        return value;
    }

private:
    Bytes mBytes;
    size_t mPosition = 0;
};

// VP9 Bitstream 6.2: the uncompressed header of a key frame.
bool readVp9(const AVPacket& packet, AVCodecParameters& codec) {
    constexpr unsigned kRgb = 7;
    constexpr unsigned kSyncCode = 0x498342;
    BitReader bits({packet.data, static_cast<size_t>(packet.size)});
    const bool isFrame = bits.take(2) == 2;
    const unsigned low = bits.take(1);
    const unsigned profile = bits.take(1) << 1 | low;
    const bool isReserved = profile == 3 && bits.take(1) != 0;
    const bool isShownAgain = bits.take(1) != 0;
    const bool isKey = bits.take(1) == 0;
    bits.take(2);  // show_frame, error_resilient_mode
    if (!isFrame || isReserved || isShownAgain || !isKey || bits.take(24) != kSyncCode)
        return false;
    const bool isDeep = profile >= 2;
    const bool isDeepest = isDeep && bits.take(1) != 0;
    const bool hasSubsampling = profile % 2 != 0;
    const bool isRgb = bits.take(3) == kRgb;
    if (isRgb && !hasSubsampling) return false;
    bits.take(isRgb ? 0 : 1);  // color_range
    const bool is420 = hasSubsampling && !isRgb && bits.take(2) == 3;
    if (is420 || (hasSubsampling && bits.take(1) != 0)) return false;
    codec.width = static_cast<int>(bits.take(16)) + 1;
    codec.height = static_cast<int>(bits.take(16)) + 1;
    codec.profile = static_cast<int>(profile);
    codec.format = isDeepest ? AV_PIX_FMT_YUV420P12
                   : isDeep  ? AV_PIX_FMT_YUV420P10
                             : AV_PIX_FMT_YUV420P;
    return true;
}

struct ProResKind {
    uint32_t tag;
    int profile;
    AVPixelFormat format;  // its depth counts
};
constexpr auto kProResKinds = std::to_array<ProResKind>({
        {MKTAG('a', 'p', 'c', 'o'), FF_PROFILE_PRORES_PROXY, AV_PIX_FMT_YUV422P10},
        {MKTAG('a', 'p', 'c', 's'), FF_PROFILE_PRORES_LT, AV_PIX_FMT_YUV422P10},
        {MKTAG('a', 'p', 'c', 'n'), FF_PROFILE_PRORES_STANDARD, AV_PIX_FMT_YUV422P10},
        {MKTAG('a', 'p', 'c', 'h'), FF_PROFILE_PRORES_HQ, AV_PIX_FMT_YUV422P10},
        {MKTAG('a', 'p', '4', 'h'), FF_PROFILE_PRORES_4444, AV_PIX_FMT_YUV444P12},
        {MKTAG('a', 'p', '4', 'x'), FF_PROFILE_PRORES_XQ, AV_PIX_FMT_YUV444P12},
});

// SMPTE RDD 36 5.1: the header of a frame, as large as the container says.
bool readProRes(const AVPacket& packet, AVCodecParameters& codec) {
    constexpr unsigned kIdentifier = MKBETAG('i', 'c', 'p', 'f');
    BitReader bits({packet.data, static_cast<size_t>(packet.size)});
    const bool isWhole = bits.take(32) == static_cast<unsigned>(packet.size);
    const bool isFrame = bits.take(32) == kIdentifier;
    const bool hasHeader = bits.take(16) >= 20 && bits.take(16) <= 1;
    bits.take(32);  // encoder_identifier
    const bool isSame = bits.take(16) == static_cast<unsigned>(codec.width) &&
                        bits.take(16) == static_cast<unsigned>(codec.height);
    const auto* kind = std::ranges::find(kProResKinds, codec.codec_tag, &ProResKind::tag);
    if (!isWhole || !isFrame || !hasHeader || !isSame || kind == kProResKinds.end()) return false;
    codec.format = kind->format;
    codec.profile = kind->profile;
    return true;
}

}  // namespace

bool canBeReadFromPacket(const AVStream& stream) {
    const AVCodecParameters& codec = *stream.codecpar;
    if (codec.codec_type != AVMEDIA_TYPE_VIDEO || codec.width <= 0 || codec.height <= 0)
        return false;
    if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0 || codec.format >= 0) return false;
    if (codec.codec_id == AV_CODEC_ID_VP9 || codec.codec_id == AV_CODEC_ID_PRORES) return true;
    return codec.codec_id == AV_CODEC_ID_H264 && codec.extradata_size >= 7 &&
           codec.extradata[0] == 1 && (hasSteadyRate(stream) || canMeasureRate(stream));
}

bool findsParametersInPacket(const AVStream& stream) {
    const AVCodecParameters& codec = *stream.codecpar;
    return codec.codec_id == AV_CODEC_ID_HEVC && codec.extradata_size == 0;
}

bool readFromPacket(const AVPacket& packet, AVStream& stream) {
    AVCodecParameters& codec = *stream.codecpar;
    const bool isEncrypted =
            av_packet_get_side_data(&packet, AV_PKT_DATA_ENCRYPTION_INFO, nullptr) != nullptr;
    if (isEncrypted || (packet.flags & (AV_PKT_FLAG_CORRUPT | AV_PKT_FLAG_KEY)) != AV_PKT_FLAG_KEY)
        return false;
    switch (codec.codec_id) {
        case AV_CODEC_ID_H264: return hasSteadyRate(stream) && readParsed(packet, codec);
        case AV_CODEC_ID_HEVC: return codec.format >= 0 && readParsed(packet, codec);
        case AV_CODEC_ID_PRORES: return readProRes(packet, codec);
        default: return readVp9(packet, codec);
    }
}

}  // namespace inspect
