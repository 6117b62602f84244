#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

struct vistas : banco_principal {
  void SetUp() override { empezar(); }
  /// The first rows of a list and how many there are.
  static std::string filas_de(const ListBox& lista) {
    std::string texto;
    const auto filas = lista.List.valor();
    for (std::size_t i = 0; filas && i < std::min<std::size_t>(filas->cuantas(), 2); ++i)
      texto += filas->texto(i) + "\n";
    return texto + (filas ? std::to_string(filas->cuantas()) : "");
  }
};

TEST_F(vistas, a_dump_has_whole_rows_and_keeps_them_while_open) {
  for (std::uint8_t i = 0; i < 16; ++i) v.buffer_salida[i] = static_cast<std::uint8_t>(0x78 + i);
  v.buffer_salida[3] = ' ';
  v.buffer_salida[4] = 0x1F;
  v.buffer_entrada = v.buffer_salida;
  const std::string primera = "000000  78 79 7A 20 1F 7D 7E 7F 80 81 82 83 84 85 86 87  xyz .}~.........\n";
  const std::string vacia = "000010  FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF  ................\n";
  const std::pair<std::int32_t, std::string> casos[] = {
      {0, "0"}, {0x17, primera + "1"}, {0x1F, primera + vacia + "2"}, {0x40001, primera + vacia + "16384"}};
  for (const auto& [tope, filas_esperadas] : casos) {
    v.dir_max = v.dir_fin_lectura = tope;
    f.menu.men_ver_B_S.Click();
    v.dir_max = 0;
    f.menu.men_ver_B_E.Click();
    f.menu.men_ver_B_S.Click();
    for (frm_buffer* b : {&f.buffer_in, &f.buffer_out}) {
      EXPECT_EQ(filas_de(b->lst_buf_salida), filas_esperadas);
      b->ventana.Unload();
      EXPECT_EQ(b->lst_buf_salida.List.valor(), nullptr);
    }
  }
}

TEST_F(vistas, the_comparison_speaks_before_it_shows_and_counts_its_rows) {
  bool visible = true;
  plat.usuario = [&](const caja&) { return visible = f.buffer_comp.ventana.Visible, vbOK; };
  v.buffer_entrada = v.buffer_salida;
  for (const std::size_t i : {0x1F3, 0x1F5, 0x1F6}) v.buffer_entrada[i] = 0x0A;
  v.dir_max = 0x1F5;
  f.men_comparar.Click();
  EXPECT_EQ(textos(), "Ha finalizado la comparación de los buffer de entrada y salida");
  EXPECT_EQ(filas_de(f.buffer_comp.lst_compara), "   1F3     A   FF\n   1F5     A   FF\n2");
  EXPECT_EQ(f.buffer_comp.lbl_cuenta.Caption.valor(), "2 diferencias hasta 0001F5");
  EXPECT_FALSE(visible);
  EXPECT_TRUE(f.buffer_comp.ventana.Visible);
}

TEST_F(vistas, what_was_never_read_steps_back_and_the_views_begin_at_what_was) {
  const auto gris = [](const filas& lista, std::size_t i) {
    const auto partes = lista.realces(i);
    return !partes.empty() && partes.front().como == realce::ignorado;
  };
  f.menu.men_ver_B_S.Click();
  EXPECT_EQ(f.buffer_out.si_vacio, "No hay ningún archivo cargado");
  f.menu.men_ver_B_E.Click();
  EXPECT_EQ(f.buffer_in.si_vacio, "Todavía no se ha leído nada del chip");
  f.buffer_in.ventana.Unload();
  std::ranges::fill(v.buffer_entrada, std::uint8_t{0});
  f.avance.mapa.lectura({0x40, 0x60});
  v.dir_max = v.dir_fin_lectura = 0x7F;
  f.menu.men_ver_B_E.Click();
  const filas& entrada = *f.buffer_in.lst_buf_salida.List.valor();
  EXPECT_EQ(f.buffer_in.primera_fila, 4U);
  EXPECT_TRUE(gris(entrada, 3) && !gris(entrada, 4) && !gris(entrada, 5) && gris(entrada, 6));
  EXPECT_EQ(f.buffer_in.si_vacio, "");
  f.men_comparar.Click();
  EXPECT_EQ(plat.explicaciones.back(),
            "⚠ Atención: solo se ha leído 000040–00005F; lo demás, en gris, son ceros del buffer");
  const diferencias& todas = *f.buffer_comp.filas;
  EXPECT_EQ(todas.primera_conocida(), 0x40U);
  EXPECT_EQ(todas.direccion(0x5F), 0x5F);
  EXPECT_TRUE(gris(todas, 0x3F) && !gris(todas, 0x40) && !gris(todas, 0x5F) && gris(todas, 0x60));
}

TEST_F(vistas, about_starts_the_information_of_the_system_if_there_is_any) {
  f.men_acerca_contextual.Click();
  f.about.cmdSysInfo.Click();
  EXPECT_EQ(textos(), "La información del sistema no está disponible en este momento");
  plat.maquina().programas = {"/usr/bin/hardinfo"};
  plat.maquina().del_escritorio = {"/usr/bin/no", "/usr/bin/hardinfo"};
  f.about.cmdSysInfo.Click();
  const std::string clave = "SOFTWARE\\Microsoft\\Shared Tools", msinfo = "C:\\M\\MSINFO32.EXE";
  plat.maquina().programas.insert(msinfo);
  plat.maquina().valores[clave + " Location|MSINFO"] = {1, {'C', ':', '\\', 'M', 0}, 5};
  f.about.cmdSysInfo.Click();
  EXPECT_EQ(plat.maquina().iniciados, (std::vector<std::string>{"/usr/bin/hardinfo", msinfo}));
  const std::tuple<std::uint32_t, std::vector<std::uint8_t>, std::string> casos[] = {
      {1, {'a', 'b'}, "ab"}, {4, {0x12, 0x34, 0x56, 1}, "22426642"}, {4, {5, 1, 0, 0}, "21"}, {3, {'a'}, "21"}};
  std::string valor;
  for (const auto& [tipo, bytes, esperado] : casos) {
    plat.maquina().valores[clave + "|x"] = {tipo, bytes, static_cast<std::uint32_t>(bytes.size())};
    EXPECT_TRUE(GetKeyValue(plat.maquina(), 0, clave, "x", valor));
    EXPECT_EQ(valor, esperado);
  }
  EXPECT_FALSE(GetKeyValue(plat.maquina(), 0, clave, "y", valor));
  EXPECT_EQ(valor + std::to_string(plat.maquina().abiertas), "0") << "nothing stays, and no key open";
}

}  // namespace
