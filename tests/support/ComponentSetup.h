// The set-up operations of audio and DivX components in one form, and formats that suit them.

#pragma once

#include <map>
#include <string>

#include "support/Component.h"
#include "zrcodecparser/MediaCodecHelper.h"

namespace test {

using android::AMessage;
using android::IOMXNode;
using android::MediaCodecHelper;
using android::sp;

using Numbers = std::map<std::string, int32_t>;

inline sp<AMessage> messageOf(const Numbers& numbers) {
    sp<AMessage> message = new AMessage;
    for (const auto& [key, value] : numbers) message->setInt32(key.c_str(), value);
    return message;
}

inline Numbers without(Numbers numbers, const char* key) {
    numbers.erase(key);
    return numbers;
}

inline const Numbers kPcm{{"channel-count", 6}, {"sample-rate", 48000}};
inline const std::string kPcmCalls = "get 02000001\nset 02000001\nget 04000002\nset 04000002\n";

using Operation = int32_t (*)(const sp<AMessage>&, const sp<IOMXNode>&);

inline int32_t setPcm(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setRawAudioFormat(format, 1, node, false);
}
inline int32_t setG711(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setG711Format(format, 1, node, false);
}
inline int32_t setG726(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setG726Format(format, node, false);
}
inline int32_t setAac(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setAACFormat(format, 0, node, false);
}
inline int32_t setAlac(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setAlacFormat(format, 0, node, false);
}
inline int32_t setWma(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setWMAFormat(format, node, false);
}
inline int32_t setRa(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setRAFormat(format, 7, node, false);
}
inline int32_t setDivx(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setDivxFormat(format, node, true);
}
inline int32_t setDolby(const sp<AMessage>& format, const sp<IOMXNode>& node) {
    return MediaCodecHelper::setDolbyFormat(format, 0, node, false);
}

inline const Numbers kAac{{"channel-count", 2},
                          {"sample-rate", 44100},
                          {"aac-format-adif", 1},
                          {"aac-max-output-channel_count", 6},
                          {"aac-drc-cut-level", 11},
                          {"aac-drc-boost-level", 12},
                          {"aac-drc-heavy-compression", 13},
                          {"aac-target-ref-level", 14},
                          {"aac-encoded-target-level", 15}};
inline const Numbers kWma{{"wma-version", 2},           {"wma-adv-enc-opt1", 0x11112222},
                          {"wma-adv-enc-opt2", 7},      {"wma-vir-pkt-size", 99},
                          {"channel-count", 2},         {"sample-rate", 44100},
                          {"bitrate", 128000},          {"wma-encode-opt", 0x10015},
                          {"wma-block-align", 5},       {"wma-bits-per-sample", 16},
                          {"wma-format-tag", 0x161},    {"wma-voice-enc-opt1", 31},
                          {"wma-voice-enc-opt2_0", 32}, {"wma-voice-enc-opt2_1", 33}};
inline const Numbers kRa{
        {"channel-count", 1},       {"sample-rate", 8000},   {"ra-actual-rate", 8001},
        {"bits-per-sample", 16},    {"ra-audio-quality", 3}, {"ra-flavor-index", 70000},
        {"ra-bits-per-frame", 160}, {"ra-granularity", 20},  {"ra-fourcc", 0x6C706376}};

inline Numbers withValue(Numbers numbers, const char* key, int32_t value) {
    numbers[key] = value;
    return numbers;
}

}  // namespace test
