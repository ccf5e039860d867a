// A codec component that remembers what it is told, the operations that set up audio and DivX
// components in one form, and formats that suit them.

#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/Message.h"
#include "platform/MetaData.h"
#include "platform/OmxNode.h"
#include "zrcodecparser/MediaCodecHelper.h"

namespace test {

using android::AMessage;
using android::IOMXNode;
using android::sp;
using Helper = android::MediaCodecHelper;

using Calls = std::vector<std::string>;

// Returns A5 for every byte behind size, version and port.
class Component : public IOMXNode {
public:
    struct Call {
        std::string name;              // "get 0400000a", "set 0400000a", "extension NAME"
        std::vector<uint8_t> bytes{};  // that are sent
    };
    std::vector<Call> calls;
    std::map<size_t, android::status_t> errors;  // by the number of the call

    android::status_t getParameter(OMX_INDEXTYPE index, void* params, size_t size) override {
        auto* bytes = static_cast<uint8_t*>(params);
        const uint32_t header[] = {static_cast<uint32_t>(size), 1};
        EXPECT_EQ(std::memcmp(bytes, header, sizeof(header)), 0);
        for (size_t i = 12; i < size; ++i) EXPECT_EQ(bytes[i], 0) << i;
        const auto status = record({"get " + hex("%08x", index)});
        if (status == 0 && size > 12) std::memset(bytes + 12, 0xA5, size - 12);
        return status;
    }

    android::status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) override {
        const auto* bytes = static_cast<const uint8_t*>(params);
        return record({"set " + hex("%08x", index), {bytes, bytes + size}});
    }

    android::status_t getExtensionIndex(const char* name, OMX_INDEXTYPE* index) override {
        *index = static_cast<OMX_INDEXTYPE>(0x7F0000EE);
        return record({std::string("extension ") + name});
    }

    // Each call's name, then what is sent as little-endian words in hex, "-" for A5A5A5A5.
    Calls transcript() const {
        Calls texts;
        for (const Call& call : calls) {
            texts.push_back(call.name);
            for (size_t i = 0; i + 4 <= call.bytes.size(); i += 4) {
                uint32_t word = 0;
                for (size_t k = 4; k > 0; --k) word = word << 8 | call.bytes[i + k - 1];
                texts.back() += word == 0xA5A5A5A5 ? " -" : hex(" %x", word);
            }
        }
        return texts;
    }

private:
    static std::string hex(const char* format, uint32_t number) {
        char text[10];
        std::snprintf(text, sizeof(text), format, number);
        return text;
    }

    android::status_t record(Call call) {
        calls.push_back(std::move(call));
        const auto error = errors.find(calls.size() - 1);
        return error == errors.end() ? 0 : error->second;
    }
};

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

inline Numbers withValue(Numbers numbers, const char* key, int32_t value) {
    numbers[key] = value;
    return numbers;
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

// An operation in its two forms; of metadata there may be none.
struct Operation {
    template <typename Call>
    constexpr Operation(Call call) : message(call), metadata(call) {}
    constexpr Operation(int32_t (*call)(const sp<AMessage>&, const sp<IOMXNode>&))
        : message(call), metadata(nullptr) {}

    int32_t (*message)(const sp<AMessage>&, const sp<IOMXNode>&);
    int32_t (*metadata)(const sp<android::MetaData>&, const sp<IOMXNode>&);
};

// clang-format off
inline constexpr Operation
        setPcm([](auto& f, auto& n) { return Helper::setRawAudioFormat(f, 1, n, false); }),
        setG711([](auto& f, auto& n) { return Helper::setG711Format(f, 1, n, false); }),
        setG726([](auto& f, auto& n) { return Helper::setG726Format(f, n, false); }),
        setAac([](auto& f, auto& n) { return Helper::setAACFormat(f, 0, n, false); }),
        setAlac([](auto& f, auto& n) { return Helper::setAlacFormat(f, 0, n, false); }),
        setWma([](auto& f, auto& n) { return Helper::setWMAFormat(f, n, false); }),
        setRa([](auto& f, auto& n) { return Helper::setRAFormat(f, 7, n, false); }),
        setDivx([](auto& f, auto& n) { return Helper::setDivxFormat(f, n, false); }),
        setPacking([](auto& f, auto& n) { return Helper::configureFramePackingFormat(f, n), 0; }),
        setDolby(+[](const sp<AMessage>& f, const sp<IOMXNode>& n) {
            return Helper::setDolbyFormat(f, 0, n, false);
        });
// clang-format on

}  // namespace test
