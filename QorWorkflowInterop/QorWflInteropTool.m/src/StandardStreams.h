#ifndef StandardStreams_H
#define StandardStreams_H

/**
 * Makes the standard streams what the command takes them for, before anything else is done:
 *
 * - All three are open, so that no file or pipe opened later gets the number of one of them. One that was closed when
 *   the command was started fails as before when it is used: "Bad file descriptor".
 * - The standard output takes nothing but results, which WriteOutput() writes. What the library writes to `std::cout`,
 *   its trace and the records that it reads while it traces, goes to the standard error.
 *
 * @throw Failure when a stream is closed and nothing can be opened in its place.
 */
void PrepareStandardStreams();

#endif
