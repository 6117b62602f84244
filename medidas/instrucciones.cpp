// Work for callgrind: what is executed inside of the functions `medida_…` counts, but for what is executed inside of
// `aparte_…`, the far end's share. Each call of a `medida_…` ends a part of callgrind's output; for each the program
// prints a line with its name and by how many units its cost is to be divided.

#include <cstdio>
#include <string>
#include <vector>

#include "apoyo/carpeta.h"
#include "bridge/placa.h"
#include "files/texto.h"
#include "flash/grabar.h"
#include "flash/habilitar.h"
#include "flash/leer.h"
#include "image/cargar_s19.h"
#include "image/filas.h"
#include "link/envio.h"
#include "link/esperas.h"
#include "link/puerto.h"
#include "plataforma_muda.h"

using namespace morvane;

namespace {

/// Where the board answers at once, and the program finds the reply after `vacias` looks in vain.
class linea_directa final : public transporte {
 public:
  explicit linea_directa(puente::placa& placa) : placa_(placa) {}
  bool existe(int /*numero*/) override { return true; }
  bool abrir(int /*numero*/, const parametros_linea& /*linea*/) override { return true; }
  void escribir(std::string_view datos) override;
  std::size_t leer(std::span<char> destino) override;
  bool perdido() const override { return false; }
  void cerrar() override {}
  void descartar_salida() override {}

  void recibir(std::string_view datos) {
    placa_.entra(datos, puente::instante{0});
    quedan_ = vacias;
  }
  std::size_t entregar(std::span<char> destino) {
    if (quedan_-- > 0) return 0;
    const std::string datos = placa_.sale(puente::instante{0}, destino.size());
    return datos.copy(destino.data(), destino.size());
  }

  int vacias = 0;
  /// Inside of a `medida_…`. Elsewhere an `aparte_…` would begin a collection instead of interrupting one.
  bool midiendo = false;

 private:
  puente::placa& placa_;
  int quedan_ = 0;
};

}  // namespace

extern "C" {

[[gnu::noinline]] void aparte_recibir(linea_directa& linea, std::string_view datos) {
  linea.recibir(datos);
}

[[gnu::noinline]] std::size_t aparte_entregar(linea_directa& linea, std::span<char> destino) {
  return linea.entregar(destino);
}

}  // extern "C"

void linea_directa::escribir(std::string_view datos) {
  midiendo ? aparte_recibir(*this, datos) : recibir(datos);
}

std::size_t linea_directa::leer(std::span<char> destino) {
  return midiendo ? aparte_entregar(*this, destino) : entregar(destino);
}

namespace {

std::uint8_t muestra(std::size_t dir) {
  return static_cast<std::uint8_t>(dir * 37 + (dir >> 8));
}

/// The program without a window, with the chip opened and enabled for writing.
struct puesto {
  puesto() {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    e.valores = {{"57600", "n", "8", "1", "COM1"}, ficheros.ruta_aplicacion()};
    listo = abrir_puerto(e) && paso(e, "A") && habilitar_flash_reset(e);
  }
  /// An image of `bytes` bytes.
  void llenar(std::size_t bytes) {
    for (std::size_t i = 0; i < bytes; ++i) poner_byte(v, static_cast<std::int32_t>(i), muestra(i));
    v.dir_max = static_cast<std::int32_t>(bytes) - 1;
  }

  apoyo::carpeta dir;
  archivos ficheros{dir.ruta()};
  medidas::plataforma_muda plat;
  puente::chip chip;
  puente::placa placa{chip, puente::ritmo{0}};
  linea_directa linea{placa};
  MSComm serial{plat, linea};
  enlace e{plat, ficheros, serial};
  contador_cambios cambios;
  avance a{cambios};
  Variables_grab v;
  bool listo = false;
};

template <class Medida>
auto medir(puesto& p, Medida medida) {
  struct marca {
    explicit marca(bool& cual) : cual_(cual) { cual_ = true; }
    ~marca() { cual_ = false; }
    marca(const marca&) = delete;
    marca& operator=(const marca&) = delete;
    bool& cual_;
  };
  const marca una(p.linea.midiendo);
  return medida();
}

// So that the call inside of a `medida_…` is no jump, which would end it too early.
void volver() {
  asm volatile("" ::: "memory");
}

void anotar(const char* nombre, std::size_t unidades) {
  std::printf("%s %zu\n", nombre, unidades);
}

[[noreturn]] void fallar(const char* que) {
  std::fprintf(stderr, "instrucciones: %s\n", que);
  std::exit(1);
}

}  // namespace

