#include <sys/stat.h>

#include "image/mesa_de_carga.h"
#include "platform/sin_privilegios.h"

namespace {

TEST_F(carga, what_is_no_readable_file_is_named) {
  const std::string base = dir.ruta().string() + "/";
  ASSERT_EQ(::mkfifo((base + "tubo").c_str(), 0600), 0);
  fs::create_symlink("circulo", base + "circulo");
  fs::permissions(dir.escribir("secreto", "S1061000AABBCCB8"), fs::perms(0));
  fs::resize_file(dir.escribir("enorme", ""), (128 << 20) + 1);
  fs::permissions(dir.ruta(), fs::perms(0777));
  const std::pair<std::string, const char*> casos[] = {
      {"tubo", "no es un archivo normal"},
      {"secreto/x", "el archivo no existe"},
      {"circulo", "sus enlaces se muerden la cola"},
      {"secreto", "no hay permiso para leerlo"},
      {std::string(256, 'n'), "el nombre es demasiado largo"},
      {"enorme", "es demasiado grande: el máximo son 128 MiB"},
  };
  const sin_privilegios guarda;
  for (const auto& [nombre, motivo] : casos) {
    cargar_archivo(base + nombre, true);
    espera_fallo("Motivo: " + std::string(motivo));
  }
}

}  // namespace
