#ifndef XercesTree_H
#define XercesTree_H

#include <ActivityInfo.h>

#include <xercesc/dom/DOM.hpp>

#include <memory>
#include <string>

/** The document of a record as Xerces-C itself builds it, through its public interface. */
namespace XercesTree {

/** Gives back what Xerces-C hands out. */
struct Release {
    template <typename Released>
    void operator()(Released* iReleased) const {
        iReleased->release();
    }
};

using Document = std::unique_ptr<xercesc::DOMDocument, Release>;
using Serializer = std::unique_ptr<xercesc::DOMLSSerializer, Release>;

Document Build(const ActivityInfo& iActivity);
/** A new serializer with the settings that it comes with. */
Serializer MakeSerializer();
/** A document as text in ISO-8859-1. */
std::string WriteLatin1(xercesc::DOMLSSerializer& ioSerializer, const xercesc::DOMDocument& iDocument);

}  // namespace XercesTree

#endif
