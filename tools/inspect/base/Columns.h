// Any number of items in a drawing that is only so wide.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace inspect {

// At most kMost columns, an even number, each the sum (+=) of as many items as the others: when
// there are more, two neighbours become one.
template <typename T, size_t kMost>
class Columns {
public:
    void add(const T& item) {
        if (mCount == mWidth * kMost) halve();
        if (mCount % mWidth == 0) {
            mColumns.push_back(item);
        } else {
            mColumns.back() += item;
        }
        mCount++;
    }

    const std::vector<T>& all() const { return mColumns; }
    uint64_t width() const { return mWidth; }  // items in each but the last
    uint64_t count() const { return mCount; }

private:
    void halve() {
        for (size_t i = 0; i < kMost / 2; i++) {
            mColumns[i] = mColumns[2 * i];
            mColumns[i] += mColumns[2 * i + 1];
        }
        mColumns.resize(kMost / 2);
        mWidth *= 2;
    }

    std::vector<T> mColumns;
    uint64_t mWidth = 1;
    uint64_t mCount = 0;
};

}  // namespace inspect
