#include <algorithm>
#include <array>

#include "inspect/records/Readers.h"

namespace inspect {
namespace {

std::string_view baseName(std::string_view name) {
    return name.substr(0, name.find_last_of('['));
}

// The elements of one name at the front that a single row tells.
Elements sameNamed(Elements elements) {
    const SyntaxElement& first = elements.front();
    if (first.bits != 1 && first.bits != 8) return elements.first(1);
    const auto other = std::ranges::find_if(elements, [&](const SyntaxElement& each) {
        return each.bits != first.bits || baseName(each.name) != baseName(first.name);
    });
    return {elements.begin(), other};
}

// "flag[0..31]"
std::string sharedName(Elements same) {
    const std::string& first = same.front().name;
    const std::string& last = same.back().name;
    if (first == last) return first;
    return first.substr(0, first.size() - 1) + ".." + last.substr(baseName(last).size() + 1);
}

// The offsets in the unit's payload before which emulation prevention bytes stand.
std::vector<size_t> preventionBytes(Bytes unit) {
    constexpr uint8_t kPrevention = 3;
    std::vector<size_t> offsets;
    unsigned zeros = 0;
    for (size_t i = 0; i < unit.size(); i++) {
        if (zeros >= 2 && unit[i] == kPrevention) offsets.push_back(i - offsets.size());
        zeros = unit[i] == 0 ? zeros + 1 : 0;
    }
    return offsets;
}

class ElementRows {
public:
    ElementRows(Annotator& out, std::vector<size_t> prevention)
        : mOut(out), mPrevention(std::move(prevention)) {}

    void write(Elements all) {
        for (Elements left = all; !left.empty() && mOut.ok();) {
            const Elements same = sameNamed(left);
            passPrevention();
            same.front().bits == 0 ? heading(same.front()) : add(same, all);
            left = left.subspan(same.size());
        }
    }

private:
    void heading(const SyntaxElement& element) {
        if (mPayloadBits % 8 == 0) mOut.heading(element.name);
    }

    void passPrevention() {
        const bool isNext =
                mInside < mPrevention.size() && mPrevention[mInside] * 8 == mPayloadBits;
        if (!isNext) return;
        mInside++;
        mOut.big("emulation_prevention_three_byte", 8);
    }

    void add(Elements same, Elements all) {
        const size_t before = mInside;
        size_t bits = 0;
        for (const SyntaxElement& each : same) bits += each.bits;
        mPayloadBits += bits;
        while (mInside < mPrevention.size() && mPrevention[mInside] * 8 < mPayloadBits) mInside++;
        bits += 8 * (mInside - before);
        writeRow(same, all, bits);
    }

    void writeRow(Elements same, Elements all, size_t bits) {
        const SyntaxElement& first = same.front();
        if (same.size() == 1) {
            const auto number = static_cast<uint64_t>(first.value);
            mOut.known(first.name, bits, std::to_string(first.value),
                       first.value < 0 ? std::nullopt : std::optional(number));
            mOut.say(wordsFor(first, all));
            return;
        }
        std::string digits;  // bytes speak for themselves
        uint64_t number = 0;
        for (const SyntaxElement& each : same.first(first.bits == 1 ? same.size() : 0)) {
            digits += each.value != 0 ? '1' : '0';
            number = number << 1 | (each.value != 0 ? 1u : 0u);
        }
        const bool isNumber = !digits.empty() && digits.size() <= 64;
        mOut.known(sharedName(same), bits, digits, isNumber ? std::optional(number) : std::nullopt);
    }

    Annotator& mOut;
    std::vector<size_t> mPrevention;
    size_t mInside = 0;  // of mPrevention, those already passed
    size_t mPayloadBits = 0;
};

std::string bitDepthText(const VideoFacts& facts) {
    const std::string luma = std::to_string(facts.bitDepth);
    const bool isOne = facts.chroma == 0 || facts.chromaBitDepth == facts.bitDepth;
    return isOne ? luma : luma + ", chroma " + std::to_string(facts.chromaBitDepth);
}

std::string refsText(const VideoFacts& facts) {
    std::string text = std::to_string(*facts.refs);
    if (!facts.maxRefs) return text;
    const bool isAllowed = facts.refs <= facts.maxRefs;
    return text + "; the level allows " + (isAllowed ? "" : "only ") +
           std::to_string(*facts.maxRefs);
}

std::string rateText(const VideoFacts& facts) {
    const uint64_t hundredths = facts.frames * 100 / facts.seconds;
    const std::string digits = std::to_string(hundredths % 100 + 100).substr(1);
    return std::to_string(hundredths / 100) + (digits == "00" ? "" : "." + digits) + " fps";
}

// For a person.
void tellFacts(Annotator& out, const VideoFacts& facts) {
    const auto group = out.group("in words");
    const bool isCropped = facts.codedWidth != facts.width || facts.codedHeight != facts.height;
    out.heading("picture", sizeText(facts.width, facts.height) +
                                   (isCropped ? ", cropped from " + sizeText(facts.codedWidth,
                                                                             facts.codedHeight)
                                              : ""));
    out.heading("chroma format", chromaText(facts.chroma));
    out.heading("bit depth", bitDepthText(facts));
    if (facts.refs) {
        out.heading("scan", facts.isInterlaced ? "interlaced" : "progressive");
        out.heading("reference frames", refsText(facts));
    }
    out.heading("colour", primariesText(facts.primaries) + " primaries, " +
                                  transferText(facts.transfer) + " transfer, " +
                                  matrixText(facts.matrix) + " matrix, " +
                                  (facts.isFullRange != 0 ? "full range" : "limited range"));
    if (facts.frames > 0 && facts.seconds > 0) out.heading("frame rate", rateText(facts));
}

}  // namespace

void readUnit(Annotator& out, HeaderTrace& trace, VideoFactsReader readFacts) {
    const std::vector<SyntaxElement> elements = trace.read(out.ahead());
    const auto prevention =
            trace.isOfNalUnits() ? preventionBytes(out.ahead()) : std::vector<size_t>();
    ElementRows(out, prevention).write(elements);
    out.rest("rest of the unit");
    const auto facts = readFacts(elements);
    if (!facts || !out.ok()) return;
    out.keep(*facts);
    tellFacts(out, *facts);
}

}  // namespace inspect
