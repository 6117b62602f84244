// A loop that does the least for frames that another program has sent: those of a trace, in their order.
//
// Usage: repetir TERMINAL TRACE

#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

#include "desnudo.h"

namespace {

/// Of the lines ">" of a trace the frames, which have no other characters that do not print than their STX and ETX.
std::vector<std::string> tramas_de(const char* ruta) {
  const std::string stx = "<STX>", etx = "<ETX>";
  std::ifstream entrada(ruta);
  std::vector<std::string> tramas;
  for (std::string linea; std::getline(entrada, linea);) {
    const std::size_t desde = linea.find(" > " + stx), hasta = linea.find(etx);
    if (desde == std::string::npos || hasta == std::string::npos) continue;
    const std::size_t texto = desde + 3 + stx.size();
    tramas.push_back("\x02" + linea.substr(texto, hasta - texto) + "\x03");
  }
  return tramas;
}

}  // namespace

int main(int cuantos, char** argumentos) {
  if (cuantos != 3) {
    std::fprintf(stderr, "repetir TERMINAL TRACE\n");
    return 2;
  }
  try {
    const std::vector<std::string> tramas = tramas_de(argumentos[2]);
    medidas::desnudo d(argumentos[1]);
    d.enviar(tramas);
    std::printf("%zu\n", tramas.size());
    return tramas.empty() ? 1 : 0;
  } catch (const std::exception& fallo) {
    std::fprintf(stderr, "repetir: %s\n", fallo.what());
    return 1;
  }
}
