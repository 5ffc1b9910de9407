#ifndef ReaderProbe_H
#define ReaderProbe_H

#include "XpdlReading.h"

#include <string>

/**
 * Has the library's reader read a document into a record of marked fields, and compares what became of them with what a
 * reading says.
 * @throw std::logic_error naming the field about which the two disagree.
 */
void CompareWithReader(const std::string& iBytes, const XpdlReading& iReading);

#endif
