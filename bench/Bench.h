#ifndef Bench_H
#define Bench_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace benchmark {
class State;
}

/**
 * What the benchmarks of qorwflbench share.
 *
 * A benchmark is named WORK/WHO/SIZE; WHO is "ours" or the library that does the same work beside it. ratios.py makes
 * its table out of these names.
 */
namespace Bench {

/** The sizes at which others are measured beside us. */
inline const std::vector<int> kSizes{3, 100, 10'000};
/** The sizes that show how our own cost grows. */
inline const std::vector<int> kGrowthSizes{10'000, 100'000, 1'000'000};

/** Times some work at one size. */
using Work = std::function<void(benchmark::State&, int)>;

/** Enters a benchmark at some sizes. */
void Add(const std::string& iWork, const std::string& iWho, const std::vector<int>& iSizes, const Work& iTimed);
/** Enters our own benchmark at some sizes, and at those that show the growth. */
void AddOurs(const std::string& iWork, const std::vector<int>& iSizes, const Work& iTimed);

/** Stops everything, with a message that shows the first difference, unless two results are the same. */
void RequireSame(std::string_view iWhat, std::string_view iOurs, std::string_view iOther);

// Each group of benchmarks has a file of its own with two functions: one compares the results of ours and of the others
// with RequireSame(), the other enters the benchmarks.
void CheckWriters();
void AddWriters();
void CheckSerializers();
void AddSerializers();
void CheckReaders();
void AddReaders();
void CheckActionInfo();
void AddActionInfo();
void CheckUrls();
void AddUrls();
void CheckProperties();
void AddProperties();
void CheckRecordText();
void AddRecordText();

}  // namespace Bench

#endif
