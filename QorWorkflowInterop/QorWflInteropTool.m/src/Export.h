#ifndef Export_H
#define Export_H

#include <optional>
#include <string>

/**
 * Writes the XPDL document of an action to the standard output.
 * @param iActionFile the action in JSON, "-" for the standard input
 * @param iConfig the property file or its folder
 * @throw Failure when an input is not as it should be or the output cannot be written.
 */
void Export(const std::string& iActionFile, const std::optional<std::string>& iConfig);

#endif
