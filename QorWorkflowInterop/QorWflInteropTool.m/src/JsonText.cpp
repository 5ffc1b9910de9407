#include "JsonText.h"

#include "Failure.h"
#include "Unicode.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <vector>

namespace {

using nlohmann::json;

constexpr std::size_t kMaxReasonLength = 200;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/** Walks a text and tells how far the parser, which keeps copies of it, has come. */
class CountingIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountingIterator(const char* iPlace, const char** oFurthest) : place(iPlace), furthest(oFurthest) {}
    const char& operator*() const { return *place; }
    CountingIterator& operator++() {
        *furthest = ++place;
        return *this;
    }
    CountingIterator operator++(int) {
        const CountingIterator former = *this;
        ++*this;
        return former;
    }
    bool operator==(const CountingIterator& iOther) const { return place == iOther.place; }
    bool operator!=(const CountingIterator& iOther) const { return place != iOther.place; }

private:
    const char* place;
    const char** furthest;
};

/** Line and column, from 1, of a byte of the text; columns count characters. */
std::string Position(std::string_view iText, std::size_t iByte) {
    const std::string_view before = iText.substr(0, iByte);
    const std::size_t lineFeed = before.rfind('\n');
    const std::string_view line = lineFeed == std::string_view::npos ? before : before.substr(lineFeed + 1);
    const auto isStart = [](char iChar) { return (static_cast<unsigned char>(iChar) & 0xC0U) != 0x80U; };
    return std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ':' +
           std::to_string(1 + std::count_if(line.begin(), line.end(), isStart));
}

/** Whether a text is UTF-8. */
bool IsUtf8(const std::string& iText) {
    try {
        return !json(iText).dump().empty();
    } catch (const json::type_error&) {
        return false;
    }
}

/** What the parser says is wrong, without its own numbering and position, at a length that can be read. */
std::string Reason(const json::exception& iError) {
    std::string reason = iError.what();
    for (const char* prefix : {"] ", "column ", ": "}) {
        if (const std::size_t found = reason.find(prefix); found != std::string::npos) {
            reason.erase(0, found + std::string_view(prefix).size());
        }
    }
    // The parser shows what it has read last, also where that is no text.
    if (const std::size_t shown = reason.find("; last read"); shown != std::string::npos && !IsUtf8(reason)) {
        reason.erase(shown);
    }
    return Shortened(reason, kMaxReasonLength);
}

/** The same where the text should begin. Of what the parser would take there, nobody here takes lists and literals. */
std::string ReasonAtStart(const json::exception& iError) {
    constexpr std::string_view kExpected = "expected '[', '{', or a literal";
    std::string reason = Reason(iError);
    if (const std::size_t found = reason.find(kExpected); found != std::string::npos) {
        reason.replace(found, kExpected.size(), "expected an object, which begins with {");
    }
    return reason;
}

/** Refuses, while the parser is at them, members given twice and nesting that is too deep. */
class StructureCheck {
public:
    /** @return what is wrong with the event, or an empty text. */
    std::string Take(int iDepth, json::parse_event_t iEvent, const json& iValue) {
        switch (iEvent) {
            case json::parse_event_t::object_start:
            case json::parse_event_t::array_start:
                members.emplace_back();
                return iDepth < kMaxJsonDepth ? "" : "nested deeper than " + std::to_string(kMaxJsonDepth) + " levels";
            case json::parse_event_t::object_end:
            case json::parse_event_t::array_end:
                members.pop_back();
                return "";
            case json::parse_event_t::key: {
                const auto& name = iValue.get_ref<const std::string&>();
                return members.back().insert(name).second ? "" : "member \"" + name + "\" is given twice";
            }
            default:
                return "";
        }
    }

private:
    std::vector<std::set<std::string>> members;  // of each object that is open; empty for a list
};

}  // namespace

json ParseJson(std::string_view iText, const std::string& iFileName) {
    if (iText.starts_with(kByteOrderMark)) {  // which is no column of the first line
        iText.remove_prefix(kByteOrderMark.size());
    }
    const char* const start = iText.data();
    const char* furthest = start;
    const auto fail = [&](std::size_t iByte, const std::string& iReason) {
        throw Failure(iFileName + ':' + Position(iText, iByte) + ": " + iReason);
    };
    if (const std::size_t nul = iText.find('\0'); nul != std::string_view::npos) {
        fail(nul, "a NUL character, which the parser would take for the end of the text");
    }
    StructureCheck structure;
    const auto check = [&](int iDepth, json::parse_event_t iEvent, json& iValue) {
        const std::string wrong = structure.Take(iDepth, iEvent, iValue);
        if (!wrong.empty()) {
            fail(static_cast<std::size_t>(furthest - start) - 1, wrong);
        }
        return true;
    };
    try {
        return json::parse(CountingIterator(start, &furthest), CountingIterator(start + iText.size(), &furthest),
                           check);
    } catch (const json::parse_error& error) {
        const std::size_t place = std::max<std::size_t>(error.byte, 1) - 1;
        const bool isStart = iText.find_first_not_of(" \t\r\n") >= place;
        fail(place, isStart ? ReasonAtStart(error) : Reason(error));
    } catch (const json::exception& error) {  // a number too large; the parser may be a character past it
        fail(iText.find_last_of("0123456789", static_cast<std::size_t>(furthest - start) - 1), Reason(error));
    }
    return {};
}
