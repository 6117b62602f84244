#include "platform/transporte_memoria.h"

#include <algorithm>

namespace morvane {

bool transporte_memoria::abrir(int numero, const parametros_linea& linea) {
  if (!existe(numero) || ocupado) return false;
  parametros_ = linea;
  abierta_ = true;
  ++aperturas;
  otro_.abierta();
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
