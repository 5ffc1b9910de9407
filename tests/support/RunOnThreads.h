#ifndef RunOnThreads_H
#define RunOnThreads_H

#include <atomic>
#include <cstddef>
#include <thread>
#include <vector>

/**
 * Runs the same work on several threads at once and waits for their end. None begins before all are there.
 * @param iWork is called with the number of its thread, 0 to iCount - 1
 */
template <typename Work>
void RunOnThreads(int iCount, const Work& iWork) {
    std::atomic<int> missing{iCount};
    std::vector<std::thread> threads;
    for (int number = 0; number < iCount; ++number) {
        threads.emplace_back([&missing, &iWork, number] {
            --missing;
            while (missing != 0) {
                std::this_thread::yield();
            }
            iWork(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/** The same on four threads, each of which gives a result. */
template <typename Result, typename Work>
std::vector<Result> ResultsOfThreads(const Work& iWork) {
    std::vector<Result> results(4);
    RunOnThreads(4, [&results, &iWork](int iThread) { results[static_cast<std::size_t>(iThread)] = iWork(); });
    return results;
}

#endif
