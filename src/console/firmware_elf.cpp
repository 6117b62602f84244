#include "lectores.h"
#include "segmentos_elf.h"

namespace morvane::console {

namespace {

using clase = fallo_firmware::clase;

constexpr std::string_view comienzo =
    "\x7F"
    "ELF";
constexpr std::uint32_t se_carga = 1;
/// The numbers of the family in the format.
constexpr std::uint16_t m68k = 4, coldfire = 52;

fin_de_lectura poner_segmento(lectura_firmware& l, const segmento_elf& s) {
  if (s.tipo != se_carga || s.bytes == 0) return std::nullopt;
  const std::uint64_t hay = l.contenido.size();
  if (s.en_fichero > hay || s.bytes > hay - s.en_fichero) return fallo_firmware{.cual = clase::elf_danado};
  ++l.f.registros;
  if (auto fallo = poner_bytes(l, s.direccion, l.contenido.substr(s.en_fichero, s.bytes), 0)) return fallo;
  if (s.en_fichero == 0) {
    l.f.avisos.push_back({.cual = aviso::clase::cabecera_de_elf, .direccion = static_cast<std::int32_t>(s.direccion)});
  }
  return std::nullopt;
}

}  // namespace

fin_de_lectura leer_elf(lectura_firmware& l) {
  if (!l.contenido.starts_with(comienzo)) return fallo_firmware{.cual = clase::no_es_elf};
  const auto tabla = leer_tabla_elf(l.contenido);
  if (!tabla) return fallo_firmware{.cual = clase::elf_danado};
  if (tabla->procesador != m68k && tabla->procesador != coldfire) {
    l.f.avisos.push_back({.cual = aviso::clase::otro_procesador, .cuantos = tabla->procesador});
  }
  for (const segmento_elf& s : tabla->segmentos) {
    if (auto fallo = poner_segmento(l, s)) return fallo;
  }
  if (l.f.registros == 0) return fallo_firmware{.cual = clase::sin_segmentos};
  return std::nullopt;
}

}  // namespace morvane::console
