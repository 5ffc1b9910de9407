#include "ActivityFields.h"
#include "XpdlReply.h"

#include <gtest/gtest.h>

#include <string>

TEST(XmlToActivityText, AttributeIsItsNormalizedValue) {
    struct Case {
        std::string value;
        std::string text;
    };
    const Case cases[] = {
        {" one ", " one "},
        {"a\nb\tc\r\nd", "a b c d"},
        {"a&#10;b&#9;c&#13;d", "a\nb\tc\rd"},
        {"&lt;&gt;&amp;&quot;&apos;'", "<>&\"''"},
        {"&#65;&#xE9;\xE9", "A\xE9\xE9"},
        {"&#8364;&#x1F600;", "\?\?\?"},
        {std::string(100000, 'x'), std::string(100000, 'x')},
    };
    for (const Case& one : cases) {
        const std::string shown = "\"" + one.text + "\"";
        EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), "\"new id\"", "\"" + one.value + "\"")),
                  With(NewFields(), {{"id", shown}}));
        EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), "\"new status\"", "\"" + one.value + "\"")),
                  With(NewFields(), {{"status", shown}}));
        EXPECT_EQ(FieldsAfterReading(
                      WithPart(XpdlReply(), "Name=\"OUT\" Value=\"d2\"", "Name=\"OUT\" Value=\"" + one.value + "\"")),
                  With(NewFields(), {{"outputs", "[" + shown + "]"}}));
    }
    EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), "Name=\"OUT\"", "Name=\"&#79;UT\"")), NewFields());
}

TEST(XmlToActivityText, LongTextsOfReferencesAndCharactersOfSeveralBytesComeWhole) {
    struct Encoding {
        const char* name;
        const char* accented;
    };
    for (const Encoding& encoding : {Encoding{"ISO-8859-1", "\xE9"}, Encoding{"UTF-8", "\xC3\xA9"}}) {
        // whatever the size of the pieces in which the parser works, some character or reference lies across their ends
        for (std::size_t offset = 0; offset < 4; ++offset) {
            std::string written(offset, 'y');
            std::string read(offset, 'y');
            while (read.size() < 120000) {
                written += std::string("x") + encoding.accented + "&amp;";
                read += "x\xE9&";
            }
            std::string reply = WithPart(XpdlReply(), "ISO-8859-1", encoding.name);
            reply = WithPart(reply, "new abstract", written);
            reply = WithPart(reply, "\"new status\"", "\"" + written + "\"");
            EXPECT_TRUE(FieldsAfterReading(reply) ==
                        With(NewFields(), {{"abstract", "\"" + read + "\""}, {"status", "\"" + read + "\""}}))
                << encoding.name << offset;
        }
    }
}
