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

TEST_F(vistas, a_dump_has_whole_rows_of_73_characters_and_keeps_them_while_open) {
  for (std::uint8_t i = 0; i < 16; ++i) v.buffer_salida[i] = static_cast<std::uint8_t>(0x78 + i);
  v.buffer_salida[3] = ' ';
  v.buffer_salida[4] = 0x1F;
  const std::string primera = "000000  78 79 7A 20 1F 7D 7E 7F 80 81 82 83 84 85 86 87  xyz .}~.........\n";
  const std::string vacia = "000010  FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF  ................\n";
  const std::pair<std::int32_t, std::string> casos[] = {
      {0, "0"}, {0x17, primera + "1"}, {0x1F, primera + vacia + "2"}, {0x40001, primera + vacia + "16384"}};
  frm_buffer& b = f.buffer_out;
  for (const auto& [tope, filas_esperadas] : casos) {
    v.dir_max = v.dir_fin_lectura = tope;
    f.menu.men_ver_B_S.Click();
    EXPECT_EQ(filas_de(b.lst_buf_salida), filas_esperadas);
    v.dir_max = 0;
    v.buffer_entrada = v.buffer_salida;
    f.menu.men_ver_B_E.Click();
    EXPECT_EQ(filas_de(f.buffer_in.lst_buf_salida), filas_esperadas);
    f.menu.men_ver_B_S.Click();
    EXPECT_TRUE(filas_de(b.lst_buf_salida) == filas_esperadas && b.ventana.Visible) << "an open view keeps its rows";
    b.ventana.Resize(9000, 700);
    EXPECT_EQ(b.lst_buf_salida.sitio.valor(), (lugar{120, 360, 8700, 150}));
    for (Form* forma : {&b.ventana, &f.buffer_in.ventana}) forma->Unload();
    EXPECT_EQ(b.lst_buf_salida.List.valor(), nullptr);
  }
}

TEST_F(vistas, the_comparison_speaks_before_it_shows_and_counts_its_rows) {
  bool visible = true;
  plat.usuario = [&](const caja&) { return visible = f.buffer_comp.ventana.Visible, vbOK; };
  v.buffer_entrada = v.buffer_salida;
  v.buffer_entrada[0x1F3] = 0x0A;
  v.buffer_entrada[0x1F5] = 1;
  const std::tuple<std::int32_t, const char*, const char*> casos[] = {
      {-1, "0", "0 diferencias"},
      {0x1F4, "   1F3     A   FF\n1", "1 diferencia"},
      {0x1F5, "   1F3     A   FF\n   1F5     1   FF\n2", "2 diferencias"}};
  for (const auto& [tope, filas, cuenta] : casos) {
    v.dir_max = tope;
    plat.cajas.clear();
    f.men_comparar.Click();
    f.buffer_out.men_comparar.Click();
    EXPECT_EQ(plat.cajas,
              (std::vector<caja>{{"Atención", "Ha finalizado la comparación de los buffer de entrada y salida",
                                  botones::Aceptar, icono::informacion}}));
    EXPECT_EQ(filas_de(f.buffer_comp.lst_compara) + f.buffer_comp.lbl_cuenta.Caption.valor(),
              std::string(filas) + cuenta);
    EXPECT_TRUE(!visible && f.buffer_comp.ventana.Visible);
    f.buffer_comp.ventana.Unload();
  }
}

TEST_F(vistas, a_dump_leads_to_addresses_and_from_find_to_find_and_begins_anew_at_another_row) {
  for (const std::size_t lugar : {0x08, 0x0C, 0x28}) v.buffer_salida[lugar] = 'S', v.buffer_salida[lugar + 1] = 'i';
  buscador& b = f.buffer_out.busca;
  EXPECT_TRUE(!b.ir("0") && b.mensaje() == "El buffer está vacío");
  v.dir_max = 0x3F;
  f.menu.men_ver_B_S.Click();
  const auto adelante = sentido::adelante, atras = sentido::atras;
  const auto bytes = clase_busqueda::bytes, texto = clase_busqueda::texto;
  const struct {
    const char* que;
    std::optional<clase_busqueda> como;
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
               {"53 6", bytes, adelante, 0, 0, "Dos cifras de 0 a F por byte"},
               {"no", texto, atras, 0, 0, "No se ha encontrado"},
               {" ", bytes, adelante, 0, 0, "Escriba qué buscar"},
               {"3f", {}, adelante, 0, 0x3F, ""},
               {"0x00001F", {}, adelante, 0, 0x1F, ""},
               {"40", {}, adelante, 0, 0, "La última dirección es 00003F"},
               {"0x", {}, adelante, 0, 0, "Escriba una dirección"}};
  for (const auto& c : casos) {
    const bool bien = c.como ? b.buscar(c.que, *c.como, c.hacia, c.fila) : b.ir(c.que);
    EXPECT_EQ(b.mensaje(), c.mensaje);
    EXPECT_TRUE(bien == (c.dir != 0) && b.hallado().value_or(trecho{}).dir == c.dir) << c.que;
  }
  f.buffer_out.ventana.Unload();
  EXPECT_FALSE(b.hallado()) << "a view that is closed forgets what was found in it";
}

TEST_F(vistas, about_names_the_version_and_finds_the_information_of_the_system) {
  f.men_acerca_contextual.Click();
  frmAbout& a = f.about;
  EXPECT_EQ(a.ventana.Caption.valor() + "|" + a.lblTitle.Caption.valor() + "|" + a.lblVersion.Caption.valor(),
            "Acerca de Morvane|Morvane|Versión 1.0.0");
  a.cmdOK.Click();
  EXPECT_FALSE(a.ventana.Visible);
  const std::string clave1 = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO|PATH";
  const std::string clave2 = "SOFTWARE\\Microsoft\\Shared Tools Location|MSINFO";
  const auto cadena = [](const std::string& texto) {
    return valor_registro{1, {texto.begin(), texto.end()}, static_cast<std::uint32_t>(texto.size())};
  };
  auto& m = plat.maquina();
  m.programas = {"C:\\a.exe", "D:\\b\\MSINFO32.EXE", "/usr/bin/hardinfo"};
  const struct {
    std::map<std::string, valor_registro> registro;
    std::vector<std::string> escritorio, iniciados;
  } casos[] = {{{{clave1, cadena(std::string("C:\\a.exe\0", 9))}, {clave2, cadena("D:\\b")}}, {}, {"C:\\a.exe"}},
               {{{clave2, cadena("D:\\b")}}, {}, {"D:\\b\\MSINFO32.EXE"}},
               {{{clave1, cadena("C:\\falta.exe")}, {clave2, cadena("D:\\b")}}, {}, {}},
               {{{clave1, cadena(std::string(1025, 'x'))}}, {}, {}},
               {{}, {"/usr/bin/no", "/usr/bin/hardinfo"}, {"/usr/bin/hardinfo"}}};
  for (const auto& c : casos) {
    m.valores = c.registro;
    m.del_escritorio = c.escritorio;
    m.iniciados.clear();
    plat.cajas.clear();
    a.cmdSysInfo.Click();
    EXPECT_TRUE(m.iniciados == c.iniciados && m.abiertas == 0);
    EXPECT_EQ(textos(), c.iniciados.empty() ? "La información del sistema no está disponible en este momento" : "");
  }
  std::string numero;
  m.valores = {{"K|n", {4, {0x0B, 0x0A, 0, 0}, 4}}};
  EXPECT_TRUE(GetKeyValue(m, 0, "K", "n", numero) && numero == "171");
}

}  // namespace
