#include "inspect/base/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

namespace inspect {

size_t terminalColumns(int descriptor) {
    if (isatty(descriptor) == 0) return 0;
    const char* columns = std::getenv("COLUMNS");
    if (columns != nullptr && std::atoi(columns) > 0)
        return static_cast<size_t>(std::atoi(columns));
    winsize size{};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace inspect
