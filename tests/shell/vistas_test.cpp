#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

struct vistas : banco_principal {
  void SetUp() override { empezar(); }
  static std::string filas_de(const ListBox& lista) {
    std::string texto;
    for (std::size_t i = 0; lista.List.valor() && i < lista.List.valor()->cuantas(); ++i) {
      texto += lista.List.valor()->texto(i) + "\n";
    }
    return texto;
  }
};

TEST_F(vistas, a_dump_has_whole_rows_of_73_characters) {
  for (std::int32_t i = 0; i < 16; ++i)
    v.buffer_salida[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(0x78 + i);
  v.buffer_salida[3] = ' ';
  v.buffer_salida[4] = 0x1F;
  const std::string primera = "000000  78 79 7A 20 1F 7D 7E 7F 80 81 82 83 84 85 86 87  xyz .}~.........\n";
  const std::string vacia = "000010  FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF  ................\n";
  const std::pair<std::int32_t, std::string> casos[] = {{0, ""}, {0x17, primera}, {0x1F, primera + vacia}};
  for (const auto& [tope, filas_esperadas] : casos) {
    v.dir_max = tope;
    f.menu.men_ver_B_S.Click();
    EXPECT_EQ(filas_de(f.buffer_out.lst_buf_salida), filas_esperadas);
    EXPECT_TRUE(f.buffer_out.ventana.Visible && f.buffer_out.lst_buf_salida.Visible);
    f.buffer_out.ventana.Unload();
    EXPECT_EQ(f.buffer_out.lst_buf_salida.List.valor(), nullptr);
  }
  for (const std::int32_t tope : {0x3FFFF, 0x40001, -1}) {
    v.dir_fin_lectura = tope;
    f.menu.men_ver_B_E.Click();
    EXPECT_EQ(f.buffer_in.lst_buf_salida.List.valor()->cuantas(), tope < 0 ? 0u : 16384u);
    f.buffer_in.ventana.Unload();
  }
}

TEST_F(vistas, an_open_view_keeps_its_rows_and_follows_its_window) {
  v.dir_max = 0x0F;
  f.menu.men_ver_B_S.Click();
  v.buffer_salida[0] = 0;
  const int llamadas = f.buffer_out.ventana.llamadas;
  f.menu.men_ver_B_S.Click();
  EXPECT_TRUE(filas_de(f.buffer_out.lst_buf_salida).starts_with("000000  FF"));
  EXPECT_EQ(f.buffer_out.ventana.llamadas, llamadas + 1);
  f.buffer_out.ventana.Resize(9000, 700);
  EXPECT_EQ(f.buffer_out.lst_buf_salida.sitio.valor(), (lugar{120, 360, 8700, 150}));
}

TEST_F(vistas, the_comparison_speaks_before_it_shows) {
  v.dir_max = 0x1F4;
  v.buffer_entrada = v.buffer_salida;
  v.buffer_entrada[0x1F3] = 0x0A;
  v.buffer_entrada[0x1F5] = 1;
  bool visible = true;
  plat.responder(vbOK, [&] { visible = f.buffer_comp.ventana.Visible; });
  f.men_comparar.Click();
  EXPECT_EQ(plat.cajas,
            (std::vector<caja>{{"Atención", "Ha finalizado la comparación de los buffer de entrada y salida",
                                botones::Aceptar, icono::informacion}}));
  EXPECT_EQ(filas_de(f.buffer_comp.lst_compara), "   1F3     A   FF\n");
  EXPECT_TRUE(!visible && f.buffer_comp.ventana.Visible);
  EXPECT_EQ(f.buffer_comp.lbl_cuenta.Caption.valor(), "1 diferencia");
  f.buffer_out.men_comparar.Click();
  EXPECT_EQ(plat.cajas.size(), 1u) << "an open view only comes to the front";
}

TEST_F(vistas, the_comparison_counts_its_rows) {
  const std::pair<std::int32_t, const char*> casos[] = {{-1, "0 diferencias"}, {0x0F, "16 diferencias"}};
  for (const auto& [tope, cuenta] : casos) {
    v.dir_max = tope;
    f.men_comparar.Click();
    EXPECT_EQ(f.buffer_comp.lbl_cuenta.Caption.valor(), cuenta);
    f.buffer_comp.ventana.Unload();
  }
}

TEST_F(vistas, a_dump_leads_to_addresses_within_it) {
  buscador& b = f.buffer_out.busca;
  EXPECT_FALSE(b.ir("0"));
  EXPECT_EQ(b.mensaje(), "El buffer está vacío");
  v.dir_max = 0x2A;
  f.menu.men_ver_B_S.Click();
  const struct {
    const char* escrito;
    std::optional<trecho> hallado;
    const char* mensaje;
  } casos[] = {
      {"1f", trecho{0x1F, 1}, ""}, {"0x00001F", trecho{0x1F, 1}, ""}, {"20", {}, "La última dirección es 00001F"},
      {"0", trecho{0, 1}, ""},     {"", {}, "Escriba una dirección"}, {"0x", {}, "Escriba una dirección"}};
  for (const auto& c : casos) {
    EXPECT_EQ(b.ir(c.escrito), c.hallado.has_value());
    EXPECT_EQ(b.hallado(), c.hallado) << c.escrito;
    EXPECT_EQ(b.mensaje(), c.mensaje);
  }
  b.ir("0");
  f.buffer_out.ventana.Unload();
  EXPECT_FALSE(b.hallado()) << "a view that is closed forgets what was found in it";
}

TEST_F(vistas, a_search_goes_from_place_to_place_and_begins_anew_at_another_row) {
  for (const std::size_t lugar : {0x08, 0x0C, 0x28}) {
    v.buffer_salida[lugar] = 'S';
    v.buffer_salida[lugar + 1] = 'i';
  }
  v.dir_max = 0x3F;
  f.menu.men_ver_B_S.Click();
  v.buffer_salida[0x10] = 'S';
  const auto adelante = sentido::adelante, atras = sentido::atras;
  const auto bytes = clase_busqueda::bytes, texto = clase_busqueda::texto;
  const struct {
    const char* que;
    clase_busqueda como;
    sentido hacia;
    std::size_t fila, dir;
    const char* mensaje;
  } casos[] = {{"53 69", bytes, adelante, 0, 0x08, "En 000008"},
               {"53 69", bytes, adelante, 0, 0x0C, "En 00000C"},
               {"53 69", bytes, adelante, 0, 0x28, "En 000028"},
               {"53 69", bytes, adelante, 2, 0x08, "En 000008, vuelta al principio"},
               {"53 69", bytes, atras, 0, 0x28, "En 000028, vuelta al final"},
               {"53 69", bytes, atras, 2, 0x0C, "En 00000C"},
               {"53 69", bytes, adelante, 1, 0x28, "En 000028"},
               {"sI", texto, adelante, 2, 0x28, "En 000028"},
               {"sI", texto, adelante, 3, 0x08, "En 000008, vuelta al principio"},
               {"53", bytes, adelante, 1, 0x28, "En 000028"},
               {"53 6", bytes, adelante, 0, 0, "Dos cifras de 0 a F por byte"},
               {"no", texto, atras, 0, 0, "No se ha encontrado"},
               {"", texto, adelante, 0, 0, "Escriba qué buscar"},
               {" ", bytes, adelante, 0, 0, "Escriba qué buscar"}};
  buscador& b = f.buffer_out.busca;
  for (const auto& c : casos) {
    const bool bien = std::string_view(c.mensaje).starts_with("En ");
    EXPECT_EQ(b.buscar(c.que, c.como, c.hacia, c.fila), bien);
    EXPECT_EQ(b.mensaje(), c.mensaje);
    const std::size_t cuantos = std::string_view(c.que) == "53" ? 1 : 2;
    EXPECT_EQ(b.hallado(), bien ? std::optional(trecho{c.dir, cuantos}) : std::nullopt) << c.mensaje;
  }
}

TEST_F(vistas, about_names_program_and_version) {
  f.men_acerca_contextual.Click();
  const frmAbout& a = f.about;
  EXPECT_EQ(a.ventana.Caption.valor() + "|" + a.lblTitle.Caption.valor() + "|" + a.lblVersion.Caption.valor(),
            "Acerca de Morvane|Morvane|Versión 1.0.0");
  f.about.cmdOK.Click();
  EXPECT_FALSE(a.ventana.Visible);
}

TEST_F(vistas, system_information_is_where_the_registry_or_the_desktop_says) {
  const std::string clave1 = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO|PATH";
  const std::string clave2 = "SOFTWARE\\Microsoft\\Shared Tools Location|MSINFO";
  const auto cadena = [](std::string texto, bool cero) {
    if (cero) texto += '\0';
    return valor_registro{1, {texto.begin(), texto.end()}, static_cast<std::uint32_t>(texto.size())};
  };
  auto& m = plat.maquina();
  m.programas = {"C:\\a.exe", "D:\\b\\MSINFO32.EXE", "/usr/bin/hardinfo"};
  using valores = std::map<std::string, valor_registro>;
  const struct {
    valores registro;
    std::vector<std::string> escritorio, iniciados;
  } casos[] = {
      {{{clave1, cadena("C:\\a.exe", true)}, {clave2, cadena("D:\\b", true)}}, {}, {"C:\\a.exe"}},
      {{{clave1, cadena("C:\\a.exe", false)}}, {}, {"C:\\a.exe"}},
      {{{clave2, cadena("D:\\b", false)}}, {}, {"D:\\b\\MSINFO32.EXE"}},
      {{{clave1, cadena("C:\\falta.exe", true)}, {clave2, cadena("D:\\b", true)}}, {}, {}},
      {{{clave2, cadena("D:\\falta", true)}}, {}, {}},
      {{{clave1, cadena(std::string(1025, 'x'), false)}}, {}, {}},
      {{}, {"/usr/bin/no", "/usr/bin/hardinfo"}, {"/usr/bin/hardinfo"}},
      {{}, {}, {}},
  };
  for (const auto& c : casos) {
    m.valores = c.registro;
    m.del_escritorio = c.escritorio;
    m.iniciados.clear();
    plat.cajas.clear();
    f.about.cmdSysInfo.Click();
    EXPECT_EQ(m.iniciados, c.iniciados);
    EXPECT_EQ(textos(), c.iniciados.empty() ? "La información del sistema no está disponible en este momento" : "");
    EXPECT_EQ(m.abiertas, 0);
  }
  std::string numero = "viejo";
  m.valores = {{"K|n", {4, {0x0B, 0x0A, 0, 0}, 4}}, {"K|b", {3, {1, 2}, 2}}};
  EXPECT_TRUE(GetKeyValue(m, 0, "K", "b", numero) && numero == "viejo");
  EXPECT_TRUE(GetKeyValue(m, 0, "K", "n", numero) && numero == "171");
  EXPECT_TRUE(!GetKeyValue(m, 0, "K", "falta", numero) && numero.empty());
}

}  // namespace
