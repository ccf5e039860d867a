#include "Peers.h"

extern "C" {
#include <libavcodec/bsf.h>
#include <libavutil/log.h>
}

namespace bench {
namespace {

void keepBytes(void* /*opaque*/, uint8_t* /*bytes*/) {}  // they are the caller's

void require(bool condition) {
    if (!condition) fail("FFmpeg's extract_extradata failed");
}

}  // namespace

ExtradataFilter::ExtradataFilter() : mPacket(av_packet_alloc()) {
    av_log_set_level(AV_LOG_QUIET);  // a unit that is cut off is worth a message each time
    require(av_bsf_alloc(av_bsf_get_by_name("extract_extradata"), &mContext) == 0);
    mContext->par_in->codec_type = AVMEDIA_TYPE_VIDEO;
    mContext->par_in->codec_id = AV_CODEC_ID_H264;
    require(av_bsf_init(mContext) == 0);
}

ExtradataFilter::~ExtradataFilter() {
    av_packet_free(&mPacket);
    av_bsf_free(&mContext);
}

Bytes ExtradataFilter::filter(Bytes stream) {
    av_packet_unref(mPacket);
    auto* bytes = const_cast<uint8_t*>(stream.data());  // marked read-only below
    mPacket->buf =
            av_buffer_create(bytes, stream.size(), keepBytes, nullptr, AV_BUFFER_FLAG_READONLY);
    mPacket->data = bytes;
    mPacket->size = static_cast<int>(stream.size());
    require(av_bsf_send_packet(mContext, mPacket) == 0);
    require(av_bsf_receive_packet(mContext, mPacket) == 0);

    size_t size = 0;
    const uint8_t* data = av_packet_get_side_data(mPacket, AV_PKT_DATA_NEW_EXTRADATA, &size);
    return {data, size};
}

}  // namespace bench
