#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace medidas {

/// The least that a program can do on a serial line: write a frame, look for characters without waiting until the reply
/// is whole, write the next one.
class desnudo {
 public:
  /// Opens the terminal `ruta`, raw. Throws std::system_error.
  explicit desnudo(const std::string& ruta);
  ~desnudo();
  desnudo(const desnudo&) = delete;
  desnudo& operator=(const desnudo&) = delete;

  /// Sends the frames one after the other, each when the reply to the one before has come; gives the last reply.
  std::string_view enviar(const std::vector<std::string>& tramas);

 private:
  int fd_;
  std::string respuesta_;
};

}  // namespace medidas
