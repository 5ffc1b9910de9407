#ifndef BexXMLParser_H
#define BexXMLParser_H

#include "BexExport.h"

#include <xercesc/sax/InputSource.hpp>

using InputSource = xercesc::InputSource;

/** The framework's front end to Xerces-C: start-up and input sources. */
class BEX_EXPORT BexXMLParser {
public:
    /**
     * Starts Xerces-C once, however often and from however many threads this is called. Nothing terminates it while
     * the library is loaded; unloading the library gives its one start back.
     * @return 0, or 0x80004005 when Xerces-C cannot be started.
     */
    static int Initialize();
    /**
     * An input source over memory, which is not copied and has to live as long as the source is read.
     * Starts Xerces-C if nothing has yet.
     * @param iLength in bytes
     * @param iSystemId the name that messages give the text; null counts as ""
     * @return a source that the caller deletes, or null for a null buffer, a negative length or when Xerces-C cannot be
     *         started.
     */
    [[nodiscard]] static InputSource* CreateMemBufInputSource(const char* iBuffer, int iLength, const char* iSystemId);
};

#endif
