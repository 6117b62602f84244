// Replays the examples of docs/protocol.md.

#include <fstream>

#include "apoyo/banco_principal.h"
#include "files/texto.h"

using namespace apoyo;

namespace {

TEST_F(banco_principal, board_and_program_say_what_the_document_says) {
  std::ifstream documento(PROTOCOLO);
  std::string respuesta, carrera;
  puente::chip chip;
  puente::placa placa(chip, {});
  int bloques = 0;
  for (std::string renglon; std::getline(documento, renglon);) {
    if (renglon.starts_with("```wire")) ++bloques, carrera.clear(), chip = {};
    // A line of an example is '>' or '<', the bytes, and the same as text.
    const bool ida = renglon.starts_with("> "), vuelta = renglon.starts_with("< ");
    if (!ida && !vuelta) continue;
    const std::string trama = marco(renglon.substr(renglon.rfind(' ') + 1));
    std::string cifras;
    for (const char c : trama) cifras += " " + hex(static_cast<std::uint8_t>(c), 2);
    EXPECT_EQ(renglon.substr(1, cifras.size()), cifras);
    if (vuelta) {
      EXPECT_EQ(respuesta, trama);
    } else {
      carrera += trama;
      placa.entra(trama, {});
      respuesta = placa.sale({});
    }
  }
  EXPECT_GE(bloques, 5) << "the last one is the run of the whole program";
  empezar();
  abrir_archivo("ocho.s19", ocho_bytes);
  const std::size_t antes = linea.escrito().size();
  // A stop that was asked for while nothing ran does not count.
  for (const int boton : {6, 3}) f.barra.ButtonClick(boton);
  EXPECT_EQ(linea.escrito().substr(antes), carrera);
}

}  // namespace
