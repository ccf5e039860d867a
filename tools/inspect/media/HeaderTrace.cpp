#include "inspect/media/HeaderTrace.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <new>

namespace inspect {
namespace {

constexpr size_t kMaxElements = 1 << 15;  // of a record

// Takes the filter's lines down: "position  name  bits = value", or a heading.
class Elements {
public:
    explicit Elements(size_t most) : mMost(most) {}

    void hear(const char* line) {
        if (mIsOver || mList.size() >= mMost) return;
        std::array<char, 96> name{};
        std::array<char, 72> bits{};
        size_t position = 0;
        int64_t value = 0;
        if (std::sscanf(line, "%zu %95s %71[01] = %" SCNd64, &position, name.data(), bits.data(),
                        &value) == 4) {
            const auto count = static_cast<unsigned>(std::string_view(bits.data()).size());
            mIsOver = position != mBits;  // another unit
            if (!mIsOver) mList.push_back({name.data(), count, value});
            mBits += count;
        } else if (std::sscanf(line, "%zu", &position) == 0) {
            mList.push_back({line, 0, 0});
        }
    }

    // Without the first heading, which is about the packet, and those that head nothing.
    std::vector<SyntaxElement> take() {
        while (!mList.empty() && mList.back().bits == 0) mList.pop_back();
        if (!mList.empty()) mList.erase(mList.begin());
        return std::move(mList);
    }

private:
    size_t mMost;
    size_t mBits = 0;
    bool mIsOver = false;
    std::vector<SyntaxElement> mList;
};

LibAvPtr<AVCodecParameters> parametersOf(AVCodecID codec) {
    LibAvPtr<AVCodecParameters> parameters(avcodec_parameters_alloc());
    if (parameters == nullptr) throw std::bad_alloc();
    parameters->codec_type = AVMEDIA_TYPE_VIDEO;
    parameters->codec_id = codec;
    return parameters;
}

}  // namespace

HeaderTrace::HeaderTrace(AVCodecID codec)
    : mHasStartCodes(codec == AV_CODEC_ID_H264 || codec == AV_CODEC_ID_HEVC),
      mBudget(kMaxElements),
      mFilter(openFilter("trace_headers", *parametersOf(codec))) {}

std::vector<SyntaxElement> HeaderTrace::read(Bytes unit) {
    constexpr std::array<uint8_t, 4> kStartCode = {0, 0, 0, 1};
    const size_t before = mHasStartCodes ? kStartCode.size() : 0;
    const LibAvPtr<AVPacket> packet(av_packet_alloc());
    const auto size = static_cast<int>(before + unit.size());
    const bool canRead = mFilter != nullptr && packet != nullptr && !unit.empty() && mBudget > 0;
    if (!canRead || av_new_packet(packet.get(), size) < 0) return {};
    std::ranges::copy(Bytes(kStartCode).first(before), packet->data);
    std::ranges::copy(unit, packet->data + before);

    Elements elements(mBudget);
    setLibAvListener([&](const char* line) { elements.hear(line); });
    if (av_bsf_send_packet(mFilter.get(), packet.get()) >= 0) {
        av_bsf_receive_packet(mFilter.get(), packet.get());
    }
    setLibAvListener(nullptr);
    std::vector<SyntaxElement> found = elements.take();
    mBudget -= std::clamp<size_t>(found.size(), 1, mBudget);  // one without any costs time too
    return found;
}

}  // namespace inspect
