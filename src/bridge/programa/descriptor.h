#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

namespace puente {

/// A file descriptor that is closed with its owner.
class descriptor {
 public:
  descriptor() = default;
  explicit descriptor(int fd) : fd_(fd) {}
  descriptor(descriptor&& otro) noexcept : fd_(std::exchange(otro.fd_, -1)) {}
  descriptor& operator=(descriptor&& otro) noexcept {
    std::swap(fd_, otro.fd_);
    return *this;
  }
  ~descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int operator*() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

/// `que` says in Spanish what could not be done; the host's own reason follows it.
[[noreturn]] inline void fallar(const std::string& que) {
  throw std::system_error(errno, std::generic_category(), que);
}

/// Hands a system call's result on, or throws if it is negative.
inline int logrado(int resultado, const std::string& que) {
  if (resultado < 0) fallar(que);
  return resultado;
}

}  // namespace puente
