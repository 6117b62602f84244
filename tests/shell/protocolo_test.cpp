// Replays the examples of docs/protocol.md.

#include <fstream>
#include <sstream>

#include "apoyo/banco_principal.h"
#include "link/tramas.h"

using namespace apoyo;

namespace {

/// A line is '>' or '<', bytes in hexadecimal up to the ETX, and the same as text. In the document the run of the whole
/// program is the last block.
struct linea_doc {
  explicit linea_doc(const std::string& renglon) : direccion(renglon.at(0)) {
    std::istringstream partes(renglon.substr(1));
    for (std::string parte; !bytes.ends_with(ETX) && partes >> parte;) {
      bytes += static_cast<char>(std::stoi(parte, nullptr, 16));
    }
    partes >> texto;
  }
  char direccion;
  std::string bytes, texto;
};

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
    const linea_doc l(renglon);
    EXPECT_EQ(l.bytes, marco(l.texto));
    if (l.direccion == '<') {
      EXPECT_EQ(respuesta, l.bytes) << l.texto;
      continue;
    }
    carrera += l.bytes;
    placa.entra(l.bytes, {});
    respuesta = placa.sale({});
  }
  EXPECT_GE(bloques, 5);
  empezar();
  abrir_archivo("ocho.s19", ocho_bytes);
  const std::size_t antes = linea.escrito().size();
  f.barra.ButtonClick(3);
  EXPECT_EQ(linea.escrito().substr(antes), carrera);
}

}  // namespace
