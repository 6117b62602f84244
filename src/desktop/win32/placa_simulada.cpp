#include "desktop/placa_simulada.h"

#include <algorithm>
#include <chrono>
#include <system_error>

#include "bridge/chip.h"
#include "bridge/placa.h"
#include "files/archivos.h"
#include "platform/proceso.h"
#include "platform/rutas.h"

namespace morvane {

namespace {

constexpr unsigned velocidad = 57600;
constexpr std::size_t largo_nota = 16;

puente::instante ahora() {
  return std::chrono::duration_cast<puente::instante>(std::chrono::steady_clock::now().time_since_epoch());
}

std::string nombre_de(int numero) {
  return "COM" + std::to_string(numero);
}

}  // namespace

/// Board and chip, and the file in which the chip's flash outlives them.
class placa_simulada::placa {
 public:
  /// Throws `std::runtime_error` if there is a file that cannot be the flash of a chip.
  placa(const std::filesystem::path& directorio, int numero)
      : ficheros_(directorio), ruta_(texto_de(directorio / ("placa_" + nombre_de(numero) + ".flash"))) {
    std::error_code error;
    if (!std::filesystem::exists(ruta_de(ruta_), error)) return;
    const auto leida = ficheros_.leer(ruta_, puente::chip::tamano);
    if (!leida || leida->size() != puente::chip::tamano) {
      throw std::runtime_error(ruta_ + " no es un fichero de " + std::to_string(puente::chip::tamano) + " bytes");
    }
    std::ranges::copy(*leida, chip_.flash().begin());
  }

  puente::placa& lejos() { return placa_; }

  /// Keeps the flash if it has changed.
  void guardar() {
    if (guardados_ == chip_.cambios()) return;
    const auto flash = chip_.flash();
    const int error = ficheros_.guardar(ruta_, std::string(flash.begin(), flash.end()));
    if (error == 0) guardados_ = chip_.cambios();
    if (error != 0) decir_por_errores("morvane: " + ruta_ + ": " + std::generic_category().message(error));
  }

 private:
  archivos ficheros_;
  const std::string ruta_;
  puente::chip chip_;
  puente::placa placa_{chip_, puente::ritmo{velocidad}};
  std::uint64_t guardados_ = 0;
};

/// What the program sees: the system's lines, and the board in front of one of them.
class placa_simulada::lineas_con_placa final : public transporte {
 public:
  lineas_con_placa(const placa_simulada& de, transporte& lineas) : de_(de), lineas_(lineas) {}

  bool existe(int numero) override { return es_la_placa(numero) || lineas_.existe(numero); }

  bool abrir(int numero, const parametros_linea& linea) override {
    cerrar();
    if (!es_la_placa(numero)) return lineas_.abrir(numero, linea);
    con_placa_ = true;
    de_.placa_->lejos().abierta(ahora());
    (void)de_.placa_->lejos().sale(ahora());
    return true;
  }

  void escribir(std::string_view datos) override {
    if (!con_placa_) return lineas_.escribir(datos);
    if (!perdido()) de_.placa_->lejos().entra(datos, ahora());
  }

  std::size_t leer(std::span<char> destino) override {
    if (!con_placa_) return lineas_.leer(destino);
    if (perdido()) return 0;
    const std::string datos = de_.placa_->lejos().sale(ahora(), destino.size());
    std::ranges::copy(datos, destino.begin());
    return datos.size();
  }

  /// A board that was taken away meanwhile is a device that has vanished.
  bool perdido() const override {
    return con_placa_ ? !de_.placa_ || de_.placa_->lejos().colgada() : lineas_.perdido();
  }

  void cerrar() override {
    if (con_placa_ && de_.placa_) de_.placa_->guardar();
    con_placa_ = false;
    lineas_.cerrar();
  }

  void descartar_salida() override { lineas_.descartar_salida(); }

 private:
  bool es_la_placa(int numero) const { return numero > 0 && numero == de_.puerto_; }

  const placa_simulada& de_;
  transporte& lineas_;
  bool con_placa_ = false;
};

placa_simulada::placa_simulada(std::filesystem::path directorio) : directorio_(std::move(directorio)) {}

placa_simulada::~placa_simulada() {
  parar();
}

transporte& placa_simulada::entre(transporte& lineas) {
  lineas_ = std::make_unique<lineas_con_placa>(*this, lineas);
  return *lineas_;
}

descripcion_puerto placa_simulada::describir(int numero) const {
  if (numero == 0 || numero != puerto_) return describir_puerto(directorio_, numero);
  return {.numero = numero, .dispositivo = "en este programa", .placa_simulada = true, .quien = ""};
}

std::filesystem::path placa_simulada::nota() const {
  return directorio_ / "puertos" / "simulada.txt";
}

std::string placa_simulada::poner(int numero) {
  quitar();
  std::string fallo = arrancar(numero);
  if (!fallo.empty()) return fallo;
  const int error = archivos(directorio_).guardar(texto_de(nota()), nombre_de(numero) + "\n");
  if (error == 0) return {};
  return "La placa simulada está en " + nombre_de(numero) +
         ", pero no se ha podido anotar para la próxima vez: " + std::generic_category().message(error);
}

std::string placa_simulada::arrancar(int numero) {
  parar();
  try {
    placa_ = std::make_unique<placa>(directorio_, numero);
    puerto_ = numero;
    return {};
  } catch (const std::exception& fallo) {
    return "La placa simulada no puede ser " + nombre_de(numero) + ": " + fallo.what();
  }
}

void placa_simulada::quitar() {
  parar();
  std::error_code error;
  std::filesystem::remove(nota(), error);
}

void placa_simulada::parar() {
  if (placa_) placa_->guardar();
  placa_.reset();
  puerto_ = 0;
}

void placa_simulada::reanudar() {
  std::string texto = archivos(directorio_).leer(texto_de(nota()), largo_nota).value_or("");
  if (texto.size() < 4 || !texto.starts_with("COM") || texto[3] < '1' || texto[3] > '9') return;
  (void)arrancar(texto[3] - '0');
}

}  // namespace morvane
