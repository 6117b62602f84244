#include "job/conversacion.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cifras.h"
#include "files/texto.h"
#include "image/chip.h"

namespace morvane::job {

namespace {

/// How often a reading command goes out again, and how often a stretch of work is begun anew.
constexpr int repeticiones = 3;
constexpr int rondas_con_respuesta = 6;
constexpr int esperas_de_silencio = 4;

}  // namespace

bool conversacion::fallar(desenlace que, motivo por, std::optional<std::int32_t> dir) {
  if (fin_.bien()) {
    fin_ = fin{.que = que, .por = por, .direccion = dir};
  }
  return false;
}

bool conversacion::perdonar(desenlace que) {
  if (fin_.que != que) return false;
  fin_ = {};
  return true;
}

bool conversacion::puede_seguir() {
  if (!fin_.bien()) return false;
  return lugar().mundo.parada() == 0 || fallar(desenlace::detenido, motivo::ninguno);
}

void conversacion::contar(suceso que, std::string_view comando, std::int32_t dir, char codigo) {
  if (lugar().testigo != nullptr) lugar().testigo->ocurre(que, comando, dir, codigo);
}

void conversacion::empezar(fase cual, std::int64_t total) {
  if (lugar().testigo != nullptr) lugar().testigo->empieza(cual, total);
}

void conversacion::avanzar(std::int64_t hechos) {
  if (lugar().testigo != nullptr) lugar().testigo->avanza(hechos);
}

contestacion conversacion::pedir(const mandato& m) {
  contestacion c = hilo_.pedir(m);
  if (c.que == clase::rechazada) contar(suceso::rechazo, m.texto, -1, c.codigo);
  if (c.que == clase::reset) contar(suceso::reset, m.texto);
  if (c.que == clase::silencio) contar(suceso::sin_respuesta, m.texto);
  return c;
}

/// Notes why `m` failed for good, after it went out `veces` times.
bool conversacion::fallar_por(const mandato& m, const contestacion& c, int veces) {
  if (!fin_.bien()) return false;
  const auto de = [&c]() -> std::pair<desenlace, motivo> {
    switch (c.que) {
      case clase::rechazada:
        return {desenlace::rechazada, motivo::codigo};
      case clase::mudo:
        return {desenlace::rechazada, motivo::chip_mudo};
      case clase::silencio:
        return {desenlace::silencio, motivo::comando_sin_respuesta};
      case clase::reset:
        return {desenlace::linea, motivo::resets};
      case clase::incompleta:
        return {desenlace::linea, motivo::respuesta_incompleta};
      case clase::suma_mala:
        return {desenlace::linea, motivo::suma_mala};
      case clase::doble:
        return {desenlace::linea, motivo::respuesta_doble};
      case clase::extrana:
        return {desenlace::linea, motivo::respuesta_extrana};
      case clase::perdida:
        return {desenlace::linea, motivo::dispositivo_perdido};
      case clase::detenida:
        return {desenlace::detenido, motivo::ninguno};
      case clase::ruido:
      case clase::buena:
        break;
    }
    return {desenlace::linea, motivo::ruido};
  }();
  fallar(de.first, de.second);
  fin_.comando = m.texto;
  fin_.codigo = c.codigo;
  fin_.veces = veces;
  return false;
}

void conversacion::poner_estado(std::string_view datos) {
  estado_.valor = static_cast<std::uint8_t>(valor_hex(datos));
  permiso_ = estado_.permiso();
  configurado_ = estado_.configurado();
}

/// Closes, opens, looks. What comes back is the first reply that is not as it should be, or the status.
contestacion conversacion::reabrir() {
  contestacion c = pedir(cerrar_chip());
  if (!c.buena() && c.que != clase::rechazada) return c;
  c = pedir(abrir_chip());
  if (!c.buena()) return c;
  c = pedir(ver_estado());
  if (!c.buena()) return c;
  if (!son_cifras(c.datos)) return {clase::extrana};
  if (c.datos == "FF") return {clase::mudo};
  poner_estado(c.datos);
  return c;
}

bool conversacion::reposar() {
  if (hilo_.aquietar()) return true;
  if (lugar().linea.perdido()) return fallar(desenlace::linea, motivo::dispositivo_perdido);
  if (lugar().mundo.parada() >= 2) return fallar(desenlace::detenido, motivo::ninguno);
  return fallar(desenlace::linea, motivo::ruido);
}

/// What follows a doubt. True when the chip is open, and `estado` is what it is now.
bool conversacion::restablecer() {
  ++dudas_;
  permiso_ = configurado_ = false;
  const tiempo inicio = hilo_.ahora();
  for (int rondas = 0, veces = 1;; ++veces) {
    if (!reposar()) return false;
    const contestacion c = reabrir();
    if (c.buena()) break;
    if (c.que == clase::perdida || c.que == clase::detenida) return fallar_por(abrir_chip(), c, veces);
    if (hilo_.ahora() - std::max(inicio, hilo_.ultimo()) >= lugar().espera.silencio) {
      return fallar(desenlace::silencio, motivo::sin_respuesta);
    }
    // What drips in too slowly to be a reply is neither one nor silence.
    const bool sin_fin = hilo_.ahora() - inicio >= esperas_de_silencio * lugar().espera.silencio;
    if (sin_fin) return fallar(desenlace::linea, motivo::respuesta_incompleta);
    if (c.que != clase::silencio && ++rondas == rondas_con_respuesta) return fallar_por(abrir_chip(), c, veces);
  }
  ++hilo_.gastos.reaperturas;
  contar(suceso::reabierta);
  return true;
}

bool conversacion::dudar(const mandato& m, const contestacion& c) {
  if (c.que == clase::perdida || c.que == clase::detenida) return fallar_por(m, c, 1);
  return restablecer();
}

bool conversacion::abrir(bool sin_prisa) {
  empezar(fase::abrir);
  const contestacion c = pedir(abrir_chip());
  if (!c.buena() && !dudar(abrir_chip(), c)) return false;
  if (!mirar()) return false;
  return !sin_prisa || !estado_.ocupado() || sondear();
}

bool conversacion::abrir_de_nuevo() {
  const contestacion c = reabrir();
  return c.buena() || dudar(abrir_chip(), c);
}

bool conversacion::cerrar() {
  empezar(fase::cerrar);
  if (lugar().linea.perdido()) return false;
  const tiempo limite = hilo_.ahora() + lugar().espera.silencio;
  for (int veces = 1;;) {
    const contestacion c = hilo_.pedir(cerrar_chip());
    if (c.buena()) return true;
    if (fin_.que == desenlace::silencio || fin_.que == desenlace::linea) return false;
    if (c.que == clase::perdida || c.que == clase::detenida || !hilo_.aquietar()) return false;
    if (c.que != clase::silencio && veces++ > repeticiones) return false;
    if (hilo_.ahora() >= limite) return false;
  }
}

std::optional<estado_chip> conversacion::mirar() {
  const mandato m = job::ver_estado();
  for (int veces = 1;; ++veces) {
    contestacion c = pedir(m);
    if (c.buena() && !son_cifras(c.datos)) c = {clase::extrana};
    if (c.buena() && c.datos == "FF") c = {clase::mudo};
    if (c.buena()) {
      poner_estado(c.datos);
      return estado_;
    }
    if (veces > repeticiones) {
      fallar_por(m, c, veces);
      return std::nullopt;
    }
    // The doubt ends with a look at the status; it is asked for once more all the same, so that each call has its own.
    if (!dudar(m, c)) return std::nullopt;
    ++hilo_.gastos.repetidas;
    contar(suceso::repetida, m.texto);
  }
}

/// One of the steps that move the chip on. False is a doubt, or an end.
bool conversacion::dar(const mandato& m, int veces) {
  const contestacion c = pedir(m);
  if (c.buena()) return true;
  if (dudar(m, c) && veces > repeticiones) fallar_por(m, c, veces);
  return false;
}

/// The steps in front of the look that confirms them.
bool conversacion::dar_pasos(int veces) {
  if (!permiso_) {
    if (!dar(permitir_escritura(), veces)) return false;
    // Refused the first time: see whether it is the write enable that is missing.
    if (veces > 1 && !mirar()) return false;
    if (veces > 1 && !permiso_) return fallar(desenlace::chip, motivo::sin_permiso);
  }
  permiso_ = false;
  return dar(configurar(), veces) && dar(permitir_escritura(), veces);
}

bool conversacion::preparar() {
  for (int veces = 1; fin_.bien(); ++veces) {
    if (configurado_ && permiso_) return true;
    const int antes = dudas_;
    if (configurado_) {
      permiso_ = dar(permitir_escritura(), veces);
    } else if (dar_pasos(veces) && mirar() && dudas_ == antes && !(permiso_ && configurado_) && veces > 1) {
      fallar(desenlace::chip, configurado_ ? motivo::sin_permiso : motivo::sin_configuracion);
    }
    if (veces > 2 * repeticiones) fallar(desenlace::linea, motivo::sin_sosiego);
  }
  return false;
}

bool conversacion::permitir() {
  permiso_ = false;
  return preparar();
}

/// What follows a command that reads and was not answered well: True if it may go out again.
bool conversacion::puede_repetir(const mandato& m, const contestacion& c, int veces, std::int32_t dir) {
  if (!dudar(m, c)) return false;
  if (estado_.protegido()) return fallar(desenlace::protegida, motivo::ninguno, dir);
  if (veces > repeticiones) {
    fallar_por(m, c, veces);
    fin_.direccion = dir;
    return false;
  }
  ++hilo_.gastos.repetidas;
  contar(suceso::repetida, m.texto, dir, c.codigo);
  return true;
}

bool conversacion::grabar_palabra(std::int32_t dir, std::uint32_t palabra) {
  const mandato m = job::grabar(dir, palabra);
  for (int veces = 1; preparar(); ++veces) {
    const contestacion c = pedir(m);
    permiso_ = false;
    if (c.buena()) return true;
    if (!dudar(m, c)) break;
    if (estado_.protegido()) return fallar(desenlace::protegida, motivo::ninguno, dir);
    const auto hay = leer_palabra(dir);
    if (!hay) break;
    if (*hay == palabra) {
      contar(suceso::palabra_bien, m.texto, dir);
      return true;
    }
    if (*hay != palabra_en_blanco) return fallar(desenlace::chip, motivo::palabra_extrana, dir);
    if (veces > repeticiones) {
      fallar_por(m, c, veces);
      break;
    }
    ++hilo_.gastos.palabras_otra_vez;
    contar(suceso::palabra_otra_vez, m.texto, dir, c.codigo);
  }
  if (!fin_.direccion) fin_.direccion = dir;
  return false;
}

/// Polls until no erase runs any more.
bool conversacion::sondear() {
  const tiempo limite = hilo_.ahora() + lugar().espera.borrado;
  for (;;) {
    if (!mirar()) return false;
    if (!estado_.ocupado()) return true;
    if (hilo_.ahora() >= limite) return fallar(desenlace::chip, motivo::borrado_largo);
    if (lugar().mundo.parada() >= 2) return fallar(desenlace::detenido, motivo::ninguno);
    lugar().mundo.pausa(lugar().espera.sondeo);
  }
}

bool conversacion::borrar(int veces) {
  if (!preparar()) return false;
  const contestacion c = pedir(borrar_todo());
  permiso_ = false;
  if (!c.buena()) {
    if (!dudar(borrar_todo(), c)) return false;
    if (veces > repeticiones) return fallar_por(borrar_todo(), c, veces);
    // It may have begun, and what the doubt has made of it nobody knows.
    return !estado_.ocupado() || sondear();
  }
  if (!sondear()) return false;
  return !estado_.borrado_fallido() || fallar(desenlace::chip, motivo::borrado_fallido);
}

bool conversacion::reiniciar() {
  for (int veces = 1; preparar(); ++veces) {
    const contestacion c = pedir(job::reiniciar());
    permiso_ = configurado_ = false;
    if (c.buena() || c.que == clase::reset) return true;
    if (!dudar(job::reiniciar(), c)) break;
    if (veces > repeticiones) fallar_por(job::reiniciar(), c, veces);
  }
  return false;
}

bool conversacion::en_lote(const std::function<bool()>& trabajo) {
  for (int veces = 0; veces <= repeticiones; ++veces) {
    const int antes = dudas_;
    const bool hecho = trabajo();
    if (!fin_.bien() || !mirar()) return false;
    if (dudas_ == antes) return hecho;
  }
  return fallar(desenlace::linea, motivo::sin_sosiego);
}

}  // namespace morvane::job
