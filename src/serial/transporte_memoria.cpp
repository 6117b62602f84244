#include "serial/transporte_memoria.h"

#include <algorithm>

namespace morvane {

namespace {

/// Characters that may have come in while the line was closed.
constexpr std::size_t lo_que_cabia = 4096;

}  // namespace

bool transporte_memoria::abrir(int numero, const parametros_linea& linea) {
  cerrar();
  if (!existe(numero) || ocupado) return false;
  parametros_ = linea;
  abierta_ = true;
  ++aperturas;
  otro_.abierta();
  // What had come in before is nobody's any more; bounded, since the far end may never stop.
  otro_.entregar(lo_que_cabia, plat_.ahora());
  return true;
}

void transporte_memoria::escribir(std::string_view datos) {
  if (!abierta_ || perdido()) return;
  escrito_ += datos;
  otro_.recibir(datos, plat_.ahora());
}

std::size_t transporte_memoria::leer(std::span<char> destino) {
  if (!abierta_ || perdido()) return 0;
  const std::string datos = otro_.entregar(destino.size(), plat_.ahora());
  std::copy(datos.begin(), datos.end(), destino.begin());
  return datos.size();
}

void transporte_memoria::cerrar() {
  if (abierta_) otro_.cerrada();
  abierta_ = false;
}

}  // namespace morvane
