#include "desnudo.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace medidas {

namespace {

constexpr char ETX = '\x03';

[[noreturn]] void fallar(const char* que) {
  throw std::system_error(errno, std::generic_category(), que);
}

}  // namespace

desnudo::desnudo(const std::string& ruta) : fd_(open(ruta.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  termios t{};
  if (fd_ < 0 || tcgetattr(fd_, &t) != 0) fallar(ruta.c_str());
  cfmakeraw(&t);
  if (tcsetattr(fd_, TCSANOW, &t) != 0) fallar(ruta.c_str());
}

desnudo::~desnudo() {
  close(fd_);
}

std::string_view desnudo::enviar(const std::vector<std::string>& tramas) {
  std::array<char, 1024> trozo;
  for (const std::string& trama : tramas) {
    if (write(fd_, trama.data(), trama.size()) != static_cast<ssize_t>(trama.size())) fallar("write");
    respuesta_.clear();
    while (respuesta_.empty() || respuesta_.back() != ETX) {
      const ssize_t n = read(fd_, trozo.data(), trozo.size());
      if (n > 0) respuesta_.append(trozo.data(), static_cast<std::size_t>(n));
      if (n == 0 || (n < 0 && errno != EAGAIN)) fallar("read");
    }
  }
  return respuesta_;
}

}  // namespace medidas
