#ifndef QorWflExport_H
#define QorWflExport_H

/**
 * Marks what the interop library's shared object makes visible; everything else is built hidden. Stays in force for
 * hosts that are themselves built with hidden visibility.
 */
#define QORWFL_EXPORT __attribute__((visibility("default")))

#endif
