#include "inspect/media/ContainerMap.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using namespace android;

constexpr bool kWholeFrames = true;
constexpr bool kCutAnywhere = false;

bool always(const MediaFile&) {
    return true;
}
bool hasVideo(const MediaFile& file) {
    return std::ranges::count(file.streams, Kind::kVideo, &Stream::kind) > 0;
}
template <uint32_t kCodecType>
bool hasCodec(const MediaFile& file) {
    return std::ranges::count(file.streams, kCodecType, &Stream::codecType) > 0;
}
constexpr auto hasAmrWb = hasCodec<kCodecTypeAmrWb>;
constexpr auto hasDsd = hasCodec<kCodecTypeDsd>;
bool is3g2(const MediaFile& file) {
    return file.majorBrand.starts_with("3g2");
}
bool isHeif(const MediaFile& file) {
    return file.majorBrand == "heic" || file.majorBrand == "heix" || file.majorBrand == "mif1";
}

struct ContainerRow {
    std::string_view format;
    bool (*applies)(const MediaFile&);
    Container container;
};

// The first row that fits counts. Elementary streams have none, but for those that the library
// treats as files.
// clang-format off
constexpr auto kContainers = std::to_array<ContainerRow>({
    {"avi",      always,   {kFileKindAvi,      nullptr,                                  kWholeFrames}},
    {"matroska", always,   {kFileKindMatroska, nullptr,                                  kWholeFrames}},
    {"asf",      always,   {kFileKindAsf,      nullptr,                                  kWholeFrames}},
    {"mov",      is3g2,    {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_3G2,         kWholeFrames}},
    {"mov",      isHeif,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_HEIF,        kWholeFrames}},
    {"mov",      always,   {kFileKindMpeg4,    nullptr,                                  kWholeFrames}},
    {"ac3",      always,   {kFileKindAc3,      nullptr,                                  kCutAnywhere}},
    {"eac3",     always,   {kFileKindAc3,      nullptr,                                  kCutAnywhere}},
    {"dts",      always,   {kFileKindDts,      nullptr,                                  kCutAnywhere}},
    {"dtshd",    always,   {kFileKindDts,      nullptr,                                  kCutAnywhere}},
    {"flv",      always,   {kFileKindFlv,      nullptr,                                  kWholeFrames}},
    {"ogg",      hasVideo, {kFileKindOgm,      nullptr,                                  kWholeFrames}},
    {"ogg",      always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_OGG,         kWholeFrames}},
    {"qcp",      always,   {kFileKindQcp,      nullptr,                                  kCutAnywhere}},
    {"rm",       always,   {kFileKindRm,       nullptr,                                  kWholeFrames}},
    {"wav",      always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_WAV,         kCutAnywhere}},
    {"flac",     always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_FLAC,        kCutAnywhere}},
    {"mp3",      always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG,        kCutAnywhere}},
    {"aac",      always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_AAC_ADTS,    kCutAnywhere}},
    {"aiff",     always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_AIFF,        kCutAnywhere}},
    {"dsf",      always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_DSF,         kCutAnywhere}},
    {"iff",      hasDsd,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_DFF,         kCutAnywhere}},
    {"amr",      hasAmrWb, {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_AMR_WB,      kCutAnywhere}},
    {"amr",      always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_AMR_NB,      kCutAnywhere}},
    {"mpegts",   always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2TS,     kCutAnywhere}},
    {"mpeg",     always,   {0,                 ZRE_MEDIA_MIMETYPE_CONTAINER_MPEG2PS,     kCutAnywhere}},
});
// clang-format on

}  // namespace

Container containerOf(const MediaFile& file) {
    const auto found = std::ranges::find_if(kContainers, [&](const ContainerRow& row) {
        return row.format == file.format && row.applies(file);
    });
    return found != kContainers.end() ? found->container : Container{};
}

}  // namespace inspect
