// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace dorvanel::test {

/// Sets a variable of the environment as long as it lives.
class EnvironmentVariable {
  public:
    EnvironmentVariable(std::string name, const std::string& value) : name_(std::move(name)) {
        if (const char* former = std::getenv(name_.c_str())) former_ = former;
        setenv(name_.c_str(), value.c_str(), 1);
    }
    ~EnvironmentVariable() {
        if (former_) {
            setenv(name_.c_str(), former_->c_str(), 1);
        } else {
            unsetenv(name_.c_str());
        }
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    std::string name_;
    std::optional<std::string> former_;
};

}  // namespace dorvanel::test
