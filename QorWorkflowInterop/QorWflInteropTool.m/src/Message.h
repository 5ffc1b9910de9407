#ifndef Message_H
#define Message_H

#include <string>

/**
 * @return text from outside for a terminal: control characters, those behind ASCII too, and bytes that are no UTF-8 are
 * shown as \xNN, so that none has an effect there.
 */
std::string WithoutControls(const std::string& iText);

/** Tells the user something on the standard error, on a line of its own with the command's name in front. */
void Report(const std::string& iMessage);

#endif
