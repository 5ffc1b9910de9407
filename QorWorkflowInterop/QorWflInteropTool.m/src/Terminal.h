#ifndef Terminal_H
#define Terminal_H

/**
 * Whether output may be decorated: coloured, or drawn over as a progress bar is.
 * @param iDescriptor the standard output or the standard error, as a file descriptor
 * @return true on a terminal that can do more than print, unless the user has set NO_COLOR, to whatever value.
 */
bool MayDecorate(int iDescriptor);

#endif
