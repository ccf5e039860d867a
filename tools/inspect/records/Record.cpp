#include "inspect/records/Record.h"

#include <algorithm>

namespace inspect {
namespace {

template <typename Fits>
const Row& firstRow(const std::vector<Row>& rows, Fits fits) {
    static const Row kNone;
    const auto found = std::ranges::find_if(rows, fits);
    return found != rows.end() ? *found : kNone;
}

}  // namespace

std::string showBytes(const Record& record) {
    return shortHex(record.bytes());
}

const Row& Record::operator[](std::string_view name) const {
    return firstRow(rows, [&](const Row& row) { return row.name == name; });
}

const Row& Record::at(std::string_view name, unsigned depth) const {
    return firstRow(rows, [&](const Row& row) { return row.name == name && row.depth == depth; });
}

bool Record::isWhole(unsigned depth) const {
    return std::ranges::none_of(rows,
                                [&](const Row& row) { return row.isGap && row.depth <= depth; });
}

ByteVector Record::bytes() const {
    ByteVector all;
    for (const Row& row : rows) all.insert(all.end(), row.bytes.begin(), row.bytes.end());
    return all;
}

ByteVector Record::part(const Row& heading) const {
    const ByteVector all = bytes();
    const size_t start = std::min(heading.offset, all.size());
    const size_t size = std::min<size_t>(heading.number.value_or(0), all.size() - start);
    const auto first = all.begin() + static_cast<ptrdiff_t>(start);
    return {first, first + static_cast<ptrdiff_t>(size)};
}

}  // namespace inspect
