// The page about many files.

#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/collection/Collection.h"

namespace inspect {

// Takes rows one by one and keeps of each only its HTML, as long as there is room for more.
class CollectionPage {
public:
    // The options outlive it.
    CollectionPage(const CollectionOptions& options, const Scope& scope);

    void add(const FileRow& row);
    // Hands on one part of the page after the other.
    void write(const Ending& ending, const std::function<void(std::string_view)>& writer) const;

private:
    const CollectionOptions& mOptions;
    std::vector<std::string> mDevices;  // a column each
    bool mHasFixes;
    size_t mShownRows = 0;
    std::string mRowsHtml;
};

// The parts of it that are made of numbers; names that end in View are for templates.
Json summaryView(const Summary& summary);
std::string grouped(uint64_t number);  // "12,345,678"

}  // namespace inspect
