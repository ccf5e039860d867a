// Conversions of PCM samples: ours, as the public operations, beside FFmpeg, libsndfile, GStreamer,
// SDL and VOLK, and beside memcpy of half the bytes that are read and written. What each makes of
// the signal is compared with a plain rule before anything is timed.
//
// usage: pcm_bench small|large [options of Google Benchmark]

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <random>

#include "PcmPeers.h"
#include "Run.h"
#include "platform/Host.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace bench {
namespace {

// ---- The plain rule: a number has 32 bits, the upper ones of which are kept.

void put(Format format, int32_t number, uint8_t* to) {
    const Layout& layout = kLayouts[format];
    auto bits = static_cast<uint32_t>(number >> (32 - layout.bits));
    if (format == kU8) bits ^= 0x80;
    const float value = static_cast<float>(number) * 0x1p-31f;
    if (format == kFloat) std::memcpy(&bits, &value, sizeof(bits));
    for (size_t i = 0; i < layout.bytes; ++i) {
        to[layout.isBig ? layout.bytes - 1 - i : i] = static_cast<uint8_t>(bits >> (8 * i));
    }
}

// Floats are rounded to 24 bits, half away from zero.
int32_t get(Format format, const uint8_t* from) {
    const Layout& layout = kLayouts[format];
    uint32_t bits = format == kU8 ? 0x80 : 0;
    for (size_t i = 0; i < layout.bytes; ++i) {
        bits ^= uint32_t{from[layout.isBig ? layout.bytes - 1 - i : i]} << (8 * i);
    }
    if (format != kFloat) return static_cast<int32_t>(bits << (32 - layout.bits));
    float value;
    std::memcpy(&value, &bits, sizeof(value));
    const double whole = std::clamp(std::round(value * 0x1p23), -0x1p23, 0x1p23 - 1);
    return static_cast<int32_t>(whole) * 256;
}

std::vector<uint8_t> expectedOf(const Work& work) {
    const size_t from = kLayouts[work.from].bytes, to = kLayouts[work.to].bytes;
    std::vector<uint8_t> expected(work.samples * to);
    for (size_t i = 0; i < work.samples; ++i) {
        put(work.to, get(work.from, work.source() + i * from), &expected[i * to]);
    }
    return expected;
}

void check(const std::string& name, const Work& work, const Convert& convert,
           const std::vector<uint8_t>& expected, double tolerance) {
    std::memcpy(work.destination, work.source(), work.bytes());
    const uint8_t* result = convert();
    if (std::equal(expected.begin(), expected.end(), result)) return;
    const double unit = work.to == kFloat ? 0x1p8 : std::exp2(32 - kLayouts[work.to].bits);
    for (size_t i = 0; i < expected.size(); i += kLayouts[work.to].bytes) {
        const double off = 0.0 + get(work.to, result + i) - get(work.to, &expected[i]);
        if (tolerance == 0 || std::abs(off) > tolerance * unit) fail(name + " gives other samples");
    }
}

// ---- Ours

const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

template <int kBits, bool kBigEndian>
void to16(const Work& work) {
    helper->ConvertXto16(work.source(), work.destination, kBits, work.samples, kBigEndian);
}

template <typename T, bool kBigEndian>
void to24(const Work& work) {
    helper->ConvertXto24packed(reinterpret_cast<const T*>(work.source()), work.destination,
                               static_cast<int32_t>(work.samples), kBigEndian);
}

template <int kBits>
void toFloat(const Work& work) {
    helper->ConvertXtoFloat(work.source(), work.destination, kBits, work.samples, false);
}

template <bool kBigEndian>
void to32(const Work& work) {
    helper->ConvertXto32(work.source(), work.destination, 24, work.samples, kBigEndian);
}

// These in place: what comes out is what goes in the next time.

android::host::SampleBuffer bufferOf(const Work& work) {
    return {work.destination, work.bytes(), 0, work.bytes()};
}

void bigToFloat(const Work& work) {
    auto buffer = bufferOf(work);
    helper->ConvertXtoFloat(&buffer, 32, true);
}

template <int kBits>
void swap(const Work& work) {
    auto buffer = bufferOf(work);
    helper->ConvertEndian(&buffer, kBits);
}

constexpr struct Row {
    const char* name;
    Format from, to;
    void (*convert)(const Work& work);
} kRows[] = {
        {"8 unsigned to 16", kU8, kS16, to16<8, false>},
        {"8 signed to 16", kS8, kS16, to16<8, true>},
        {"24 to 16", kS24, kS16, to16<24, false>},
        {"24 big-endian to 16", kBig24, kS16, to16<24, true>},
        {"32 to 16", kS32, kS16, to16<32, false>},
        {"32 to 24", kS32, kS24, to24<uint32_t, false>},
        {"32 to 24 big-endian", kLow24, kBig24, to24<uint32_t, true>},
        {"float to 24", kFloat, kS24, to24<float, false>},
        {"24 to float", kS24, kFloat, toFloat<24>},
        {"32 to float", kS32, kFloat, toFloat<32>},
        {"32 big-endian to float", kBig32, kFloat, bigToFloat},
        {"24 to 32", kS24, kS32, to32<false>},
        {"24 big-endian to 32", kBig24, kS32, to32<true>},
        {"swap 16", kBig16, kS16, swap<16>},
        {"swap 24", kBig24, kS24, swap<24>},
        {"swap 32", kBig32, kS32, swap<32>},
};

// ---- Limits

void copy(const Work& work) {
    std::memcpy(work.destination, work.source(), (work.bytes() + work.bytesAfter()) / 2);
}

void copyByLoop(const Work& work) {
    using Vector [[gnu::vector_size(16), gnu::may_alias]] = char;
    const auto* from = reinterpret_cast<const Vector*>(work.source());
    auto* to = reinterpret_cast<Vector*>(work.destination);
    for (size_t left = (work.bytes() + work.bytesAfter()) / 32; left > 0; --left) {
        *to++ = *from++;
        benchmark::ClobberMemory();  // no memcpy is made of it
    }
}

void time(const std::string& name, const Work& work, const Convert& convert) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        std::memcpy(work.destination, work.source(), work.bytes());
        for (auto _ : state) {
            benchmark::DoNotOptimize(convert());
            benchmark::ClobberMemory();
        }
        state.counters["samples"] = static_cast<double>(work.samples);
    });
}

