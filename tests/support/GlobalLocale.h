#ifndef GlobalLocale_H
#define GlobalLocale_H

#include <clocale>
#include <initializer_list>
#include <locale>
#include <stdexcept>
#include <string>
#include <vector>

/** Makes a locale that of the process, for C and for C++ streams, and restores the former ones. */
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& iLocale)
        : formerOfC(std::setlocale(LC_ALL, nullptr)), former(std::locale::global(iLocale)) {}
    ~GlobalLocale() {
        std::locale::global(former);
        std::setlocale(LC_ALL, formerOfC.c_str());
    }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::string formerOfC;
    std::locale former;
};

/** The classic locale but for its numbers, which stand in groups of so many digits with a full stop between them. */
inline std::locale GroupingLocale(int iDigits) {
    class Punctuation : public std::numpunct<char> {
    public:
        explicit Punctuation(int iGroup) : grouping(1, static_cast<char>(iGroup)) {}

    protected:
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return grouping; }

    private:
        std::string grouping;
    };
    return std::locale(std::locale::classic(), new Punctuation(iDigits));
}

/** The named locales that the machine has. */
inline std::vector<std::locale> InstalledLocales(std::initializer_list<const char*> iNames) {
    std::vector<std::locale> locales;
    for (const char* name : iNames) {
        try {
            locales.emplace_back(name);
        } catch (const std::runtime_error&) {
            continue;  // the machine does not have it
        }
    }
    return locales;
}

#endif
