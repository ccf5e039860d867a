#include "inspect/callers/Component.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "inspect/callers/Hooks.h"
#include "inspect/callers/Offer.h"
#include "inspect/records/Record.h"
#include "platform/Message.h"
#include "platform/OmxNode.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaDefs.h"

namespace inspect {
namespace {

using namespace android;
using Helper = MediaCodecHelper;

constexpr uint32_t kInputPort = 0;

// Takes whatever it is sent; answers with the header as it was asked and one byte for all the rest.
class Component final : public IOMXNode {
public:
    struct Parameter {
        uint32_t index;
        ByteVector bytes;
    };

    explicit Component(uint8_t answer) : mAnswer(answer) {}
    const std::vector<Parameter>& received() const { return mReceived; }
    const std::string& askedFor() const { return mAskedFor; }

    status_t getParameter(OMX_INDEXTYPE, void* params, size_t size) override {
        constexpr size_t kHeaderBytes = 12;
        auto* bytes = static_cast<uint8_t*>(params);
        if (size > kHeaderBytes) std::memset(bytes + kHeaderBytes, mAnswer, size - kHeaderBytes);
        return OK;
    }
    status_t setParameter(OMX_INDEXTYPE index, const void* params, size_t size) override {
        const auto* bytes = static_cast<const uint8_t*>(params);
        mReceived.push_back({static_cast<uint32_t>(index), {bytes, bytes + size}});
        return OK;
    }
    status_t getExtensionIndex(const char* name, OMX_INDEXTYPE* index) override {
        mAskedFor = name;
        *index = static_cast<OMX_INDEXTYPE>(0x7FFF0000);
        return OK;
    }

private:
    uint8_t mAnswer;
    std::vector<Parameter> mReceived;
    std::string mAskedFor;
};

struct ToMessage {
    AMessage& message;
    const char* key;
    void operator()(int32_t value) const { message.setInt32(key, value); }
    void operator()(int64_t value) const { message.setInt64(key, value); }
    void operator()(const std::string& value) const { message.setString(key, value.c_str()); }
    void operator()(const ByteVector& value) const {
        const sp<ABuffer> buffer = new ABuffer(value.size());
        std::ranges::copy(value, buffer->data());
        message.setBuffer(key, buffer);
    }
};

// Formats and messages have the same keys.
sp<AMessage> makeMessage(const Entries& entries, const ComponentOptions& options) {
    sp<AMessage> message = new AMessage;
    for (const auto& [key, value] : entries) {
        std::visit(ToMessage{*message, key.c_str()}, value);
    }
    for (const auto& [key, value] : options.keys) message->setInt32(key.c_str(), value);
    return message;
}

using OnPort = status_t (*)(const sp<AMessage>&, uint32_t, const sp<IOMXNode>&, bool);
using OnNode = status_t (*)(const sp<AMessage>&, const sp<IOMXNode>&, bool);

struct Operation {
    uint32_t firstCodec;
    uint32_t lastCodec;
    const char* name;
    OnPort onPort;
    OnNode onNode = nullptr;
    const char* whenDeclined = nullptr;  // why it does not apply

