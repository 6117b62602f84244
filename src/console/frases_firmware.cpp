#include "console/firmware.h"
#include "files/texto.h"
#include "frases/frases.h"

namespace morvane::console {

namespace {

std::string hexa(std::uint64_t valor, std::size_t cifras) {
  constexpr int bits = 32;
  const auto alta = static_cast<std::uint32_t>(valor >> bits), baja = static_cast<std::uint32_t>(valor);
  return alta == 0 ? hex(baja, cifras) : hex(alta) + hex(baja, bits / 4);
}

std::string veces(std::uint64_t cuantos, std::string_view uno, std::string_view varios) {
  return std::to_string(cuantos).append(" ").append(cuantos == 1 ? uno : varios);
}

constexpr std::size_t cifras_dir = 6;

std::string que_pasa(const fallo_firmware& f) {
  using clase = fallo_firmware::clase;
  const std::string hay = std::to_string(f.hay), debe = std::to_string(f.debe);
  switch (f.cual) {
    case clase::formato_desconocido:
      return "su extensión no es de un formato conocido: .s19 .s28 .s37 .srec .mot, .hex, .elf .axf .out o .bin";
    case clase::archivo:
      return frase(f.archivo);
    case clase::sin_datos:
      return f.hay == 0 ? "no tiene ningún dato"
                        : "no tiene ningún dato: " + veces(f.hay, "línea no es un registro", "líneas no son registros");
    case clase::carga:
      return {};
    case clase::cifra:
      return "el carácter " + hay + " no es una cifra hexadecimal";
    case clase::blanco:
      return "el carácter " + hay + " es un blanco, y un registro no lleva ninguno";
    case clase::corto:
      return "el registro está cortado";
    case clase::cuenta:
      return "el registro dice que tiene " + debe + " bytes y tiene " + hay;
    case clase::suma:
      return "la suma del registro es " + hexa(f.hay, 2) + " y debería ser " + hexa(f.debe, 2);
    case clase::registros:
      return "el registro de cuenta dice que hay " + veces(f.hay, "registro", "registros") + " de datos, y hay " + debe;
    case clase::tipo:
      return "el tipo de registro " + hexa(f.hay, 2) + " no existe";
    case clase::largo_de_tipo:
      return "un registro de su tipo tiene " + veces(f.debe, "byte", "bytes") + " de datos, y este " + hay;
    case clase::fuera_de_memoria:
      return "la dirección 0x" + hexa(f.hay, cifras_dir) + " está fuera de la memoria";
    case clase::no_es_elf:
      return "no es un archivo ELF";
    case clase::elf_danado:
      return "el archivo ELF está cortado o dañado";
    case clase::sin_segmentos:
      return "el archivo ELF no tiene segmentos que cargar: ¿está sin enlazar?";
  }
  return {};
}

}  // namespace

std::string frase(const fallo_firmware& fallo) {
  if (fallo.cual == fallo_firmware::clase::carga) return "l" + frase(fallo.carga).substr(1);
  if (fallo.linea == 0) return que_pasa(fallo);
  return "línea " + std::to_string(fallo.linea) + ": " + que_pasa(fallo);
}

std::string frase(const aviso& que) {
  const std::string linea = std::to_string(que.linea);
  const std::string dir = hexa(static_cast<std::uint32_t>(que.direccion), cifras_dir);
  switch (que.cual) {
    case aviso::clase::lineas_ajenas:
      return veces(que.cuantos, "línea no es un registro y se ha pasado por alto",
                   "líneas no son registros y se han pasado por alto") +
             ": la primera, la " + linea;
    case aviso::clase::sin_final:
      return "no tiene el registro que acaba un archivo: puede faltarle el final";
    case aviso::clase::tras_el_final:
      return "tras el registro que acaba el archivo " +
             veces(que.cuantos, "registro más tiene datos", "registros más tienen datos") +
             ": el primero, en la línea " + linea;
    case aviso::clase::solapado:
      return veces(que.cuantos, "dirección se da", "direcciones se dan") +
             " dos veces con valores distintos; la primera, " + dir +
             (que.linea == 0 ? "" : ", otra vez en la línea " + linea) + ". Vale el último";
    case aviso::clase::pisado_por_relleno:
      return veces(que.cuantos, "byte del archivo queda tapado", "bytes del archivo quedan tapados") +
             " por el relleno con FF de un registro cuyos datos no acaban en un grupo de cuatro; el primero, en " + dir;
    case aviso::clase::configuracion_a_cero:
      return veces(que.cuantos, "byte del archivo para la configuración no se carga",
                   "bytes del archivo para la configuración no se cargan") +
             ", sino 00, como en la ventana; el primero, en " + dir;
    case aviso::clase::configuracion_no_pasa:
      return "escrito como registros S, " +
             veces(que.cuantos, "byte de la configuración se cargará", "bytes de la configuración se cargarán") +
             " como 00; el primero, en " + dir;
    case aviso::clase::cabecera_de_elf:
      return "lo que se carga en " + dir + " empieza con la cabecera del propio archivo ELF";
    case aviso::clase::otro_procesador:
      return "es un programa para un procesador de otra clase (número " + std::to_string(que.cuantos) + " de ELF)";
  }
  return {};
}

std::string_view nombre_de(aviso::clase cual) {
  switch (cual) {
    case aviso::clase::lineas_ajenas:
      return "lineas_ajenas";
    case aviso::clase::sin_final:
      return "sin_final";
    case aviso::clase::tras_el_final:
      return "tras_el_final";
    case aviso::clase::solapado:
      return "solapado";
    case aviso::clase::pisado_por_relleno:
      return "pisado_por_relleno";
    case aviso::clase::configuracion_a_cero:
      return "configuracion_a_cero";
    case aviso::clase::configuracion_no_pasa:
      return "configuracion_no_pasa";
    case aviso::clase::cabecera_de_elf:
      return "cabecera_de_elf";
    case aviso::clase::otro_procesador:
      return "otro_procesador";
  }
  return {};
}

}  // namespace morvane::console
