// Video components, in the layouts of their makers.

#include <string_view>

#include "Helper/MediaCodecHelper/Component.h"
#include "Helper/base/Log.h"
#include "Helper/omx/Fields.h"
#include "Helper/omx/Parameters.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

constexpr OMX_INDEXTYPE kIndexParamDivx = omx::vendorIndex(0x7F00000B);
constexpr OMX_INDEXTYPE kIndexParamFramePacking = omx::vendorIndex(0x7F000002);
constexpr OMX_INDEXTYPE kIndexParamTimestampReorder = omx::vendorIndex(0x7F00001B);
constexpr OMX_INDEXTYPE kIndexParamUserExtraData = omx::vendorIndex(0x7F000020);
constexpr const char* kSyncFrameDecodingMode = "OMX.QCOM.index.param.video.SyncFrameDecodingMode";

constexpr const char* kUserExtraDataKey = "enable-extradata-user";
constexpr int32_t kRequested = 1;

constexpr uint32_t kThumbnailFlag = 0x400;
constexpr uint32_t kEnabled = 1;
constexpr int32_t kDefaultDivxVersion = 1;

constexpr int32_t kArbitraryBytes = 1;
constexpr int32_t kOneCompleteFrame = 3;

int32_t divxFormatCode(int32_t version) {
    return version >= 0 && version <= 3 ? 2 << version : 1;
}

int32_t readDivxVersion(const AMessage& message) {
    const auto version = omx::find(message, kZreKeyDivXVersion);
    if (!version) {
        ZR_LOGW(base::kCodecTag, "Divx version key missing, initializing the version to %d",
                kDefaultDivxVersion);
    }
    return version.value_or(kDefaultDivxVersion);
}

status_t setDivxVersion(int32_t version, IOMXNode& node) {
    omx::ParameterImage<20> params;  // the profile, at 16, is 0
    params.putHeader(omx::kOutputPort);
    params.put32(12, divxFormatCode(version));
    return params.set(node, kIndexParamDivx);
}

int32_t readFramePacking(const AMessage& message) {
    const bool isArbitrary = omx::find(message, kZreKeyUseArbitraryMode).value_or(0) != 0;
    ZR_LOGI(base::kCodecTag, "%s",
            isArbitrary ? "Decoder will be in arbitrary mode"
                        : "Decoder will be in frame by frame mode");
    return isArbitrary ? kArbitraryBytes : kOneCompleteFrame;
}

// Size, version and port are deliberately sent as zero.
void setFramePacking(int32_t packing, IOMXNode& node) {
    omx::ParameterImage<24> params;
    params.put32(20, packing);
    if (params.set(node, kIndexParamFramePacking) != OK) {
        ZR_LOGW(base::kCodecTag, "Failed to set frame packing format on component");
    }
}

bool needsTimestampReordering(const AMessage& message, std::string_view componentName) {
    AString fileFormat;
    message.findString(findMessageKey(kZreKeyFileFormat), &fileFormat);
    return componentName.starts_with("OMX.qcom.video.decoder.vc1") ||
           componentName.starts_with("OMX.qcom.video.decoder.mpeg4") ||
           std::string_view(fileFormat.c_str()).starts_with("video/avi");
}

void enableTimestampReordering(IOMXNode& node) {
    ZR_LOGI(base::kCodecTag, "Enabling timestamp reordering");
    omx::ParameterImage<16> params;
    params.putHeader(omx::kOutputPort);
    params.put32(12, kEnabled);
    if (params.set(node, kIndexParamTimestampReorder) != OK) {
        ZR_LOGW(base::kCodecTag, "Failed to enable timestamp reordering");
    }
}

bool enableThumbnailMode(IOMXNode& node) {
    OMX_INDEXTYPE index{};
    if (node.getExtensionIndex(kSyncFrameDecodingMode, &index) != OK ||
        omx::setParams(node, index, kEnabled) != OK) {
        ZR_LOGW(base::kCodecTag, "Failed to get extension for SYNCFRAMEDECODINGMODE");
        return false;
    }
    ZR_LOGI(base::kCodecTag, "Thumbnail mode enabled.");
    return true;
}

void enableUserExtraData(IOMXNode& node, const char* componentName) {
    ZR_LOGI(base::kCodecTag, "[%s] User-extradata requested", componentName);
    if (omx::setParams(node, kIndexParamUserExtraData, kEnabled) != OK) {
        ZR_LOGW(base::kCodecTag, "[%s] Failed to enable user-extradata", componentName);
    }
}

}  // namespace

status_t MediaCodecHelper::setDivxFormat(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                         bool) {
    return setDivxVersion(readDivxVersion(*format), *node);
}

status_t MediaCodecHelper::setDivxFormat(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                         bool encoder) {
    return encoder ? kDoesNotApply : setDivxVersion(readFrom(format, readDivxVersion), *node);
}

void MediaCodecHelper::configureFramePackingFormat(const sp<AMessage>& format,
                                                   const sp<IOMXNode>& node) {
    setFramePacking(readFramePacking(*format), *node);
}

void MediaCodecHelper::configureFramePackingFormat(const sp<MetaData>& format,
                                                   const sp<IOMXNode>& node) {
    setFramePacking(readFrom(format, readFramePacking), *node);
}

void MediaCodecHelper::configureQCOMVideoDecoder(const sp<AMessage>& format,
                                                 const sp<IOMXNode>& node, uint32_t flags,
                                                 const char* componentName) {
    ZR_LOGW(base::kCodecTag, "configureQCOMVideoDecoder");
    configureFramePackingFormat(format, node);
    if (needsTimestampReordering(*format, componentName)) enableTimestampReordering(*node);
    if ((flags & kThumbnailFlag) != 0 && !enableThumbnailMode(*node)) return;
    if (omx::find(*format, kUserExtraDataKey) == kRequested) {
        enableUserExtraData(*node, componentName);
    }
}

}  // namespace android
