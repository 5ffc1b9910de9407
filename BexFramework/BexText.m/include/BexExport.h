#ifndef BexExport_H
#define BexExport_H

/** Marks what the framework's shared library makes visible; everything else is built hidden. */
#if defined(BexFramework_EXPORTS)
#define BEX_EXPORT __attribute__((visibility("default")))
#else
#define BEX_EXPORT
#endif

#endif
