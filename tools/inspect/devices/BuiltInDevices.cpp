// Devices of no maker: what decoders of such a time usually take.

#include <array>

#include "inspect/devices/DeviceList.h"

namespace inspect {
namespace {

constexpr std::string_view kVideo = R"(
video/avc hw.avc                # up to 5.2
    size=16x16-4096x2304 alignment=2x2 block-size=16x16 block-count=1-36864
    can-swap-width-height=1 blocks-per-second=1-1958400 frame-rate=1-480 bitrate=1-220000000
    profile/levels=0x10000/0x10000,1/0x10000,2/0x10000,0x80000/0x10000,8/0x10000
video/hevc hw.hevc              # Main, Main 10 up to 5.1, High tier
    size=16x16-4096x2304 alignment=2x2 block-size=16x16 block-count=1-36864
    can-swap-width-height=1 blocks-per-second=1-1958400 frame-rate=1-480 bitrate=1-220000000
    profile/levels=1/0x20000,4/0x20000,2/0x20000,0x1000/0x20000,0x2000/0x20000
video/x-vnd.on2.vp9 hw.vp9      # profiles 0 and 2 up to 5.1
    size=16x16-4096x2304 alignment=2x2 block-size=16x16 block-count=1-36864
    can-swap-width-height=1 blocks-per-second=1-1958400 frame-rate=1-480 bitrate=1-120000000
    profile/levels=1/0x200,4/0x200,0x1000/0x200
video/av01 hw.av1               # Main up to 5.1
    size=16x16-4096x2304 alignment=2x2 block-size=16x16 block-count=1-36864
    can-swap-width-height=1 blocks-per-second=1-1958400 frame-rate=1-480 bitrate=1-120000000
    profile/levels=1/0x2000,2/0x2000,0x1000/0x2000,0x2000/0x2000
video/x-vnd.on2.vp8 hw.vp8
    size=16x16-4096x2304 alignment=2x2 block-size=16x16 block-count=1-36864
    can-swap-width-height=1 blocks-per-second=1-972000 frame-rate=1-240 bitrate=1-80000000
video/mp4v-es sw.mpeg4 software=1  # Simple up to 3
    size=2x2-352x288 alignment=2x2 block-size=16x16 block-count=1-396
    can-swap-width-height=1 blocks-per-second=1-11880
    profile/levels=1/0x10
video/3gpp sw.h263 software=1   # Baseline up to 30 and 45
    size=2x2-352x288 alignment=2x2 block-size=16x16 block-count=1-396
    can-swap-width-height=1 blocks-per-second=1-11880
    profile/levels=1/4,1/0x10,8/4,8/0x10
)";

constexpr std::string_view kAudio = R"(
audio/mp4a-latm audio.aac # LC, HE, ER LC and Scalable, LD, HE v2, ELD
    channel-count=1-8 sample-rate=7350,8000,11025,12000,16000,22050,24000,32000,44100,48000
    profile/levels=2/0,5/0,17/0,20/0,23/0,29/0,39/0
audio/mpeg audio.mp3
    channel-count=1-2 sample-rate=8000,11025,12000,16000,22050,24000,32000,44100,48000
audio/3gpp audio.amrnb channel-count=1 sample-rate=8000
audio/amr-wb audio.amrwb channel-count=1 sample-rate=16000
audio/g711-alaw audio.alaw channel-count=1-6 sample-rate=8000-48000
audio/g711-mlaw audio.mlaw channel-count=1-6 sample-rate=8000-48000
audio/vorbis audio.vorbis channel-count=1-8 sample-rate=8000-96000
audio/opus audio.opus channel-count=1-8 sample-rate=8000,12000,16000,24000,48000
audio/flac audio.flac channel-count=1-8 sample-rate=1-655350
audio/raw audio.raw channel-count=1-8 sample-rate=8000-192000
)";

constexpr std::string_view kVideo2016 = R"(
video/avc hw.avc                # up to High 4.1
    size=64x64-1920x1088 alignment=2x2 block-size=16x16 block-count=1-8160
    can-swap-width-height=1 blocks-per-second=1-245760 bitrate=1-40000000
    profile/levels=0x10000/0x1000,1/0x1000,2/0x1000,8/0x1000
