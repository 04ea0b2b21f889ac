// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace dorvanel {

/// What went wrong in one of our own additions: enough to tell a person.
struct Error {
    int code = 0;           ///< an errno value; 0 when no system call is to blame
    std::string operation;  ///< "open", "rename", "parse": what was tried
    std::string path;       ///< what it was tried on, in bytes
    std::string detail;     ///< the reason in words where `code` has none

    /// One line for people: "PATH: OPERATION: reason".
    [[nodiscard]] std::string message() const;

    /// The error that the last failed system call left in errno.
    static Error fromErrno(std::string operation, std::string path);
};

/// A value, or the reason why there is none.
template <typename T>
class [[nodiscard]] Result {
  public:
    Result(T value) : state_(std::move(value)) {}
    Result(Error error) : state_(std::move(error)) {}

    [[nodiscard]] bool ok() const { return std::holds_alternative<T>(state_); }
    explicit operator bool() const { return ok(); }

    [[nodiscard]] T& value() { return std::get<T>(state_); }
    [[nodiscard]] const T& value() const { return std::get<T>(state_); }
    [[nodiscard]] const Error& error() const { return std::get<Error>(state_); }

  private:
    std::variant<T, Error> state_;
};

/// Success without a value is `Done{}`.
struct Done {};

}  // namespace dorvanel
