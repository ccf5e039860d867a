// Keys by code, all of them and as many unknown ones, beside a hash table; and a track's metadata
// made into a message, beside the platform calls for it, keys and values known beforehand. Results
// are compared before anything is timed.
//
// usage: meta_key_bench [options of Google Benchmark]

#include <cstring>
#include <unordered_map>

#include "Helper/vocabulary/MetaKeyTable.h"
#include "Run.h"
#include "Stream.h"
#include "platform/Buffer.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace {

using namespace android;

constexpr char kFileFormat[] = "video/x-ms-asf", kCodecData[] = "codec data";

std::unordered_map<uint32_t, const char*> keysByCode;
std::vector<uint32_t> codes;          // known and unknown
std::vector<uint32_t> codesOf[4];     // numbers, long numbers, texts, data
std::vector<const char*> numberKeys;  // of the track
const sp<MetaData> track = new MetaData;

void prepare() {
    for (const MetaKeyRow& row : metaKeyRows()) {
        if (keysByCode.try_emplace(row.metaKey, row.messageKey).second) {
            codes.insert(codes.end(), {row.metaKey, ~row.metaKey});
        }
        codesOf[std::min(static_cast<size_t>(row.value), size_t{3})].push_back(row.metaKey);
        if (row.value != MetaValue::kInt32 || numberKeys.size() == 18) continue;
        numberKeys.push_back(row.messageKey);
        track->setInt32(row.metaKey, 1);
    }
    track->setCString(kZreKeyFileFormat, kFileFormat);
    track->setData(kZreKeyADPCMCodecSpecificData, 0, kCodecData, sizeof(kCodecData));
}

const char* byTable(uint32_t code) {
    return MediaCodecHelper::getMsgKey(static_cast<int>(code));
}

const char* byHash(uint32_t code) {
    const auto found = keysByCode.find(code);
    return found == keysByCode.end() ? "unknown" : found->second;
}

sp<AMessage> convert() {
    sp<AMessage> message = new AMessage;
    MediaCodecHelper::ZRCodeConvertMetaDataToMessage(track, &message);
    return message;
}

sp<AMessage> platform() {
    int32_t number = 0;
    int64_t longNumber = 0;
    uint32_t type = 0;
    const char* text = nullptr;
    const void* data = nullptr;
    size_t size = 0;
    for (const uint32_t code : codesOf[0]) track->findInt32(code, &number);
    for (const uint32_t code : codesOf[1]) track->findInt64(code, &longNumber);
    for (const uint32_t code : codesOf[2]) track->findCString(code, &text);
    for (const uint32_t code : codesOf[3]) track->findData(code, &type, &data, &size);
    sp<AMessage> message = new AMessage;
    for (const char* key : numberKeys) message->setInt32(key, 1);
    for (int i = 0; i < 2; ++i)
        message->setString("file-format", kFileFormat);  // stands there twice
    const sp<ABuffer> buffer = new ABuffer(sizeof(kCodecData));
    std::memcpy(buffer->data(), kCodecData, sizeof(kCodecData));
    buffer->meta()->setInt32("csd", 1);
    buffer->meta()->setInt64("timeUs", 0);
    message->setBuffer("csd-0", buffer);
    return message;
}

void check() {
    const sp<AMessage> made = convert(), expected = platform();
    for (const uint32_t code : codes) {
        int32_t number = 0, wanted = 0;
        const char* key = byTable(code);
        if (std::strcmp(key, byHash(code)) != 0) bench::fail("the keys differ");
        made->findInt32(key, &number);
        expected->findInt32(key, &wanted);
        if (number != wanted) bench::fail(std::string("the messages differ in ") + key);
    }
    sp<ABuffer> data;
    if (!made->findBuffer("csd-0", &data)) bench::fail("no codec data");
}

void timeKeys(benchmark::State& state, const char* (*keyOf)(uint32_t)) {
    for (auto _ : state) {
        for (const uint32_t code : codes) benchmark::DoNotOptimize(keyOf(code));
    }
    state.counters["codes"] = static_cast<double>(codes.size());
}

void timeMessage(benchmark::State& state, sp<AMessage> (*make)()) {
    for (auto _ : state) benchmark::DoNotOptimize(make().get());
}

}  // namespace

int main(int argc, char** argv) {
    prepare();
    check();
    benchmark::RegisterBenchmark("key/ours", timeKeys, byTable);
    benchmark::RegisterBenchmark("key/hash", timeKeys, byHash);
    benchmark::RegisterBenchmark("convert/ours", timeMessage, convert);
    benchmark::RegisterBenchmark("convert/platform", timeMessage, platform);
    return bench::runBenchmarks(argc, argv, 0);
}
