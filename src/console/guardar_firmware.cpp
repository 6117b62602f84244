#include "console/guardar_firmware.h"

#include <algorithm>
#include <numeric>

#include "files/texto.h"

namespace morvane::console {

namespace {

constexpr std::int32_t bytes_por_registro = 32;
constexpr std::uint32_t ultima_de_s1 = 0xFFFF, registros_de_s5 = 0xFFFF;
constexpr std::int32_t pagina_hex = 0x10000;
constexpr tramo ultima_palabra{chip.flash - bytes_por_palabra, chip.flash};

std::uint8_t suma_de(std::span<const std::uint8_t> octetos) {
  return static_cast<std::uint8_t>(std::accumulate(octetos.begin(), octetos.end(), 0));
}

void anadir_octetos(std::string& texto, std::span<const std::uint8_t> octetos) {
  for (const std::uint8_t o : octetos) anadir_hex(texto, o, 2);
}

/// The bytes of `valor`, the highest first.
void anadir_valor(std::vector<std::uint8_t>& octetos, std::uint32_t valor, std::size_t cuantos) {
  for (std::size_t i = cuantos; i > 0; --i) octetos.push_back(static_cast<std::uint8_t>(valor >> (8 * (i - 1))));
}

void anadir_s(std::string& texto, char tipo, std::uint32_t dir, std::size_t ancho,
              std::span<const std::uint8_t> datos) {
  std::vector<std::uint8_t> octetos{static_cast<std::uint8_t>(ancho + datos.size() + 1)};
  anadir_valor(octetos, dir, ancho);
  octetos.insert(octetos.end(), datos.begin(), datos.end());
  octetos.push_back(static_cast<std::uint8_t>(~suma_de(octetos)));
  texto.append("S").push_back(tipo);
  anadir_octetos(texto, octetos);
  texto += "\r\n";
}

void anadir_ihex(std::string& texto, std::uint8_t tipo, std::uint32_t dir, std::span<const std::uint8_t> datos) {
  std::vector<std::uint8_t> octetos{static_cast<std::uint8_t>(datos.size())};
  anadir_valor(octetos, dir & ultima_de_s1, 2);
  octetos.push_back(tipo);
  octetos.insert(octetos.end(), datos.begin(), datos.end());
  octetos.push_back(static_cast<std::uint8_t>(-suma_de(octetos)));
  texto += ':';
  anadir_octetos(texto, octetos);
  texto += "\r\n";
}

/// Behind the last of the pieces, of which there is one.
std::int32_t fin_de(std::span<const pieza> piezas) {
  return static_cast<std::int32_t>(piezas.back().desde + piezas.back().bytes.size());
}

/// Each piece in parts that lie within one stretch of 32 bytes.
template <typename Hacer>
void por_registros(std::span<const pieza> piezas, Hacer hacer) {
  for (const pieza& p : piezas) {
    const auto fin = static_cast<std::int32_t>(p.desde + p.bytes.size());
    for (std::int32_t dir = p.desde; dir < fin;) {
      const std::int32_t hasta = std::min(fin, (dir / bytes_por_registro + 1) * bytes_por_registro);
      hacer(dir, p.bytes.subspan(static_cast<std::size_t>(dir - p.desde), static_cast<std::size_t>(hasta - dir)));
      dir = hasta;
    }
  }
}

/// What the pieces have in `donde`, FF for what none has.
std::vector<std::uint8_t> bytes_en(std::span<const pieza> piezas, tramo donde) {
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(donde.largo()), 0xFF);
  for (const pieza& p : piezas) {
    const std::int32_t desde = std::max(p.desde, donde.desde);
    const std::int32_t hasta = std::min(static_cast<std::int32_t>(p.desde + p.bytes.size()), donde.hasta);
    if (desde < hasta)
      std::copy_n(p.bytes.begin() + (desde - p.desde), hasta - desde, bytes.begin() + (desde - donde.desde));
  }
  return bytes;
}

constexpr std::int32_t en_palabras(std::int32_t bytes) {
  return (bytes + bytes_por_palabra - 1) / bytes_por_palabra * bytes_por_palabra;
}

/// Records whose data, filled up to whole words, do not go beyond the flash.
template <typename Hacer>
void por_registros_rellenables(std::span<const pieza> piezas, Hacer hacer) {
  por_registros(piezas, [&](std::int32_t dir, std::span<const std::uint8_t> datos) {
    if (dir + en_palabras(static_cast<std::int32_t>(datos.size())) <= chip.flash) return hacer(dir, datos);
    if (dir < ultima_palabra.desde) hacer(dir, datos.first(static_cast<std::size_t>(ultima_palabra.desde - dir)));
    const auto palabra = bytes_en(piezas, ultima_palabra);
    hacer(ultima_palabra.desde, palabra);
  });
}

/// What a program run of these pieces writes when they are loaded from S-records: whole words, up to what the last
/// record is filled up to.
tramo escrito_de_s19(std::span<const pieza> piezas) {
  const std::int32_t fin = fin_de(piezas), en_su_registro = (fin - 1) / bytes_por_registro * bytes_por_registro;
  const std::int32_t ultimo = std::max(piezas.back().desde, en_su_registro);
  const std::int32_t lleno = std::min(en_palabras(ultimo + en_palabras(fin - ultimo)), chip.flash);
  return {piezas.front().desde / bytes_por_palabra * bytes_por_palabra, lleno};
}

std::string en_s19(std::span<const pieza> piezas) {
  const bool corta = piezas.empty() || fin_de(piezas) - 1 <= static_cast<std::int32_t>(ultima_de_s1);
  std::string texto;
  std::uint32_t registros = 0;
  anadir_s(texto, '0', 0, 2, {});
  por_registros_rellenables(piezas, [&](std::int32_t dir, std::span<const std::uint8_t> datos) {
    anadir_s(texto, corta ? '1' : '2', static_cast<std::uint32_t>(dir), corta ? 2 : 3, datos);
    ++registros;
  });
  const bool cuenta_corta = registros <= registros_de_s5;
  anadir_s(texto, cuenta_corta ? '5' : '6', registros, cuenta_corta ? 2 : 3, {});
  anadir_s(texto, corta ? '9' : '8', 0, corta ? 2 : 3, {});
  return texto;
}

std::string en_hex(std::span<const pieza> piezas) {
  std::string texto;
  std::int32_t pagina = 0;
  por_registros(piezas, [&](std::int32_t dir, std::span<const std::uint8_t> datos) {
    if (dir / pagina_hex != pagina) {
      pagina = dir / pagina_hex;
      std::vector<std::uint8_t> alta;
      anadir_valor(alta, static_cast<std::uint32_t>(pagina), 2);
      anadir_ihex(texto, 4, 0, alta);
    }
    anadir_ihex(texto, 0, static_cast<std::uint32_t>(dir), datos);
  });
  anadir_ihex(texto, 1, 0, {});
  return texto;
}

std::string en_bin(std::span<const pieza> piezas, bool desde_cero) {
  if (piezas.empty()) return {};
  const std::int32_t base = desde_cero ? 0 : piezas.front().desde;
  const auto bytes = bytes_en(piezas, {base, fin_de(piezas)});
  return {bytes.begin(), bytes.end()};
}

}  // namespace

