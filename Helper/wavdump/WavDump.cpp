#include "zrcodecparser/WavDump.h"

#include <array>

#include "Helper/base/Checked.h"
#include "Helper/base/Log.h"
#include "Helper/base/Status.h"

namespace android {
namespace {

constexpr const char* kTag = "WavDump";
constexpr const char* kCountFile = "/data/local/wavdump/count";
constexpr const char* kDefaultFile = "/data/local/wavdump/wavdump.wav";
constexpr int kFileNumbers = 100;

constexpr uint16_t kPcm = 1;  // WAVE_FORMAT_PCM
constexpr uint32_t kHeaderSize = 44;

}  // namespace

WavDump::WavDump() {
    std::snprintf(mFilename, sizeof(mFilename), "/data/local/wavdump/%.4d.wav", get_count());
    ZR_LOGI(kTag, "mFilename=[%s]", mFilename);
}

WavDump::WavDump(const char* name) {
    std::snprintf(mFilename, sizeof(mFilename), "%s", name != nullptr ? name : kDefaultFile);
    ZR_LOGI(kTag, "mFilename=[%s]", mFilename);
}

WavDump::~WavDump() {
    if (mFile != nullptr) std::fclose(mFile);
}

int WavDump::get_count() {
    uint8_t count = 0;
    if (FILE* file = std::fopen(kCountFile, "r")) {
        if (std::fread(&count, 1, 1, file) != 1) count = 0;
        std::fclose(file);
    } else {
        ZR_LOGE(kTag, "count was not opened.");
    }

    FILE* file = std::fopen(kCountFile, "w");
    if (file == nullptr) {
        ZR_LOGE(kTag, "count was not created.");
        return base::kFailed;
    }
    std::fputc((count + 1) % kFileNumbers, file);
    std::fclose(file);
    return count;
}

int WavDump::open(uint32_t sampleRate, uint16_t bitsPerSample, uint16_t channels) {
    if (mFile != nullptr) return base::kFailed;
    const uint32_t blockAlign = bitsPerSample / 8u * channels;
    mAudioFormat = kPcm;
    mChannels = channels;
    mSampleRate = sampleRate;
    mByteRate = static_cast<uint32_t>(uint64_t{sampleRate} * blockAlign);
    mBlockAlign = static_cast<uint16_t>(blockAlign);
    mBitsPerSample = bitsPerSample;

    mFile = std::fopen(mFilename, "w");
    if (mFile == nullptr) {
        ZR_LOGE(kTag, "%s was not created.", mFilename);
        return base::kFailed;
    }
    mDataSize = kHeaderSize;
    rewriteHeader();
    return 0;
}

uint32_t WavDump::dump(const uint8_t* data, uint32_t size) {
    if (!isOpen()) return 0;
    const uint32_t fileSize = base::checkedAdd(mDataSize, size);
    std::fwrite(data, 1, size, mFile);
    mDataSize = fileSize;
    rewriteHeader();
    return size;
}

// Each number stands in the header in the order of the chunks.
int WavDump::write_header() {
    if (!isOpen()) return base::kFailed;
    std::fwrite("RIFF", 1, 4, mFile);
    write_u32le(mDataSize - 8);
    std::fwrite("WAVEfmt ", 1, 8, mFile);
    write_u32le(16);
    write_u16le(mAudioFormat);
    write_u16le(mChannels);
    write_u32le(mSampleRate);
    write_u32le(mByteRate);
    write_u16le(mBlockAlign);
    write_u16le(mBitsPerSample);
    std::fwrite("data", 1, 4, mFile);
    write_u32le(mDataSize - kHeaderSize);
    return 0;
}

int WavDump::write_u32le(uint32_t value) {
    if (!isOpen()) return base::kFailed;
    std::array<uint8_t, 4> bytes;
    for (unsigned i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(value >> (8 * i));
    std::fwrite(bytes.data(), 1, bytes.size(), mFile);
    return static_cast<int>(bytes.size());
}

int WavDump::write_u16le(uint16_t value) {
    if (!isOpen()) return base::kFailed;
    const std::array<uint8_t, 2> bytes{static_cast<uint8_t>(value),
                                       static_cast<uint8_t>(value >> 8)};
    std::fwrite(bytes.data(), 1, bytes.size(), mFile);
    return static_cast<int>(bytes.size());
}

bool WavDump::isOpen() const {
    if (mFile == nullptr) {
        ZR_LOGE(kTag, "%s was not opened.", mFilename);
    }
    return mFile != nullptr;
}

// Seeking also hands what has been written to the system.
void WavDump::rewriteHeader() {
    std::fseek(mFile, 0, SEEK_SET);
    write_header();
    std::fseek(mFile, static_cast<long>(mDataSize), SEEK_SET);
}

}  // namespace android
