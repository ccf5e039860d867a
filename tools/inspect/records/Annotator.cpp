#include "inspect/records/Annotator.h"

#include <algorithm>

namespace inspect {
namespace {

std::string byteCount(uint64_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

}  // namespace

bool Row::holds(std::string_view text) const {
    return std::ranges::equal(bytes, text, {}, {}, [](char c) { return static_cast<uint8_t>(c); });
}

Annotator::Annotator(Bytes record) : mRecord(record), mParts{{.end = record.size()}} {}

Bytes Annotator::ahead() const {
    return mRecord.subspan(mPosition, mParts.back().end - mPosition);
}

size_t Annotator::beforeStartCode(size_t from) const {
    constexpr std::array<uint8_t, 3> kPrefix = {0, 0, 1};
    const auto tail = ahead().subspan(std::min(from, remaining()));
    const auto found = std::search(tail.begin(), tail.end(), kPrefix.begin(), kPrefix.end());
    return tail.end() - found > std::ssize(kPrefix)
                   ? from + static_cast<size_t>(found - tail.begin())
                   : remaining();
}

Bytes Annotator::take(uint64_t sizeBytes) {
    Part& part = mParts.back();
    if (part.isCut) return {};
    const size_t available = part.end - mPosition;
    if (sizeBytes > available) {
        part.isCut = true;
        part.missing = sizeBytes - available;
        sizeBytes = available;
    }
    const Bytes taken = mRecord.subspan(mPosition, static_cast<size_t>(sizeBytes));
    mPosition += taken.size();
    return taken;
}

Row& Annotator::add(size_t offset, Bytes bytes, const std::string& name) {
    mRows.push_back({.offset = offset,
                     .bytes = ByteVector(bytes.begin(), bytes.end()),
                     .bits = 0,
                     .depth = mDepth,
                     .name = name,
                     .value = {},
                     .number = {},
                     .words = {}});
    return mRows.back();
}

Bytes Annotator::read(const std::string& name, uint64_t sizeBytes) {
    const size_t offset = mPosition;
    const Bytes taken = take(sizeBytes);
    if (!taken.empty()) add(offset, taken, name);
    if (!taken.empty() && !ok()) mRows.back().value = "cut short";
    return taken;
}

uint64_t Annotator::big(const std::string& name, size_t sizeBytes) {
    uint64_t value = 0;
    for (const uint8_t byte : read(name, sizeBytes)) value = value << 8 | byte;
    show(value);
    return ok() ? value : 0;
}

uint64_t Annotator::little(const std::string& name, size_t sizeBytes) {
    uint64_t value = 0;
    unsigned shift = 0;
    for (const uint8_t byte : read(name, sizeBytes)) {
        value |= uint64_t{byte} << shift;
        shift += 8;
    }
    show(value);
    return ok() ? value : 0;
}

Bytes Annotator::bytes(const std::string& name, size_t sizeBytes) {
    return read(name, sizeBytes);
}

void Annotator::text(const std::string& name, size_t sizeBytes) {
    const Bytes taken = read(name, sizeBytes);
    if (!taken.empty()) say('"' + std::string(taken.begin(), taken.end()) + '"');
}

void Annotator::rest(const std::string& name) {
    read(name, remaining());
}

void Annotator::readPacked(std::span<const BitField> fields, std::span<uint64_t> values) {
    unsigned bits = 0;
    for (const BitField& field : fields) bits += field.bits;
    if (remaining() * 8 < bits) {
        read(fields[0].name, bits / 8);  // cuts the part
        return;
    }
    BitRun run(*this);
    for (size_t i = 0; i < fields.size(); i++) values[i] = run.take(fields[i]);
}

void Annotator::show(const BitField& field, uint64_t value) {
    mRows.back().bits = field.bits;
    show(value);
    if (field.words != nullptr) say(field.words(static_cast<unsigned>(value)));
}

void Annotator::show(uint64_t value) {
    if (!ok() || mRows.empty()) return;
    mRows.back().value = std::to_string(value);
    mRows.back().number = value;
}

uint64_t Annotator::BitRun::take(const BitField& field) {
    if (!mOut.ok()) return 0;
    const Bytes ahead = mOut.ahead();
    const size_t left = ahead.size() * 8 - mBits;
    const size_t bits = std::min<size_t>(field.bits, left);
    uint64_t value = 0;
    for (size_t i = 0; i < bits; i++, mBits++) {
        value = value << 1 | (ahead[mBits / 8] >> (7 - mBits % 8) & 1u);
    }
    if (bits > 0) mOut.add(mOut.mPosition, {}, field.name);
    if (bits == field.bits) {
        mOut.show(field, value);
        return value;
    }
    if (bits > 0) mOut.mRows.back().value = "cut short";
    if (bits > 0) mOut.mRows.back().bits = static_cast<unsigned>(bits);
    mOut.mParts.back().isCut = true;
    mOut.mParts.back().missing = (field.bits - bits + 7) / 8;
    return 0;
}

Annotator::BitRun::~BitRun() {
    if (mBits % 8 != 0) take({"rest of the byte", static_cast<unsigned>(8 - mBits % 8)});
    const Bytes taken = mOut.mRecord.subspan(mOut.mPosition, mBits / 8);
    mOut.mPosition += taken.size();
    if (taken.empty()) return;
    Row& first = mOut.mRows[mFirstRow];
    first.bytes.assign(taken.begin(), taken.end());
    if (mFirstRow + 1 == mOut.mRows.size()) first.bits = 0;
}

void Annotator::say(const std::string& words) {
    if (!ok() || mRows.empty() || words.empty()) return;
    std::string& value = mRows.back().value;
    value += value.empty() ? words : " (" + words + ")";
    mRows.back().words = words;
}

void Annotator::number(uint64_t value) {
    if (ok() && !mRows.empty()) mRows.back().number = value;
}

void Annotator::decoded(std::optional<int64_t> value) {
    if (!ok() || mRows.empty()) return;
    mRows.back().value = value ? std::to_string(*value) : "";
    mRows.back().number.reset();
    if (value >= 0) mRows.back().number = static_cast<uint64_t>(*value);
}

Annotator::Group Annotator::group(const std::string& heading) {
    if (ok()) add(mPosition, {}, heading);
    mDepth++;
    return {*this, false};
}

Annotator::Group Annotator::group(const std::string& heading, uint64_t sizeBytes) {
    if (ok()) {
        Row& row = add(mPosition, {}, heading);
        row.value = byteCount(sizeBytes);
        row.number = sizeBytes;
    }
    mDepth++;
    Part part = mParts.back();
    if (!part.isCut) {
        const size_t available = part.end - mPosition;
        part.lacking = sizeBytes > available ? sizeBytes - available : 0;
        part.end = mPosition + static_cast<size_t>(std::min<uint64_t>(sizeBytes, available));
    }
    mParts.push_back(part);
    return {*this, true};
}

void Annotator::leave(bool isPart) {
    if (isPart) {
        const Part part = mParts.back();
        mParts.back().isCut = false;
        close(part);
        mParts.pop_back();
        if (part.lacking > 0 && ok()) {
            mParts.back().isCut = true;
            mParts.back().missing = part.lacking;
        }
    }
    mDepth--;
}

// The part that holds this one tells of its missing bytes when they are missing there too.
void Annotator::close(const Part& part) {
    const bool isTold = part.isCut && part.lacking == 0 &&
                        (mParts.size() < 2 || !mParts[mParts.size() - 2].isCut);
    if (!part.isCut) rest("further bytes");
    if (isTold) add(mPosition, {}, "missing " + byteCount(part.missing)).isGap = true;
}

std::vector<Row> Annotator::finish() {
    const Part part = mParts.back();
    mParts.back().isCut = false;
    close(part);
    return std::move(mRows);
}

}  // namespace inspect
