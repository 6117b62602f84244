#include "banco_ordenes.h"

using namespace apoyo;

namespace {

using contacto_test = banco_ordenes;

TEST_F(contacto_test, the_label_tells_when_the_board_answered_last_and_of_no_other_port) {
  const auto dice = [this] {
    const letrero l = letrero_de(f, f.link.valores.puerto + " · x");
    return l.puerto + "|" + l.placa + (l.aviso ? "!" : "");
  };
  const auto a_las = [this] { return " a las " + plat.hora(); };
  EXPECT_EQ(dice(), "COM1 · x · 57600|La placa respondió" + a_las()) << "by the probe of the start";
  correr(men_borrar_t_Click);
  EXPECT_EQ(dice(), "COM1 · x · 57600|La placa respondió" + a_las());
  const std::string entonces = dice();
  abrir_soltado(f, dir.escribir("otro.s19", ocho_bytes));
  EXPECT_EQ(dice(), entonces) << "a load talks to no board";
  correr(men_reset_Click, {.muda_desde = 1});
  EXPECT_EQ(dice(), "COM1 · x · 57600|La placa no respondió" + a_las() + "!");
  EXPECT_EQ(sin_contacto(f), "La placa no responde");
  f.link.valores.puerto = "COM2";
  EXPECT_EQ(dice(), "COM2 · x · 57600|Todavía no se ha hablado con la placa");
  linea.hay_puerto = false;
  correr(men_reset_Click);
  EXPECT_EQ(dice(), "COM2 · x · 57600|No se pudo abrir" + a_las() + "!");
  EXPECT_EQ(f.placa.fallidos, 2U);
  linea.hay_puerto = true;
  tras(3, [this] { men_reset_Click(f); });
  men_prog_t_Click(f);
  EXPECT_EQ(dice(), "COM2 · x · 57600|La placa respondió" + a_las()) << "a second command found its own port taken";
  static_cast<campos_ajustes&>(f.link.valores) = {};
  EXPECT_EQ(dice(), "Sin puerto elegido|Pulse para elegir uno!");
}

}  // namespace
