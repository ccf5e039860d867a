// Takes a record apart: a cursor over its bytes that writes down what it reads.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "inspect/base/Bytes.h"
#include "inspect/records/Record.h"
#include "inspect/records/StandardNames.h"

namespace inspect {

// What explains a number: a text, names for the values from 0 on (empty ones say nothing), or a
// function that knows.
using Words = std::variant<std::monostate, const char*, NameList, std::string (*)(uint64_t value)>;

struct Field {
    std::string_view name;
    unsigned bits = 32;
    Words words = {};
};

// Every read writes a row. A read past the end writes what there is, and "missing N bytes" ends the
// part that was cut; from then on reads in that part yield zeros and write nothing. Loops that a
// count in the record drives must ask ok().
class Annotator {
public:
    explicit Annotator(Bytes record, Detail detail = Detail::kAll);

    Detail detail() const { return mDetail; }

    // A number, the most significant bit first; above 64 bits only bytes, and 0. Fields that share
    // bytes have these in the first row.
    uint64_t big(std::string_view name, unsigned bits, const Words& words = {});
    // The same, the least significant byte first when it is whole bytes.
    uint64_t little(std::string_view name, unsigned bits, const Words& words = {});

    // One after the other.
    template <size_t N>
    std::array<uint64_t, N> big(const Field (&fields)[N]) {
        std::array<uint64_t, N> values{};
        for (size_t i = 0; i < N; i++) values[i] = read(fields[i], false);
        return values;
    }
    template <size_t N>
    std::array<uint64_t, N> little(const Field (&fields)[N]) {
        std::array<uint64_t, N> values{};
        for (size_t i = 0; i < N; i++) values[i] = read(fields[i], true);
        return values;
    }

    // Bits of which the caller knows what they say.
    void known(std::string_view name, uint64_t bits, const std::string& value,
               std::optional<uint64_t> number);
    void heading(std::string_view name, const std::string& value = {},
                 std::optional<uint64_t> number = {});

    // What is left of a byte that was begun becomes a row. So do these, which take whole bytes.
    void align();
    void bytes(std::string_view name, uint64_t sizeBytes);
    std::string text(std::string_view name, uint64_t sizeBytes);
    void rest(std::string_view name);  // of the part; no row when that is nothing

    // Explains the value of the last row, unless that was cut.
    void say(const std::string& words);
    void keep(const VideoFacts& facts);
    // Names the standard's clause for what the heading just written begins, and before any row for
    // the record. The text must outlive it.
    void cite(std::string_view clause);

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
    [[nodiscard]] Group group(std::string_view name);
    [[nodiscard]] Group group(std::string_view name, uint64_t sizeBytes);

    bool ok() const { return !mParts.back().isCut; }
    // The bytes that are left of the part, none of them begun.
    Bytes ahead() const;
    size_t remaining() const { return ahead().size(); }

    // Closes the record: names what nobody has read, or says what is missing.
    Record finish();

private:
    struct Part {
        size_t end;            // in bits
        uint64_t lacking = 0;  // bytes that its size announces beyond what is there
        bool isCut = false;
        uint64_t missing = 0;  // bytes that the read which cut it wanted
    };

    bool isInByte() const { return mPosition % 8 != 0; }
    Row& add(std::string_view name);
    bool take(std::string_view name, uint64_t bits);  // false: cut
    uint64_t read(const Field& field, bool isLittle);
    void leave(bool isPart);
    void closePart();

    Bytes mBytes;
    Detail mDetail;
    size_t mPosition = 0;  // in bits
    size_t mRun = 0;       // the row that gets the bytes of those that share them
    unsigned mDepth = 0;
    std::vector<Part> mParts;
    Record mRecord;
};

}  // namespace inspect
