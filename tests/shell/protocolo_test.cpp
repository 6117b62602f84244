// Replays the examples of docs/protocol.md.

#include <fstream>
#include <sstream>

#include "apoyo/banco_principal.h"
#include "link/tramas.h"

using namespace apoyo;

namespace {

/// The bytes in hexadecimal of a line, up to the ETX.
std::string bytes_de(std::istream& renglon) {
  std::string bytes;
  for (std::string parte; !bytes.ends_with(ETX) && renglon >> parte;) {
    bytes += static_cast<char>(std::stoi(parte, nullptr, 16));
  }
  return bytes;
}

TEST_F(banco_principal, board_and_program_say_what_the_document_says) {
  std::ifstream documento(PROTOCOLO);
  std::string respuesta, carrera;
  puente::chip chip;
  puente::placa placa(chip, {});
  int bloques = 0;
  bool dentro = false;
  for (std::string renglon; std::getline(documento, renglon);) {
    const bool principio = renglon.starts_with("```wire");
    if (principio) ++bloques, carrera.clear(), chip = {};
    if (principio || renglon.starts_with("```")) dentro = principio;
    if (!dentro || principio) continue;
    // A line is '>' or '<', the bytes, and the same as text.
    std::istringstream partes(renglon.substr(1));
    const std::string bytes = bytes_de(partes);
    std::string texto;
    partes >> texto;
    EXPECT_EQ(bytes, marco(texto));
    if (renglon[0] == '<') {
      EXPECT_EQ(respuesta, bytes) << texto;
      continue;
    }
    carrera += bytes;
    placa.entra(bytes, {});
    respuesta = placa.sale({});
  }
  EXPECT_GE(bloques, 5) << "the last one is the run of the whole program";
  empezar();
  abrir_archivo("ocho.s19", ocho_bytes);
  const std::size_t antes = linea.escrito().size();
  f.barra.ButtonClick(3);
  EXPECT_EQ(linea.escrito().substr(antes), carrera);
}

}  // namespace
