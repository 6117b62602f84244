// Replays the examples of docs/protocol.md.

#include <fstream>
#include <sstream>

#include "apoyo/banco_principal.h"
#include "link/tramas.h"

using namespace morvane;
using namespace apoyo;

namespace {

struct linea_doc {
  char direccion;
  std::string bytes;
  std::string texto;
};

struct bloque_doc {
  bool carrera;
  std::vector<linea_doc> lineas;
};

linea_doc leer_linea(const std::string& renglon) {
  linea_doc l{renglon.at(0), "", ""};
  std::istringstream partes(renglon.substr(1));
  for (std::string parte; partes >> parte;) {
    // The bytes end with the ETX; what comes behind it is the text.
    if (l.bytes.ends_with(ETX))
      l.texto = parte;
    else
      l.bytes += static_cast<char>(std::stoi(parte, nullptr, 16));
  }
  return l;
}

std::vector<bloque_doc> leer_bloques() {
  std::ifstream documento(PROTOCOLO);
  std::vector<bloque_doc> bloques;
  bool dentro = false;
  for (std::string renglon; std::getline(documento, renglon);) {
    if (renglon.starts_with("```wire"))
      bloques.push_back({renglon.ends_with("run"), {}}), dentro = true;
    else if (renglon.starts_with("```"))
      dentro = false;
    else if (dentro)
      bloques.back().lineas.push_back(leer_linea(renglon));
  }
  return bloques;
}

struct protocolo : banco_principal {
  std::vector<bloque_doc> bloques = leer_bloques();
};

TEST_F(protocolo, the_board_answers_as_written) {
  ASSERT_GE(bloques.size(), 5u);
  for (const bloque_doc& bloque : bloques) {
    puente::chip chip;
    puente::placa placa(chip, {});
    std::string respuesta;
    for (const linea_doc& l : bloque.lineas) {
      EXPECT_EQ(l.bytes, "\x02" + l.texto + suma_comprobacion(l.texto) + "\x03");
      if (l.direccion == '>') {
        placa.entra(l.bytes, {});
        respuesta = placa.sale({});
      } else {
        EXPECT_EQ(respuesta, l.bytes) << l.texto;
      }
    }
  }
}

TEST_F(protocolo, the_program_sends_the_run_as_written) {
  const bloque_doc& carrera = bloques.back();
  ASSERT_TRUE(carrera.carrera);
  std::string esperado;
  for (const linea_doc& l : carrera.lineas) esperado += l.direccion == '>' ? l.bytes : "";
  empezar();
  abrir_archivo("ocho.s19", ocho_bytes);
  const std::size_t antes = linea.escrito().size();
  f.barra.ButtonClick(3);
  EXPECT_EQ(linea.escrito().substr(antes), esperado);
}

}  // namespace
