// The page about one file or a few.

#pragma once

#include <span>
#include <string>
#include <vector>

#include "inspect/report/JsonReport.h"

namespace inspect {

// Takes reports one by one, and keeps of each only what the page shows.
class FilePage {
public:
    FilePage(std::span<const PretendedDevice> devices, bool isOne)
        : mDevices(devices), mIsOne(isOne) {}

    void add(const FileReport& report);
    std::string html() const;

private:
    void addParts(Json& view, const FileReport& report, const Json& json, size_t level) const;

    std::span<const PretendedDevice> mDevices;
    bool mIsOne;
    std::vector<Json> mFiles;  // for a list of them
    std::string mFilesHtml;
};

}  // namespace inspect
