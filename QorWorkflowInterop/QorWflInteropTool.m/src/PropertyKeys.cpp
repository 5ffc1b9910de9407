#include "PropertyKeys.h"

#include "NearestName.h"

#include <algorithm>
#include <vector>

namespace {

const std::vector<std::string>& SingleKeys() {
    static const std::vector<std::string> keys{
        "actionType",         "actionStatus.start",  "actionStatus.run", "actionStatus.complete",
        "actionStatus.abort", "actionStatus.bypass", "dataName.missing", "dataName.ambiguous"};
    return keys;
}

}  // namespace

bool IsKnownKey(std::string_view iKey) {
    return iKey.starts_with(kPriorityPrefix) || iKey.starts_with(kMappingPrefix) ||
           std::find(SingleKeys().begin(), SingleKeys().end(), iKey) != SingleKeys().end();
}

std::string NearestKey(std::string_view iKey) {
    const std::size_t dot = std::min(iKey.find('.'), iKey.size());
    const std::string head(iKey.substr(0, std::min(dot + 1, iKey.size())));
    const std::string rest(iKey.substr(head.size()));
    const std::string family = NearestName(head, {std::string(kPriorityPrefix), std::string(kMappingPrefix)});
    const std::string single = NearestName(iKey, SingleKeys());
    if (family.empty() || (!single.empty() && EditDistance(iKey, single) <= EditDistance(head, family))) {
        return single;
    }
    return family + (!rest.empty() ? rest : family == kPriorityPrefix ? "CODE" : "TYPE.ENVIRONMENT");
}
