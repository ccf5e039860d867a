// Walking Annex B byte streams.

#include "Helper/csd/NalUnits.h"

#include <cstring>

#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

constexpr status_t kNothingMore = -1;

sp<ABuffer> copied(const std::optional<csd::Bytes>& unit) {
    if (!unit) return nullptr;
    sp<ABuffer> buffer = new ABuffer(unit->size());
    if (!unit->empty()) std::memcpy(buffer->data(), unit->data(), unit->size());
    return buffer;
}

}  // namespace

status_t MediaExtractorHelper::getNextNALUnit(const uint8_t** data, size_t* size,
                                              const uint8_t** nalStart, size_t* nalSize,
                                              bool startCodeFollows) {
    *nalStart = nullptr;
    *nalSize = 0;
    const csd::NalStep step = csd::nextNalUnit({*data, *size}, startCodeFollows);
    if (step.result == csd::NalWalk::kEnd) return kNothingMore;
    if (step.result == csd::NalWalk::kMalformed) return ERROR_MALFORMED;
    *nalStart = step.unit.data();
    *nalSize = step.unit.size();
    *data = step.rest.data();
    *size = step.rest.size();
    return OK;
}

sp<ABuffer> MediaExtractorHelper::FindNAL(const uint8_t* data, size_t size, unsigned nalType,
                                          size_t* /*stopOffset*/) {
    return copied(csd::findNalUnit({data, size}, nalType, csd::avcNalType));
}

sp<ABuffer> MediaExtractorHelper::FindHEVCNAL(const uint8_t* data, size_t size, unsigned nalType,
                                              size_t* /*stopOffset*/) {
    return copied(csd::findNalUnit({data, size}, nalType, csd::hevcNalType));
}

unsigned MediaExtractorHelper::parseUE(ABitReader* reader) {
    constexpr unsigned kMaxLeadingZeros = 32;
    unsigned zeros = 0;
    while (reader->getBits(1) == 0) {
        if (++zeros > kMaxLeadingZeros) return 0;
    }
    const uint64_t suffix = zeros == 0 ? 0 : reader->getBits(zeros);
    return static_cast<unsigned>(suffix + (uint64_t{1} << zeros) - 1);
}

}  // namespace android
