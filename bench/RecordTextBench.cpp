#include "Bench.h"
#include "Inputs.h"

#include <QorWflInteropInfo.h>

#include <benchmark/benchmark.h>

#include <sstream>
#include <streambuf>

namespace {

/** Characters in memory as a stream's buffer, without the copies that a string stream makes. */
class MemoryBuffer final : public std::streambuf {
public:
    explicit MemoryBuffer(std::string& ioText) {
        setg(ioText.data(), ioText.data(), ioText.data() + ioText.size());
        setp(ioText.data(), ioText.data() + ioText.size());
    }
};

std::string RecordText(int iSize) {
    std::ostringstream stream;
    stream << *Inputs::Activity(iSize);
    return stream.str();
}

/** The lines that a stream gives. */
std::vector<std::string> ReadLines(std::istream& ioStream) {
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(ioStream, line)) {
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<std::string> LinesOf(const std::string& iText) {
    std::istringstream stream(iText);
    return ReadLines(stream);
}

/** Writes lines, flushing at each line end; the last one has none, as in a record's text. */
void WriteLines(std::ostream& ioStream, const std::vector<std::string>& iLines) {
    bool isFirst = true;
    for (const std::string& line : iLines) {
        if (!isFirst) {
            ioStream << std::endl;
        }
        isFirst = false;
        ioStream << line;
    }
}

// ---------------------------------------------------------------------------------------------------- timing

// Both sides write over the same memory and read out of it.

void TimeWriting(benchmark::State& ioState, int iSize) {
    const std::shared_ptr<const ActivityInfo> activity = Inputs::Activity(iSize);
    std::string text = RecordText(iSize);
    for ([[maybe_unused]] auto round : ioState) {
        MemoryBuffer buffer(text);
        std::ostream stream(&buffer);
        stream << *activity;
        benchmark::DoNotOptimize(stream.good());
    }
}

void TimeWritingLines(benchmark::State& ioState, int iSize) {
    std::string text = RecordText(iSize);
    const std::vector<std::string> lines = LinesOf(text);
    for ([[maybe_unused]] auto round : ioState) {
        MemoryBuffer buffer(text);
        std::ostream stream(&buffer);
        WriteLines(stream, lines);
        benchmark::DoNotOptimize(stream.good());
    }
}

void TimeReading(benchmark::State& ioState, int iSize) {
    std::string text = RecordText(iSize);
    for ([[maybe_unused]] auto round : ioState) {
        MemoryBuffer buffer(text);
        std::istream stream(&buffer);
        ActivityInfo activity;
        stream >> activity;
        benchmark::DoNotOptimize(activity.process.datas);
    }
}

void TimeReadingLines(benchmark::State& ioState, int iSize) {
    std::string text = RecordText(iSize);
    for ([[maybe_unused]] auto round : ioState) {
        MemoryBuffer buffer(text);
        std::istream stream(&buffer);
        const std::vector<std::string> lines = ReadLines(stream);
        benchmark::DoNotOptimize(lines.data());
    }
}

// ---------------------------------------------------------------------------------------------------- checking

/** What a line tells: its value between quotes, cut as the record text has it, or the number behind its label. */
std::string ValueOf(const std::string& iLine) {
    constexpr std::size_t kLongestValue = 79;
    const std::size_t start = iLine.find('=') + 1;
    if (iLine[start] != '"') {
        return iLine.substr(start, iLine.find(';', start) - start);
    }
    return iLine.substr(start + 1, std::min(iLine.find('"', start + 1) - start - 1, kLongestValue));
}

std::string Values(const std::vector<std::string>& iLines) {
    std::string values;
    for (const std::string& line : iLines) {
        values += ValueOf(line) + "\n";
    }
    return values;
}

}  // namespace

void Bench::CheckRecordText() {
    for (const int size : kSizes) {
        const std::string text = RecordText(size);
        std::ostringstream plain;
        WriteLines(plain, LinesOf(text));
        RequireSame("lines written by std::ostream", text, plain.str());
        std::istringstream stream(text);
        ActivityInfo read;
        stream >> read;
        std::ostringstream again;
        again << read;
        RequireSame("lines read by std::istream", Values(LinesOf(again.str())), Values(LinesOf(text)));
    }
}

void Bench::AddRecordText() {
    AddOurs("text-write", kSizes, TimeWriting);
    Add("text-write", "std::ostream", kSizes, TimeWritingLines);
    AddOurs("text-read", kSizes, TimeReading);
    Add("text-read", "std::istream", kSizes, TimeReadingLines);
}
