#include <algorithm>

#include "files/texto.h"
#include "tabla_ordenes.h"

namespace morvane::console {

namespace {

constexpr std::string_view programa = "morvane-cli";
constexpr std::size_t columna_ordenes = 14, columna_opciones = 26;

void renglon(std::string& t, std::string_view izquierda, std::string_view derecha, std::size_t columna) {
  t.append("  ").append(izquierda);
  t.append(columna - std::min(longitud(izquierda), columna - 2), ' ').append(derecha).append("\n");
}

void opciones(std::string& t, std::span<const fila_opcion> filas, unsigned cuales) {
  for (const fila_opcion& f : filas) {
    if ((f.cual & cuales) == f.cual) renglon(t, f.con_valor, f.texto, columna_opciones);
  }
}

constexpr std::string_view codigos =
    "Códigos de salida: 0 hecho y demostrado; 1 interno; 2 uso; 3 archivo; 4 puerto; 5 silencio; 6 línea;\n"
    "7 rechazada; 8 protegida; 9 distinta; 10 chip; 11 certificado; 130 y 143 detenido por una señal.\n";

}  // namespace

std::string_view nombre_de(orden que) {
  return fila_de(que).nombre;
}

std::optional<orden> orden_de(std::string_view nombre) {
  const auto fila = std::ranges::find(ordenes(), nombre, &fila_orden::nombre);
  return fila == ordenes().end() ? std::nullopt : std::optional(fila->que);
}

std::string forma_de(orden que) {
  const fila_orden& f = fila_de(que);
  std::string t = std::string(programa).append(" ").append(f.nombre).append(" [OPCIONES]");
  return f.forma.empty() ? t : t.append(" ").append(f.forma);
}

std::string texto_de_ayuda() {
  std::string t = "Uso: morvane-cli [OPCIONES] ORDEN [ARGUMENTOS]\n\nÓrdenes:\n";
  for (const fila_orden& f : ordenes()) renglon(t, f.nombre, f.resumen, columna_ordenes);
  t += "\nOpciones de todas:\n";
  opciones(t, opciones_comunes(), 0);
  t += "\nLas de una orden: morvane-cli ORDEN --ayuda\n\n";
  return t.append(codigos);
}

std::string texto_de_ayuda(orden que) {
  const fila_orden& f = fila_de(que);
  std::string t = "Uso: " + forma_de(que) + "\n\n" + std::string(f.resumen);
  t += t.back() == '?' ? "\n" : ".\n";
  if (!f.mas.empty()) t.append(f.mas).append("\n");
  t += "\nOpciones:\n";
  for (const fila_opcion& o : opciones_propias()) {
    if ((o.cual & f.opciones) != 0) renglon(t, o.con_valor, o.texto, columna_opciones);
  }
  opciones(t, opciones_comunes(), 0);
  return t;
}

}  // namespace morvane::console