    status_t operator()(const sp<AMessage>& format, const sp<IOMXNode>& node) const {
        return onPort != nullptr ? onPort(format, kInputPort, node, false)
                                 : onNode(format, node, false);
    }
};

constexpr const char* kOnlyAdif =
        "; it sets up ADIF only (aac-format-adif), and leaves all else to the platform";

// clang-format off
constexpr auto kOperations = std::to_array<Operation>({
        {kCodecTypeDivx311,   kCodecTypeDivx311,   "setDivxFormat",     nullptr, &Helper::setDivxFormat},
        {kCodecTypeDivx4,     kCodecTypeDivx6,     "setDivxFormat",     nullptr, &Helper::setDivxFormat},
        {kCodecTypeAac,       kCodecTypeAac,       "setAACFormat",      &Helper::setAACFormat, nullptr, kOnlyAdif},
        {kCodecTypeAc3,       kCodecTypeEac3,      "setDolbyFormat",    &Helper::setDolbyFormat},
        {kCodecTypePcm,       kCodecTypePcm,       "setRawAudioFormat", &Helper::setRawAudioFormat},
        {kCodecTypeWma,       kCodecTypeWmaVoice,  "setWMAFormat",      nullptr, &Helper::setWMAFormat},
        {kCodecTypeG711ALaw,  kCodecTypeG711MuLaw, "setG711Format",     &Helper::setG711Format},
        {kCodecTypeG726,      kCodecTypeG726,      "setG726Format",     nullptr, &Helper::setG726Format},
        {kCodecTypeRealAudio, kCodecTypeRealAudio, "setRAFormat",       &Helper::setRAFormat},
        {kCodecTypeAacAdts,   kCodecTypeAacAdts,   "setAACFormat",      &Helper::setAACFormat, nullptr, kOnlyAdif},
        {kCodecTypeAlac,      kCodecTypeAlac,      "setAlacFormat",     &Helper::setAlacFormat},
        {kCodecTypeAc4,       kCodecTypeAc4,       "setDolbyFormat",    &Helper::setDolbyFormat},
});
// clang-format on

// Bytes that go with the component's answers are its own.
std::vector<Record> explain(const Component& zeros, const Component& ones) {
    std::vector<Record> all;
    for (size_t i = 0; i < zeros.received().size(); i++) {
        const auto& [index, bytes] = zeros.received()[i];
        const ByteVector& others = ones.received()[i].bytes;
        all.push_back(readParameter(index, zeros.askedFor(), bytes));
        for (Row& row : all.back().rows) {
            const bool isOwn = !row.bytes.empty() && others[row.offset] != row.bytes.front();
            if (isOwn) row.value = "as the component returned it";
        }
    }
    return all;
}

using OnComponent = std::function<std::optional<status_t>(const sp<Component>&)>;

Call takeDown(const char* name, const OnComponent& operation) {
    const sp<Component> zeros = new Component(0);
    const sp<Component> ones = new Component(0xFF);
    {
        const LogSink silence(LogSink::drop);
        callLibrary(name, [&] { return operation(ones); });
    }
    Call call = callLibrary(name, [&] { return operation(zeros); });
    call.parameters = explain(*zeros, *ones);
    return call;
}

// These have no status.
Call configureVideo(const sp<AMessage>& format, const std::string& qualcomm) {
    const bool isOther = qualcomm.empty();
    return takeDown(isOther ? "configureFramePackingFormat" : "configureQCOMVideoDecoder",
                    [&](const sp<Component>& node) {
                        if (isOther)
                            Helper::configureFramePackingFormat(format, node);
                        else
                            Helper::configureQCOMVideoDecoder(format, node, 0, qualcomm.c_str());
                        return std::nullopt;
                    });
}

}  // namespace

std::vector<Call> setUpComponent(const Stream& stream, const TrackFindings& track,
                                 const ComponentOptions& options) {
    const auto* mime = findValue<std::string>(track.entries, AMEDIAFORMAT_KEY_MIME);
    if (mime == nullptr || isNotSupported(*mime)) {
        return {{"none", "a track that the library does not offer has no component", {}, {}}};
    }
    const sp<AMessage> format = makeMessage(track.entries, options);
    const uint32_t codec = stream.codecType;
    // The MPEG-4 decoder may play DivX.
    const bool isMpeg4 = *mime == ZRE_MEDIA_MIMETYPE_VIDEO_MPEG4;
    std::vector<Call> calls;
    for (const Operation& each : kOperations) {
        if (codec < each.firstCodec || codec > each.lastCodec || isMpeg4) continue;
        calls.push_back(takeDown(each.name, [&](const auto& node) { return each(format, node); }));
        const bool isDeclined = calls.back().result.ends_with(kDoesNotApply);
        if (isDeclined && each.whenDeclined != nullptr) calls.back().result += each.whenDeclined;
    }
    if (stream.kind == Kind::kVideo) {
        calls.push_back(configureVideo(format, options.name));
    }
    if (calls.empty()) return {{"none", "the library sets up nothing for this codec", {}, {}}};
    return calls;
}

}  // namespace inspect
