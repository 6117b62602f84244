#pragma once

#include <gtest/gtest.h>

#include "apoyo/carpeta.h"
#include "link/envio.h"
#include "link/esperas.h"
#include "link/puerto.h"
#include "platform/gemelo.h"
#include "serial/tramas.h"
#include "serial/transporte_memoria.h"

namespace apoyo {

using namespace morvane;
using namespace std::chrono_literals;

/// The twin of the desktop, a directory for the program's files and a line with `Lejos` at its far end.
template <class Lejos>
struct banco : testing::Test {
  banco() { plat.vigilar(lejos); }
  const caja& ultima() const { return plat.cajas.back(); }
  /// The texts of all boxes so far, a bar between them.
  std::string textos() const {
    std::string lista;
    for (const caja& c : plat.cajas) lista += (lista.empty() ? "" : "|") + c.texto;
    return lista;
  }

  carpeta dir;
  archivos ficheros{dir.ruta()};
  gemelo plat;
  Lejos lejos;
  transporte_memoria linea{plat, lejos};
};

/// The same, and a link on it.
template <class Lejos>
struct banco_enlace : banco<Lejos> {
  banco_enlace() { e.valores = {{"57600", "n", "8", "1", "COM1"}, this->ficheros.ruta_aplicacion()}; }
  /// Opens the port, closing it first if need be; what was shown before is forgotten.
  void reabrir() {
    cerrar_puerto(e);
    this->plat.cajas.clear();
    ASSERT_TRUE(abrir_puerto(e));
  }
  bool modo_de_siempre() const { return serial.InputLen() == 1 && serial.RThreshold() == 1; }

  MSComm serial{this->plat, this->linea};
  enlace e{this->plat, this->ficheros, serial};
};

inline caja critica(const std::string& titulo, const std::string& texto) {
  return {titulo, texto, botones::Aceptar, icono::critico};
}

/// A frame of these very characters.
inline std::string trama(const std::string& crudo) {
  return "\x02" + crudo + "\x03";
}

/// A whole frame around `contenido`, as the bridge sends it.
inline std::string marco(const std::string& contenido) {
  return trama(contenido + suma_comprobacion(contenido));
}

inline const std::string texto_pregunta =
    "No hay respuesta del Dispositivo, verifique la conexión con el puerto.\r\n"
    "Desea intentar conectarse?, si pulsa No, se saldrá del sistema";
inline const std::string texto_interrumpida =
    "La comunicación se ha interrumpido y la operación no ha terminado. Debe repetirla";
inline const std::string texto_ocupado = "El puerto ya está siendo utilizado por otra aplicación";
inline const std::string texto_no_es_puerto = "Debe escribir un puerto válido, o seleccionar uno de la lista";
inline const std::string texto_no_hay_puerto =
    "Es probable que el puerto no exista, verifique en su Sistema Operativo los puertos existentes";
inline const std::string texto_en_otra_aplicacion = "El puerto ya ha sido utilizado por otra aplicación";
inline const std::string texto_grabado = "¡Ha terminado de grabar!";
inline const std::string texto_detenido = "El proceso de grabación ha sido detenido por el usuario";
inline const std::string texto_sin_config = "Error al escribir el registro de configuración";

}  // namespace apoyo
