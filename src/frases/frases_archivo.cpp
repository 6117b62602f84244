#include "files/texto.h"
#include "frases/frases.h"

namespace morvane {

namespace {

std::string caracteres(const fallo_carga& f) {
  return std::to_string(f.hay) + " caracteres";
}

std::string en_la_linea(const fallo_carga& f) {
  using clase = fallo_carga::clase;
  const std::string limite = std::to_string(f.limite);
  switch (f.cual) {
    case clase::linea_corta:
      return "tiene " + caracteres(f) + " y un registro S" + std::to_string(f.tipo) + " necesita al menos " + limite;
    case clase::datos_largos:
      return "el campo de datos tiene " + caracteres(f) + " y el máximo es " + limite;
    case clase::cifra:
      return "el carácter " + std::to_string(f.hay) + " es de la dirección y no es una cifra hexadecimal";
    case clase::fuera_de_memoria:
      return "la dirección 0x" + hex(static_cast<std::uint32_t>(f.hay), 6) + " está fuera de la memoria";
    case clase::linea_larga:
      return "tiene " + caracteres(f) + " y el máximo es " + limite;
    case clase::no_cabe:
      return "el archivo no cabe en la memoria";
    case clase::archivo:
      break;
  }
  return frase(f.archivo);
}

}  // namespace

using clase = causa_archivo::clase;

std::string frase(const causa_archivo& causa) {
  constexpr std::uint64_t mebibyte = std::uint64_t{1024} * 1024;
  switch (causa.cual) {
    case clase::ninguna:
      break;
    case clase::no_existe:
      return "el archivo no existe";
    case clase::sin_permiso:
      return "no hay permiso para leerlo";
    case clase::no_es_normal:
      return "no es un archivo normal";
    case clase::nombre_largo:
      return "el nombre es demasiado largo";
    case clase::enlaces_en_circulo:
      return "sus enlaces se muerden la cola";
    case clase::disco:
      return "no se puede leer: el disco ha dado un error";
    case clase::ha_cambiado:
      return "ha cambiado mientras se leía";
    case clase::demasiado_grande:
      return "es demasiado grande: el máximo son " + std::to_string(causa.limite / mebibyte) + " MiB";
    case clase::sistema:
      return "no se puede leer: error " + std::to_string(causa.error) + " del sistema";
    case clase::lleno:
    case clase::solo_lectura:
      return frase_de_escritura(causa);
  }
  return {};
}

std::string frase_de_escritura(const causa_archivo& causa) {
  switch (causa.cual) {
    case clase::no_existe:
      return "la carpeta no existe";
    case clase::sin_permiso:
      return "no hay permiso para escribirlo";
    case clase::disco:
      return "no se puede escribir: el disco ha dado un error";
    case clase::lleno:
      return "no queda sitio en el disco";
    case clase::solo_lectura:
      return "el disco es de solo lectura";
    case clase::sistema:
      return "no se puede escribir: error " + std::to_string(causa.error) + " del sistema";
    case clase::ninguna:
    case clase::no_es_normal:
    case clase::nombre_largo:
    case clase::enlaces_en_circulo:
    case clase::ha_cambiado:
    case clase::demasiado_grande:
      break;
  }
  return frase(causa);
}

std::string frase(const fallo_carga& fallo) {
  if (fallo.cual == fallo_carga::clase::archivo) return "Motivo: " + frase(fallo.archivo);
  return "Línea " + std::to_string(fallo.linea) + ": " + en_la_linea(fallo);
}

}  // namespace morvane
