#include "job/mandato.h"

#include "files/texto.h"
#include "image/chip.h"

namespace morvane::job {

namespace {

/// STX, checksum and ETX; and the code of a reply.
constexpr std::int64_t marco = 4, codigo = 1;
/// Of the two shapes of a reply to "C".
constexpr std::size_t datos_corta = 11, datos_larga = 42;

mandato sin_datos(std::string texto) {
  return {.texto = std::move(texto)};
}

std::string direccion(char letra, std::int32_t dir) {
  std::string texto(1, letra);
  anadir_hex(texto, static_cast<std::uint32_t>(dir), 6);
  return texto;
}

}  // namespace

std::int64_t mandato::coste() const {
  return static_cast<std::int64_t>(texto.size() + datos) + 2 * marco + codigo;
}

mandato abrir_chip() {
  return {.texto = "A", .espera = paciencia::abrir};
}

mandato cerrar_chip() {
  return {.texto = "D", .espera = paciencia::abrir};
}

mandato permitir_escritura() {
  return sin_datos("a");
}

mandato ver_estado() {
  return {.texto = "c", .datos = 2};
}

mandato configurar() {
  return sin_datos(std::string(chip.comando_configuracion));
}

mandato borrar_todo() {
  return sin_datos("i");
}

mandato reiniciar() {
  return sin_datos("j");
}

mandato grabar(std::int32_t dir, std::uint32_t palabra) {
  mandato m = sin_datos(direccion('g', dir));
  anadir_hex(m.texto, palabra, 8);
  return m;
}

mandato leer(std::int32_t dir, std::int32_t cuantos) {
  mandato m{.texto = direccion('e', dir), .datos = 2 * static_cast<std::size_t>(cuantos)};
  anadir_hex(m.texto, static_cast<std::uint32_t>(cuantos), 2);
  return m;
}

mandato examinar(std::int32_t dir, std::int32_t cuantos) {
  mandato m{.texto = direccion('C', dir),
            .datos = cuantos == ventana_larga ? datos_larga : datos_corta,
            .espera = paciencia::examen};
  anadir_hex(m.texto, static_cast<std::uint32_t>(cuantos - 1), 6);
  return m;
}

}  // namespace morvane::job
