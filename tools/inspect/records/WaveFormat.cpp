// What stands behind the WAVEFORMATEX of a track.

#include "inspect/records/Explain.h"
#include "inspect/records/StandardNames.h"

namespace inspect {

void explainWma1(Annotator& out) {
    out.little("wSamplesPerBlock", 2);
    out.little("wEncodeOptions", 2);
}

void explainWma2(Annotator& out) {
    out.little("dwSamplesPerBlock", 4);
    out.little("wEncodeOptions", 2);
    out.little("dwSuperBlockAlign", 4);
}

void explainWma3(Annotator& out) {
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

void explainWmaVoice(Annotator& out) {
    explainWma3(out);
    if (out.ok()) out.rest("voice options");
}

void explainAdpcm(Annotator& out) {
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

}  // namespace inspect
