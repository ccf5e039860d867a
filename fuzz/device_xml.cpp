// Input: the codec lists "0", "1", ... of a folder, with 0xFF between them. The first is read.
//
// Aims at tools/inspect/devices/XmlCodecList.

#include "Devices.h"
#include "inspect/devices/XmlCodecList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<std::string> files(1);
    for (const uint8_t byte : fuzz::Bytes(data, size)) {
        if (byte == 0xFF) {
            files.emplace_back();
        } else {
            files.back() += static_cast<char>(byte);
        }
    }
    const auto read = [&](const std::string& name) -> std::optional<std::string> {
        REQUIRE(!name.empty() && name[0] != '/' && ('/' + name + '/').find("/../") == name.npos);
        for (size_t i = 0; i < files.size(); i++) {
            if (name == std::to_string(i)) return files[i];
        }
        return {};
    };
    fuzz::checkDevice([&] { return inspect::readXmlCodecLists({"0"}, read); });
    return 0;
}
