#ifndef GlobalLocale_H
#define GlobalLocale_H

#include <clocale>
#include <locale>
#include <string>

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

#endif
