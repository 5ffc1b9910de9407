#include "Terminal.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>

bool MayDecorate(int iDescriptor) {
    const char* const terminal = std::getenv("TERM");
    return ::isatty(iDescriptor) == 1 && std::getenv("NO_COLOR") == nullptr && terminal != nullptr &&
           *terminal != '\0' && std::string_view(terminal) != "dumb";
}
