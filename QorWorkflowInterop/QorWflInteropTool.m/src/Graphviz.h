#ifndef Graphviz_H
#define Graphviz_H

#include <string>

/**
 * Has Graphviz's program `dot`, which is looked for along PATH, draw a picture.
 * @param iGraph the graph in Graphviz's language
 * @return the picture in SVG.
 * @throw Failure when the program is not installed or does not draw it.
 */
std::string DrawSvg(const std::string& iGraph);

#endif
