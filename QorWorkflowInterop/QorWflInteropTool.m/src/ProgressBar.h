#ifndef ProgressBar_H
#define ProgressBar_H

#include <chrono>
#include <cstddef>

/** Shows on the standard error how far the work is, where MayDecorate() allows it; elsewhere nothing is shown. */
class ProgressBar {
public:
    explicit ProgressBar(std::size_t iTotal);
    /** Clears the line. */
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;  // one line, drawn by one object
    ProgressBar& operator=(const ProgressBar&) = delete;

    /** Draws the bar, but not more often than an eye can follow. */
    void Show(std::size_t iDone, std::size_t iFailed);
    /** Clears the line, for a message to be written. */
    void Clear();
    /** @return whether the bar is shown at all. */
    bool IsShown() const { return isShown; }

private:
    const std::size_t total;
    const bool isShown;
    std::chrono::steady_clock::time_point nextTime;
};

#endif
