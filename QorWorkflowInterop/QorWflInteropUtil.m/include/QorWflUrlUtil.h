#ifndef QorWflUrlUtil_H
#define QorWflUrlUtil_H

#include "QorWflExport.h"

#include <BexUnicodeString.h>

/**
 * Lets go of a UUID block that QorWflUrlUtil returned; for std::unique_ptr:
 * `std::unique_ptr<char, QorWflUuidDeleter> block(QorWflUrlUtil::UrlToUuid(url));`
 */
struct QORWFL_EXPORT QorWflUuidDeleter {
    /** @param iUuid the block, or null */
    void operator()(char* iUuid) const noexcept;
};

/**
 * Builds and parses the URLs that name workflow actions, process contexts and PDM object instances.
 *
 * A UUID block is the fixed 50-byte identifier of a PDM object instance, laid out as QorWflUuidLayout.h says. Blocks
 * returned here are allocated with `::operator new(50)` and belong to the caller, who releases them with
 * `::operator delete`, as QorWflUuidDeleter does.
 *
 * No operation fails but by its result: an empty string or a null block. Memory that cannot be had is std::bad_alloc.
 * There is no state, so any number of threads may call; while on, the trace channel "WFInteropUrl" tells each step.
 */
class QORWFL_EXPORT QorWflUrlUtil {
public:
    QorWflUrlUtil() = delete;  // static operations only

    /**
     * The action that a URL names.
     * @param iUrl "qor://ACTION/" and the encoded identifier, or "LumenUID://Legacy+QOR1/", any environment, "/", the
     *        encoded identifier, ".ACTION" and perhaps a query
     * @return the identifier, or the empty string for any other text. In the short form a query is not taken off.
     */
    static BexUnicodeString UrlToActionId(const BexUnicodeString& iUrl);
    /** @return the long URL of an action, with the environment "default". */
    static BexUnicodeString ActionUrl(const BexUnicodeString& iActionId);

    /**
     * The object instance and the context that a URL names.
     * @param iUrl an instance URL, perhaps with the parameter "context"
     * @param oContext receives the decoded context, empty when there is none or the URL names no instance
     * @return a new UUID block, or null, as UrlToUuid() gives it.
     */
    [[nodiscard]] static char* UrlToContext(const BexUnicodeString& iUrl, BexUnicodeString& oContext);
    /**
     * The URL of an object instance in a context.
     * @param iUuid a UUID block; null gives an empty URL, to which the parameter is added all the same
     * @param iContext the parameter "context"; null or empty adds none
     */
    static BexUnicodeString ContextUrl(const char* iUuid, const BexUnicodeString& iContext);

    /** @return the decoded value of the first query parameter of that exact name, empty when there is none. */
    static BexUnicodeString GetUrlParm(const BexUnicodeString& iUrl, const BexUnicodeString& iName);
    /**
     * Adds a query parameter behind those that are there, also when there is one of that name.
     * @param iName written as it stands
     * @param iValue written encoded
     */
    static void AddUrlParm(BexUnicodeString& ioUrl, const BexUnicodeString& iName, const BexUnicodeString& iValue);

    /** @return the long instance URL of a UUID block, empty for a null pointer. */
    static BexUnicodeString InstanceUrl(const char* iUuid);
    /**
     * The object instance that a URL names.
     * @param iUrl an instance URL in its long or short form, perhaps with a query
     * @return a new UUID block, or null when the text is no instance URL. Digits of the identifiers that are none
     *         are not detected.
     */
    [[nodiscard]] static char* UrlToUuid(const BexUnicodeString& iUrl);
};

#endif
