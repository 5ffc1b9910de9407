#include "BexMemorySource.h"

#include "BexXmlMemory.h"

BexMemorySource::BexMemorySource(std::string_view iBytes, const XMLCh* iSystemId)
    : MemBufInputSource(reinterpret_cast<const XMLByte*>(iBytes.data()), iBytes.size(), iSystemId, false,
                        BexXmlMemory::Instance()),
      bytes(iBytes) {
    setCopyBufToStream(false);
}
