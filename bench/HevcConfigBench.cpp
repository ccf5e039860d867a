// From H.265 parameter sets to picture size and configuration record: ours beside GStreamer's
// reading of the same SPS. Results are compared before anything is timed.
//
// usage: hevc_config_bench STREAM.265 [options of Google Benchmark]

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>

#include "Helper/csd/HevcConfig.h"
#include "Helper/csd/HevcSps.h"
#include "Peers.h"
#include "Run.h"

namespace {

namespace csd = android::csd;
using bench::Bytes;

struct ParameterSets {
    Bytes vps;
    Bytes sps;
    Bytes pps;
    std::vector<uint8_t> stream;  // the three, each behind a start code
};

ParameterSets parameterSets(Bytes file) {
    constexpr std::array<uint8_t, 4> kStartCode{0, 0, 0, 1};
    ParameterSets sets{};
    for (const bench::Unit& unit : bench::naiveUnits(file)) {
        const Bytes bytes = file.subspan(unit.offset, unit.size);
        const unsigned type = bytes.empty() ? 0u : bytes[0] >> 1 & 0x3Fu;
        Bytes* const slots[] = {&sets.vps, &sets.sps, &sets.pps};
        if (type < 32 || type > 34 || !slots[type - 32]->empty()) continue;
        *slots[type - 32] = bytes;
        sets.stream.insert(sets.stream.end(), kStartCode.begin(), kStartCode.end());
        sets.stream.insert(sets.stream.end(), bytes.begin(), bytes.end());
    }
    if (sets.vps.empty() || sets.sps.empty() || sets.pps.empty()) bench::fail("no parameter sets");
    return sets;
}

csd::PictureSize pictureSize(Bytes sps) {
    const csd::HevcSps fields = csd::parseHevcSps(sps);
    const csd::PictureSize coded = csd::codedSize(fields);
    return fields.conformance_window_flag ? csd::croppedSize(fields, coded) : coded;
}

std::vector<uint8_t> recordOf(Bytes stream) {
    const csd::HevcUnits units = csd::findHevcUnits(stream);
    benchmark::DoNotOptimize(pictureSize(units.sps.value()));
    return csd::makeHevcRecord(units.vps, *units.sps, units.pps.value()).value();
}

void check(const ParameterSets& sets, const bench::GstHevcSps& gst) {
    // The conformance window is not compared: it counts in other units there.
    const bench::GstPictureSize theirs = gst.parse(sets.sps);
    const csd::PictureSize ours = csd::codedSize(csd::parseHevcSps(sets.sps));
    if (ours.width != theirs.width || ours.height != theirs.height) {
        bench::fail("the picture sizes differ");
    }
    csd::HevcParameterSetStream back;
    const std::vector<uint8_t> record = recordOf(sets.stream);
    if (back.assign(record) != csd::HevcRecordResult::kStream ||
        !std::ranges::equal(back.bytes(), sets.stream)) {
        bench::fail("the record does not give the parameter sets back");
    }
    benchmark::AddCustomContext("stream", std::to_string(ours.width) + " x " +
                                                  std::to_string(ours.height) + ", SPS of " +
                                                  std::to_string(sets.sps.size()) + " bytes");
}

template <typename Call>
void time(const char* name, const Bytes& input, Call call) {
    benchmark::RegisterBenchmark(name, [call, input](benchmark::State& state) {
        Bytes bytes = input;
        for (auto _ : state) {
            benchmark::DoNotOptimize(bytes);
            auto result = call(bytes);
            benchmark::DoNotOptimize(result);
        }
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) bench::fail("usage: hevc_config_bench STREAM.265 [options]");
    const std::vector<uint8_t> file = bench::readFile(argv[1]);
    const ParameterSets sets = parameterSets(file);
    const bench::GstHevcSps gst(sets.vps);
    check(sets, gst);
    time("hevc/sps", sets.sps, pictureSize);
    time("hevc/record", sets.stream, recordOf);
    time("hevc/gstreamer", sets.sps, [&gst](Bytes sps) { return gst.parse(sps); });
    return bench::runBenchmarks(argc, argv, 1);
}
