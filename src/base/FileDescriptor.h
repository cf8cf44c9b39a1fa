#pragma once

#include <unistd.h>

#include <utility>

namespace tarnwick {

/// Owns a descriptor of the system; -1 for none.
class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
      reset();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }
  ~FileDescriptor() { reset(); }

  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  void reset() {
    if (number_ >= 0) ::close(std::exchange(number_, -1));
  }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

}  // namespace tarnwick
