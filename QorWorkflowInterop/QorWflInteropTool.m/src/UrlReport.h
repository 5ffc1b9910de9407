#ifndef UrlReport_H
#define UrlReport_H

#include "UrlExplanation.h"

#include <string>
#include <vector>

/** @return what there is to tell about a URL, in lines for people. */
std::string UrlAsText(const UrlExplanation& iUrl);
/** @return the same about several URLs as a JSON document, a list. */
std::string UrlsAsJson(const std::vector<UrlExplanation>& iUrls);

#endif
