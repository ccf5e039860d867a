// The numbers that a component is set up with, read from a message before anything is done with
// them. What is missing is only an error where it is needed: the calls before that are made.

#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "Helper/base/Check.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "zrcodecparser/MediaCodecHelper.h"

namespace android::omx {

// A key and the fatal text for want of it.
struct Key {
    uint32_t metaKey;
    const char* missing;
};

// The values of a table of keys; Name is the enumeration of its rows.
template <typename Name, size_t kCount>
class Values {
public:
    using Keys = std::array<Key, kCount>;

    Values(const Keys& keys, const AMessage& message) : mKeys(keys) {
        for (size_t i = 0; i < kCount; ++i) {
            int32_t value = 0;
            const char* key = MediaCodecHelper::getMsgKey(static_cast<int>(keys[i].metaKey));
            if (message.findInt32(key, &value)) mValues[i] = value;
        }
    }

    std::optional<int32_t> find(Name name) const { return mValues[static_cast<size_t>(name)]; }

    // Fatal where there is none.
    int32_t require(Name name) const {
        const auto index = static_cast<size_t>(name);
        if (!mValues[index]) base::fatal(base::kAtMediaCodecHelper, mKeys[index].missing);
        return *mValues[index];
    }

private:
    const Keys& mKeys;
    std::array<std::optional<int32_t>, kCount> mValues;
};

// Reads from the message that the metadata make. It is gone when the call returns, so that nothing
// is held where something missing ends the process.
template <typename Read>
auto readFrom(const sp<MetaData>& metadata, Read read) {
    sp<AMessage> message = new AMessage;
    MediaCodecHelper::ZRCodeConvertMetaDataToMessage(metadata, &message);
    return read(*message);
}

}  // namespace android::omx
