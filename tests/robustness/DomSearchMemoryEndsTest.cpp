// Memory that ends while a document is searched for the first time, which Xerces-C does with memory of its own: what
// leaves is what leaves everywhere else.

#include "MemoryThatEnds.h"
#include "XmlText.h"

#include <BexDom.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

using MemoryThatEnds::Outcome;
using MemoryThatEnds::OutcomeOf;
using RefusedMemory::Mode;

/**
 * Searches documents that nobody has searched yet, without memory and then with it. Memory that ends later in the
 * search is not tried, for Xerces-C loses then what it has got.
 */
void ExpectBadAllocAndThenAll(const std::function<DOM_NodeList(DOM_Document&)>& iSearch) {
    for (const Mode mode : {Mode::kOnce, Mode::kFromThenOn}) {
        DOM_Document document = Parsed("<r><e/><f><e/></f></r>");
        {
            const RefusedMemory::Refusal refusal(0, mode);
            EXPECT_EQ(OutcomeOf([&] { iSearch(document); }), Outcome::kBadAlloc);
        }
        EXPECT_EQ(iSearch(document).getLength(), 2U);
    }
}

TEST(DomSearchMemoryEnds, SearchOfADocumentWithoutMemoryThrowsBadAllocAndFindsAllWithIt) {
    ExpectBadAllocAndThenAll([](DOM_Document& ioDocument) { return ioDocument.getElementsByTagName("e"); });
}

TEST(DomSearchMemoryEnds, SearchOfAnElementWithoutMemoryThrowsBadAllocAndFindsAllWithIt) {
    ExpectBadAllocAndThenAll(
        [](DOM_Document& ioDocument) { return ioDocument.getDocumentElement().getElementsByTagName("e"); });
}

}  // namespace
