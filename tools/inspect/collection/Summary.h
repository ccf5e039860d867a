// A collection in numbers.

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "inspect/collection/Row.h"

namespace inspect {

// Counts in rows and columns. Of the keys beyond the first thousand it is only known that there
// are some.
class Tally {
public:
    using Row = std::vector<int64_t>;  // as long as its last column that is not 0

    void add(const std::string& key, size_t column);
    const std::map<std::string, Row>& rows() const { return mRows; }
    int64_t at(const std::string& key, size_t column) const;
    std::vector<std::string> keys() const;  // those that count most first

private:
    std::map<std::string, Row> mRows;
};

struct Summary {
    void add(const FileRow& row);

    int64_t files = 0;
    int64_t unreadable = 0;
    int64_t durationUs = 0;            // of those that tell theirs
    std::vector<std::string> devices;  // a column each
    Tally errors;                      // of those that are unreadable, in one column
    Tally kinds;                       // of tracks, in one column
    Tally fileVerdicts;
    Tally trackVerdicts;
    Tally playing;  // tracks by codec
    Tally lost;

private:
    size_t columnOf(const std::string& device);
};

// By how many tracks have them, playing or not.
std::vector<std::string> codecsOf(const Summary& summary);

// For a person, in 80 columns.
std::string summaryText(const Summary& summary);

}  // namespace inspect
