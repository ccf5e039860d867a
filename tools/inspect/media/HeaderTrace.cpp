#include "inspect/media/HeaderTrace.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <new>

namespace inspect {
namespace {

constexpr size_t kMaxElements = 1 << 15;  // of a record

// Takes the filter's lines down: "position  name  bits = value", or a heading.
class Elements {
public:
    explicit Elements(size_t most) : mMost(most) {}

    void hear(const char* format, va_list arguments) {
        if (mIsOver || mList.size() >= mMost) return;
        if (std::strcmp(format, kElementFormat) == 0) return hearElement(arguments);
        std::array<char, 256> text{};
        std::vsnprintf(text.data(), text.size(), format, arguments);
        std::string line(text.data());
        line.erase(line.find_last_not_of("\n ") + 1);
        hearLine(line.c_str());
    }

    // Without the first heading, which is about the packet, and those that head nothing.
    std::vector<SyntaxElement> take() {
        while (!mList.empty() && mList.back().bits == 0) mList.pop_back();
        if (!mList.empty()) mList.erase(mList.begin());
        return std::move(mList);
    }

private:
    // As libavcodec has it: what it is made of needs no writing and reading.
    static constexpr const char* kElementFormat = "%-10d  %s%*s = %" PRId64 "\n";

    void hearElement(va_list arguments) {
        const int position = va_arg(arguments, int);
        const char* name = va_arg(arguments, const char*);
        va_arg(arguments, int);  // the width of the bits
        const std::string_view bits = va_arg(arguments, const char*);
        if (!bits.empty())
            add(static_cast<size_t>(position), name, bits, va_arg(arguments, int64_t));
    }

    void hearLine(const char* line) {
        std::array<char, 96> name{};
        std::array<char, 72> bits{};
        size_t position = 0;
        int64_t value = 0;
        // NOLINTBEGIN(cert-err34-c): what FFmpeg prints, numbers of its own that fit
        if (std::sscanf(line, "%zu %95s %71[01] = %" SCNd64, &position, name.data(), bits.data(),
                        &value) == 4) {
            add(position, name.data(), bits.data(), value);
        } else if (std::sscanf(line, "%zu", &position) == 0) {
            mList.push_back({line, 0, 0});
        }
        // NOLINTEND(cert-err34-c)
    }

    void add(size_t position, const char* name, std::string_view bits, int64_t value) {
        mIsOver = position != mBits;  // another unit
        if (!mIsOver) mList.push_back({name, static_cast<unsigned>(bits.size()), value});
        mBits += bits.size();
    }

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
    setLibAvListener(
            [&](const char* format, va_list arguments) { elements.hear(format, arguments); });
    if (av_bsf_send_packet(mFilter.get(), packet.get()) >= 0) {
        av_bsf_receive_packet(mFilter.get(), packet.get());
    }
    setLibAvListener(nullptr);
    std::vector<SyntaxElement> found = elements.take();
    mBudget -= std::clamp<size_t>(found.size(), 1, mBudget);  // one without any costs time too
    return found;
}

}  // namespace inspect
