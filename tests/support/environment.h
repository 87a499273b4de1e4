#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace ostrova::testing {

/// Sets an environment variable (or unsets it, given nothing) and puts back what it was.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value)
        : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str())) old_ = old;
        Set(value);
    }
    ~EnvironmentVariable() { Set(old_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void Set(const std::optional<std::string>& value) {
        if (value)
            ::setenv(name_.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name_.c_str());
        if (name_ == "TZ") ::tzset();
    }

    std::string name_;
    std::optional<std::string> old_;
};

/// Local time is that of `zone` while this lives.
class TimeZone {
public:
    explicit TimeZone(const std::string& zone) : variable_("TZ", zone) {}

private:
    EnvironmentVariable variable_;
};

}  // namespace ostrova::testing
