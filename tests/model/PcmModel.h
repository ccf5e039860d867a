// The operations on PCM, one sample at a time: each is read whole, then written.

#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Host.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace test::pcm {

enum Operation { kTo16, kTo24, kToFloat, kTo32, kEndian, kToX };

struct Call {
    Operation operation;
    int32_t source, destination;  // bits; the latter counts for kToX alone
    bool isFloat, bigEndian;
};

using Range = std::pair<size_t, size_t>;  // offset, length

// All that can be seen of a call but the memory.
struct Outcome {
    std::optional<int32_t> status{};   // none when the process ends
    std::vector<Range> ranges{};       // handed to set_range
    std::vector<std::string> lines{};  // priority and text
    bool operator==(const Outcome&) const = default;
};

// A sample, in as many of the bytes as it has. Machines are little-endian.
using Quad = std::array<uint8_t, 4>;

inline Quad quad(uint32_t w) {
    return std::bit_cast<Quad>(w);
}
inline int32_t word(Quad s) {
    return std::bit_cast<int32_t>(s);
}
inline Quad toSigned(Quad s) {
    return {static_cast<uint8_t>(s[0] ^ 0x80)};
}
inline Quad toFraction(Quad s) {
    return std::bit_cast<Quad>(static_cast<float>(word(s)) * 4.656612873e-10f);
}
inline Quad toFraction24(Quad s) {
    return toFraction({0, s[0], s[1], s[2]});
}
inline Quad toPacked(Quad sample) {
    const auto v = std::bit_cast<float>(sample);
    if (v != v) return {};
    if (v <= -1.0f) return quad(0xff800000);
    if (v >= 0.99999988f) return quad(0x7fffff);
    const float s = v * 8388608.0f;
    return std::bit_cast<Quad>(static_cast<int32_t>(s > 0 ? s + 0.5 : s - 0.5));
}
inline Quad toLimit(Quad s) {
    return quad(word(s) == 0 ? 0 : 0x4f000000);
}

// A sample is made a number of another kind, perhaps, and its bytes are written in an order of
// their own, in which 'z' is a zero.
struct Conversion {
    size_t from;  // bytes
    const char* order;
    Quad (*number)(Quad) = nullptr;
    bool backward = false;  // the last sample first
};

inline std::optional<Conversion> conversion(Operation to, int32_t bits, bool isFloat, bool flag) {
    switch (bits < 8 || bits > 32 ? -1 : to * 100 + bits) {
        case 8: return {{1, "z0", flag ? nullptr : toSigned, true}};
        case 24: return {{3, flag ? "10" : "12"}};
        case 32: return {{4, "23"}};
        case 132:
            if (isFloat) return {{4, flag ? "321" : "012", toPacked}};
            return {{4, flag ? "210" : "123"}};
        case 224: return {{3, "0123", toFraction24, true}};
        case 232: return {{4, "0123", toFraction}};
        case 324: return {{3, flag ? "z210" : "z012"}};
        case 332: return {{4, "0123", toLimit}};
        case 416: return {{2, "10"}};
        case 424: return {{3, "210"}};
        case 432: return {{4, "3210"}};
        default: return std::nullopt;
    }
}

// Positions count from the first byte of the memory.
struct Model {
    std::vector<uint8_t> memory;
    size_t end = 0;  // of what has been used
    Outcome outcome{};

    // On arrays there are the first four operations.
    void array(const Call& how, size_t source, size_t destination, uint64_t count) {
        outcome.status = convert(how, source, destination, count);
    }
    // Of a buffer whose memory begins at `data`.
    void buffer(const Call& how, size_t data, size_t capacity, Range range) {
        outcome.status = how.operation == kToX ? toX(how, data, capacity, range)
                                               : change(how, data, capacity, range);
    }

private:
    using Status = std::optional<int32_t>;

    uint8_t& at(size_t position) {
        end = std::max(end, position + 1);
        return memory.at(position);
    }
    int32_t log(int32_t status, const std::string& line) {
        outcome.lines.push_back(line);
        return status;
    }
    int32_t notSupported() { return log(-38, "6 [helper] Conversion is not supported."); }

    Status convert(const Call& how, size_t source, size_t destination, uint64_t count) {
        const auto& [operation, bits, unused, isFloat, flag] = how;
        const auto sample = conversion(operation, bits, isFloat, flag);
        if (operation == kTo16 && bits == 16) return 0;
        if (!sample && operation != kEndian) return notSupported();
        if (!sample) return log(0, "6 [helper] endian change is not supported.");
        const auto low = static_cast<uint32_t>(count);
        if (bits == 8 && low == 0x80000000) return std::nullopt;
        if (bits == 8) count = low > 0x80000000 ? 0 : low;
        if (how.operation == kTo24) count = low >= 0x80000000 ? 0 : low;

        const std::string order = sample->order;
        const size_t most = operation == kTo24 ? INT32_MAX / 3
                                               : SIZE_MAX / std::max(sample->from, order.size());
        if (count > most) return std::nullopt;
        for (uint64_t k = 0; k < count; ++k) {
            const size_t i = sample->backward ? count - 1 - k : k;
            Quad s{};
            for (size_t b = 0; b < sample->from; ++b) s[b] = at(source + i * sample->from + b);
            if (sample->number == toLimit && word(s) < 0) return std::nullopt;
            if (sample->number != nullptr) s = sample->number(s);
            for (size_t b = 0; b < order.size(); ++b)
                at(destination + i * order.size() + b) =
                        order[b] == 'z' ? 0 : s[static_cast<size_t>(order[b] - '0')];
        }
        return 0;
    }

