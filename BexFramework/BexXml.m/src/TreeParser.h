#ifndef TreeParser_H
#define TreeParser_H

#include "TreeNodes.h"

#include <xercesc/parsers/XercesDOMParser.hpp>

#include <cstddef>
#include <memory>

/**
 * Xerces-C's parser with the nodes put into the tree by TreeNodes, which takes a fraction of the time of the parser's
 * own way. Checks that a text is well-formed and nothing else.
 */
class TreeParser : public xercesc::XercesDOMParser {
public:
    TreeParser();

    void startDocument() override;
    void startElement(const xercesc::XMLElementDecl& iDeclaration, const unsigned int iUriId,
                      const XMLCh* const iPrefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& iAttributes,
                      const XMLSize_t iCount, const bool iIsEmpty, const bool iIsRoot) override;
    void endElement(const xercesc::XMLElementDecl& iDeclaration, const unsigned int iUriId, const bool iIsRoot,
                    const XMLCh* const iPrefix) override;
    void docCharacters(const XMLCh* const iText, const XMLSize_t iLength, const bool iIsCDATASection) override;
    void docComment(const XMLCh* const iText) override;
    void docPI(const XMLCh* const iTarget, const XMLCh* const iData) override;

private:
    std::unique_ptr<TreeNodes> nodes;
    std::size_t depth = 0;  // elements open
};

#endif