extern "C" {

[[gnu::noinline]] void medida_grabar(puesto& p) {
  grabar_flash(p.e, p.v, p.a);
  volver();
}

[[gnu::noinline]] void medida_leer(puesto& p, std::int32_t hasta) {
  leer_flash(p.e, p.v, p.a, 0, hasta);
  volver();
}

[[gnu::noinline]] void medida_cargar(puesto& p) {
  cargar_s19(p.plat, p.v, p.a);
  volver();
}

[[gnu::noinline]] std::size_t medida_volcado(const puesto& p, std::int64_t cuantos) {
  std::size_t letras = 0;
  const auto lista = filas_de_volcado(p.v.buffer_salida, cuantos);
  for (std::size_t i = 0; i < lista->cuantas(); ++i) letras += lista->texto(i).size();
  volver();
  return letras;
}

[[gnu::noinline]] std::size_t medida_comparacion(const puesto& p, std::int32_t tope) {
  std::size_t letras = 0;
  const auto lista = filas_de_comparacion(p.v, tope);
  for (std::size_t i = 0; i < lista->cuantas(); ++i) letras += lista->texto(i).size();
  volver();
  return letras;
}

}  // extern "C"

namespace {

/// Programs `bytes` and reads them back.
void ida_y_vuelta(std::size_t bytes, int vacias) {
  puesto p;
  if (!p.listo) fallar("the chip could not be opened");
  p.llenar(bytes);
  p.linea.vacias = vacias;
  medir(p, [&] { medida_grabar(p); });
  anotar(vacias == 0 ? "palabra" : "palabra_con_vacias", bytes / 4);
  if (!std::equal(p.chip.flash().begin(), p.chip.flash().begin() + static_cast<std::ptrdiff_t>(bytes),
                  p.v.buffer_salida.begin())) {
    fallar("the flash does not hold the image");
  }
  if (vacias != 0) return;
  medir(p, [&] { medida_leer(p, static_cast<std::int32_t>(bytes - 1)); });
  anotar("bloque", bytes / 32 + 1);
  if (!std::equal(p.v.buffer_entrada.begin(), p.v.buffer_entrada.begin() + static_cast<std::ptrdiff_t>(bytes),
                  p.v.buffer_salida.begin())) {
    fallar("what was read is not the image");
  }
}

std::string registros(std::size_t bytes) {
  std::string texto;
  for (std::size_t dir = 0; dir < bytes; dir += 32) {
    texto += "S224";
    anadir_hex(texto, static_cast<std::uint32_t>(dir), 6);
    for (std::size_t i = dir; i < dir + 32; ++i) anadir_hex(texto, muestra(i), 2);
    texto += "00\r\n";
  }
  return texto;
}

/// Loads `bytes`, and makes every row of a dump and of a comparison of them.
void carga_y_filas(std::size_t bytes) {
  puesto p;
  // Once before, so that the first measure does not bear the linking of what it calls.
  p.v.ruta_archivo = p.dir.escribir("imagen.s19", registros(64));
  cargar_s19(p.plat, p.v, p.a);
  p.v.ruta_archivo = p.dir.escribir("imagen.s19", registros(bytes));
  medir(p, [&] { medida_cargar(p); });
  anotar("byte_cargado", bytes);
  if (p.v.dir_max != static_cast<std::int32_t>(bytes) - 1) fallar("the image was not loaded");
  if (medida_volcado(p, static_cast<std::int64_t>(bytes)) != bytes / 16 * 73) fallar("the rows are not whole");
  anotar("fila_de_volcado", bytes / 16);
  for (std::size_t i = 0; i < bytes; ++i) p.v.buffer_entrada[i] = static_cast<std::uint8_t>(~p.v.buffer_salida[i]);
  if (medida_comparacion(p, p.v.dir_max) == 0) fallar("no differences were found");
  anotar("fila_de_comparacion", bytes);
}

}  // namespace

int main(int cuantos, char** argumentos) {
  const std::string que = cuantos > 1 ? argumentos[1] : "";
  if (que == "unidad") {
    for (const std::size_t bytes : {1024, 4096}) ida_y_vuelta(bytes, 0);
    for (const int vacias : {2, 10}) ida_y_vuelta(1024, vacias);
  } else if (que == "crecimiento") {
    for (const std::size_t kib : {16, 64, 256}) ida_y_vuelta(kib * 1024, 0);
    for (const std::size_t kib : {16, 64, 256}) carga_y_filas(kib * 1024);
  } else {
    fallar("instrucciones unidad|crecimiento");
  }
}
