// What stands behind the WAVEFORMATEX of a track.

#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

void readWma1(Annotator& out) {
    out.little("wSamplesPerBlock", 2);
    out.little("wEncodeOptions", 2);
}

void readWma2(Annotator& out) {
    out.little("dwSamplesPerBlock", 4);
    out.little("wEncodeOptions", 2);
    out.little("dwSuperBlockAlign", 4);
}

void readWma3(Annotator& out) {
    out.little("wValidBitsPerSample", 2);
    const auto mask = static_cast<uint32_t>(out.little("dwChannelMask", 4));
    out.say(speakersText(mask));
    out.little("dwReserved1", 4);
    out.say("advanced encode options 1");
    out.little("dwReserved2", 4);
    out.say("advanced encode options 2");
    out.little("wEncodeOptions", 2);
    out.little("wReserved3", 2);
}

void readWmaVoice(Annotator& out) {
    readWma3(out);
    if (out.ok()) out.rest("voice options");
}

void readAdpcm(Annotator& out) {
    out.little("wSamplesPerBlock", 2);
    if (!out.ok() || out.remaining() == 0) return;
    const uint64_t count = out.little("wNumCoef", 2);
    for (uint64_t i = 1; i <= count && out.ok(); i++) {
        const auto pair = out.group("aCoef " + std::to_string(i));
        for (const char* name : {"iCoef1", "iCoef2"}) {
            const auto value = static_cast<int16_t>(out.little(name, 2));
            if (value < 0) out.say(std::to_string(value));
        }
    }
}

std::string summariseAdpcm(const Record& record) {
    if (!record.has("wSamplesPerBlock")) return "not a complete ADPCM format";
    const std::string text = "ADPCM: " + record.digits("wSamplesPerBlock") + " samples a block";
    if (!record.has("wNumCoef")) return text;
    return text + ", " + record.digits("wNumCoef") + " coefficient pairs";
}

}  // namespace

const RecordKind kWma1 = {readWma1, showBytes};
const RecordKind kWma2 = {readWma2, showBytes};
const RecordKind kWma3 = {readWma3, showBytes};
const RecordKind kWmaVoice = {readWmaVoice, showBytes};
const RecordKind kAdpcm = {readAdpcm, summariseAdpcm};

}  // namespace inspect
