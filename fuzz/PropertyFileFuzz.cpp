#include "FuzzTarget.h"
#include "MemoryFile.h"
#include "PlainPropertyReader.h"
#include "PropertyCheck.h"
#include "PropertyEntries.h"

#include <QorWflPropertyFile.h>

#include <string>

namespace {

using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;

std::string Printed(const PropertyEntries& iEntries) {
    std::string text;
    for (const auto& [key, value] : iEntries) {
        text += PropertyCheck::Printable(key) + " = " + PropertyCheck::Printable(value) + "\n";
    }
    return text;
}

/** A file that sets these entries and nothing else. Quotes keep values; no line begins with the equals sign. */
std::string FileOf(const PropertyEntries& iEntries) {
    std::string text;
    for (const auto& [key, value] : iEntries) {
        text += key + " = \"" + value + "\"\n";
    }
    return text;
}

void Read(QorWflPropertyFile& ioProperties, const std::string& iText) {
    static const MemoryFile file;
    Expect(file.Hold(iText), "a file in memory can be written");
    Expect(ioProperties.Read(file.Path()) == 0, "a file that is there is read");
}

}  // namespace

/** The bytes are a property file. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    const std::string text(reinterpret_cast<const char*>(iData), iSize);
    QorWflPropertyFile properties;
    Read(properties, text);
    const PropertyEntries entries = EntriesOf(properties);
    ExpectEqual("the plain reader reads the same", Printed(entries), Printed(PlainPropertyReader::PlainRead(text)));

    Read(properties, text);
    ExpectEqual("a file read twice sets nothing new", Printed(EntriesOf(properties)), Printed(entries));

    QorWflPropertyFile preset;
    PropertyEntries expected{{"preset", "kept"}};
    preset.SetValue("preset", "kept");
    for (const auto& [key, value] : entries) {
        PlainPropertyReader::Set(expected, key, value);
    }
    Read(preset, text);
    ExpectEqual("what was set before keeps its place", Printed(EntriesOf(preset)), Printed(expected));

    QorWflPropertyFile back;
    Read(back, FileOf(entries));
    ExpectEqual("a file written of the table sets the same", Printed(EntriesOf(back)), Printed(entries));
    return 0;
}
