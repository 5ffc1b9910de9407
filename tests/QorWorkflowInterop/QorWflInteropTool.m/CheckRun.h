#ifndef CheckRun_H
#define CheckRun_H

#include "ToolRun.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

/** Runs `qorwfl check --format json` over files and gives what it says of each. */
nlohmann::json CheckFiles(const std::vector<std::string>& iPaths, const ToolSettings& iSettings = {});
/** The same of documents. */
nlohmann::json CheckDocuments(const std::vector<std::string>& iTexts);
/** The same of one document, on the standard input. */
nlohmann::json CheckDocument(const std::string& iText);

/** The places of the findings of a code, as "line:column path", without the path where there is none. */
std::vector<std::string> PlacesOf(const nlohmann::json& iReport, const std::string& iCode);
/** The first finding of a code; the test fails when there is none. */
nlohmann::json FindingOf(const nlohmann::json& iReport, const std::string& iCode);
/** The codes of all findings, in their order. */
std::vector<std::string> CodesOf(const nlohmann::json& iReport);

#endif
