// Runs a fuzz target without a fuzzer: over files, and over mutations of them that are the same in every run.
#include "FuzzTarget.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

/** There with the sanitizers, which end the process without a signal. */
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*iCallback)());

namespace {

constexpr const char* kFindingFile = "finding.input";
constexpr std::uint32_t kRandomSeed = 20040229;
constexpr std::size_t kLongestInput = 16384;

struct Options {
    long mutations = 0;
    std::string dictionary;
    std::vector<std::string> seeds;
};

Options Parsed(const std::vector<std::string>& iArguments) {
    Options options;
    for (std::size_t i = 0; i < iArguments.size(); ++i) {
        const bool isLast = i + 1 == iArguments.size();
        if (iArguments[i] == "--mutations" && !isLast) {
            options.mutations = std::stol(iArguments[++i]);
        } else if (iArguments[i] == "--dict" && !isLast) {
            options.dictionary = iArguments[++i];
        } else if (iArguments[i].rfind("--", 0) == 0) {
            throw std::invalid_argument("usage: [--mutations NUMBER] [--dict FILE] FILE_OR_FOLDER...");
        } else {
            options.seeds.push_back(iArguments[i]);
        }
    }
    return options;
}

std::string BytesOf(const std::filesystem::path& iFile) {
    std::ifstream stream(iFile, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + iFile.string());
    }
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

/** The contents of a file, or of the files in a folder in the order of their names. */
std::vector<std::string> InputsOf(const std::vector<std::string>& iPaths) {
    std::vector<std::string> inputs;
    for (const std::string& path : iPaths) {
        std::vector<std::filesystem::path> files;
        if (std::filesystem::is_directory(path)) {
            for (const auto& entry : std::filesystem::directory_iterator(path)) {
                files.push_back(entry.path());
            }
            std::sort(files.begin(), files.end());
        } else {
            files.emplace_back(path);
        }
        for (const std::filesystem::path& file : files) {
            inputs.push_back(BytesOf(file));
        }
    }
    return inputs;
}

/** The word between the quotes of a line of a dictionary, with its escapes resolved. */
std::string WordOf(const std::string& iLine) {
    const std::size_t start = iLine.find('"') + 1;
    const std::size_t end = iLine.rfind('"');
    std::string word;
    for (std::size_t i = start; i < end; ++i) {
        if (iLine[i] != '\\') {
            word += iLine[i];
        } else if (iLine[i + 1] == 'x') {
            word += static_cast<char>(std::stoi(iLine.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else {
            word += iLine[++i];
        }
    }
    return word;
}

std::vector<std::string> WordsOf(const std::string& iDictionary) {
    std::vector<std::string> words;
    std::ifstream stream(iDictionary);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line[0] != '#') {
            words.push_back(WordOf(line));
        }
    }
    return words;
}

/** Makes inputs out of others: always the same ones in the same order. */
class Mutator {
public:
    Mutator(const std::vector<std::string>& iInputs, const std::vector<std::string>& iWords)
        : inputs(iInputs), words(iWords), random(kRandomSeed) {}

    std::string Next() {
        std::string input = AnyOf(inputs);
        for (std::size_t edits = 1 + Below(4); edits > 0; --edits) {
            Edit(input);
        }
        return input.substr(0, kLongestInput);
    }

private:
    std::size_t Below(std::size_t iLimit) { return random() % iLimit; }
    char AnyByte() { return static_cast<char>(static_cast<unsigned char>(Below(256))); }
    const std::string& AnyOf(const std::vector<std::string>& iTexts) { return iTexts[Below(iTexts.size())]; }

    void Edit(std::string& ioInput) {
        const std::size_t at = Below(ioInput.size() + 1);
        const std::size_t length = Below(std::min<std::size_t>(ioInput.size() - at, 64) + 1);
        switch (Below(6)) {
            case 0:
                ioInput.insert(at, 1, AnyByte());
                break;
            case 1:
                ioInput.erase(at, length);
                break;
            case 2:
                ioInput.insert(Below(ioInput.size() + 1), ioInput.substr(at, length));
                break;
            case 3:
                ioInput.resize(at);
                break;
            case 4:
                if (!words.empty()) {
                    ioInput.insert(at, AnyOf(words));
                }
                break;
            default:
                if (at < ioInput.size()) {
                    ioInput[at] = Below(2) == 0 ? AnyByte() : static_cast<char>(ioInput[at] ^ (1 << Below(7)));
                }
                break;
        }
    }

    const std::vector<std::string>& inputs;
    const std::vector<std::string>& words;
    std::mt19937 random;
};

const std::string* current = nullptr;  // the input that is being tried

/** Keeps the input that ended the process. */
void KeepCurrent() {
    if (current == nullptr) {
        return;
    }
    std::FILE* file = std::fopen(kFindingFile, "wb");
    if (file != nullptr) {
        std::fwrite(current->data(), 1, current->size(), file);
        std::fclose(file);
        std::fprintf(stderr, "== the input is kept in %s; give it to this program alone to see this again\n",
                     kFindingFile);
    }
    current = nullptr;
}

void KeepAndDie(int iSignal) {
    KeepCurrent();
    std::signal(iSignal, SIG_DFL);
    std::raise(iSignal);
}

/** The input goes over in a heap block of exactly its size, so that a checker sees one byte read too far. */
void Try(const std::string& iInput) {
    const std::unique_ptr<std::uint8_t[]> exact(new std::uint8_t[iInput.size()]);
    std::copy(iInput.begin(), iInput.end(), exact.get());
    current = &iInput;
    LLVMFuzzerTestOneInput(exact.get(), iInput.size());
    current = nullptr;
}

int Run(const Options& iOptions) {
    const std::vector<std::string> inputs = InputsOf(iOptions.seeds);
    if (inputs.empty()) {
        throw std::runtime_error("no inputs");
    }
    for (const std::string& input : inputs) {
        Try(input);
    }
    const std::vector<std::string> words = WordsOf(iOptions.dictionary);
    Mutator mutator(inputs, words);
    for (long i = 0; i < iOptions.mutations; ++i) {
        Try(mutator.Next());
    }
    std::printf("%zu inputs and %ld mutations of them\n", inputs.size(), iOptions.mutations);
    return 0;
}

}  // namespace

int main(int iCount, char** iArguments) {
    std::signal(SIGABRT, KeepAndDie);
    std::signal(SIGSEGV, KeepAndDie);
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(KeepCurrent);
    }
    try {
        return Run(Parsed(std::vector<std::string>(iArguments + 1, iArguments + iCount)));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
