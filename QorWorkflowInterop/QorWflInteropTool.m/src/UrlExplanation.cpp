#include "UrlExplanation.h"

#include "Unicode.h"
#include "UrlReading.h"
#include "UrlText.h"
#include "UserText.h"

#include <BexQorTrace.h>
#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <set>

namespace {

constexpr const char* kContextName = "context";

/** Gathers what the library traces about URLs while it lives. The user who asked for the trace gets it all the same. */
class UrlTrace {
public:
    explicit UrlTrace(std::vector<std::string>& oMessages) : messages(oMessages) {
        BexQorTrace::SetSink(&UrlTrace::Take, this);
        BexQorTrace::SetOn(kChannel, 1);
    }
    ~UrlTrace() {
        BexQorTrace::SetOn(kChannel, isAskedFor);
        BexQorTrace::SetSink(nullptr, nullptr);
    }
    UrlTrace(const UrlTrace&) = delete;  // there is one sink
    UrlTrace& operator=(const UrlTrace&) = delete;

private:
    static constexpr const char* kChannel = "WFInteropUrl";

    static void Take(const char* /*iChannel*/, const char* iText, int iLength, void* iData) {
        auto* const self = static_cast<UrlTrace*>(iData);
        std::string_view line(iText, static_cast<std::size_t>(iLength));
        if (self->isAskedFor != 0) {
            std::cerr << line;
        }
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        line = line.substr(0, line.find_last_not_of('\n') + 1);
        if (!line.starts_with(">> ") && !line.starts_with("<< ")) {
            self->messages.push_back(Latin1ToUtf8(line));
        }
    }

    std::vector<std::string>& messages;
    const int isAskedFor = BexQorTrace(kChannel, nullptr, nullptr, 0).IsOn();  // as the environment says
};

/** A piece of a URL with what it says once decoded. */
UrlPiece DecodedPiece(std::u16string_view iUrl, std::size_t iStart, std::size_t iEnd, const char* iName) {
    return {iStart, iEnd - iStart, iName, ToUtf8(DecodeUrlText(TextOf(iUrl.substr(iStart, iEnd - iStart))))};
}

/** The parameters behind the first question mark, where the library looks for them. */
std::vector<UrlParameter> ParametersOf(const BexUnicodeString& iUrl) {
    const std::u16string url = UnitsOf(iUrl);
    std::vector<UrlParameter> parameters;
    std::set<std::u16string> known;
    std::size_t start = std::min(url.find(u'?'), url.size() - 1) + 1;
    while (start < url.size()) {
        const std::size_t end = std::min(url.find(u'&', start), url.size());
        const std::size_t equals = url.find(u'=', start);
        if (equals < end) {  // without "=" it is no parameter
            const std::u16string name = url.substr(start, equals - start);
            parameters.push_back({{start, equals - start, "parameter", ToUtf8(name)},
                                  DecodedPiece(url, equals + 1, end, "value"),
                                  known.insert(name).second});
        }
        start = end + 1;
    }
    return parameters;
}

}  // namespace

UrlExplanation::UrlExplanation(const BexUnicodeString& iUrl) : url(iUrl) {
    const std::u16string units = UnitsOf(iUrl);
    actionId = QorWflUrlUtil::UrlToActionId(iUrl);
    action = ReadAsAction(units);
    action.isAccepted = actionId.IsEmpty() == 0;
    std::unique_ptr<char, QorWflUuidDeleter> block;
    {
        const UrlTrace tracing(trace);
        block.reset(QorWflUrlUtil::UrlToUuid(iUrl));
    }
    instance = ReadAsInstance(units);
    instance.isAccepted = block != nullptr;
    if (block) {
        uuid.assign(block.get(), QorWflUuidLayout::kBlockSize);
        context = QorWflUrlUtil::GetUrlParm(iUrl, kContextName);
    }
    parameters = url.IsEmpty() != 0 ? std::vector<UrlParameter>() : ParametersOf(iUrl);
}

bool UrlExplanation::LooksLikeAction() const {
    const std::u16string units = UnitsOf(url);
    return units.starts_with(kShortActionPrefix) ||
           (units.starts_with(kLongUrlPrefix) && units.find(u'#') == std::u16string::npos);
}
