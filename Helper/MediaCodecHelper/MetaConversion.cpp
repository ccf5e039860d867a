// The two stores in which a track is described to decoder glue, and the codec data in them.

#include <array>
#include <cstring>
#include <optional>
#include <span>

#include "Helper/base/Check.h"
#include "Helper/csd/HevcConfig.h"
#include "Helper/vocabulary/MetaKeyTable.h"
#include "platform/Buffer.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

constexpr const char* kCodecDataKey = "csd-0";
constexpr int32_t kIsCodecData = 1;

std::optional<std::span<const uint8_t>> findBytes(const MetaDataBase& meta, uint32_t key) {
    uint32_t type = 0;
    const void* data = nullptr;
    size_t size = 0;
    if (!meta.findData(key, &type, &data, &size) || !isMetaData(type)) return std::nullopt;
    return std::span(static_cast<const uint8_t*>(data), size);
}

sp<ABuffer> copyOf(std::span<const uint8_t> bytes) {
    sp<ABuffer> buffer = new ABuffer(bytes.size());
    if (!bytes.empty()) std::memcpy(buffer->data(), bytes.data(), bytes.size());
    return buffer;
}

void copyData(const MetaDataBase& from, const MetaKeyRow& row, AMessage* to) {
    const auto bytes = findBytes(from, row.metaKey);
    if (!bytes) return;
    const sp<ABuffer> buffer = copyOf(*bytes);
    if (row.value == MetaValue::kData) {
        to->setBuffer(row.messageKey, buffer);
        return;
    }
    buffer->meta()->setInt32("csd", kIsCodecData);
    buffer->meta()->setInt64("timeUs", 0);
    to->setBuffer(kCodecDataKey, buffer);
}

void copyEntry(const MetaDataBase& from, const MetaKeyRow& row, AMessage* to) {
    int32_t number = 0;
    int64_t longNumber = 0;
    const char* text = nullptr;
    switch (row.value) {
        case MetaValue::kInt32:
            if (from.findInt32(row.metaKey, &number)) to->setInt32(row.messageKey, number);
            break;
        case MetaValue::kInt64:
            if (from.findInt64(row.metaKey, &longNumber)) to->setInt64(row.messageKey, longNumber);
            break;
        case MetaValue::kText:
            if (from.findCString(row.metaKey, &text)) to->setString(row.messageKey, text);
            break;
        case MetaValue::kData:
        case MetaValue::kCodecData: copyData(from, row, to); break;
    }
}

void copyEntry(const AMessage& from, const MetaKeyRow& row, MetaDataBase* to) {
    int32_t number = 0;
    int64_t longNumber = 0;
    AString text;
    sp<ABuffer> buffer;
    switch (row.value) {
        case MetaValue::kInt32:
            if (from.findInt32(row.messageKey, &number)) to->setInt32(row.metaKey, number);
            break;
        case MetaValue::kInt64:
            if (from.findInt64(row.messageKey, &longNumber)) to->setInt64(row.metaKey, longNumber);
            break;
        case MetaValue::kText:
            if (from.findString(row.messageKey, &text)) to->setCString(row.metaKey, text.c_str());
            break;
        case MetaValue::kData:
        case MetaValue::kCodecData:
            if (from.findBuffer(row.messageKey, &buffer) && buffer != nullptr) {
                to->setData(row.metaKey, kZreTypeNone, buffer->data(), buffer->size());
            }
            break;
    }
}

// In the order in which they are looked for.
constexpr auto kCodecDataKeys = std::to_array<uint32_t>({
        kZreKeyVC1SequenceHeader,
        kZreKeyFLACCodecSpecificData,
        kZreKeyADPCMCodecSpecificData,
        kZreKeyTheoraCodecSpecificData,
        kZreKeyRMCodecSpecificData,
        kZreKeyRVCodecSpecificData,
        kZreKeyALACCodecSpecificData,
});

constexpr status_t kNoCodecData = -1;

}  // namespace

const char* MediaCodecHelper::getMsgKey(int metaKey) {
    const char* key = findMessageKey(static_cast<uint32_t>(metaKey));
    return key != nullptr ? key : "unknown";
}

status_t MediaCodecHelper::ZRCodeConvertMetaDataToMessage(const sp<MetaData>& meta,
                                                          sp<AMessage>* msg) {
    return ZRCodeConvertMetaDataBaseToMessage(meta.get(), msg);
}

status_t MediaCodecHelper::ZRCodeConvertMetaDataBaseToMessage(const MetaDataBase* meta,
                                                              sp<AMessage>* msg) {
    if (*msg == nullptr) *msg = new AMessage;
    for (const MetaKeyRow& row : metaKeyRows()) copyEntry(*meta, row, msg->get());
    return OK;
}

status_t MediaCodecHelper::ZRCodeConvertMessageToMetaData(const sp<AMessage>& msg,
                                                          const sp<MetaData>& meta) {
    if (msg == nullptr || meta == nullptr) {
        base::fatal(base::kAtMediaCodecHelper, "CHECK((format != NULL) && (meta != NULL)) failed.");
    }
    for (const MetaKeyRow& row : metaKeyRows()) copyEntry(*msg, row, meta.get());
    return OK;
}

status_t MediaCodecHelper::ZRgetCodecSpecificData(const sp<MetaData>& meta, const void*& data,
                                                  size_t& size) {
    for (const uint32_t key : kCodecDataKeys) {
        if (const auto bytes = findBytes(*meta, key)) {
            data = bytes->data();
            size = bytes->size();
            return OK;
        }
    }
    return kNoCodecData;
}

sp<ABuffer> MediaCodecHelper::ZRgetCodecSpecificData(const sp<AMessage>& msg) {
    sp<ABuffer> buffer;
    for (const uint32_t key : kCodecDataKeys) {
        if (msg->findBuffer(findMessageKey(key), &buffer)) break;
    }
    return buffer;
}

status_t MediaCodecHelper::parseHEVCCodecSpecificData(const sp<MetaData>& meta, const void* data,
                                                      size_t size) {
    csd::HevcParameterSetStream stream;
    switch (stream.assign({static_cast<const uint8_t*>(data), size})) {
        case csd::HevcRecordResult::kMalformed: return ERROR_MALFORMED;
        case csd::HevcRecordResult::kEmpty: return kNoCodecData;
        case csd::HevcRecordResult::kStream: break;
    }
    meta->setData(kZreKeyHEVCParameterSets, kZreTypeHEVCConfig, stream.bytes().data(),
                  stream.bytes().size());
    return OK;
}

}  // namespace android
