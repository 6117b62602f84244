#include "console/programa.h"

#include <exception>
#include <new>

#include "files/texto.h"
#include "frases.h"
#include "ordenes.h"

namespace morvane::console {

namespace {

using job::desenlace;

cierre hacer(const llamada& ll) {
  switch (ll.a.que) {
    case orden::puertos:
      return hacer_puertos(ll);
    case orden::estado:
      return hacer_estado(ll);
    case orden::plan:
      return hacer_plan(ll);
    case orden::borrar:
      return hacer_borrar(ll);
    case orden::grabar:
      return hacer_grabar(ll);
    case orden::verificar:
      return hacer_verificar(ll);
    case orden::leer:
      return hacer_leer(ll);
    case orden::identificar:
      return hacer_identificar(ll);
    case orden::convertir:
      return hacer_convertir(ll);
    case orden::reset:
      return hacer_reset(ll);
    case orden::proteger:
      return hacer_proteger(ll);
    case orden::medir:
      return hacer_medir(ll);
    case orden::comprobar:
      // It comes with the certificates.
      fracasar(desenlace::interno, "Esta orden todavía no está.");
  }
  return {};
}

cierre fallo_interno(std::string_view que) {
  return {.que = desenlace::interno, .texto = en_frase("fallo interno: " + std::string(que))};
}

/// Whatever is thrown is an end.
cierre hacer_con_red(const llamada& ll) {
  try {
    return hacer(ll);
  } catch (const fracaso& f) {
    return f.fin;
  } catch (const std::exception& e) {
    return fallo_interno(e.what());
  } catch (...) {
    return fallo_interno("sin nombre");
  }
}

std::unique_ptr<informe> hacer_cara(exterior& fuera, bool con_json, bool callada) {
  return con_json ? informe_json(fuera) : informe_persona(fuera, callada);
}

/// The fields of every result, those of the order behind them.
void completar(cierre& c, job::tiempo gastado) {
  json j = {{"segundos", std::chrono::duration<double>(gastado).count()}, {"caracteres", 0}};
  j.update(c.datos);
  c.datos = std::move(j);
}

/// Tells the end. What could not be said at all is an end of its own, unless there was a worse one.
int terminar(exterior& fuera, informe& cara, std::string_view orden, cierre c, job::tiempo inicio) {
  completar(c, fuera.mundo().ahora() - inicio);
  const int codigo = codigo_de(c.que, fuera.senal());
  cara.fin(orden, codigo, c);
  if (codigo != 0 || !fuera.normal().fallida()) return codigo;
  fuera.errores().escribir("morvane-cli: no se puede escribir en la salida; lo pedido se ha hecho.\n");
  return static_cast<int>(desenlace::archivo);
}

int atender(const argumentos& a, exterior& fuera) {
  const auto inicio = fuera.mundo().ahora();
  const auto cara = hacer_cara(fuera, a.json, a.callada);
  cara->inicio(a);
  return terminar(fuera, *cara, nombre_de(a.que), hacer_con_red({a, fuera, *cara}), inicio);
}

int atender(const a_mostrar& m, exterior& fuera) {
  const bool es_ayuda = m.cual == a_mostrar::clase::ayuda;
  if (m.json) {
    cierre c{.texto = es_ayuda ? "Ayuda." : en_frase(std::string(sin_blancos(m.texto)))};
    c.datos[es_ayuda ? "ayuda" : "version"] = es_ayuda ? m.texto : MORVANE_VERSION;
    return terminar(fuera, *informe_json(fuera), "", std::move(c), fuera.mundo().ahora());
  }
  fuera.normal().escribir(m.texto);
  return fuera.normal().fallida() ? static_cast<int>(desenlace::archivo) : 0;
}

int atender(const mal_uso& m, exterior& fuera) {
  cierre c{.que = desenlace::uso, .texto = en_frase(m.frase), .detalle = {"Uso: " + m.forma}};
  c.detalle.push_back("Más: morvane-cli " + (m.que ? std::string(nombre_de(*m.que)) + " " : "") + "--ayuda");
  c.datos["forma"] = m.forma;
  const auto cara = hacer_cara(fuera, m.json, false);
  return terminar(fuera, *cara, m.que ? nombre_de(*m.que) : "", std::move(c), fuera.mundo().ahora());
}

}  // namespace

int correr(std::span<const std::string> palabras, exterior& fuera) {
  try {
    return std::visit([&](const auto& que) { return atender(que, fuera); }, leer_argumentos(palabras));
  } catch (...) {
    // Not even the face could be made: there is no memory for a sentence of one's own.
    fuera.errores().escribir("morvane-cli: fallo interno.\n");
    return static_cast<int>(desenlace::interno);
  }
}

}  // namespace morvane::console
