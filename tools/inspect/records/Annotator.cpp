#include "inspect/records/Annotator.h"

#include <algorithm>

namespace inspect {
namespace {

std::string byteCount(uint64_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string wordsFor(const Words& words, uint64_t value) {
    if (const auto* text = std::get_if<const char*>(&words)) return *text;
    if (const auto* names = std::get_if<NameList>(&words)) return nameOf(*names, value, "");
    const auto* function = std::get_if<std::string (*)(uint64_t)>(&words);
    return function != nullptr ? (*function)(value) : std::string();
}

}  // namespace

Annotator::Annotator(Bytes record, Detail detail)
    : mBytes(record),
      mDetail(detail),
      mParts{{.end = record.size() * 8}},
      mRecord{.sizeBytes = record.size()} {}

Bytes Annotator::ahead() const {
    const size_t first = (mPosition + 7) / 8;
    return mBytes.subspan(first, mParts.back().end / 8 - first);
}

Row& Annotator::add(std::string_view name) {
    const size_t offset = isInByte() ? mRecord.rows[mRun].offset : mPosition / 8;
    mRecord.rows.push_back({.offset = offset, .depth = mDepth, .name = std::string(name)});
    return mRecord.rows.back();
}

bool Annotator::take(std::string_view name, uint64_t bits) {
    Part& part = mParts.back();
    if (part.isCut) return false;
    const uint64_t taken = std::min<uint64_t>(bits, part.end - mPosition);
    part.isCut = taken < bits;
    part.missing = (bits - taken + 7) / 8;
    if (taken == 0) return !part.isCut;
    if (!isInByte()) mRun = mRecord.rows.size();
    Row& row = add(name);
    row.bits = taken;
    if (part.isCut) row.value = "cut short";
    mPosition += taken;
    if (isInByte()) return true;
    Row& first = mRecord.rows[mRun];
    const Bytes shared = mBytes.subspan(first.offset, mPosition / 8 - first.offset);
    first.bytes.assign(shared.begin(), shared.end());
    if (&first == &row) row.bits = 0;
    return !part.isCut;
}

uint64_t Annotator::read(const Field& field, bool isLittle) {
    const size_t first = mPosition;
    if (!take(field.name, field.bits) || field.bits > 64) return 0;
    const bool isTurned = isLittle && field.bits % 8 == 0;
    uint64_t value = 0;
    for (unsigned bit = 0; bit < field.bits; bit++) {
        const size_t at = first + (isTurned ? field.bits - 8 - bit / 8 * 8 + bit % 8 : bit);
        value = value << 1 | (mBytes[at / 8] >> (7 - at % 8) & 1u);
    }
    mRecord.rows.back().value = std::to_string(value);
    mRecord.rows.back().number = value;
    say(wordsFor(field.words, value));
    return value;
}

uint64_t Annotator::big(std::string_view name, unsigned bits, const Words& words) {
    return read({name, bits, words}, false);
}

uint64_t Annotator::little(std::string_view name, unsigned bits, const Words& words) {
    return read({name, bits, words}, true);
}

void Annotator::known(std::string_view name, uint64_t bits, const std::string& value,
                      std::optional<uint64_t> number) {
    if (!take(name, bits)) return;
    mRecord.rows.back().value = value;
    mRecord.rows.back().number = number;
}

void Annotator::heading(std::string_view name, const std::string& value,
                        std::optional<uint64_t> number) {
    if (!ok()) return;
    Row& row = add(name);
    row.value = value;
    row.number = number;
}

void Annotator::align() {
    if (isInByte()) big("rest of the byte", 8 - mPosition % 8);
}

void Annotator::bytes(std::string_view name, uint64_t sizeBytes) {
    align();
    take(name, sizeBytes * 8);
}

std::string Annotator::text(std::string_view name, uint64_t sizeBytes) {
    align();
    const Bytes before = ahead();
    if (!take(name, sizeBytes * 8) || sizeBytes == 0) return {};
    const Bytes taken = before.first(static_cast<size_t>(sizeBytes));
    std::string text(taken.begin(), taken.end());
    say('"' + text + '"');
    return text;
}

void Annotator::rest(std::string_view name) {
    align();
    bytes(name, remaining());
}

void Annotator::say(const std::string& words) {
    if (!ok() || mRecord.rows.empty() || words.empty()) return;
    std::string& value = mRecord.rows.back().value;
    value += value.empty() ? words : " (" + words + ")";
}

void Annotator::keep(const VideoFacts& facts) {
    mRecord.facts.push_back(facts);
}

void Annotator::cite(std::string_view clause) {
    if (ok()) (mRecord.rows.empty() ? mRecord.clause : mRecord.rows.back().clause) = clause;
}

Annotator::Group Annotator::group(std::string_view name) {
    align();
    heading(name);
    mDepth++;
    return {*this, false};
}

Annotator::Group Annotator::group(std::string_view name, uint64_t sizeBytes) {
    align();
    heading(name, byteCount(sizeBytes), sizeBytes);
    mDepth++;
    Part part = mParts.back();
    if (!part.isCut) {
        const size_t available = remaining();
        part.lacking = sizeBytes > available ? sizeBytes - available : 0;
        part.end = mPosition + 8 * static_cast<size_t>(std::min<uint64_t>(sizeBytes, available));
    }
    mParts.push_back(part);
    return {*this, true};
}

void Annotator::leave(bool isPart) {
    if (isPart) {
        closePart();
        const uint64_t lacking = mParts.back().lacking;
        mParts.pop_back();
        if (lacking > 0 && ok()) {
            mParts.back().isCut = true;
            mParts.back().missing = lacking;
        }
    }
    mDepth--;
}

// The part that holds this one tells of its missing bytes when they are missing there too.
void Annotator::closePart() {
    Part& part = mParts.back();
    const bool isTold = part.isCut && part.lacking == 0 &&
                        (mParts.size() < 2 || !mParts[mParts.size() - 2].isCut);
    if (!part.isCut) rest("further bytes");
    if (isTold) add("missing " + byteCount(part.missing));
}

Record Annotator::finish() {
    closePart();
    return std::move(mRecord);
}

}  // namespace inspect
