#include "frases/frases.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace morvane {
namespace {

TEST(frases, a_port_says_what_is_wrong_and_what_to_do) {
  using clase = causa_puerto::clase;
  const std::pair<causa_puerto, const char*> casos[] = {
      {{.cual = clase::carpeta_movida, .puerto = 1, .ruta = "/p", .enlace = "/p/puertos/COM1"},
       "COM1: la carpeta del programa ya no está en /p; cierre el programa y vuelva a arrancarlo"},
      {{.cual = clase::sin_enlace, .puerto = 0, .enlace = "/p/COM0"}, "COM0: no existe el enlace /p/COM0"},
      {{.cual = clase::sin_nada, .puerto = 5, .ruta = "/dev/x", .enlace = "/p/COM5"},
       "COM5: no existen ni /dev/x ni el enlace /p/COM5"},
      {{.cual = clase::sin_nada, .puerto = causa_puerto::sin_numero, .ruta = "/dev/x"}, "no existe /dev/x"},
      {{.cual = clase::enlace_roto, .puerto = 1, .ruta = "/dev/x", .enlace = "/p/COM1"},
       "COM1: el enlace /p/COM1 lleva a /dev/x, que no existe"},
      {{.cual = clase::enlace_pasado, .puerto = 2, .ruta = "/dev/pts/3", .enlace = "/p/COM1"},
       "COM2: el enlace /p/COM1 es de una placa que ya no está: /dev/pts/3 se ha abierto después y es de otro "
       "programa; "
       "arranque la placa otra vez, o cambie o quite el enlace"},
      {{.cual = clase::ocupado, .puerto = 1, .ruta = "/dev/x", .quien = "a\nb (pid 3)"},
       "COM1: /dev/x: ocupado por a?b (pid 3)"},
      {{.cual = clase::falta_grupo, .puerto = 1, .ruta = "/dev/x", .quien = "dialout"},
       "COM1: /dev/x: sin permiso: ejecute «sudo usermod -aG dialout $USER» y vuelva a iniciar la sesión"},
      {{.cual = clase::parametros, .puerto = 3, .linea = {115200, 'e', 5, 3}},
       "COM3: el dispositivo no admite estos parámetros: 115200 baudios, paridad e, 5 bits de datos, 1,5 de parada"},
      {{.cual = clase::windows, .puerto = 9, .error = 31}, "COM9: no se puede abrir: error 31 de Windows"},
      {{.cual = clase::no_existe, .puerto = 7}, "COM7: no existe en este equipo"},
  };
  for (const auto& [causa, esperada] : casos) EXPECT_EQ(frase(causa), esperada);
}

TEST(frases, a_port_is_described_as_far_as_it_is_known) {
  descripcion_puerto puerto{.numero = 4, .dispositivo = "/dev/ttyUSB0", .nombre = "FT232R (FTDI)", .quien = ""};
  EXPECT_EQ(frase(puerto), "COM4: /dev/ttyUSB0\nFT232R (FTDI)\nLibre");
  puerto.conductor = "ftdi_sio";
  EXPECT_EQ(frase(puerto), "COM4: /dev/ttyUSB0\nFT232R (FTDI), conductor ftdi_sio\nLibre");
  puerto.conductor.clear();
  puerto.quien = "minicom (pid 7)";
  EXPECT_EQ(frase(puerto), "COM4: /dev/ttyUSB0\nFT232R (FTDI)\nLo tiene abierto minicom (pid 7)");
  puerto.cerrado = causa_puerto{.cual = causa_puerto::clase::sin_permiso, .ruta = "/dev/ttyUSB0"};
  EXPECT_EQ(frase(puerto), "COM4: /dev/ttyUSB0\nFT232R (FTDI)\nNo se puede abrir: sin permiso");
  puerto = {.numero = 1, .dispositivo = "/dev/pts/1", .placa_simulada = true, .quien = {}};
  EXPECT_EQ(frase(puerto), "COM1: /dev/pts/1\nPlaca simulada");
}

TEST(frases, a_file_and_its_line_say_what_is_wrong) {
  using clase = fallo_carga::clase;
  const std::pair<fallo_carga, const char*> casos[] = {
      {{.cual = clase::linea_corta, .hay = 2, .limite = 10, .tipo = 1},
       "tiene 2 caracteres y un registro S1 necesita al menos 10"},
      {{.cual = clase::datos_largos, .hay = 249, .limite = 248},
       "el campo de datos tiene 249 caracteres y el máximo es 248"},
      {{.cual = clase::cifra, .hay = 7}, "el carácter 7 es de la dirección y no es una cifra hexadecimal"},
      {{.cual = clase::fuera_de_memoria, .hay = 0x40002}, "la dirección 0x040002 está fuera de la memoria"},
      {{.cual = clase::fuera_de_memoria, .hay = 0xFFFFFFFE}, "la dirección 0xFFFFFFFE está fuera de la memoria"},
      {{.cual = clase::linea_larga, .hay = 253, .limite = 252}, "tiene 253 caracteres y el máximo es 252"},
      {{.cual = clase::no_cabe}, "el archivo no cabe en la memoria"},
  };
  for (const auto& [fallo, esperada] : casos) {
    EXPECT_EQ(frase(fallo_en_linea(4, fallo)), std::string("Línea 4: ") + esperada);
  }
  using archivo = causa_archivo::clase;
  const std::pair<causa_archivo, const char*> archivos[] = {
      {causa_de_lectura(ENOTDIR), "el archivo no existe"},
      {causa_de_lectura(EACCES), "no hay permiso para leerlo"},
      {causa_de_lectura(ENODEV), "no es un archivo normal"},
      {causa_de_lectura(ENAMETOOLONG), "el nombre es demasiado largo"},
      {causa_de_lectura(ELOOP), "sus enlaces se muerden la cola"},
      {causa_de_lectura(EIO), "no se puede leer: el disco ha dado un error"},
      {causa_de_lectura(5000), "no se puede leer: error 5000 del sistema"},
      {{archivo::ha_cambiado}, "ha cambiado mientras se leía"},
      {{archivo::demasiado_grande, 0, 128 << 20}, "es demasiado grande: el máximo son 128 MiB"},
  };
  EXPECT_EQ(frase_de_escritura(causa_de_escritura(ENOENT)), "la carpeta no existe");
  EXPECT_EQ(frase_de_escritura(causa_de_escritura(ENOSPC)), "no queda sitio en el disco");
  EXPECT_EQ(frase_de_escritura(causa_de_escritura(EACCES)), "no hay permiso para escribirlo");
  EXPECT_EQ(frase_de_escritura(causa_de_escritura(EISDIR)), "no es un archivo normal");
  for (const auto& [causa, esperada] : archivos) {
    EXPECT_EQ(frase(fallo_de_archivo(causa)), std::string("Motivo: ") + esperada);
  }
}

}  // namespace
}  // namespace morvane
