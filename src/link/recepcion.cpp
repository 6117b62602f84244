#include "link/recepcion.h"

#include <array>

#include "files/texto.h"
#include "link/envio.h"
#include "serial/tramas.h"

namespace morvane {

namespace {

/// Boxes of the reception and RESET signals that one operation survives.
constexpr int maximo_cajas = 3;
constexpr int maximo_resets = 1;

/// Characters that an unfinished frame may grow to; noise beyond is not kept.
constexpr std::size_t maximo_respuesta = 4096;

constexpr std::size_t digitos_de_estado = 2;

constexpr std::string_view titulo_chip = "Atención respuesta del Chip";

constexpr std::array<std::string_view, 9> errores_chip = {
    "",
    "El comando enviado fue demasiado largo",
    "Error en CRC",
    "El comando enviado fue demasiado corto",
    "El comando enviado tiene un formato incorrecto",
    "El tipo de comando no es soportado por el chip",
    "Ez Port no está activado",
    "Comando no implementado",
    "Error parámetros fuera de rango",
};

void avisar(enlace& e, const caja& mensaje, const hechos& de_que) {
  preguntar(e, mensaje, de_que);
  if (++e.operacion.cajas_recepcion > maximo_cajas) interrumpir(e, rotura::rechazos);
}

void recibir_reset(enlace& e) {
  avisar(e, {"Atención", "Se ha recibido una señal de RESET", botones::Aceptar, icono::informacion},
         {.que = asunto::reset});
  if (++e.operacion.resets > maximo_resets) interrumpir(e, rotura::reset);
  if (e.operacion.interrumpida) return;
  e.control_serie.descartar_entrada();
  enviar_comando(e, "A");
  e.spera_resp.Enabled(true);
}

void recibir_estado(enlace& e, std::string_view datos) {
  const std::uint32_t estado = valor_hex(std::string_view(e.respuesta).substr(1, digitos_de_estado));
  e.registro_estado = static_cast<std::uint8_t>(estado);
  if (e.registro_estado == 0xFF) {
    avisar(e,
           {"Atención", "Verifique la conexión con el dispositivo, y compruebe que el EzPort está activo",
            botones::Aceptar, icono::critico},
           {.que = asunto::sin_chip});
    return;
  }
  // A reply to another command has the digits of its checksum where a status stands.
  e.envio.estado_reciente = datos.size() == digitos_de_estado;
  const auto bit = [estado](int n) { return static_cast<std::uint8_t>(estado >> n & 1); };
  e.bit_wip = bit(0);
  e.bit_wen = bit(1);
  e.bit_config = bit(5);
  e.bit_wef = bit(6);
  e.bit_fs = bit(7);
}

/// True for a late reply to something that was sent before the last command, where its shape tells: replies come in the
/// order of their commands, and those to a status and to a reading bring data. One of these that has come ends the time
/// in which there may be late ones.
bool rezagada(enlace& e, const respuesta_leida& r) {
  const bool con_datos = e.ultimo_comando == 'c' || e.ultimo_comando == 'e';
  if (!e.linea_inquieta || !con_datos || !r.hecha()) return false;
  const bool es_estado = r.datos.size() == digitos_de_estado;
  const bool es_lectura = r.datos.size() > digitos_de_estado;
  e.linea_inquieta = e.ultimo_comando == 'c' ? !es_estado : !es_lectura;
  return e.linea_inquieta;
}

void recibir_trama(enlace& e) {
  const auto leida = leer_respuesta(e.respuesta);
  if (!leida) {
    avisar(e,
           {"Atención Error", "Error en la comunicación, el Cheksum ha fallado, verifique la conexión y el cableado",
            botones::Aceptar, icono::critico},
           {.que = asunto::suma_mala});
    interrumpir(e, rotura::suma);
    return;
  }
  ++e.cuentas.respuestas;
  // The text of an older reply once more, or run into it: whatever it is, it does not answer this command.
  if (!e.envio.trama_empezada) interrumpir(e, rotura::ajena);
  if (e.espera != nullptr) ++e.espera->respuestas;
  if (rezagada(e, *leida)) {
    e.datos_listos = e.envio.trama_empezada = false;
    return;
  }
  e.respuesta_lista = true;
  e.codigo_respuesta = leida->codigo;
  if (leida->es_reset()) return recibir_reset(e);
  if (leida->hecha()) {
    if (e.ultimo_comando == 'c') recibir_estado(e, leida->datos);
  } else if (!mostrar_error_chip(e, leida->codigo)) {
    // An echo, or whatever else it is: it answers nothing.
    interrumpir(e, rotura::ajena);
  }
}

/// Character follows character here, and assigning a text costs many times as much.
void poner(std::string& destino, std::string_view texto) {
  if (texto.size() == 1 && destino.size() == 1) {
    destino.front() = texto.front();
  } else {
    destino.assign(texto);
  }
}

void recibir_caracter(enlace& e) {
  if (e.entrada_serie.empty()) return;
  const char c = e.entrada_serie.front();
  if (c == STX) {
    e.respuesta.clear();
    e.envio.trama_empezada = true;
  } else if (c == ETX) {
    recibir_trama(e);
  } else if (e.respuesta.size() < maximo_respuesta) {
    e.respuesta.push_back(c);
  }
}

/// A reply of a fixed length that is none is noise, and the true one is still to come.
void recibir_fija(enlace& e, int largo) {
  const std::string_view entrada = e.entrada_serie;
  const bool trama = static_cast<int>(entrada.size()) == largo && entrada.front() == STX && entrada.back() == ETX;
  if (!trama) e.linea_inquieta = true;
  if (trama) ++e.cuentas.respuestas;
  switch (largo) {
    case 5:
      e.respuesta = entrada.substr(1, 3);
      break;
    case 16:
      e.respuesta = entrada.substr(5, 8);
      break;
    case 15:
    case 47:
      e.respuesta = entrada;
      break;
    default:
      break;
  }
}

}  // namespace

void serial_OnComm(enlace& e) {
  if (e.control_serie.CommEvent() != MSComm::comEvReceive) return;
  poner(e.entrada_serie, e.control_serie.Input());
  if (e.operacion.interrumpida) return;
  e.datos_listos = true;
  const int largo = e.control_serie.RThreshold();
  if (largo == 1) return recibir_caracter(e);
  recibir_fija(e, largo);
}

bool mostrar_error_chip(enlace& e, char codigo) {
  if (codigo < '1' || codigo > '9') return false;
  const std::string_view texto = errores_chip.at(static_cast<std::size_t>(codigo - '1'));
  avisar(e, {std::string(titulo_chip), std::string(texto), botones::Aceptar, icono::critico},
         {.que = asunto::rechazo, .codigo = codigo});
  return true;
}

}  // namespace morvane
