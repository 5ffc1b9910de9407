#include "BexQorTraceStep.h"

#include <charconv>
#include <limits>
#include <memory>
#include <sstream>
#include <string>

namespace {

constexpr std::size_t kIndentation = 2;
constexpr std::string_view kOpening(">> ");
constexpr std::string_view kClosing("<< ");

}  // namespace

/** What a step that writes keeps: the line in work, and its place among the thread's open steps. */
struct __attribute__((visibility("hidden"))) BexQorTraceStep::Scope {
    Scope(const BexQorTrace& iTrace, const char* iName)
        : trace(iTrace), name(iName == nullptr ? "" : iName), depth(enclosing == nullptr ? 0 : enclosing->depth + 1) {
        line.reserve(iTrace.lineSize);
    }

    /** Sends a line of its own, at the level of the step's name. */
    void WriteName(std::string_view iMark) {
        line.assign(depth * kIndentation, ' ');
        line.append(iMark).append(name);
        Send();
    }

    /** Adds to the message, sending what is complete. */
    void Add(std::string_view iText) {
        while (!iText.empty()) {
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
        if (!line.empty()) {
            Send();
        }
    }

    void Send() {
        line += '\n';
        trace.Write(line);
        line.clear();
    }

    static thread_local Scope* enclosing;  // the innermost open step of the thread that writes

    const BexQorTrace& trace;
    const char* name;
    std::size_t depth;
    Scope* outer = enclosing;
    std::string line;
};

thread_local BexQorTraceStep::Scope* BexQorTraceStep::Scope::enclosing = nullptr;

void BexQorTraceStep::Open(const char* iName) noexcept {
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
    } catch (...) {  // no memory for the message: it is lost
    }
}

void BexQorTraceStep::Add(std::u16string_view iText) noexcept {
    try {
        Add(BexUnicodeString(iText.data(), static_cast<int>(iText.size())));
    } catch (...) {  // no memory for the message: it is lost
    }
}

void BexQorTraceStep::Add(const BexUnicodeString& iText) noexcept {
    try {
        const char* text = iText.ConvertToChar();
        scope->Add(std::string_view(text, static_cast<std::size_t>(iText.GetLengthInChar())));
    } catch (...) {  // no memory for the message: it is lost
    }
}

void BexQorTraceStep::AddNumber(long iNum) noexcept {
    char digits[std::numeric_limits<long>::digits10 + 3];  // all digits, one more, a sign
    Add(std::string_view(digits,
                         static_cast<std::size_t>(std::to_chars(digits, digits + sizeof digits, iNum).ptr - digits)));
}

void BexQorTraceStep::AddNumber(unsigned long iNum) noexcept {
    char digits[std::numeric_limits<unsigned long>::digits10 + 2];  // all digits, one more
    Add(std::string_view(digits,
                         static_cast<std::size_t>(std::to_chars(digits, digits + sizeof digits, iNum).ptr - digits)));
}

BexQorTraceStep& BexQorTraceStep::operator<<(std::ostream& (*iManipulator)(std::ostream&)) {
    if (scope != nullptr && iManipulator != nullptr) {
        try {
            std::ostringstream text;  // what a manipulator writes can only be seen by letting it write
            iManipulator(text);
            scope->Add(text.str());
        } catch (...) {  // no memory for the message: it is lost
        }
    }
    return *this;
}
