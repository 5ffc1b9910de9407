#ifndef CheckOutput_H
#define CheckOutput_H

#include "DocumentCheck.h"

#include <string>
#include <vector>

/**
 * The reports for people: a line for each finding, with its path and a hint below, and a line for each file.
 * @param iColours whether the terminal is told to show the severities in colours
 */
std::string CheckAsText(const std::vector<FileReport>& iReports, bool iColours);

/** The reports in the JSON form of this command, described in docs/check-codes.md; ASCII alone. */
std::string CheckAsJson(const std::vector<FileReport>& iReports);

/** The reports as SARIF 2.1.0, ASCII alone. Files are named by URIs relative to the current folder. */
std::string CheckAsSarif(const std::vector<FileReport>& iReports);

#endif
