#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <ctime>
#include <locale>
#include <stdexcept>
#include <string_view>

// A host may speak any language and stand anywhere. With QORWFL_TEST_LOCALE, the name of a locale, a test program does
// what the main function of such a host does: it makes that locale the one of C and of all streams to come.

namespace {

class Host : public ::testing::Environment {
public:
    void SetUp() override {
        const char* locale = std::getenv("QORWFL_TEST_LOCALE");
        if (locale != nullptr) {
            try {
                std::locale::global(std::locale(locale));
            } catch (const std::runtime_error&) {
                GTEST_SKIP() << "this machine has no locale " << locale;
            }
            ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), locale) << "of C";
        }
        // The name of an unknown zone is taken for Greenwich's without a word.
        const char* zone = std::getenv("TZ");
        const std::time_t now = std::time(nullptr);
        if (zone != nullptr && zone == std::string_view("Asia/Kathmandu") && std::localtime(&now)->tm_gmtoff == 0) {
            GTEST_SKIP() << "this machine has no time zone " << zone;
        }
    }
};

[[maybe_unused]] const ::testing::Environment* const kHost =
    ::testing::AddGlobalTestEnvironment(new Host);  // which GoogleTest deletes

}  // namespace
