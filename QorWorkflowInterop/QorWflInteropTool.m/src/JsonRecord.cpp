#include "JsonRecord.h"

#include "RecordFields.h"
#include "Unicode.h"

#include <nlohmann/json.hpp>

#include <limits>

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kProcess = "process";
constexpr const char* kDatas = "datas";
constexpr const char* kDataNumber = "dataNumber";
constexpr const char* kInputs = "inputs";
constexpr const char* kInputNumber = "inputNumber";
constexpr const char* kOutputs = "outputs";
constexpr const char* kOutputNumber = "outputNumber";

// ---------------------------------------------------------------------------------------------------- writing

Json ToJson(const BexUnicodeString& iText) {
    return iText.IsNull() != 0 ? Json() : Json(ToUtf8(iText));
}

Json ToJson(long iNumber) {
    return iNumber;
}

template <typename Record, std::size_t Count>
Json ToJson(const Record& iRecord, const TextField<Record> (&iFields)[Count]) {
    Json object = Json::object();
    for (const auto& field : iFields) {
        object[std::string(field.name)] = ToJson(iRecord.*field.member);
    }
    return object;
}

template <typename Element, typename Convert>
Json ToJson(const Element* iElements, int iCount, Convert iConvert) {
    Json list = Json::array();
    for (int i = 0; i < iCount; ++i) {
        list.push_back(iConvert(iElements[i]));
    }
    return list;
}

Json ToJson(const ProcessInfo& iProcess) {
    Json object = ToJson(iProcess, kProcessFields);
    object[kDatas] =
        ToJson(iProcess.datas, iProcess.dataNumber, [](const DataInfo& iData) { return ToJson(iData, kDataFields); });
    object[kDataNumber] = iProcess.dataNumber;
    return object;
}

// ---------------------------------------------------------------------------------------------------- reading

/** The names of fields, and those of other members behind them. */
template <typename Field, std::size_t Count>
std::vector<std::string_view> NamesOf(const Field (&iFields)[Count], std::initializer_list<std::string_view> iOthers) {
    std::vector<std::string_view> names;
    for (const Field& field : iFields) {
        names.push_back(field.name);
    }
    names.insert(names.end(), iOthers);
    return names;
}

void Read(const JsonPlace& iPlace, BexUnicodeString& oText) {
    oText = iPlace.AnyText();
}

template <typename Number>
void Read(const JsonPlace& iPlace, Number& oNumber) {
    oNumber = static_cast<Number>(
        iPlace.WholeNumber(std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()).value_or(oNumber));
}

template <typename Record, std::size_t Count>
void Read(const JsonPlace& iPlace, Record& oRecord, const TextField<Record> (&iFields)[Count]) {
    for (const auto& field : iFields) {
        Read(iPlace.Member(field.name), oRecord.*field.member);
    }
}

/** The count of a list. The number beside the list must not contradict it, but an empty list may have a negative one.
 */
int ReadCount(const JsonPlace& iList, const JsonPlace& iNumber) {
    const std::size_t size = iList.GetListSize();
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        iList.Refuse("has too many elements");
    }
    int number = static_cast<int>(size);
    Read(iNumber, number);
    if (number != static_cast<int>(size) && (size != 0 || number > 0)) {
        iNumber.RefuseOther("the number of elements of the list, which is " + std::to_string(size));
    }
    return number;
}

void ReadNames(const JsonPlace& iList, int iCount, BexUnicodeString* oNames) {
    for (int i = 0; i < iCount; ++i) {
        Read(iList.Element(static_cast<std::size_t>(i)), oNames[i]);
    }
}

void ReadProcess(const JsonPlace& iPlace, ProcessInfo& oProcess) {
    if (iPlace.IsAbsent()) {
        return;
    }
    iPlace.RequireObject(NamesOf(kProcessFields, {kDatas, kDataNumber}));
    Read(iPlace, oProcess, kProcessFields);
    const JsonPlace list = iPlace.Member(kDatas);
    oProcess.SetDataNumber(ReadCount(list, iPlace.Member(kDataNumber)));
    for (int i = 0; i < oProcess.dataNumber; ++i) {
        const JsonPlace data = list.Element(static_cast<std::size_t>(i));
        data.RequireObject(NamesOf(kDataFields, {}));
        Read(data, oProcess.datas[i], kDataFields);
    }
}

}  // namespace

std::string RecordToJson(const ActivityInfo& iRecord) {
    Json object = Json::object();
    for (const ActivityField& field : kActivityFields) {
        object[std::string(field.name)] =
            std::visit([&iRecord](auto iMember) { return ToJson(iRecord.*iMember); }, field.member);
    }
    const auto name = [](const BexUnicodeString& iName) { return ToJson(iName); };
    object[kProcess] = ToJson(iRecord.process);
    object[kInputs] = ToJson(iRecord.inputs, iRecord.inputNumber, name);
    object[kOutputs] = ToJson(iRecord.outputs, iRecord.outputNumber, name);
    object[kInputNumber] = iRecord.inputNumber;
    object[kOutputNumber] = iRecord.outputNumber;
    Json text = Json::object();
    text[kRecordMember] = std::move(object);
    return text.dump(2) + '\n';
}

void JsonToRecord(const JsonPlace& iPlace, ActivityInfo& oRecord) {
    iPlace.RequireObject(NamesOf(kActivityFields, {kProcess, kInputs, kOutputs, kInputNumber, kOutputNumber}));
    for (const ActivityField& field : kActivityFields) {
        const JsonPlace place = iPlace.Member(field.name);
        std::visit([&](auto iMember) { Read(place, oRecord.*iMember); }, field.member);
    }
    ReadProcess(iPlace.Member(kProcess), oRecord.process);
    const JsonPlace inputs = iPlace.Member(kInputs);
    oRecord.SetInputNumber(ReadCount(inputs, iPlace.Member(kInputNumber)));
    ReadNames(inputs, oRecord.inputNumber, oRecord.inputs);
    const JsonPlace outputs = iPlace.Member(kOutputs);
    oRecord.SetOutputNumber(ReadCount(outputs, iPlace.Member(kOutputNumber)));
    ReadNames(outputs, oRecord.outputNumber, oRecord.outputs);
}