video/hevc hw.hevc              # Main up to 4, Main tier
    size=64x64-1920x1088 alignment=2x2 block-size=16x16 block-count=1-8160
    can-swap-width-height=1 blocks-per-second=1-245760 bitrate=1-20000000
    profile/levels=1/0x400
video/x-vnd.on2.vp8 hw.vp8
    size=64x64-1920x1088 alignment=2x2 block-size=16x16 block-count=1-8160
    can-swap-width-height=1 blocks-per-second=1-245760 bitrate=1-20000000
video/x-vnd.on2.vp9 sw.vp9 software=1  # profile 0 up to 4
    size=2x2-1920x1088 alignment=2x2 block-size=16x16 block-count=1-8160
    can-swap-width-height=1 blocks-per-second=1-245760 bitrate=1-20000000
    profile/levels=1/0x40
video/mp4v-es hw.mpeg4          # Simple, Advanced Simple up to 5
    size=64x64-1920x1088 alignment=2x2 block-size=16x16 block-count=1-8160
    can-swap-width-height=1 blocks-per-second=1-245760 bitrate=1-20000000
    profile/levels=1/0x80,0x8000/0x80
video/3gpp sw.h263 software=1   # Baseline up to 30 and 45
    size=2x2-352x288 alignment=2x2 block-size=16x16 block-count=1-396
    can-swap-width-height=1 blocks-per-second=1-11880
    profile/levels=1/4,1/0x10,8/4,8/0x10
)";

// The types that the library asks for and a typical phone has not, its own first.
constexpr std::string_view kMaker = R"(
audio/x-zr-aac maker.aac software=1
audio/x-zr-mpeg maker.mpeg software=1
audio/x-zr-flac maker.flac software=1
audio/x-zr-alac maker.alac software=1
audio/x-zr-evrc maker.evrc software=1
audio/x-zr-qcelp maker.qcelp software=1
audio/x-zr-ms-wma maker.wma software=1
audio/zr-wma-voice maker.wmavoice software=1
audio/aac-adts maker.adts software=1
audio/ac3 maker.ac3 software=1
audio/eac3 maker.eac3 software=1
audio/dts maker.dts software=1
audio/dts-lbr maker.dtslbr software=1
audio/mpeg-L1 maker.mp1 software=1
audio/mpeg-L2 maker.mp2 software=1
audio/adpcm maker.adpcm software=1
audio/g726 maker.g726 software=1
audio/x-pn-realaudio maker.ra software=1
video/mpeg2 maker.mpeg2 software=1
video/divx maker.divx software=1
video/divx311 maker.divx311 software=1
video/x-ms-wmv maker.wmv software=1
video/x-ms-wmv7 maker.wmv7 software=1
video/x-ms-wmv8 maker.wmv8 software=1
video/x-pn-realvideo maker.rv software=1
video/mjpg maker.mjpg software=1
video/theora maker.theora software=1
)";

constexpr std::string_view kBare = R"(
video/avc sw.avc software=1     # Baseline up to 3
    size=16x16-720x576 alignment=2x2 block-size=16x16 block-count=1-1620
    can-swap-width-height=1 blocks-per-second=1-40500 bitrate=1-10000000
    profile/levels=0x10000/0x100,1/0x100
audio/mp4a-latm audio.aac # LC
    channel-count=1-2 sample-rate=8000-48000 profile/levels=2/0
audio/mpeg audio.mp3 channel-count=1-2 sample-rate=8000-48000
audio/raw audio.raw channel-count=1-2 sample-rate=8000-48000
)";

constexpr auto kDevices = std::to_array<BuiltInDevice>({
        {"phone", "typical phone of today: AVC, HEVC, VP9 and AV1 in 4K", {kVideo, kAudio}},
        {"phone-2016", "phone of ten years ago: AVC up to 4.1 in 1080p", {kVideo2016, kAudio}},
        {"maker-software", "typical phone with all that a maker adds", {kVideo, kAudio, kMaker}},
        {"bare", "AVC Baseline, AAC LC, MP3 and PCM, nothing else", {kBare}},
});

}  // namespace

std::span<const BuiltInDevice> builtInDevices() {
    return kDevices;
}

}  // namespace inspect