std::string contenido_de(formato como, std::span<const pieza> piezas, bool bin_desde_cero) {
  if (como == formato::hex) return en_hex(piezas);
  return como == formato::bin ? en_bin(piezas, bin_desde_cero) : en_s19(piezas);
}

std::optional<aviso> duda_al_escribir(formato como, std::span<const pieza> piezas) {
  if (como != formato::s19 || piezas.empty()) return std::nullopt;
  const tramo escrito = escrito_de_s19(piezas), c = chip.configuracion;
  const tramo afectado{std::max(escrito.desde, c.desde), std::min(escrito.hasta, c.hasta)};
  if (afectado.vacio()) return std::nullopt;
  const auto bytes = bytes_en(piezas, afectado);
  aviso no_pasa{.cual = aviso::clase::configuracion_no_pasa};
  for (std::int32_t dir = afectado.desde; dir < afectado.hasta; ++dir) {
    if (bytes[static_cast<std::size_t>(dir - afectado.desde)] == 0) continue;
    if (no_pasa.cuantos++ == 0) no_pasa.direccion = dir;
  }
  return no_pasa.cuantos == 0 ? std::nullopt : std::optional(no_pasa);
}

std::vector<tramo> tramos_con_datos(const Variables_grab& v, std::span<const std::uint8_t> flash) {
  const auto cuenta = [&](std::int32_t dir) {
    const auto i = static_cast<std::size_t>(dir);
    return flash[i] != 0xFF || (v.mascara_salida[i] != 0 && dir <= v.dir_max);
  };
  std::vector<tramo> todos;
  for (std::int32_t dir = 0; dir < chip.flash; ++dir) {
    if (!cuenta(dir)) continue;
    const bool sigue = !todos.empty() && todos.back().hasta == dir;
    sigue ? static_cast<void>(++todos.back().hasta) : todos.push_back({dir, dir + 1});
  }
  return todos;
}

}  // namespace morvane::console
