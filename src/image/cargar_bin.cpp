#include "image/cargar_bin.h"

#include "files/lector_lineas.h"

namespace morvane {

namespace {

/// Characters of a line, its end not counted.
constexpr std::uint64_t maximo_linea = 252;

constexpr std::string_view en_lugar_del_final = "..";

/// Stores the bytes of a binary file one behind the other.
class cargador_bin {
 public:
  explicit cargador_bin(Variables_grab& v) : v_(v) {}

  /// Gives what is wrong with the line; then none of it is stored.
  std::optional<fallo_carga> linea(const lector_lineas::linea& texto) {
    if (texto.largo > maximo_linea) {
      return fallo_carga{.cual = fallo_carga::clase::linea_larga, .hay = texto.largo, .limite = maximo_linea};
    }
    if (indice_bytes_ + static_cast<std::int64_t>(texto.largo + en_lugar_del_final.size()) > total_celdas) {
      return fallo_carga{.cual = fallo_carga::clase::no_cabe};
    }
    for (const char c : texto.texto) poner_byte_bin(c);
    for (const char c : en_lugar_del_final) poner_byte_bin(c);
    return std::nullopt;
  }

 private:
  void poner_byte_bin(char c) { poner_byte(v_, indice_bytes_++, static_cast<std::uint8_t>(c)); }

  Variables_grab& v_;
  std::int32_t indice_bytes_ = 0;
};

std::optional<fallo_carga> leer_lineas(plataforma& plat, Variables_grab& v) {
  lector_lineas lector;
  if (!lector.abrir(v.ruta_archivo, lector_lineas::finales::cr)) return fallo_de_archivo(lector.causa());
  cargador_bin cargador(v);
  lector_lineas::linea linea;
  plat.DoEvents();
  for (std::uint64_t numero = 1; lector.siguiente(linea); ++numero) {
    if (const auto fallo = cargador.linea(linea)) return fallo_en_linea(numero, *fallo);
    plat.DoEvents();
  }
  if (lector.fallo()) return fallo_de_archivo(lector.causa());
  return std::nullopt;
}

}  // namespace

std::optional<fallo_carga> cargar_bin(plataforma& plat, Variables_grab& v) {
  v.dir_max = 0;
  v.carga = {};
  auto fallo = leer_lineas(plat, v);
  if (fallo) {
    desechar_carga(v);
  } else {
    v.carga.como = informe_carga::estado::entero;
    v.carga.bytes = static_cast<std::uint64_t>(v.dir_max) + 1;
    v.carga.anotar_tramo({0, v.dir_max + 1});
  }
  return fallo;
}

}  // namespace morvane
