#include "BexMemorySource.h"

#include "BexXmlMemory.h"
#include "DOMString.h"

BexMemorySource::BexMemorySource(std::string_view iBytes, const char* iSystemId)
    : MemBufInputSource(reinterpret_cast<const XMLByte*>(iBytes.data()), iBytes.size(),
                        DOMString(iSystemId).rawBuffer(), false, BexXmlMemory::Instance()),
      bytes(iBytes) {
    setCopyBufToStream(false);
}
