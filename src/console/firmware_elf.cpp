#include <gelf.h>

#include <memory>

#include "lectores.h"

namespace morvane::console {

namespace {

using clase = fallo_firmware::clase;

constexpr std::string_view comienzo =
    "\x7F"
    "ELF";

struct cerrar_elf {
  void operator()(Elf* e) const { elf_end(e); }
};
using elf_abierto = std::unique_ptr<Elf, cerrar_elf>;

fin_de_lectura poner_segmento(lectura_firmware& l, const GElf_Phdr& s) {
  if (s.p_type != PT_LOAD || s.p_filesz == 0) return std::nullopt;
  const std::uint64_t hay = l.contenido.size();
  if (s.p_offset > hay || s.p_filesz > hay - s.p_offset) return fallo_firmware{.cual = clase::elf_danado};
  ++l.f.registros;
  if (auto fallo = poner_bytes(l, s.p_paddr, l.contenido.substr(s.p_offset, s.p_filesz), 0)) return fallo;
  if (s.p_offset == 0) {
    l.f.avisos.push_back({.cual = aviso::clase::cabecera_de_elf, .direccion = static_cast<std::int32_t>(s.p_paddr)});
  }
  return std::nullopt;
}

fin_de_lectura poner_segmentos(lectura_firmware& l, Elf& e) {
  std::size_t cuantos = 0;
  if (elf_getphdrnum(&e, &cuantos) != 0) return fallo_firmware{.cual = clase::elf_danado};
  for (std::size_t i = 0; i < cuantos; ++i) {
    GElf_Phdr s;
    if (gelf_getphdr(&e, static_cast<int>(i), &s) == nullptr) return fallo_firmware{.cual = clase::elf_danado};
    if (auto fallo = poner_segmento(l, s)) return fallo;
  }
  if (l.f.registros == 0) return fallo_firmware{.cual = clase::sin_segmentos};
  return std::nullopt;
}

}  // namespace

fin_de_lectura leer_elf(lectura_firmware& l) {
  if (!l.contenido.starts_with(comienzo)) return fallo_firmware{.cual = clase::no_es_elf};
  elf_version(EV_CURRENT);
  // The library asks for memory that it could write to, which it does not while it only reads.
  std::string copia(l.contenido);
  const elf_abierto e(elf_memory(copia.data(), copia.size()));
  GElf_Ehdr cabecera;
  if (!e || elf_kind(e.get()) != ELF_K_ELF || gelf_getehdr(e.get(), &cabecera) == nullptr) {
    return fallo_firmware{.cual = clase::elf_danado};
  }
  if (cabecera.e_machine != EM_68K && cabecera.e_machine != EM_COLDFIRE) {
    l.f.avisos.push_back({.cual = aviso::clase::otro_procesador, .cuantos = cabecera.e_machine});
  }
  return poner_segmentos(l, *e);
}

}  // namespace morvane::console
