#ifndef BexExport_H
#define BexExport_H

/**
 * Marks what the framework's shared object makes visible; everything else is built hidden. Stays in force for hosts
 * that are themselves built with hidden visibility.
 */
#define BEX_EXPORT __attribute__((visibility("default")))

#endif
