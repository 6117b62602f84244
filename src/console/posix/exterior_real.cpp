#include "console/exterior_real.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <ctime>

#include "console/carpetas.h"
#include "console/clave.h"
#include "mundo_real.h"
#include "platform/proceso.h"
#include "salida_fd.h"
#include "serial/transporte_tty.h"

namespace morvane::console {

namespace {

/// What is opened later may not take the place of an output that was closed: it would be written to.
void ocupar_los_tres_primeros() {
  for (int fd = ::open("/dev/null", O_RDONLY); fd >= 0; fd = ::open("/dev/null", O_RDONLY)) {
    if (fd <= STDERR_FILENO) continue;
    ::close(fd);
    return;
  }
}

std::string hora_universal() {
  const std::time_t ahora = std::time(nullptr);
  std::tm partes{};
  ::gmtime_r(&ahora, &partes);
  std::array<char, 32> texto{};
  (void)std::strftime(texto.data(), texto.size(), "%Y-%m-%dT%H:%M:%SZ", &partes);
  return texto.data();
}

class real final : public exterior {
 public:
  salida& normal() override { return normal_; }
  salida& errores() override { return errores_; }
  job::entorno& mundo() override { return mundo_; }
  int senal() const override { return senales_.primera(); }
  std::string hora() const override { return hora_universal(); }
  std::filesystem::path carpeta_de_claves() const override { return console::carpeta_de_claves(); }
  std::filesystem::path carpeta() const override { return carpeta_del_usuario(); }

  std::optional<causa_puerto> abrir(const destino_puerto& adonde, const parametros_linea& como) override {
    linea_ = std::make_unique<transporte_tty>(adonde.directorio);
    const bool numerado = adonde.numero != causa_puerto::sin_numero;
    const bool abierta = numerado ? linea_->abrir(adonde.numero, como) : linea_->abrir_ruta(adonde.ruta, como);
    if (!abierta) return linea_->causa();
    std::error_code error;
    dispositivo_ = numerado ? linea_->dispositivo(adonde.numero) : std::filesystem::canonical(adonde.ruta, error);
    mundo_.linea = linea_->descriptor_abierto();
    return std::nullopt;
  }
  transporte& linea() override { return *linea_; }
  std::filesystem::path dispositivo() const override { return dispositivo_; }
  adaptador aparato() const override { return adaptador_de(dispositivo_); }

 private:
  senales senales_;
  salida_fd normal_{STDOUT_FILENO, senales_}, errores_{STDERR_FILENO, senales_};
  mundo_real mundo_{senales_};
  std::unique_ptr<transporte_tty> linea_;
  std::filesystem::path dispositivo_;
};

}  // namespace

std::unique_ptr<exterior> exterior_real() {
  ocupar_los_tres_primeros();
  return std::make_unique<real>();
}

std::vector<std::string> palabras(int argc, char** argv) {
  return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

}  // namespace morvane::console
