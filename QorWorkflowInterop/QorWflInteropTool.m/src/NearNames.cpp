#include "NearNames.h"

#include <algorithm>

namespace {

char16_t LowerCase(char16_t iUnit) {
    return iUnit >= u'A' && iUnit <= u'Z' ? static_cast<char16_t>(iUnit - u'A' + u'a') : iUnit;
}

}  // namespace

bool IsNearly(std::u16string_view iName, std::u16string_view iOther) {
    const std::size_t colon = iName.rfind(u':');
    const std::u16string_view local = colon == std::u16string_view::npos ? iName : iName.substr(colon + 1);
    return iName != iOther &&
           std::equal(local.begin(), local.end(), iOther.begin(), iOther.end(),
                      [](char16_t iLeft, char16_t iRight) { return LowerCase(iLeft) == LowerCase(iRight); });
}

std::string Difference(std::u16string_view iName) {
    return iName.find(u':') != std::u16string_view::npos ? "has a namespace prefix" : "is in letters of another case";
}
