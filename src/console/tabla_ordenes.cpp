#include "tabla_ordenes.h"

#include <algorithm>

namespace morvane::console {

namespace {

constexpr std::array tabla_ordenes = {
    fila_orden{orden::puertos, "puertos", "", "Los puertos: adónde llevan, qué adaptador es, quién los tiene",
               "No abre ninguno.", 0, 0, 0},
    fila_orden{orden::estado, "estado", "", "¿Responde una placa, y qué dice el chip de sí mismo?", "No cambia nada.",
               0, 0, 0},
    fila_orden{orden::plan, "plan", "[--en A] ARCHIVO", "Qué haría «grabar», y las dudas sobre el archivo",
               "No habla con ninguna placa.", 1, 1, op_en},
    fila_orden{orden::borrar, "borrar", "", "Borra el chip, salvo que ya lo esté, y lo demuestra",
               "Quita también la protección.", 0, 0, 0},
    fila_orden{orden::grabar, "grabar", "[--prueba sumas|lectura] [--certificado ARCHIVO] [--todo] [--en A] ARCHIVO",
               "Borra si hace falta, graba y lo demuestra en toda la memoria",
               "Solo termina con el código 0 si el chip tiene lo que debe. Quita también la protección.", 1, 1,
               op_prueba | op_certificado | op_todo | op_en},
    fila_orden{orden::verificar, "verificar", "[--prueba sumas|lectura] [--certificado ARCHIVO] [--en A] ARCHIVO",
               "Demuestra que el chip es igual al archivo, o dice dónde y cómo difiere", "No cambia nada.", 1, 1,
               op_prueba | op_certificado | op_en},
    fila_orden{orden::leer, "leer", "[--desde A] [--hasta B] ARCHIVO",
               "Lee la memoria, o de A a B, a un archivo .s19, .hex o .bin",
               "Si algo falla no queda ningún archivo, ni se toca el que hubiera.", 1, 1, op_desde | op_hasta},
    fila_orden{orden::identificar, "identificar", "[--en A] [ARCHIVO...]", "¿Cuál de estos archivos está en el chip?",
               "Sin archivos, los de la lista de archivos del programa.", 0, sin_limite, op_en},
    fila_orden{orden::convertir, "convertir", "[--en A] DESDE HACIA", "Pasa un archivo de un formato a otro",
               "De S-records, Intel HEX, ELF o binario a .s19, .hex o .bin. Un .bin empieza siempre en la dirección 0.",
               2, 2, op_en},
    fila_orden{orden::reset, "reset", "", "Reinicia el procesador", "", 0, 0, 0},
    fila_orden{orden::proteger, "proteger", "--si", "Protege el chip contra la lectura",
               "Después solo se puede borrar o volver a grabar.", 0, 0, op_si},
    fila_orden{orden::medir, "medir", "", "Lo que cuestan la línea y su adaptador, y una memoria entera",
               "No cambia nada.", 0, 0, 0},
    fila_orden{orden::comprobar, "comprobar", "[--en A] CERTIFICADO [ARCHIVO]",
               "¿Está entero un certificado, y es de este archivo?", "No habla con ninguna placa.", 1, 2, op_en},
};

constexpr std::array tabla_propias = {
    fila_opcion{op_prueba, "--prueba", "--prueba CÓMO", "sumas (si no se dice) o lectura: todos los bytes, leídos"},
    fila_opcion{op_certificado, "--certificado", "--certificado ARCHIVO",
                "Deja ahí un certificado firmado de lo hecho"},
    fila_opcion{op_todo, "--todo", "--todo", "Graba también las palabras FFFFFFFF"},
    fila_opcion{op_desde, "--desde", "--desde A", "Primera dirección, en hexadecimal: 3F000 o 0x3F000; si no, 0"},
    fila_opcion{op_hasta, "--hasta", "--hasta B", "Última dirección, incluida; si no, 3FFFF"},
    fila_opcion{op_en, "--en", "--en A", "Dónde empiezan los bytes de un archivo .bin; si no, en 0"},
    fila_opcion{op_si, "--si", "--si", "Que sí: sin ella no se protege nada"},
};

constexpr std::array tabla_comunes = {
    fila_opcion{0, "--puerto", "--puerto P", "COM3, un dispositivo o un enlace; si no, el de SETTINGS.TXT"},
    fila_opcion{0, "--velocidad", "--velocidad N", "Baudios, de 50 a 4000000; si no, los de SETTINGS.TXT"},
    fila_opcion{0, "--directorio", "--directorio D", "La carpeta del programa; si no, la de este ejecutable"},
    fila_opcion{0, "--json", "--json", "Una línea de JSON por suceso; la última es el resultado"},
    fila_opcion{0, "--traza", "--traza ARCHIVO", "Deja ahí lo que pasa por la línea, con su hora"},
    fila_opcion{0, "-q", "-q", "Callada: solo los errores"},
    fila_opcion{0, "-h", "-h, --ayuda, --help", "Esta ayuda, o la de una orden"},
    fila_opcion{0, "--version", "--version", "La versión"},
};

}  // namespace

std::span<const fila_orden> ordenes() {
  return tabla_ordenes;
}

const fila_orden& fila_de(orden que) {
  return *std::ranges::find(tabla_ordenes, que, &fila_orden::que);
}

std::span<const fila_opcion> opciones_propias() {
  return tabla_propias;
}

std::span<const fila_opcion> opciones_comunes() {
  return tabla_comunes;
}

}  // namespace morvane::console
