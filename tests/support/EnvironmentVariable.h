#ifndef EnvironmentVariable_H
#define EnvironmentVariable_H

#include <cstdlib>
#include <optional>
#include <string>

/** Sets (or, with a null pointer, unsets) an environment variable and restores it afterwards. */
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* iName, const char* iValue) : name(iName) {
        if (const char* value = std::getenv(iName)) {
            former = value;
        }
        Put(iValue);
    }
    ~EnvironmentVariable() { Put(former ? former->c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void Put(const char* iValue) const {
        if (iValue != nullptr) {
            ::setenv(name.c_str(), iValue, 1);
        } else {
            ::unsetenv(name.c_str());
        }
    }

    std::string name;
    std::optional<std::string> former;
};

#endif
