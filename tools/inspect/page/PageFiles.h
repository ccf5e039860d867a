// The page's own files, which CMake puts into the program.

#pragma once

#include <span>
#include <string_view>

namespace inspect {

struct PageFile {
    std::string_view name;  // "page.css"
    std::string_view text;
};

std::span<const PageFile> pageFiles();

}  // namespace inspect
