#ifndef BexQorTraceStep_H
#define BexQorTraceStep_H

#include "BexExport.h"
#include "BexQorTrace.h"
#include "BexUnicodeString.h"

#include <ostream>
#include <string_view>

/**
 * A traced scope: a line with its name when it opens, one when it closes, and messages between them.
 *
 * Lines are indented by the steps open on the same thread: `>> name` and `<< name` by two blanks a level, messages one
 * level deeper. Messages are put together with operator<< and sent at each line end (a line feed in the text or
 * std::endl); what is left when another step opens or this one closes is sent as a line of its own.
 *
 * Whether a step writes is settled when it opens. Off, it costs one relaxed load, and a message a test of a pointer: no
 * formatting, no conversion, no allocation. A step belongs to one thread and closes in reverse order of opening.
 */
class BEX_EXPORT BexQorTraceStep {
public:
    /** Opens the scope @p iName on a channel that outlives it. @param iName outlives it too; null counts as "". */
    BexQorTraceStep(BexQorTrace& iTrace, const char* iName) : trace(iTrace) {
        if (iTrace.IsOn() != 0) {
            Open(iName);
        }
    }
    ~BexQorTraceStep() {
        if (scope != nullptr) {
            Close();
        }
    }
    BexQorTraceStep(const BexQorTraceStep&) = delete;  // opens and closes once
    BexQorTraceStep& operator=(const BexQorTraceStep&) = delete;

    /** @return 1 while the channel is on, else 0. */
    int IsOn() const noexcept { return trace.IsOn(); }

    /** Adds NUL-terminated narrow text; a null pointer adds nothing. */
    BexQorTraceStep& operator<<(const char* iText) {
        if (scope != nullptr && iText != nullptr) {
            Add(std::string_view(iText));
        }
        return *this;
    }
    /** Adds narrow text. */
    BexQorTraceStep& operator<<(std::string_view iText) {
        if (scope != nullptr) {
            Add(iText);
        }
        return *this;
    }
    /** Adds the narrow form of UTF-16 text. */
    BexQorTraceStep& operator<<(std::u16string_view iText) {
        if (scope != nullptr) {
            Add(iText);
        }
        return *this;
    }
    /** Adds the narrow form of a string. */
    BexQorTraceStep& operator<<(const BexUnicodeString& iText) {
        if (scope != nullptr) {
            Add(iText);
        }
        return *this;
    }
    /** Adds one narrow character. */
    BexQorTraceStep& operator<<(char iChar) {
        if (scope != nullptr) {
            Add(std::string_view(&iChar, 1));
        }
        return *this;
    }
    /** Adds the narrow form of a code unit. */
    BexQorTraceStep& operator<<(BexUnicodeChar iChar) { return *this << iChar.Code(); }
    /** Adds the narrow form of a code unit. */
    BexQorTraceStep& operator<<(char16_t iUnit) { return *this << std::u16string_view(&iUnit, 1); }
    /** Adds a number in decimal. */
    BexQorTraceStep& operator<<(int iNum) { return *this << static_cast<long long>(iNum); }
    /** Adds a number in decimal. */
    BexQorTraceStep& operator<<(unsigned int iNum) { return *this << static_cast<unsigned long long>(iNum); }
    /** Adds a number in decimal. */
    BexQorTraceStep& operator<<(long iNum) { return *this << static_cast<long long>(iNum); }
    /** Adds a number in decimal. */
    BexQorTraceStep& operator<<(unsigned long iNum) { return *this << static_cast<unsigned long long>(iNum); }
    /** Adds a number in decimal. */
    BexQorTraceStep& operator<<(long long iNum) {
        if (scope != nullptr) {
            AddNumber(iNum);
        }
        return *this;
    }
    /** Adds a number in decimal. */
    BexQorTraceStep& operator<<(unsigned long long iNum) {
        if (scope != nullptr) {
            AddNumber(iNum);
        }
        return *this;
    }
    /** Adds a number with as many digits as it takes to read the same one back. */
    BexQorTraceStep& operator<<(double iNum) {
        if (scope != nullptr) {
            AddNumber(iNum);
        }
        return *this;
    }
    /** Adds what a manipulator without arguments writes: a line end for std::endl, nothing for std::flush. */
    BexQorTraceStep& operator<<(std::ostream& (*iManipulator)(std::ostream&)) {
        if (scope != nullptr && iManipulator != nullptr) {
            Add(iManipulator);
        }
        return *this;
    }

private:
    struct Scope;

    void Open(const char* iName) noexcept;
    void Close() noexcept;
    void Add(std::string_view iText) noexcept;
    void Add(std::u16string_view iText) noexcept;
    void Add(const BexUnicodeString& iText) noexcept;
    void Add(std::ostream& (*iManipulator)(std::ostream&)) noexcept;
    void AddNumber(long long iNum) noexcept;
    void AddNumber(unsigned long long iNum) noexcept;
    void AddNumber(double iNum) noexcept;

    BexQorTrace& trace;
    Scope* scope = nullptr;  // owned; null while the step writes nothing
};

#endif
