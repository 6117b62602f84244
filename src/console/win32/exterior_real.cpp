#include "console/exterior_real.h"

#include <windows.h>
// Behind it.
#include <shellapi.h>

#include <array>
#include <ctime>

#include "console/carpetas.h"
#include "mundo_real.h"
#include "platform/manejador.h"
#include "platform/rutas.h"
#include "salida_win32.h"
#include "serial/transporte_win32.h"

namespace morvane::console {

namespace {

std::string hora_universal() {
  const std::time_t ahora = std::time(nullptr);
  std::tm partes{};
  ::gmtime_s(&partes, &ahora);
  std::array<char, 32> texto{};
  (void)std::strftime(texto.data(), texto.size(), "%Y-%m-%dT%H:%M:%SZ", &partes);
  return texto.data();
}

/// 1 to 9 of COMn and \\\\.\\COMn, which is all that a path of a port is here; else no number.
int numero_en(const std::filesystem::path& ruta) {
  const std::string nombre = texto_de(ruta.filename());
  const bool es = nombre.size() == 4 && (nombre.starts_with("COM") || nombre.starts_with("com"));
  return es && nombre[3] >= '1' && nombre[3] <= '9' ? nombre[3] - '0' : causa_puerto::sin_numero;
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
    linea_ = std::make_unique<transporte_win32>(adonde.directorio);
    const int numero = adonde.numero != causa_puerto::sin_numero ? adonde.numero : numero_en(adonde.ruta);
    if (numero == causa_puerto::sin_numero) {
      return causa_puerto{.cual = causa_puerto::clase::no_es_serie, .puerto = numero, .ruta = adonde.ruta};
    }
    if (!linea_->abrir(numero, como)) return linea_->causa();
    dispositivo_ = linea_->dispositivo(numero);
    mundo_.linea = linea_.get();
    return std::nullopt;
  }
  transporte& linea() override { return *linea_; }
  std::filesystem::path dispositivo() const override { return dispositivo_; }
  adaptador aparato() const override { return adaptador_de(dispositivo_); }

 private:
  senales senales_;
  salida_win32 normal_{STD_OUTPUT_HANDLE}, errores_{STD_ERROR_HANDLE};
  mundo_real mundo_{senales_};
  std::unique_ptr<transporte_win32> linea_;
  std::filesystem::path dispositivo_;
};

}  // namespace

std::unique_ptr<exterior> exterior_real() {
  return std::make_unique<real>();
}

std::vector<std::string> palabras(int /*argc*/, char** /*argv*/) {
  int cuantas = 0;
  wchar_t** todas = ::CommandLineToArgvW(::GetCommandLineW(), &cuantas);
  std::vector<std::string> dichas;
  for (int i = 1; i < cuantas; ++i) dichas.push_back(estrecho(todas[i]));
  ::LocalFree(todas);
  return dichas;
}

}  // namespace morvane::console
