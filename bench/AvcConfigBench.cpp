// From H.264 parameter sets to picture size and configuration record: ours beside GStreamer's
// reading of the same SPS, and the whole operation beside the platform calls that it makes. Results
// are compared before anything is timed.
//
// usage: avc_config_bench SMALL.264 LARGE.264 [options of Google Benchmark]

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <memory>

#include "Helper/csd/AvcConfig.h"
#include "Helper/csd/AvcSps.h"
#include "Peers.h"
#include "Run.h"
#include "platform/Host.h"
#include "platform/Log.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

namespace csd = android::csd;
using android::MediaExtractorHelper;
using android::sp;
using bench::Bytes;

// What a container hands over: an SPS and a PPS, each behind a start code.
struct ParameterSets {
    Bytes sps;
    Bytes pps;
    std::vector<uint8_t> stream;
    std::vector<uint8_t> record;  // ISO/IEC 14496-15 5.3.3.1.2, typed out here once more
};

void append(std::vector<uint8_t>& out, Bytes bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

ParameterSets parameterSets(Bytes file) {
    constexpr std::array<uint8_t, 4> kStartCode{0, 0, 0, 1};
    ParameterSets sets{bench::firstOfType(file, 7), bench::firstOfType(file, 8), {}, {}};
    append(sets.stream, kStartCode);
    append(sets.stream, sets.sps);
    append(sets.stream, kStartCode);
    append(sets.stream, sets.pps);

    sets.record = {1, sets.sps[1], sets.sps[2], sets.sps[3], 0xFD, 0xE1, 0};
    sets.record.push_back(static_cast<uint8_t>(sets.sps.size()));
    append(sets.record, sets.sps);
    sets.record.push_back(1);
    sets.record.push_back(0);
    sets.record.push_back(static_cast<uint8_t>(sets.pps.size()));
    append(sets.record, sets.pps);
    return sets;
}

csd::PictureSize pictureSize(Bytes sps) {
    const csd::AvcSps fields = csd::parseAvcSps(sps);
    const csd::PictureSize coded = csd::codedSize(fields);
    return fields.frame_cropping_flag ? csd::croppedSize(fields, coded) : coded;
}

struct Config {
    csd::PictureSize size;
    std::vector<uint8_t> record;
};

Config configOf(Bytes stream) {
    const csd::AvcUnits units = csd::findAvcUnits(stream);
    const Bytes sps = units.sps.value();
    const Bytes pps = units.pps.value();
    return {pictureSize(sps), csd::makeAvcRecord({sps, pps, pps.size()}).value()};
}

class Format {
public:
    AMediaFormat* get() const { return mFormat.get(); }

private:
    std::unique_ptr<AMediaFormat, decltype(&AMediaFormat_delete)> mFormat{AMediaFormat_new(),
                                                                          &AMediaFormat_delete};
};

// What setAVCCSeqHeader calls of the platform, with everything known beforehand.
void platformCalls(AMediaFormat* format, const Config& config) {
    const auto& [size, record] = config;
    AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_AVC, record.data(), record.size());
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_WIDTH, size.width);
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_HEIGHT, size.height);
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_STRIDE, size.width);
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_SLICE_HEIGHT, size.height);
    __android_log_print(ANDROID_LOG_INFO, "MediaExtractorHelper",
                        "found AVC codec config (%d x %d, %d-profile level %d.%d)", size.width,
                        size.height, record[1], record[3] / 10, record[3] % 10);
}

android::status_t setSequenceHeader(MediaExtractorHelper& helper, Bytes stream,
                                    AMediaFormat* format) {
    size_t size = stream.size();
    return helper.setAVCCSeqHeader(stream.data(), size, nullptr, format);
}

// ---- The checks

void check(const std::string& name, const ParameterSets& sets) {
    const bench::GstPictureSize theirs = bench::gstParseSps(sets.sps);
    const Config ours = configOf(sets.stream);
    if (ours.size.width != theirs.width || ours.size.height != theirs.height) {
        bench::fail(name + ": the picture sizes differ");
    }
    if (ours.record != sets.record) bench::fail(name + ": not the expected record");

    MediaExtractorHelper helper;
    Format made;
    Format expected;
    platformCalls(expected.get(), {ours.size, sets.record});
    if (setSequenceHeader(helper, sets.stream, made.get()) != android::OK ||
        std::string(AMediaFormat_toString(made.get())) != AMediaFormat_toString(expected.get())) {
        bench::fail(name + ": setAVCCSeqHeader stores something else than the platform calls");
    }
    benchmark::AddCustomContext(name, std::to_string(ours.size.width) + " x " +
                                              std::to_string(ours.size.height) + ", SPS of " +
                                              std::to_string(sets.sps.size()) + " bytes, PPS of " +
                                              std::to_string(sets.pps.size()) + " bytes");
}

// ---- The timings. DoNotOptimize on the input keeps the compiler from working ahead of the loop.

void timeOurSps(benchmark::State& state, const ParameterSets& sets) {
    Bytes sps = sets.sps;
    for (auto _ : state) {
        benchmark::DoNotOptimize(sps);
        benchmark::DoNotOptimize(pictureSize(sps));
    }
}

void timeGstSps(benchmark::State& state, const ParameterSets& sets) {
    Bytes sps = sets.sps;
    for (auto _ : state) {
        benchmark::DoNotOptimize(sps);
        benchmark::DoNotOptimize(bench::gstParseSps(sps));
    }
}

void timeRecord(benchmark::State& state, const ParameterSets& sets) {
    Bytes stream = sets.stream;
    for (auto _ : state) {
        benchmark::DoNotOptimize(stream);
        Config config = configOf(stream);
        benchmark::DoNotOptimize(config);
    }
}

// Both fill one format over and over, so that neither pays for making entries.
void timeOperation(benchmark::State& state, const ParameterSets& sets) {
    MediaExtractorHelper helper;
    Format format;
    for (auto _ : state) {
        benchmark::DoNotOptimize(setSequenceHeader(helper, sets.stream, format.get()));
    }
}

void timePlatform(benchmark::State& state, const ParameterSets& sets) {
    Format format;
    const Config config = configOf(sets.stream);
    for (auto _ : state) platformCalls(format.get(), config);
}

void registerAll(const std::string& name, const ParameterSets& sets) {
    using Time = void (*)(benchmark::State&, const ParameterSets&);
    constexpr std::pair<const char*, Time> kTimes[] = {
            {"sps", timeOurSps},          {"gstreamer", timeGstSps},  {"record", timeRecord},
            {"operation", timeOperation}, {"platform", timePlatform},
    };
    for (const auto& [row, time] : kTimes) {
        benchmark::RegisterBenchmark((name + "/" + row).c_str(),
                                     [time, &sets](benchmark::State& state) { time(state, sets); });
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) bench::fail("usage: avc_config_bench SMALL.264 LARGE.264 [options]");
    host::setLogSink([](const host::LogLine&) {});
    const std::vector<uint8_t> small = bench::readFile(argv[1]);
    const std::vector<uint8_t> large = bench::readFile(argv[2]);
    const ParameterSets smallSets = parameterSets(small);
    const ParameterSets largeSets = parameterSets(large);
    check("small", smallSets);
    check("large", largeSets);
    registerAll("small", smallSets);
    registerAll("large", largeSets);
    return bench::runBenchmarks(argc, argv, 2);
}
