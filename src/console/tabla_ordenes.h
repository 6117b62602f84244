#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "console/argumentos.h"

namespace morvane::console {

/// The options of single orders, as bits.
enum opcion_propia : unsigned {
  op_prueba = 1,
  op_certificado = 2,
  op_todo = 4,
  op_desde = 8,
  op_hasta = 16,
  op_en = 32,
  op_si = 64,
};

struct fila_orden {
  orden que;
  std::string_view nombre;
  /// What stands behind its name: options and files.
  std::string_view forma;
  /// One line, and what else its help says.
  std::string_view resumen, mas;
  std::size_t archivos_minimo, archivos_maximo;
  unsigned opciones;
};

struct fila_opcion {
  unsigned cual;
  /// As it is given, and with the word for its value.
  std::string_view nombre, con_valor;
  std::string_view texto;
};

constexpr std::size_t sin_limite = static_cast<std::size_t>(-1);

std::span<const fila_orden> ordenes();
const fila_orden& fila_de(orden que);
/// Those of single orders, and those of all.
std::span<const fila_opcion> opciones_propias();
std::span<const fila_opcion> opciones_comunes();

}  // namespace morvane::console
