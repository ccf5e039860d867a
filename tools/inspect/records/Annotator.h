// Takes a record apart: a cursor over its bytes that writes down what it reads.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/base/Bytes.h"

namespace inspect {

// A named part of a record. The rows that have bytes follow one another without gap or overlap,
// from the first byte of the record to its last.
struct Row {
    size_t offset = 0;
    ByteVector bytes;   // none: a heading, or a field whose first row has its bytes
    unsigned bits = 0;  // of a field that is no whole number of bytes; else 0
    unsigned depth = 0;
    std::string name;
    std::string value;
    // Of a field that is one, and not negative; of a heading, the part's size.
    std::optional<uint64_t> number;
    std::string words;   // that explain the number
    bool isGap = false;  // tells that bytes are missing

    bool isHeading() const { return bytes.empty() && bits == 0 && !isGap; }
    bool holds(std::string_view text) const;
};

using Words = std::string (*)(unsigned value);  // explains a value

// A run of bits, the most significant first.
struct BitField {
    const char* name;
    unsigned bits;
    Words words = nullptr;
};

// Every read writes a row. A read past the end writes what there is, and "missing N bytes" ends the
// part that was cut; from then on reads in that part yield zeros and write nothing. Loops that a
// count in the record drives must ask ok().
class Annotator {
public:
    explicit Annotator(Bytes record);

    uint8_t u8(const std::string& name) { return static_cast<uint8_t>(big(name, 1)); }
    uint64_t big(const std::string& name, size_t sizeBytes);     // at most 8 bytes
    uint64_t little(const std::string& name, size_t sizeBytes);  // the same
    Bytes bytes(const std::string& name, size_t sizeBytes);
    void text(const std::string& name, size_t sizeBytes);
    // What is left of the part; no row when that is nothing.
    void rest(const std::string& name);

    // Fields that together fill whole bytes, at most eight of them.
    template <size_t N>
    std::array<uint64_t, N> packed(const BitField (&fields)[N]) {
        std::array<uint64_t, N> values{};
        readPacked(fields, values);
        return values;
    }

    // Fields whose widths follow from one another. What they leave of their last byte becomes a row
    // when the run goes; nothing else is read before.
    class BitRun {
    public:
        explicit BitRun(Annotator& out) : mOut(out), mFirstRow(out.mRows.size()) {}
        ~BitRun();
        BitRun(const BitRun&) = delete;
        BitRun& operator=(const BitRun&) = delete;

        uint64_t take(const BitField& field);

    private:
        Annotator& mOut;
        size_t mFirstRow;
        size_t mBits = 0;
    };

    // Explains the value of the last row, unless that was cut.
    void say(const std::string& words);
    void number(uint64_t value);  // the same for its number, which words do not tell
    // What its bits stand for, where these are no binary number; nothing: they are no number at
    // all.
    void decoded(std::optional<int64_t> value);

    // Rows written while the group lives stand under its heading. One with a size is a part of its
    // own: reads end where it ends, and what it leaves unread becomes a row when it goes.
    class Group {
    public:
        Group(Annotator& out, bool isPart) : mOut(out), mIsPart(isPart) {}
        ~Group() { mOut.leave(mIsPart); }
        Group(const Group&) = delete;
        Group& operator=(const Group&) = delete;

    private:
        Annotator& mOut;
        bool mIsPart;
    };
    [[nodiscard]] Group group(const std::string& heading);
    [[nodiscard]] Group group(const std::string& heading, uint64_t sizeBytes);

    bool ok() const { return !mParts.back().isCut; }
    std::span<const Row> rowsSoFar() const { return mRows; }
    // What is left of the part, unread.
    Bytes ahead() const;
    size_t remaining() const { return ahead().size(); }
    // Of what is left, the bytes before the first start code 00 00 01 at or behind the given offset
    // whose code byte is there too; all of it when there is none.
    size_t beforeStartCode(size_t from) const;

    // Closes the record: names what nobody has read, or says what is missing.
    std::vector<Row> finish();

private:
    struct Part {
        size_t end;
        uint64_t lacking = 0;  // bytes that its size announces beyond what is there
        bool isCut = false;
        uint64_t missing = 0;  // bytes that the read which cut it wanted
    };

    Bytes take(uint64_t sizeBytes);
    Row& add(size_t offset, Bytes bytes, const std::string& name);
    Bytes read(const std::string& name, uint64_t sizeBytes);  // a row without a value
    void show(uint64_t value);                                // as the last row's
    void show(const BitField& field, uint64_t value);
    void readPacked(std::span<const BitField> fields, std::span<uint64_t> values);
    void leave(bool isPart);
    void close(const Part& part);

    Bytes mRecord;
    size_t mPosition = 0;
    unsigned mDepth = 0;
    std::vector<Part> mParts;
    std::vector<Row> mRows;
};

}  // namespace inspect
