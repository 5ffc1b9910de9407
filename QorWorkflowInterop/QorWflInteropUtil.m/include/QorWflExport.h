#ifndef QorWflExport_H
#define QorWflExport_H

/** Marks what the interop library makes visible; everything else is built hidden. */
#if defined(QorWflInteropUtil_EXPORTS)
#define QORWFL_EXPORT __attribute__((visibility("default")))
#else
#define QORWFL_EXPORT
#endif

#endif
