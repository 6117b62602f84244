#include <gtest/gtest.h>

#include <algorithm>

#include "banco.h"

namespace puente {
namespace {

std::string estado(banco& b) {
  return b.manda("c").substr(2, 2);
}

struct paso {
  const char *comando, *contenido;
};

void recorre(banco& b, std::initializer_list<paso> pasos) {
  int n = 0;
  for (const paso& p : pasos) EXPECT_EQ(b.manda(p.comando), banco::en_trama(p.contenido)) << ++n << ' ' << p.comando;
}

TEST(Chip, BorraYGrabaComoElFlujo) {
  banco b;
  b.c.flash()[0x3FFFF] = 0;
  recorre(b, {{"A", "0"},   {"a", "0"},
              {"c", "002"}, {"d2E", "0"},
              {"c", "020"}, {"a", "0"},
              {"c", "022"}, {"i", "0"},
              {"c", "021"}, {"c", "021"},
              {"c", "021"}, {"c", "020"},
              {"a", "0"},   {"c", "022"},
              {"d2E", "0"}, {"c", "020"},
              {"a", "0"},   {"g000000FFFFAABB", "0"},
              {"a", "0"},   {"g000004CCDDEEFF", "0"},
              {"D", "0"}});
  EXPECT_EQ(b.c.flash()[2], 0xAA);
  EXPECT_EQ(b.c.flash()[6], 0xEE);
  EXPECT_EQ(b.c.flash()[0x3FFFF], 0xFF);
}

TEST(Chip, CadaEscrituraGastaElPermiso) {
  for (const char* comando : {"d2E", "g00000000000000", "i"}) {
    banco b;
    b.c.sondeos_de_borrado = 0;
    b.habilita();
    EXPECT_EQ(b.manda(comando), bien) << comando;
    EXPECT_EQ(estado(b), "20") << comando;
    EXPECT_EQ(b.manda(comando), banco::en_trama("6")) << comando;
  }
}

TEST(Chip, SinConfiguracionNoSeGrabaNiSeBorra) {
  banco b;
  recorre(b, {{"A", "0"}, {"a", "0"}, {"g00000000000000", "6"}, {"i", "6"}, {"c", "002"}});
  EXPECT_EQ(b.c.cambios(), 0U);
}

TEST(Chip, LosBitsSoloBajan) {
  banco b;
  b.habilita();
  recorre(b, {{"g0000000FF0AA55", "0"}, {"a", "0"}, {"g000000F0FF0FFF", "0"}, {"e00000004", "000F00A55"}});
}

TEST(Chip, ElBorradoOcupaHastaSuUltimoSondeo) {
  for (const int sondeos : {0, 1, 53, 1000}) {
    banco b;
    b.c.sondeos_de_borrado = sondeos;
    b.c.flash()[0x3FFFF] = 0;
    b.habilita();
    b.manda("i");
    int ocupados = 0;
    while (ocupados < 2000 && estado(b) == "21") ++ocupados;
    EXPECT_EQ(ocupados, sondeos);
    EXPECT_EQ(b.c.flash()[0x3FFFF], 0xFF) << sondeos;
  }
}

TEST(Chip, MientrasBorraSoloContestaElEstado) {
  banco b;
  b.habilita();
  recorre(b,
          {{"i", "0"}, {"a", "6"}, {"d2E", "6"}, {"e00000020", "6"}, {"C000000007FFF", "6"}, {"i", "6"}, {"c", "021"}});
}

TEST(Chip, UnReinicioCortaElBorradoDondeEsta) {
  banco b;
  std::ranges::fill(b.c.flash(), 0);
  b.c.sondeos_de_borrado = 4;
  b.habilita();
  recorre(b, {{"i", "0"}, {"c", "021"}, {"A", "0"}, {"c", "000"}});
  EXPECT_EQ(std::ranges::count(b.c.flash(), 0xFF), chip::tamano / 4);
}

TEST(Chip, UnBorradoFallidoDejaLaFlashYLoDice) {
  banco b;
  b.c.falla_borrado = true;
  b.c.sondeos_de_borrado = 1;
  b.c.flash()[7] = 0x12;
  b.habilita();
  recorre(b, {{"i", "0"}, {"c", "021"}, {"c", "060"}, {"e00000701", "012"}});
}

TEST(Chip, LaProteccionRigeDesdeLaAperturaYElBorradoLaQuita) {
  banco b;
  b.c.sondeos_de_borrado = 0;
  b.habilita();
  recorre(b, {{"g000414FFFF4AC8", "0"},
              {"c", "020"},
              {"e00041404", "0FFFF4AC8"},
              {"D", "0"},
              {"A", "0"},
              {"c", "080"},
              {"e00041404", "6"},
              {"C000000000000", "6"},
              {"a", "0"},
              {"d2E", "0"},
              {"a", "0"},
              {"g00000000000000", "6"},
              {"c", "0A2"},
              {"i", "0"},
              {"c", "020"},
              {"e00041404", "0FFFFFFFF"},
              {"D", "0"},
              {"A", "0"},
              {"c", "000"}});
}

TEST(Chip, ElResetCierraElEzPort) {
  banco b;
  b.habilita();
  recorre(b, {{"j", "0"}, {"c", "7"}, {"D", "0"}, {"A", "0"}, {"c", "000"}});
}

TEST(Chip, Averias) {
  banco b;
  b.c.falla_permiso = true;
  recorre(b, {{"A", "0"}, {"a", "0"}, {"c", "000"}});
  b.c.falla_permiso = false;
  b.c.falla_config = true;
  recorre(b, {{"a", "0"}, {"d2E", "0"}, {"c", "000"}});
  b.c.mudo = true;
  recorre(b, {{"c", "0FF"}});
}

}  // namespace
}  // namespace puente
