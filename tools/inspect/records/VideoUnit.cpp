#include "inspect/records/VideoUnit.h"

#include <algorithm>
#include <array>
#include <optional>

#include "inspect/records/StandardNames.h"

namespace inspect {
namespace {

using Elements = std::span<const SyntaxElement>;

struct ElementWords {
    std::string_view name;
    std::string (*words)(unsigned value);
};

constexpr auto kWords = std::to_array<ElementWords>({
        {"profile_idc", avcProfileName},
        {"general_profile_idc", hevcProfileName},
        {"general_level_idc", hevcLevelText},
        {"nal_unit_type", [](unsigned type) { return type < 32 ? "" : hevcUnitName(type); }},
        {"chroma_format_idc", chromaText},
        {"colour_primaries", primariesText},
        {"color_primaries", primariesText},
        {"transfer_characteristics", transferText},
        {"matrix_coefficients", matrixText},
        {"max_display_mastering_luminance", luminanceText},
        {"min_display_mastering_luminance", luminanceText},
});

int64_t valueOf(Elements elements, std::string_view name) {
    const auto found = std::ranges::find(elements, name, &SyntaxElement::name);
    return found != elements.end() ? found->value : 0;
}

std::string wordsFor(const SyntaxElement& element, Elements all) {
    const auto value = static_cast<unsigned>(element.value);
    if (element.name == "level_idc") {
        const bool isSet3 = valueOf(all, "constraint_set3_flag") != 0;
        return avcLevelText(static_cast<unsigned>(valueOf(all, "profile_idc")), isSet3 ? 0x10 : 0,
                            value);
    }
    const auto row = std::ranges::find(kWords, element.name, &ElementWords::name);
    return row != kWords.end() ? row->words(value) : std::string();
}

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
std::string nameOf(Elements same) {
    const std::string& first = same.front().name;
    const std::string& last = same.back().name;
    if (first == last) return first;
    const size_t index = baseName(last).size();
    return first.substr(0, first.size() - 1) + ".." + last.substr(index + 1);
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

// Writes rows of bits; those that fill bytes together share these.
class BitRows {
public:
    explicit BitRows(Annotator& out) : mOut(out), mPrevention(preventionBytes(out.ahead())) {}

    void add(Elements same, Elements all) {
        passPrevention();
        const size_t before = mInside;
        size_t bits = 0;
        for (const SyntaxElement& each : same) bits += each.bits;
        mPayloadBits += bits;
        while (mInside < mPrevention.size() && mPrevention[mInside] * 8 < mPayloadBits) mInside++;
        take(nameOf(same), bits + 8 * (mInside - before));
        show(same, all);
    }

    void heading(const SyntaxElement& element) {
        if (!mRun) const auto group = mOut.group(element.name);
    }

private:
    void passPrevention() {
        const bool isNext =
                mInside < mPrevention.size() && mPrevention[mInside] * 8 == mPayloadBits;
        if (!isNext) return;
        mInside++;
        take("emulation_prevention_three_byte", 8);
        close();
    }

    void take(const std::string& name, size_t bits) {
        if (!mRun) mRun.emplace(mOut);
        mRun->take({name.c_str(), static_cast<unsigned>(bits)});
        mRunBits += bits;
    }

    // Bytes speak for themselves.
    void show(Elements same, Elements all) {
        const SyntaxElement& first = same.front();
        const bool isAlone = same.size() == 1;
        mOut.decoded(isAlone ? std::optional(first.value) : std::nullopt);
        if (isAlone) mOut.say(wordsFor(first, all));
        if (!isAlone && first.bits == 1) showFlags(same);
        close();
    }

    void showFlags(Elements flags) {
        std::string digits;
        uint64_t number = 0;
        for (const SyntaxElement& each : flags) {
            digits += each.value != 0 ? '1' : '0';
            number = number << 1 | (each.value != 0 ? 1u : 0u);
        }
        mOut.say(digits);
        if (digits.size() <= 64) mOut.number(number);
    }

    void close() {
        if (mRunBits % 8 == 0) mRun.reset();
    }

    Annotator& mOut;
    std::vector<size_t> mPrevention;
    size_t mInside = 0;  // of mPrevention, those already passed
    size_t mPayloadBits = 0;
    size_t mRunBits = 0;
    std::optional<Annotator::BitRun> mRun;
};

void readElements(Annotator& out, Elements all) {
    BitRows rows(out);
    for (Elements left = all; !left.empty() && out.ok();) {
        const Elements same = sameNamed(left);
        left.front().bits == 0 ? rows.heading(left.front()) : rows.add(same, all);
        left = left.subspan(same.size());
    }
}

}  // namespace

void readUnit(Annotator& out, HeaderTrace& trace, VideoFactsReader readFacts) {
    const size_t before = out.rowsSoFar().size();
    readElements(out, trace.read(out.ahead()));
    out.rest("rest of the unit");
    tellFacts(out, readFacts(out.rowsSoFar().subspan(before)));
}

}  // namespace inspect
