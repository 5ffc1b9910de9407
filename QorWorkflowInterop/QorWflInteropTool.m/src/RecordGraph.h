#ifndef RecordGraph_H
#define RecordGraph_H

#include <ActivityInfo.h>

#include <string>

/**
 * @return a record as a picture in Graphviz's language, UTF-8: the process as a frame around the activity, its inputs
 * on the left, its outputs on the right, the participant below. An input or output without a data field is dashed.
 */
std::string RecordToDot(const ActivityInfo& iRecord);

/** @return the same picture as a Mermaid flowchart. */
std::string RecordToMermaid(const ActivityInfo& iRecord);

#endif
