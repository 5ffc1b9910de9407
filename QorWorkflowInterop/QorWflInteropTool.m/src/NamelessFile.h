#ifndef NamelessFile_H
#define NamelessFile_H

#include <string>

/**
 * The standard input as a file without a name, for a reader that wants the path of a regular file: the library's, of
 * property files.
 */
class NamelessFile {
public:
    /** Holds some bytes. @throw Failure when there is no room for them. */
    explicit NamelessFile(const std::string& iBytes);
    ~NamelessFile();
    NamelessFile(const NamelessFile&) = delete;  // closes the file once
    NamelessFile& operator=(const NamelessFile&) = delete;

    /** @return a path by which this process can open the file as long as this object lives. */
    std::string Path() const;

private:
    int number;
};

#endif
