#ifndef RecordFormat_H
#define RecordFormat_H

#include "ToolActionManager.h"

#include <ActivityInfo.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** The forms in which a record can stand in a file. */
enum class RecordFormat { kXpdl, kText, kJson };

/** @return the format that the command line calls "xpdl", "text" or "json". */
RecordFormat FormatOfName(std::string_view iName);
/** @return the ending of the names of files in a format: ".xpdl", ".txt" or ".json". */
std::string EndingOf(RecordFormat iFormat);
/** @return the format that a text is in, by how it begins. @throw Failure when it is in none. */
RecordFormat RecognizeFormat(const std::string& iText, const std::string& iFileName);

/** Reads records from texts in any format. */
class RecordReader {
public:
    /**
     * @param iConfig the property file, its folder, or "-" for the standard input, in whose words an action in JSON
     * becomes a record; without it the one that the library finds is read, when the first action comes
     * @throw Failure when a property file is given and cannot be read.
     */
    explicit RecordReader(const std::optional<std::string>& iConfig);

    /**
     * Fills a fresh record.
     * @param iFileName what messages call the text
     * @param oWarnings receives what was lost, a message each, with file and place
     * @throw Failure with file and place when the text is not in the format, or tells no whole record.
     */
    void Read(const std::string& iText, const std::string& iFileName, RecordFormat iFormat, ActivityInfo& oRecord,
              std::vector<std::string>& oWarnings);

    /** The same for JSON alone: the record in it, or the one of the action in it. */
    void ReadJson(const std::string& iText, const std::string& iFileName, ActivityInfo& oRecord);

private:
    ToolActionManager& Manager();

    std::unique_ptr<ToolActionManager> manager;  // null until there is an action
};

/**
 * @param iCreated the `Created` text of a document; without it, the current time. The other formats have none
 * @param iFileName what messages call the record
 * @return a record in a format.
 * @throw Failure when the format cannot hold a text of the record.
 */
std::string WriteRecord(const ActivityInfo& iRecord, RecordFormat iFormat, const std::optional<std::string>& iCreated,
                        const std::string& iFileName);

#endif
