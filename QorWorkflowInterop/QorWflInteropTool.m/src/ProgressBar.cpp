#include "ProgressBar.h"

#include "Terminal.h"

#include <iostream>
#include <string>
#include <unistd.h>

namespace {

constexpr std::size_t kWidth = 40;
constexpr auto kInterval = std::chrono::milliseconds(50);
constexpr const char* kClear = "\r\x1B[K";  // to the start of the line, and the rest of it erased

}  // namespace

ProgressBar::ProgressBar(std::size_t iTotal) : total(iTotal), isShown(MayDecorate(STDERR_FILENO)) {}

ProgressBar::~ProgressBar() {
    Clear();
}

void ProgressBar::Show(std::size_t iDone, std::size_t iFailed) {
    const auto now = std::chrono::steady_clock::now();
    if (!isShown || now < nextTime) {
        return;
    }
    nextTime = now + kInterval;
    const std::size_t filled = (iDone + iFailed) * kWidth / total;
    std::string line = kClear;
    line += '[' + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] ";
    line += std::to_string(iDone + iFailed) + '/' + std::to_string(total);
    if (iFailed > 0) {
        line += ", " + std::to_string(iFailed) + " failed";
    }
    std::cerr << line << std::flush;
}

void ProgressBar::Clear() {
    if (isShown) {
        std::cerr << kClear << std::flush;
        nextTime = {};
    }
}
