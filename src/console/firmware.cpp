#include "console/firmware.h"

#include <algorithm>
#include <array>

#include "console/huella.h"
#include "files/fichero_entero.h"
#include "files/texto.h"
#include "lectores.h"
#include "platform/rutas.h"

namespace morvane::console {

namespace {

using clase = fallo_firmware::clase;

struct extension_conocida {
  std::string_view extension;
  formato de;
};

constexpr std::array extensiones{
    extension_conocida{".S19", formato::s19}, extension_conocida{".S28", formato::s19},
    extension_conocida{".S37", formato::s19}, extension_conocida{".SREC", formato::s19},
    extension_conocida{".MOT", formato::s19}, extension_conocida{".HEX", formato::hex},
    extension_conocida{".ELF", formato::elf}, extension_conocida{".AXF", formato::elf},
    extension_conocida{".OUT", formato::elf}, extension_conocida{".BIN", formato::bin},
};

std::span<const std::uint8_t> bytes_de(std::string_view texto) {
  return {reinterpret_cast<const std::uint8_t*>(texto.data()), texto.size()};
}

fin_de_lectura leer_formato(lectura_firmware& l, std::int32_t en) {
  switch (l.f.de) {
    case formato::s19:
      return leer_s19(l);
    case formato::hex:
      return leer_hex(l);
    case formato::elf:
      return leer_elf(l);
    case formato::bin:
      return leer_bin(l, en);
  }
  return std::nullopt;
}

std::uint64_t lineas_ajenas(const firmware& f) {
  const auto cual = std::ranges::find(f.avisos, aviso::clase::lineas_ajenas, &aviso::cual);
  return cual == f.avisos.end() ? 0 : cual->cuantos;
}

bool tiene_datos(const firmware& f) {
  return std::ranges::any_of(f.v.mascara_salida, [](std::uint8_t marca) { return marca != 0; });
}

}  // namespace

std::optional<formato> formato_de(const std::filesystem::path& ruta) {
  const std::string extension = mayusculas(texto_de(ruta.extension()));
  const auto* const cual = std::ranges::find(extensiones, extension, &extension_conocida::extension);
  return cual == extensiones.end() ? std::nullopt : std::optional(cual->de);
}

fin_de_lectura leer_bin(lectura_firmware& l, std::int32_t desde) {
  return poner_bytes(l, static_cast<std::uint64_t>(desde), l.contenido, 0);
}

std::variant<firmware, fallo_firmware> leer_firmware(const std::filesystem::path& ruta,
                                                     std::optional<std::int32_t> en) {
  const auto de = formato_de(ruta);
  if (!de) return fallo_firmware{.cual = clase::formato_desconocido};
  const auto leido = leer_entero(ruta, firmware_maximo);
  if (const auto* causa = std::get_if<causa_archivo>(&leido)) {
    return fallo_firmware{.cual = clase::archivo, .archivo = *causa};
  }
  const auto& contenido = std::get<std::string>(leido);
  firmware f;
  f.ruta = ruta;
  f.de = *de;
  f.sha256_archivo = sha256(bytes_de(contenido));
  limpiar_buffer_salida(f.v);
  lectura_firmware l{f, contenido};
  if (auto fallo = leer_formato(l, en.value_or(0))) return *fallo;
  if (!tiene_datos(f)) return fallo_firmware{.cual = clase::sin_datos, .hay = lineas_ajenas(f)};
  if (const auto dos_veces = l.dicho.solapado()) f.avisos.push_back(*dos_veces);
  return f;
}

}  // namespace morvane::console
