#ifndef DocumentCheck_H
#define DocumentCheck_H

#include "CheckFindings.h"

#include <string>
#include <vector>

/** What the reader does with a document, in one word. */
enum class Verdict {
    ReadWhole,  ///< everything that is in it gets into the record
    Loses,      ///< it is read to its end, and something in it does not get into the record
    Stops,      ///< a required element is missing; the record is filled in part
    Refused,    ///< it is no document for the reader; the record stays as it was
    Unread      ///< the file cannot be read
};

/** "readWhole" and so on, for programs. */
const char* NameOf(Verdict iVerdict);

/** Everything that is said about one file. */
struct FileReport {
    std::string path;  ///< as the user gave it
    Verdict verdict = Verdict::ReadWhole;
    std::string statement;                ///< the verdict in words: "stops at /Package/PackageHeader"
    std::string stopsAt;                  ///< the path of the element that is missing; empty when nothing is
    std::vector<std::string> setFields;   ///< the fields of the record that the reader sets
    std::vector<std::string> keptFields;  ///< those that it leaves as they were
    FindingList findings;
};

/**
 * Reads a file and looks for everything that can be found in it.
 * @param iPath a file, or "-" for the standard input
 * @throw std::logic_error when what is found does not agree with what the library's reader does.
 */
FileReport CheckFile(const std::string& iPath);

#endif
