#ifndef UrlExplanation_H
#define UrlExplanation_H

#include "UrlReading.h"

#include <BexUnicodeString.h>

#include <string>
#include <vector>

/** A query parameter. */
struct UrlParameter {
    UrlPiece name;
    UrlPiece value;
    bool isRead = true;  ///< not so for another of the same name behind the first
};

/** All that can be told about a URL. The verdicts and the values are the library's. */
struct UrlExplanation {
    explicit UrlExplanation(const BexUnicodeString& iUrl);

    /** @return whether the URL names an action or an object instance. */
    bool IsAccepted() const { return action.isAccepted || instance.isAccepted; }
    /** @return whether the URL looks as if it were to name an action; for one that names neither. */
    bool LooksLikeAction() const;

    BexUnicodeString url;
    UrlReading action;
    BexUnicodeString actionId;  ///< of one that is accepted
    UrlReading instance;
    std::string uuid;                ///< the block of an instance that is accepted
    BexUnicodeString context;        ///< the context of an instance that is accepted
    std::vector<std::string> trace;  ///< what the library tells while it looks for an instance
    std::vector<UrlParameter> parameters;
};

#endif
