#pragma once

#include <optional>
#include <string>
#include <utility>

namespace quorva {

/// How an operation of the core ended: done, or failed with the message the person was
/// given (already shown and logged by the operation, in the user's language). "Absent" is
/// not a failure: operations that can find nothing return std::optional inside a Result.
class [[nodiscard]] Status {
 public:
  /// Done.
  Status() = default;
  static Status failure(std::string message) { return Status(std::move(message)); }

  bool ok() const { return !failed_; }
  explicit operator bool() const { return ok(); }
  /// Why it failed; empty when it did not.
  const std::string& message() const { return message_; }

  /// Keeps the first failure of a sequence of steps that all run.
  Status& operator&=(const Status& next) {
    if (ok() && !next.ok()) *this = next;
    return *this;
  }

 private:
  explicit Status(std::string message) : failed_(true), message_(std::move(message)) {}

  bool failed_ = false;
  std::string message_;
};

/// A value, or the failure that prevented it.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}            // NOLINT: a value converts implicitly
  Result(Status failure) : status_(std::move(failure)) {}  // NOLINT: so does a failure

  bool ok() const { return value_.has_value(); }
  explicit operator bool() const { return ok(); }
  const T& value() const& { return *value_; }
  T& value() & { return *value_; }
  T&& value() && { return std::move(*value_); }
  const T& operator*() const& { return *value_; }
  T& operator*() & { return *value_; }
  const T* operator->() const { return &*value_; }
  T* operator->() { return &*value_; }
  /// The failure; a done Status when there is a value.
  const Status& status() const { return status_; }
  const std::string& message() const { return status_.message(); }

 private:
  std::optional<T> value_;
  Status status_;
};

}  // namespace quorva
