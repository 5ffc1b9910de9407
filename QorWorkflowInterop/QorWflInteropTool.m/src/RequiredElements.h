#ifndef RequiredElements_H
#define RequiredElements_H

#include <BexDom.h>

#include <optional>
#include <string>

/**
 * Looks for the elements without which QorWflXmlToActivity() does not go on, in the order in which it reads them.
 * @return the path of the first that is missing, such as "Package/PackageHeader/Vendor", or nothing when all are
 *         there. A data field in it has its number from 1: "DataField[2]".
 */
std::optional<std::string> FindMissingElement(const DOM_Document& iDocument);

#endif
