#include "CapturedTrace.h"
#include "EnvironmentVariable.h"
#include "GlobalLocale.h"
#include "NaiveUrl.h"
#include "PropertyEntries.h"
#include "TemporaryDirectory.h"
#include "TestAction.h"
#include "TestManager.h"
#include "UrlTesting.h"

#include <QorWflActionManagerBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <locale>
#include <string>
#include <vector>

// What the library does must not change with the locale of the process: letters beyond ASCII stay escaped, other spaces
// are none, numbers are written without groups.

namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

/** Locales with other letters, spaces, cases and numbers, as far as the machine has them. */
std::vector<std::locale> OtherLocales() {
    std::vector<std::locale> locales =
        InstalledLocales({"C.UTF-8", "de_DE", "de_DE.UTF-8", "fr_FR", "tr_TR", "tr_TR.UTF-8", "ru_RU.koi8r"});
    locales.push_back(GroupingLocale(1));
    return locales;
}

std::string AllBytes() {
    std::string bytes;
    for (int code = 0; code < 256; ++code) {
        bytes += static_cast<char>(code);
    }
    return bytes;
}

TEST(Locale, EncodingAndDecodingDoNotDependOnIt) {
    const std::string bytes = AllBytes();
    const std::string encoded = NaiveUrl::Encode(bytes);
    for (const std::locale& other : OtherLocales()) {
        const GlobalLocale locale(other);
        EXPECT_EQ(UrlTesting::ActionUrl(bytes), "LumenUID://Legacy+QOR1/default/" + encoded + ".ACTION")
            << other.name();
        EXPECT_EQ(UrlTesting::UrlToActionId("qor://ACTION/" + encoded), bytes) << other.name();
        EXPECT_EQ(UrlTesting::UrlToActionId("qor://ACTION/a%\xA0"
                                            "4b%\xC4\xB1"
                                            "c"),
                  "abc")
            << "no space and no digit " << other.name();
    }
}

TEST(Locale, BlocksDoNotDependOnIt) {
    const std::string block = UrlTesting::Block("I\xDC\xE9i", "\xE4", "\xFF t", "00AB", "abIi");
    const std::string url = NaiveUrl::InstanceUrl(block);
    const std::string texts = "qor://I%DC%E9i/%E4.%FF+t/";
    for (const std::locale& other : OtherLocales()) {
        const GlobalLocale locale(other);
        EXPECT_EQ(UrlTesting::InstanceUrl(block), url) << other.name();
        EXPECT_EQ(UrlTesting::UrlToUuid(texts + "00AB000000000000abIi000000000000"), block) << other.name();
        EXPECT_EQ(UrlTesting::UrlToUuid(texts + "00AB0000000000\xA0"
                                                "0ab\xC4\xB1"
                                                "000000000000")
                      .value_or("")
                      .substr(34),
                  std::string("\x00\xAB\x00\x00\x00\x00\x00\x00\xAB\x00\x00\x00\x00\x00\x00\x00", 16))
            << other.name();
    }
}

TEST(Locale, TracedNumbersHaveNoGroups) {
    const std::string name(1234567, 'D');
    for (const std::locale& other : OtherLocales()) {
        const GlobalLocale locale(other);
        const CapturedTrace urls("WFInteropUrl");
        EXPECT_TRUE(UrlTesting::UrlToUuid("qor://" + name + "/E.T/" + std::string(32, '0')).has_value());
        const std::vector<std::string> messages = urls.Messages();
        EXPECT_EQ(std::count(messages.begin(), messages.end(), "nPos=1234572"), 1) << other.name();
    }
    for (const std::locale& other : OtherLocales()) {
        const GlobalLocale locale(other);
        const CapturedTrace dates("WFInterop");
        QorWflActionManagerBase::GetNextDate(BexTime(2003, 1, 31), 1234567, "s");
        EXPECT_THAT(dates.Messages(), ElementsAre("Start date=[2003-01-31-00.00.00]", "Duration=1234567 s",
                                                  "End date=[2003-02-14-06.56.07]"))
            << other.name();
    }
}

TEST(Locale, NamesOfNamelessObjectsHaveNoGroups) {
    TestAction action;
    for (int i = 0; i < 1234; ++i) {
        action.objects.push_back({"Part", "I", "n", BexUnicodeString(), Octets(UuidBlock("DB", "E", "PART_LIST"))});
    }
    for (const std::locale& other : OtherLocales()) {
        const GlobalLocale locale(other);
        TestManager manager;
        ActivityInfo info;
        ASSERT_EQ(manager.GetActionInfo(&action, info), 0);
        ASSERT_EQ(info.inputNumber, 1234);
        EXPECT_EQ(NarrowText(info.inputs[1233]), "*AUTO_ID#1234") << other.name();
    }
}

TEST(Locale, PropertyFilesDoNotDependOnIt) {
    const TemporaryDirectory directory;
    directory.Write("conf", "I\xDC = \xA0\xE9 \n\xA0/x=1\n\tk=\v1,234.5\n");
    const EnvironmentVariable path("BexMsgCatalogPath", directory.Path().c_str());
    for (const std::locale& other : OtherLocales()) {
        const GlobalLocale locale(other);
        QorWflPropertyFile properties;
        EXPECT_EQ(properties.Read("conf"), 0);
        EXPECT_THAT(EntriesOf(properties),
                    ElementsAre(Pair("I\xDC", "\xA0\xE9"), Pair("\xA0/x", "1"), Pair("\tk", "\v1,234.5")))
            << other.name();
    }
}

}  // namespace
