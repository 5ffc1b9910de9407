#include "FuzzBytes.h"
#include "FuzzTarget.h"
#include "NaiveUrl.h"
#include "PropertyCheck.h"
#include "UrlTesting.h"

#include <QorWflUrlUtil.h>

#include <memory>
#include <string>

namespace {

using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;
using UrlTesting::Bytes;
using UrlTesting::OwnedUuid;

/** What a URL carries of a text: the low 8 bits of each character. */
std::string LowBytes(const BexUnicodeString& iText) {
    std::string bytes;
    for (int i = 0; i < iText.GetLengthInChar(); ++i) {
        bytes += iText[i].ConvertToChar();
    }
    return bytes;
}

void CheckAction(const BexUnicodeString& iId) {
    const std::string url = Bytes(QorWflUrlUtil::ActionUrl(iId));
    const std::string id = LowBytes(iId);
    ExpectEqual("ActionUrl encodes as the naive codec", url,
                NaiveUrl::kLong + "default/" + NaiveUrl::Encode(id) + ".ACTION");
    ExpectEqual("an action is found again through its URL", UrlTesting::UrlToActionId(url), id);
    ExpectEqual("also behind another environment and before a query",
                UrlTesting::UrlToActionId(NaiveUrl::kLong + "env/" + NaiveUrl::Encode(id) + ".ACTION?context=x"), id);
    ExpectEqual("also through the short form", UrlTesting::UrlToActionId(NaiveUrl::kShortAction + NaiveUrl::Encode(id)),
                id);
    Expect(!UrlTesting::UrlToUuid(url).has_value() || id.size() >= 71, "an action URL names no instance");
}

/** A block of three texts and sixteen bytes. */
std::string BlockOf(FuzzBytes& ioBytes) {
    const std::string dbName = ioBytes.Text();
    const std::string kienv = ioBytes.Text();
    const std::string kitab = ioBytes.Text();
    const std::string identifiers = ioBytes.Text();
    return NaiveUrl::ToChar(8, dbName, ' ') + NaiveUrl::ToChar(8, kienv, ' ') + NaiveUrl::ToChar(18, kitab, ' ') +
           NaiveUrl::ToChar(16, identifiers, '\0');
}

void CheckContext(const std::string& iBlock, const BexUnicodeString& iContext) {
    const std::string instance = UrlTesting::InstanceUrl(iBlock);
    ExpectEqual("InstanceUrl is the naive one's", instance, NaiveUrl::InstanceUrl(iBlock));
    ExpectEqual("UrlToUuid finds what the naive one does", UrlTesting::UrlToUuid(instance),
                NaiveUrl::UrlToUuid(instance));

    const std::string url = Bytes(QorWflUrlUtil::ContextUrl(iBlock.data(), iContext));
    const std::string context = LowBytes(iContext);
    const char mark = instance.find('?') == std::string::npos ? '?' : '&';
    ExpectEqual("ContextUrl adds the context", url,
                context.empty() ? instance : instance + mark + "context=" + NaiveUrl::Encode(context));
    if (mark == '?') {
        ExpectEqual("the context comes back", UrlTesting::GetUrlParm(url, "context"), context);
    }
    BexUnicodeString found;
    const OwnedUuid block(QorWflUrlUtil::UrlToContext(UrlTesting::Text(url), found));
    ExpectEqual("UrlToContext finds what the naive one does", UrlTesting::BytesOf(block), NaiveUrl::UrlToUuid(url));
    if (block) {
        ExpectEqual("with the context", Bytes(found), NaiveUrl::GetUrlParm(url, "context"));
    }
}

/** A URL with parameters, of which each name's first one is found. */
void CheckParameters(FuzzBytes& ioBytes) {
    BexUnicodeString url(ioBytes.Text().c_str());
    std::string expected = Bytes(url);
    for (unsigned count = ioBytes.Below(8); count > 0; --count) {
        const std::string name = ioBytes.Text();
        const BexUnicodeString value = ioBytes.AnyString();
        QorWflUrlUtil::AddUrlParm(url, UrlTesting::Text(name), value);
        expected += expected.find('?') == std::string::npos ? "?" : "&";
        expected += name + "=" + NaiveUrl::Encode(LowBytes(value));
        ExpectEqual("AddUrlParm adds a parameter", Bytes(url), expected);
        ExpectEqual("GetUrlParm finds what the naive one does", UrlTesting::GetUrlParm(expected, name),
                    NaiveUrl::GetUrlParm(expected, name));
    }
}

}  // namespace

/** The bytes are an identifier, a context, a block, and names and values of parameters. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    FuzzBytes bytes(iData, iSize);
    CheckAction(bytes.AnyString());
    const BexUnicodeString context = bytes.AnyString();
    CheckContext(BlockOf(bytes), context);
    CheckParameters(bytes);
    return 0;
}
