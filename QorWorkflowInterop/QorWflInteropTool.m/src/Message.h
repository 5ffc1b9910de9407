#ifndef Message_H
#define Message_H

#include <string>

/** Tells the user something on the standard error: a line with the command's name in front, as SafeText() has it. */
void Report(const std::string& iMessage);

#endif
