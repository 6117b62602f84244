// Whatever a path leads to: the load ends soon, with one box that says why, and leaves nothing half loaded.

#include <sys/stat.h>

#include "image/cargar_bin.h"
#include "mundo_carga.h"
#include "platform/sin_privilegios.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

const std::string registro = "S1061000AABBCCB8\r\n";

struct entradas : testing::TestWithParam<const char*> {
  entradas() { fs::permissions(m.carpeta.ruta(), fs::perms(0777)); }
  bool binaria() const { return GetParam() == std::string("bin"); }
  void cargar(const std::string& ruta) {
    m.plat.cajas.clear();
    m.v.dir_max = 7;
    if (binaria()) {
      m.v.ruta_archivo = ruta;
      limpiar_buffer_salida(m.v);
      cargar_bin(m.plat, m.v);
    } else {
      m.cargar_archivo(ruta);
    }
  }
  void espera_fallo(const std::string& ruta, const std::string& motivo) {
    const caja esperada{"Atención", "No se ha podido cargar el archivo:\r\n" + ruta + "\r\nMotivo: " + motivo,
                        botones::Aceptar, icono::critico};
    EXPECT_EQ(m.plat.cajas, std::vector{esperada});
    EXPECT_TRUE(m.borrada() && m.v.dir_max == 0);
  }

  mundo_carga m;
};

TEST_P(entradas, what_is_no_readable_file_is_named) {
  const std::string base = m.carpeta.ruta().string() + "/";
  ASSERT_EQ(::mkfifo((base + "tubo").c_str(), 0600), 0);
  fs::create_symlink("tubo", base + "a_tubo");
  fs::create_symlink("/dev/zero", base + "cero");
  fs::create_symlink("nada", base + "colgado");
  fs::create_symlink("circulo", base + "circulo");
  fs::permissions(m.carpeta.escribir("secreto", registro), fs::perms(0));
  for (const std::uintmax_t gib : {2, 1024}) {
    const std::string ruta = m.carpeta.escribir(std::to_string(gib), registro);
    fs::resize_file(ruta, gib << 30);
  }
  const std::pair<std::string, const char*> casos[] = {
      {"", "no es un archivo normal"},
      {"tubo", "no es un archivo normal"},
      {"a_tubo", "no es un archivo normal"},
      {"cero", "no es un archivo normal"},
      {"colgado", "el archivo no existe"},
      {"secreto/x", "el archivo no existe"},
      {std::string("2\0", 2), "el archivo no existe"},
      {"\xFF\xFE\n\"\x1B[2J\x7F", "el archivo no existe"},
      {"circulo", "sus enlaces se muerden la cola"},
      {"secreto", "no hay permiso para leerlo"},
      {std::string(256, 'n'), "el nombre es demasiado largo"},
      {std::string(100'000, '/'), "el nombre es demasiado largo"},
      {"2", "es demasiado grande: el máximo son 128 MiB"},
      {"1024", "es demasiado grande: el máximo son 128 MiB"},
  };
  const sin_privilegios guarda;
  for (const auto& [nombre, motivo] : casos) {
    cargar(base + nombre);
    espera_fallo(base + nombre, motivo);
  }
}

TEST_P(entradas, a_name_of_any_bytes_loads) {
  cargar(m.carpeta.escribir("\xFF\xFE\n\"\x1B[2J\x7F ", registro));
  EXPECT_EQ(m.v.dir_max, binaria() ? 17 : 0x1003);
}

INSTANTIATE_TEST_SUITE_P(cargadores, entradas, testing::Values("s19", "bin"));

}  // namespace
}  // namespace morvane