void timeRow(const Row& row, const std::string& name, const Work& work) {
    const auto of = [&](void (*call)(const Work&)) -> Convert {
        return [=] { return call(work), work.destination; };
    };
    const std::vector<uint8_t> expected = expectedOf(work);
    check(name + "ours", work, of(row.convert), expected, 0);
    time(name + "ours", work, of(row.convert));
    if (work.samples == 1) return;
    for (const PcmPeer& peer : kPcmPeers) {
        const Convert convert = peer.make(work);
        if (!convert) continue;
        check(name + peer.name, work, convert, expected,
              work.to == kFloat ? peer.toFloats : peer.toIntegers);
        time(name + peer.name, work, convert);
    }
    time(name + "memcpy", work, of(copy));
    time(name + "loop", work, of(copyByLoop));
}

uint8_t* allocate(size_t bytes) {
    return static_cast<uint8_t*>(std::aligned_alloc(4096, bytes));
}

std::vector<int32_t> secondOfNumbers() {
    std::minstd_rand random(1);
    std::uniform_real_distribution<double> noise(-0x1p26, 0x1p26);
    std::vector<int32_t> numbers(2 * 48000);
    for (size_t i = 0; i < numbers.size(); ++i) {
        const double tone = std::sin(static_cast<double>(i / 2) * (M_PI * 2 * 440 / 48000));
        numbers[i] = static_cast<int32_t>(tone * 0x1.Cp30 + noise(random));
    }
    return numbers;
}

}  // namespace

uint8_t* signal(Format format) {
    static std::map<Format, uint8_t*> made;
    static const std::vector<int32_t> numbers = secondOfNumbers();
    uint8_t*& bytes = made[format];
    if (bytes != nullptr) return bytes;
    bytes = allocate(kMostBytes + 4096);
    const size_t step = kLayouts[format].bytes, second = numbers.size() * step;
    for (size_t i = 0; i < numbers.size(); ++i) put(format, numbers[i], bytes + i * step);
    for (size_t i = second; i < kMostBytes; ++i) bytes[i] = bytes[i - second];
    return bytes;
}

}  // namespace bench

int main(int argc, char** argv) {
    using namespace bench;
    if (argc < 2) fail("usage: pcm_bench small|large [options]");
    // Memory that is freed stays with the process: nobody pays for fresh pages.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    // Some need four times the size. Half a page from the sources: no load waits for a store whose
    // address only looks like its own.
    uint8_t* const destination = allocate(4 * kMostBytes + 4096) + 2048;
    using Sizes = std::vector<std::pair<std::string, size_t>>;
    const Sizes small{{"/1/", 0}, {"/4KiB/", 4 << 10}, {"/64KiB/", 64 << 10}};
    const Sizes large{{"/64MiB/", kMostBytes}};
    for (const auto& [size, bytes] : argv[1] == std::string("small") ? small : large) {
        for (const Row& row : kRows) {
            const size_t frames = bytes / kLayouts[row.from].bytes / 2;
            timeRow(row, row.name + size,
                    {row.from, row.to, bytes == 0 ? 1 : 2 * frames, destination});
        }
    }
    return runBenchmarks(argc, argv, 1);
}
