// Operations of the library on a device of another make.

#include <cstdio>
#include <string>

#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/MetaKeys.h"
#include "zrcodecparser/TrackInfo.h"

using namespace android;

namespace {

int failures = 0;

#define CHECK(condition) \
    if (!(condition)) std::printf("failed: %s\n", #condition), ++failures

std::string text(AMediaFormat* format, const char* key) {
    const char* text = "";
    AMediaFormat_getString(format, key, &text);
    return text;
}

struct Node final : IOMXNode {
    status_t getParameter(OMX_INDEXTYPE, void*, size_t) override { return OK; }
    status_t setParameter(OMX_INDEXTYPE, const void* params, size_t size) override {
        sizes += std::to_string(size) + " ";
        if (size == sizeof(pcm)) pcm = *static_cast<const OMX_AUDIO_PARAM_PCMMODETYPE*>(params);
        return OK;
    }
    status_t getExtensionIndex(const char*, OMX_INDEXTYPE*) override { return BAD_VALUE; }
    std::string sizes;
    OMX_AUDIO_PARAM_PCMMODETYPE pcm;
};

}  // namespace

int main() {
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    AMediaFormat* format = AMediaFormat_new();

    // The device has a decoder for AVC only, and the feature that lets DivX be MPEG-4.
    TrackInfo info{};
    info.trackType = kTrackTypeVideo;
    info.codecType = kCodecTypeAvc;
    info.video.width = 640;
    helper->setTrackMeta(&info, format, false);
    int32_t width = 0;
    CHECK(AMediaFormat_getInt32(format, AMEDIAFORMAT_KEY_WIDTH, &width) && width == 640);
    CHECK(text(format, AMEDIAFORMAT_KEY_MIME) == "video/avc");
    helper->SupportCodecEx(kCodecTypeVp9, format, false);
    CHECK(text(format, "my-MIME") == "video/notsupport");
    helper->SupportCodecEx(kCodecTypeDivx5, format, false);
    CHECK(text(format, "my-MIME") == "video/mp4v-es");

    // ID3v2.3 3.1, 3.3, 4.2.1
    const uint8_t tag[] = "ID3\3\0\0\0\0\0\16TIT2\0\0\0\4\0\0\0abc";
    CHECK(helper->parseID3v2MetaData(tag, sizeof(tag) - 1, true, format) == OK);
    CHECK(text(format, AMEDIAFORMAT_KEY_TITLE) == "abc");

    const uint8_t bigEndian[] = {1, 2, 3};
    uint8_t sample[2] = {};
    CHECK(helper->ConvertXto16(bigEndian, sample, 24, 1, true) == OK);
    CHECK(sample[0] == 2 && sample[1] == 1);

    // nal_unit_type 7, ITU-T H.264 7.3.1 and B.1.1
    const uint8_t stream[] = {0, 0, 1, 0x67, 5, 6, 0, 0, 1, 0x68, 7};
    size_t stop = 0;
    const sp<ABuffer> sps = helper->FindNAL(stream, sizeof(stream), 7, &stop);
    CHECK(sps != nullptr && sps->size() == 3 && sps->data()[2] == 6);

    const sp<MetaData> meta = new MetaData;
    helper->convertZRAMediaFormatToMeta(format, meta.get());
    const char* title = "";
    CHECK(meta->findCString(kZreKeyTitle, &title) && title == std::string("abc"));
    meta->setInt32(kZreKeyChannelCount, 2);
    meta->setInt32(kZreKeySampleRate, 48000);
    const sp<Node> node = new Node;
    CHECK(MediaCodecHelper::setRawAudioFormat(meta, 0, node, false) == OK);
    CHECK(node->sizes == "112 104 ");
    CHECK(node->pcm.nChannels == 2 && node->pcm.eChannelMapping[1] == OMX_AUDIO_ChannelRF);

    AMediaFormat_delete(format);
    return failures;
}
