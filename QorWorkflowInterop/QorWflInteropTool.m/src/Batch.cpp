#include "Batch.h"

#include "CommonOptions.h"
#include "Failure.h"
#include "Files.h"
#include "InputFiles.h"
#include "Message.h"
#include "OutputFile.h"
#include "ProgressBar.h"
#include "WorkerPool.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <map>
#include <new>
#include <utility>

namespace {

namespace fs = std::filesystem;

using Convert = std::function<Converted(const std::string&)>;

/** The name of an output file in a folder. */
std::string OutputName(const std::string& iInput, const std::string& iEnding) {
    if (iInput == "-") {
        return "standard-input" + iEnding;
    }
    fs::path path = fs::path(iInput);
    if (!path.has_filename()) {  // a folder, which will not be read; it has a name all the same
        path = path.parent_path();
    }
    return path.stem().string() + iEnding;
}

bool IsFolder(const std::string& iPath) {
    std::error_code error;
    return iPath.ends_with('/') || fs::is_directory(iPath, error);
}

void MakeFolder(const std::string& iFolder) {
    std::error_code error;
    fs::create_directory(iFolder.ends_with('/') ? iFolder.substr(0, iFolder.find_last_not_of('/') + 1) : iFolder,
                         error);
    if (error) {
        throw Failure(iFolder + ": cannot be made a folder for the output: " + error.message());
    }
}

/** Refuses, before anything is read or written, outputs that would overwrite one another or an input. */
void RequireDistinct(const Batch& iBatch, const std::vector<std::string>& iOutputs) {
    std::map<std::string, std::string> inputOf;
    for (std::size_t i = 0; i < iOutputs.size(); ++i) {
        const auto [former, isNew] = inputOf.emplace(iOutputs[i], iBatch.inputs[i]);
        if (!isNew) {
            RefuseUsage(InputName(former->second) + " and " + InputName(iBatch.inputs[i]) +
                        ": both would be written to " + iOutputs[i]);
        }
    }
    const InputFiles files(iBatch.inputs, iBatch.config);
    for (const auto& [output, input] : inputOf) {
        if (files.Contains(output)) {
            RefuseUsage(InputName(input) + ": would be written to " + output + ", which is an input");
        }
    }
}

/** Converts one input, in the process that tells about it. */
ExitStatus RunOne(const Batch& iBatch, const std::string& iEnding, const Convert& iConvert) {
    const std::string& input = iBatch.inputs.front();
    const std::string place = iBatch.output.value_or("-");
    const std::string output = IsFolder(place) ? (fs::path(place) / OutputName(input, iEnding)).string() : place;
    RequireDistinct(iBatch, {output});
    const Converted converted = iConvert(input);
    if (output != place) {
        MakeFolder(place);
    }
    WriteFile(output, converted.bytes);
    for (const std::string& warning : converted.warnings) {
        Report(warning);
    }
    if (!converted.failure.empty()) {
        throw Failure(converted.failure);
    }
    return kDone;
}

/** Converts one of several inputs, in any process. */
TaskResult RunTask(const std::string& iInput, const std::string& iOutput, const Convert& iConvert) {
    try {
        Converted converted = iConvert(iInput);
        WriteFile(iOutput, converted.bytes);
        if (!converted.failure.empty()) {
            converted.warnings.push_back(std::move(converted.failure));
            return {false, std::move(converted.warnings), {}};
        }
        return {true, std::move(converted.warnings), {}};
    } catch (const std::bad_alloc&) {
        return {false, {InputName(iInput) + ": not enough memory"}, {}};
    } catch (const std::exception& error) {
        return {false, {error.what()}, {}};
    }
}

/** Tells what becomes of several inputs: the messages in the order of the inputs, how far the work is, and the sum. */
class Account {
public:
    explicit Account(std::size_t iTotal) : results(iTotal), bar(iTotal) {}

    void Take(std::size_t iIndex, TaskResult iResult) {
        ++(iResult.isDone ? done : failed);
        results[iIndex] = std::move(iResult);
        for (; next < results.size() && results[next]; ++next) {
            for (const std::string& message : results[next]->messages) {
                bar.Clear();
                Report(message);
            }
            results[next]->messages.clear();
        }
        bar.Show(done, failed);
    }

    ExitStatus Sum() {
        bar.Clear();
        std::string sum = std::to_string(done) + " done, " + std::to_string(failed) + " failed";
        if (bar.IsShown()) {  // elsewhere what is written depends on the input alone
            const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
            sum += ", " + std::to_string(std::lround(static_cast<double>(done + failed) / seconds.count())) +
                   " per second";
        }
        Report(sum);
        return failed == 0 ? kDone : kWrongInput;
    }

private:
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::vector<std::optional<TaskResult>> results;
    ProgressBar bar;
    std::size_t next = 0;  // the first that is not told about
    std::size_t done = 0;
    std::size_t failed = 0;
};

ExitStatus RunSeveral(const Batch& iBatch, const std::string& iEnding, const Convert& iConvert) {
    if (!iBatch.output || *iBatch.output == "-") {
        RefuseUsage("several inputs need a folder for their outputs: -o DIR");
    }
    std::vector<std::string> outputs;
    for (const std::string& input : iBatch.inputs) {
        outputs.push_back((fs::path(*iBatch.output) / OutputName(input, iEnding)).string());
    }
    RequireDistinct(iBatch, outputs);
    MakeFolder(*iBatch.output);
    Account account(outputs.size());
    RunTasks(
        outputs.size(), iBatch.jobs,
        [&](std::size_t iIndex) { return RunTask(iBatch.inputs[iIndex], outputs[iIndex], iConvert); },
        [&](std::size_t iIndex, TaskResult iResult) {
            if (!iResult.death.empty()) {
                iResult.messages = {InputName(iBatch.inputs[iIndex]) + ": " + iResult.death};
            }
            account.Take(iIndex, std::move(iResult));
        });
    return account.Sum();
}

}  // namespace

ExitStatus RunBatch(const Batch& iBatch, const std::string& iEnding, const Convert& iConvert) {
    return iBatch.inputs.size() == 1 ? RunOne(iBatch, iEnding, iConvert) : RunSeveral(iBatch, iEnding, iConvert);
}
