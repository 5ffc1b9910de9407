#ifndef HostileDocument_H
#define HostileDocument_H

#include "NaiveXpdlReader.h"

#include <ActivityInfo.h>
#include <QorWflXmlToActivity.h>

#include <ActivityFields.h>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

/** What the tests with hostile documents share: whole documents to damage, and what two readers make of them. */
namespace HostileDocument {

/**
 * How far to step from one place to damage to the next. Every place is tried in a text of up to 5,000 bytes; longer
 * ones, and all under a sanitizer, which makes everything several times slower, are sampled at @p iSample. With the
 * environment variable QORWFL_TEST_ALL every place is tried always.
 */
inline std::size_t Step(const std::string& iText, std::size_t iSample) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr bool isSlow = true;
#else
    constexpr bool isSlow = false;
#endif
    const bool isSampled = (isSlow || iText.size() > 5000) && std::getenv("QORWFL_TEST_ALL") == nullptr;
    return isSampled ? iSample : 1;
}

inline std::string FileText(const std::string& iName) {
    std::ifstream file(iName, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot be opened: " + iName);
    }
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

/** The reply of the examples, and the documents that their three actions become. */
inline std::vector<std::string> Names() {
    const std::string data = TEST_DATA_DIR;
    return {EXAMPLES_DIR "/reply.xpdl", data + "/tool/minimal.xpdl", data + "/tool/nameless.xpdl",
            data + "/tool/review.xpdl"};
}

/** The fields of a record of old values after the library has read a text into it. */
inline ActivityFields Read(const std::string& iText) {
    ActivityInfo activity;
    FillWithOldValues(activity);
    QorWflXmlToActivity(BexUnicodeString(iText.data(), static_cast<int>(iText.size())), activity);
    return FieldsOf(activity);
}

/** The same as the naive reader has it from the document's tree. */
inline ActivityFields ReadNaively(const DOM_Document& iDocument) {
    ActivityInfo activity;
    FillWithOldValues(activity);
    NaiveXpdlReader::Read(iDocument, activity);
    return FieldsOf(activity);
}

}  // namespace HostileDocument

#endif
