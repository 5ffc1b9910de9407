#include "Bench.h"

#include <BexXMLParser.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <malloc.h>
#include <stdexcept>

void Bench::Add(const std::string& iWork, const std::string& iWho, const std::vector<int>& iSizes, const Work& iTimed) {
    for (const int size : iSizes) {
        const std::string name = iWork + "/" + iWho + "/" + std::to_string(size);
        benchmark::RegisterBenchmark(name.c_str(),
                                     [iTimed, size](benchmark::State& ioState) { iTimed(ioState, size); });
    }
}

void Bench::AddOurs(const std::string& iWork, const std::vector<int>& iSizes, const Work& iTimed) {
    std::vector<int> sizes(iSizes);
    for (const int size : kGrowthSizes) {
        if (std::find(sizes.begin(), sizes.end(), size) == sizes.end()) {
            sizes.push_back(size);
        }
    }
    Add(iWork, "ours", sizes, iTimed);
}

void Bench::RequireSame(std::string_view iWhat, std::string_view iOurs, std::string_view iOther) {
    if (iOurs == iOther) {
        return;
    }
    constexpr std::size_t kShown = 60;
    const auto at = static_cast<std::size_t>(
        std::mismatch(iOurs.begin(), iOurs.end(), iOther.begin(), iOther.end()).first - iOurs.begin());
    throw std::runtime_error("the results differ, nothing is timed: " + std::string(iWhat) + ", from character " +
                             std::to_string(at) + "\n  ours:  " + std::string(iOurs.substr(at, kShown)) +
                             "\n  other: " + std::string(iOther.substr(std::min(at, iOther.size()), kShown)));
}

namespace {

/**
 * Makes the allocator keep what it has once got and take large blocks from there too. Otherwise what a benchmark costs
 * depends on the memory that those before it have given back.
 */
void KeepFreedMemory() {
    constexpr int kNever = -1;
    constexpr int kTopPad = 64 * 1024 * 1024;
    if (mallopt(M_MMAP_MAX, 0) == 0 || mallopt(M_TRIM_THRESHOLD, kNever) == 0 || mallopt(M_TOP_PAD, kTopPad) == 0) {
        throw std::runtime_error("the allocator cannot be set");
    }
}

void RequireNoTrace() {
    const char* channels = std::getenv("BexQorTrace");
    if (channels != nullptr && *channels != '\0') {
        throw std::runtime_error("BexQorTrace is set, so the trace would be timed");
    }
}

void CheckResults() {
    Bench::CheckWriters();
    Bench::CheckSerializers();
    Bench::CheckReaders();
    Bench::CheckActionInfo();
    Bench::CheckUrls();
    Bench::CheckProperties();
    Bench::CheckRecordText();
}

void AddBenchmarks() {
    Bench::AddWriters();
    Bench::AddSerializers();
    Bench::AddReaders();
    Bench::AddActionInfo();
    Bench::AddUrls();
    Bench::AddProperties();
    Bench::AddRecordText();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        KeepFreedMemory();
        RequireNoTrace();
        BexXMLParser::Initialize();
        CheckResults();
        AddBenchmarks();
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
            return EXIT_FAILURE;
        }
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "qorwflbench: %s\n", failure.what());
        return EXIT_FAILURE;
    }
}
