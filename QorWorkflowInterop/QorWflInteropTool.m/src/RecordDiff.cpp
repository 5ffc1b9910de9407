#include "RecordDiff.h"

#include "RecordFields.h"
#include "Unicode.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace {

/** A text as people read it: on one line, in quotes; null as the word alone. */
std::string Shown(const BexUnicodeString& iText) {
    if (iText.IsNull() != 0) {
        return "null";
    }
    std::string shown = "\"";
    for (const char c : ToUtf8(iText)) {
        switch (c) {
            case '\n':
                shown += "\\n";
                break;
            case '\r':
                shown += "\\r";
                break;
            case '\t':
                shown += "\\t";
                break;
            case '"':
            case '\\':
                shown += '\\';
                [[fallthrough]];
            default:
                shown += c;
        }
    }
    return shown + '"';
}

std::string Shown(long iNumber) {
    return std::to_string(iNumber);
}

/** An element of a list, with the name by which it is matched. */
template <typename Element>
struct Entry {
    std::string name;
    const Element* element;
};

template <typename Element>
using Entries = std::vector<Entry<Element>>;

const BexUnicodeString& NameOf(const BexUnicodeString& iName) {
    return iName;
}
const BexUnicodeString& NameOf(const DataInfo& iData) {
    return iData.name;
}

/** The elements of a list. Of several with one name, all but the first have their number behind it. */
template <typename Element>
Entries<Element> EntriesOf(const Element* iElements, int iCount) {
    Entries<Element> entries;
    std::map<std::string, int> numbers;
    for (int i = 0; i < iCount; ++i) {
        std::string name = Shown(NameOf(iElements[i]));
        if (const int number = ++numbers[name]; number > 1) {
            name += " (" + std::to_string(number) + ')';
        }
        entries.push_back({std::move(name), &iElements[i]});
    }
    return entries;
}

std::string Shown(const Entry<BexUnicodeString>& iEntry) {
    return iEntry.name;
}
std::string Shown(const Entry<DataInfo>& iEntry) {
    std::string shown = iEntry.name;
    for (const auto& field : kDataFields) {
        if (field.name != "name") {
            shown += ", " + std::string(field.name) + ' ' + Shown(iEntry.element->*field.member);
        }
    }
    return shown;
}

class Comparer {
public:
    explicit Comparer(const Comparison& iComparison) : comparison(iComparison) {}

    void Compare(const std::string& iPlace, const BexUnicodeString& iFirst, const BexUnicodeString& iSecond) {
        if (!(iFirst == iSecond) || (comparison.tellsNull && iFirst.IsNull() != iSecond.IsNull())) {
            differences.push_back({iPlace, {Shown(iFirst)}, {Shown(iSecond)}});
        }
    }

    void Compare(const std::string& iPlace, long iFirst, long iSecond) {
        if (iFirst != iSecond) {
            differences.push_back({iPlace, {Shown(iFirst)}, {Shown(iSecond)}});
        }
    }

    void CompareActivity(const ActivityInfo& iFirst, const ActivityInfo& iSecond) {
        for (const ActivityField& field : kActivityFields) {
            if (comparison.tellsParticipant || !field.name.starts_with("participant")) {
                std::visit([&](auto iMember) { Compare(std::string(field.name), iFirst.*iMember, iSecond.*iMember); },
                           field.member);
            }
        }
        for (const auto& field : kProcessFields) {
            Compare("process." + std::string(field.name), iFirst.process.*field.member, iSecond.process.*field.member);
        }
    }

    template <typename Element>
    void CompareLists(const std::string& iPlace, const Element* iFirst, int iFirstCount, const Element* iSecond,
                      int iSecondCount) {
        const Entries<Element> first = EntriesOf(iFirst, iFirstCount);
        const Entries<Element> second = EntriesOf(iSecond, iSecondCount);
        std::map<std::string_view, const Element*> byName;
        for (const auto& entry : second) {
            byName.emplace(entry.name, entry.element);
        }
        Difference missing{iPlace, {}, {}};
        std::vector<std::string> firstOrder;
        for (const auto& entry : first) {
            if (const auto other = byName.find(entry.name); other == byName.end()) {
                missing.removed.push_back(Shown(entry));
            } else {
                firstOrder.push_back(entry.name);
                CompareElements(iPlace + ", " + entry.name, *entry.element, *other->second);
                byName.erase(other);
            }
        }
        std::vector<std::string> secondOrder;
        for (const auto& entry : second) {
            if (byName.contains(entry.name)) {
                missing.added.push_back(Shown(entry));
            } else {
                secondOrder.push_back(entry.name);
            }
        }
        if (!missing.removed.empty() || !missing.added.empty()) {
            differences.push_back(std::move(missing));
        }
        if (firstOrder != secondOrder) {
            differences.push_back({iPlace + ", order", {Joined(firstOrder)}, {Joined(secondOrder)}});
        }
        if (std::min(iFirstCount, iSecondCount) < 0) {  // a negative count has no elements that could tell of it
            Compare(iPlace + ", count", iFirstCount, iSecondCount);
        }
    }

    std::vector<Difference> differences;

private:
    void CompareElements(const std::string& /*iPlace*/, const BexUnicodeString& /*iFirst*/,
                         const BexUnicodeString& /*iSecond*/) {}  // names, which are equal

    void CompareElements(const std::string& iPlace, const DataInfo& iFirst, const DataInfo& iSecond) {
        for (const auto& field : kDataFields) {
            Compare(iPlace + ", " + std::string(field.name), iFirst.*field.member, iSecond.*field.member);
        }
    }

    static std::string Joined(const std::vector<std::string>& iNames) {
        std::string joined;
        for (const std::string& name : iNames) {
            joined += (joined.empty() ? "" : ", ") + name;
        }
        return joined;
    }

    const Comparison comparison;
};

}  // namespace

std::vector<Difference> CompareRecords(const ActivityInfo& iFirst, const ActivityInfo& iSecond,
                                       const Comparison& iComparison) {
    Comparer comparer(iComparison);
    comparer.CompareActivity(iFirst, iSecond);
    comparer.CompareLists("process.datas", iFirst.process.datas, iFirst.process.dataNumber, iSecond.process.datas,
                          iSecond.process.dataNumber);
    comparer.CompareLists("inputs", iFirst.inputs, iFirst.inputNumber, iSecond.inputs, iSecond.inputNumber);
    comparer.CompareLists("outputs", iFirst.outputs, iFirst.outputNumber, iSecond.outputs, iSecond.outputNumber);
    return std::move(comparer.differences);
}
