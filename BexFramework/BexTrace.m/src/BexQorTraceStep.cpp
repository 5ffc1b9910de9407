#include "BexQorTraceStep.h"

#include "TraceSink.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <memory>
#include <sstream>
#include <string>

namespace {

constexpr std::size_t kIndentation = 2;
// A channel may expect lines of any length. More than this is taken when a line needs it, so that expecting too much
// costs neither memory nor, where it cannot be had, the lines.
constexpr std::size_t kMostExpected = std::size_t{64} * 1024;
constexpr std::string_view kOpening(">> ");
constexpr std::string_view kClosing("<< ");

/** A number in decimal, without a look at any locale. */
class NumberText {
public:
    template <typename Number>
    explicit NumberText(Number iNumber) : end(std::to_chars(digits, digits + sizeof digits, iNumber).ptr) {}
    std::string_view View() const { return std::string_view(digits, static_cast<std::size_t>(end - digits)); }

private:
    char digits[32];  // room for any integer, and for the shortest form of any double
    const char* end;
};

}  // namespace

/** What a step that writes keeps: the line in work, and its place among the thread's open steps. */
struct __attribute__((visibility("hidden"))) BexQorTraceStep::Scope {
    Scope(const BexQorTrace& iTrace, const char* iName)
        : trace(iTrace), name(iName == nullptr ? "" : iName), depth(enclosing == nullptr ? 0 : enclosing->depth + 1) {
        line.reserve(std::min(iTrace.lineSize, kMostExpected));
    }

    /** Sends a line of its own, at the level of the step's name. */
    void WriteName(std::string_view iMark) {
        line.assign(depth * kIndentation, ' ');
        line.append(iMark).append(name);
        Send();
    }

    /** Adds to the message, sending what is complete. The sink adds nothing: the lines are those of what it watches. */
    void Add(std::string_view iText) {
        while (!iText.empty() && !TraceSink::IsRunning()) {
            const std::size_t end = iText.find('\n');
            if (line.empty()) {
                line.assign((depth + 1) * kIndentation, ' ');
            }
            line.append(iText.substr(0, end));
            if (end == std::string_view::npos) {
                return;
            }
            Send();
            iText.remove_prefix(end + 1);
        }
    }

    /** Sends what was left without a line end. */
    void Flush() {
        if (!line.empty() || isLost) {
            Send();
        }
    }

    /** No memory for part of a line: the whole of it is lost, for a line is never sent with a hole in it. */
    void Lose() noexcept { isLost = isLost || !TraceSink::IsRunning(); }

    void Send() {
        if (!isLost) {
            line += '\n';
            trace.Write(line);
        }
        line.clear();
        isLost = false;
    }

    static thread_local Scope* enclosing;  // the innermost open step of the thread that writes

    const BexQorTrace& trace;
    const char* name;
    std::size_t depth;
    Scope* outer = enclosing;
    std::string line;
    bool isLost = false;
};

thread_local BexQorTraceStep::Scope* BexQorTraceStep::Scope::enclosing = nullptr;

void BexQorTraceStep::Open(const char* iName) noexcept {
    if (TraceSink::IsRunning()) {
        return;
    }
    try {
        auto fresh = std::make_unique<Scope>(trace, iName);
        if (fresh->outer != nullptr) {
            fresh->outer->Flush();
        }
        fresh->WriteName(kOpening);
        scope = fresh.release();
        Scope::enclosing = scope;
    } catch (...) {  // no memory for tracing: the step writes nothing
    }
}

void BexQorTraceStep::Close() noexcept {
    try {
        scope->Flush();
        scope->WriteName(kClosing);
    } catch (...) {  // no memory for the line: it is lost
    }
    Scope::enclosing = scope->outer;
    delete scope;
}

void BexQorTraceStep::Add(std::string_view iText) noexcept {
    try {
        scope->Add(iText);
    } catch (...) {
        scope->Lose();
    }
}

void BexQorTraceStep::Add(std::u16string_view iText) noexcept {
    // GCOVR_EXCL_START: takes 4 GB of text
    if (iText.size() > INT_MAX) {
        scope->Lose();
        return;
    }
    // GCOVR_EXCL_STOP
    try {
        Add(BexUnicodeString(iText.data(), static_cast<int>(iText.size())));
    } catch (...) {
        scope->Lose();
    }
}

void BexQorTraceStep::Add(const BexUnicodeString& iText) noexcept {
    try {
        const char* text = iText.ConvertToChar();
        scope->Add(std::string_view(text, static_cast<std::size_t>(iText.GetLengthInChar())));
    } catch (...) {
        scope->Lose();
    }
}

void BexQorTraceStep::AddNumber(long long iNum) noexcept {
    Add(NumberText(iNum).View());
}

void BexQorTraceStep::AddNumber(unsigned long long iNum) noexcept {
    Add(NumberText(iNum).View());
}

void BexQorTraceStep::AddNumber(double iNum) noexcept {
    Add(NumberText(iNum).View());
}

void BexQorTraceStep::Add(std::ostream& (*iManipulator)(std::ostream&)) noexcept {
    try {
        std::ostringstream text;  // what a manipulator writes can only be seen by letting it write
        iManipulator(text);
        scope->Add(text.str());
    } catch (...) {
        scope->Lose();
    }
}
