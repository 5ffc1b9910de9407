#include "FuzzTarget.h"
#include "NaiveUrl.h"
#include "PropertyCheck.h"
#include "UrlTesting.h"

#include <QorWflUrlUtil.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace {

using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;
using UrlTesting::Bytes;
using UrlTesting::BytesOf;
using UrlTesting::OwnedUuid;
using UrlTesting::Text;

/** Whether a text field of a block holds what comes back from an instance URL: plain characters, then blanks. */
bool IsPlain(std::string_view iField) {
    const std::size_t length = iField.find_last_not_of(' ') + 1;
    return std::all_of(iField.begin(), iField.begin() + static_cast<std::ptrdiff_t>(length), NaiveUrl::CopiedUnchanged);
}

/** A block is found again through the URL that is made of it, if its texts are plain. */
void CheckFoundAgain(const std::string& iBlock) {
    const std::string url = UrlTesting::InstanceUrl(iBlock);
    ExpectEqual("InstanceUrl is the naive one's", url, NaiveUrl::InstanceUrl(iBlock));
    const std::string_view block(iBlock);
    if (IsPlain(block.substr(0, 8)) && IsPlain(block.substr(8, 8)) && IsPlain(block.substr(16, 18))) {
        ExpectEqual("a block is found again through its URL", UrlTesting::UrlToUuid(url), iBlock);
        ExpectEqual("and with a query", UrlTesting::UrlToUuid(url + "?context=a/b"), iBlock);
    }
}

void CheckInstance(const std::string& iUrl) {
    const std::optional<std::string> block = UrlTesting::UrlToUuid(iUrl);
    ExpectEqual("UrlToUuid is the naive one's", block, NaiveUrl::UrlToUuid(iUrl));
    if (block) {
        CheckFoundAgain(*block);
    }
    BexUnicodeString context("what was there");
    const OwnedUuid instance(QorWflUrlUtil::UrlToContext(Text(iUrl), context));
    ExpectEqual("UrlToContext finds the same block", BytesOf(instance), block);
    ExpectEqual("UrlToContext gives the context of an instance, else nothing", Bytes(context),
                block ? NaiveUrl::GetUrlParm(iUrl, "context") : "");
}

void CheckAction(const std::string& iUrl) {
    const std::string id = UrlTesting::UrlToActionId(iUrl);
    ExpectEqual("UrlToActionId is the naive one's", id, NaiveUrl::UrlToActionId(iUrl));
    ExpectEqual("an action is found again through its URL", UrlTesting::UrlToActionId(UrlTesting::ActionUrl(id)), id);
}

void CheckParameters(const std::string& iUrl) {
    std::string names = iUrl;  // whatever stands between two of these may be a name
    std::replace_if(
        names.begin(), names.end(), [](char iCharacter) { return iCharacter == '?' || iCharacter == '='; }, '&');
    std::size_t from = 0;
    for (int count = 0; count < 16 && from != std::string::npos; ++count) {
        const std::size_t to = names.find('&', from);
        const std::string name = names.substr(from, to == std::string::npos ? to : to - from);
        ExpectEqual("GetUrlParm is the naive one's", UrlTesting::GetUrlParm(iUrl, name),
                    NaiveUrl::GetUrlParm(iUrl, name));
        from = to == std::string::npos ? to : to + 1;
    }
    ExpectEqual("GetUrlParm takes names as they stand", UrlTesting::GetUrlParm(iUrl, "context"),
                NaiveUrl::GetUrlParm(iUrl, "context"));
}

}  // namespace

/** The bytes are a URL. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    const std::string url(reinterpret_cast<const char*>(iData), iSize);
    CheckInstance(url);
    CheckAction(url);
    CheckParameters(url);
    return 0;
}