    Status change(const Call& how, size_t data, size_t capacity, Range range) {
        const auto& [operation, bits, unused, isFloat, flag] = how;
        const auto [offset, length] = range;
        const auto is = [&how](Operation o, int32_t width) {
            return how.operation == o && how.source == width;
        };
        if (is(kTo16, 16) || is(kTo24, 24) || (is(kTo32, 32) && !isFloat) || is(kEndian, 8))
            return 0;
        const size_t size = bits < 8 ? 1 : static_cast<size_t>(bits / 8), n = length / size;
        const size_t p = data + offset, scaled = data + size * offset;

        const bool swaps = is(kToFloat, 32) && flag;
        const bool swapsAlone = is(kEndian, 16) || is(kEndian, 32);
        if (is(kTo16, 8) || swaps || swapsAlone) {
            if (capacity < offset) return std::nullopt;
            if (capacity - offset < 2 * n) return swaps ? 0 : -1009;
        }
        if (is(kTo24, 32) && n > INT32_MAX / 3) return std::nullopt;
        if ((is(kTo24, 32) || swaps || swapsAlone) && offset > SIZE_MAX / size) return std::nullopt;

        const Call swap{kEndian, bits, 0, false, false};
        if (swaps) convert(swap, p, scaled, n);
        if (is(kToFloat, 24) && flag) convert(swap, p, p, n);
        if (is(kTo32, 24)) {
            for (size_t i = 0; i < 4 * n; ++i) at(p + i) = i % 4 == 0 ? 0 : at(p + i - i / 4 - 1);
        } else {
            const size_t source = is(kTo24, 32) ? scaled : p, destination = swapsAlone ? scaled : p;
            const Status status = convert(how, source, destination, n);
            if (status != 0 || operation == kEndian) return status;
        }
        const size_t after = offset + n * (operation == kTo16 ? 2 : operation == kTo24 ? 3 : 4);
        if (after < offset) return std::nullopt;
        outcome.ranges.push_back({offset, after});
        if (!is(kTo16, 24)) return 0;
        const auto text = [](size_t number) { return std::to_string(number); };
        return log(0, "3 [ODO] offset " + text(offset) + ", size " + text(after) +
                              ", numOfSamples " + text(n) + ", size " + text(capacity));
    }

    Status toX(Call how, size_t data, size_t capacity, Range range) {
        const auto index = [](int32_t bits) {
            return bits % 8 == 0 && bits > 0 && bits <= 32 ? bits / 8 - 1 : 4;
        };
        // by destination, then source: - stays as it is, i not implemented, s not supported
        constexpr const char* kTable[] = {"-iiis", "1-11s", "ii-2s", "ssffs", "sssss"};
        const char way = kTable[index(how.destination)][index(how.source)];
        const auto text = [](int32_t number) { return std::to_string(number); };
        if (way == 's') return notSupported();
        if (way == 'i')
            return log(-1010, "6 [helper] dst(" + text(how.destination) + ") and src(" +
                                      text(how.source) + ") bit converint is not implemented.");
        if (way == '-' || (way == 'f' && how.isFloat && how.source == 32)) return 0;
        how.operation = way == '1' ? kTo16 : way == '2' ? kTo24 : kToFloat;
        return change(how, data, capacity, range);
    }
};

inline const android::sp<android::MediaExtractorHelper> kLibrary =
        new android::MediaExtractorHelper;

// Has its offset read before its data.
struct Buffer : android::host::SampleBuffer {
    using SampleBuffer::SampleBuffer;
    size_t range_offset() override { return offsetRead = true, SampleBuffer::range_offset(); }
    void* data() override { return offsetRead ? SampleBuffer::data() : nullptr; }
    void set_range(size_t offset, size_t length) override { ranges.push_back({offset, length}); }

    std::vector<Range> ranges{};
    bool offsetRead = false;
};

// The library's operation of that name.
inline int32_t run(const Call& how, android::MediaBufferHelper* buffer) {
    const auto& [operation, bits, destination, isFloat, flag] = how;
    switch (operation) {
        case kTo16: return kLibrary->ConvertXto16(buffer, bits, flag);
        case kTo24: return kLibrary->ConvertXto24packed(buffer, bits, isFloat, flag);
        case kToFloat: return kLibrary->ConvertXtoFloat(buffer, bits, flag);
        case kTo32: return kLibrary->ConvertXto32(buffer, bits, isFloat, flag);
        case kEndian: return kLibrary->ConvertEndian(buffer, bits);
        default: return kLibrary->ConvertXtoX(buffer, bits, destination, isFloat, flag);
    }
}

// The library's operation of that name on arrays; there are the first four.
inline int32_t runArray(const Call& how, const uint8_t* in, uint8_t* out, size_t count) {
    const auto& [operation, bits, unused, isFloat, flag] = how;
    const void* words = in;
    const auto n = static_cast<int32_t>(count);
    switch (operation) {
        case kTo16: return kLibrary->ConvertXto16(in, out, bits, count, flag);
        case kToFloat: return kLibrary->ConvertXtoFloat(in, out, bits, count, flag);
        case kTo32: return kLibrary->ConvertXto32(in, out, bits, count, flag);
        default: break;
    }
    return isFloat ? kLibrary->ConvertXto24packed(static_cast<const float*>(words), out, n, flag)
                   : kLibrary->ConvertXto24packed(static_cast<const uint32_t*>(words), out, n,
                                                  flag);
}

}  // namespace test::pcm
