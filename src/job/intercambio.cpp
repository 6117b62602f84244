#include "job/intercambio.h"

#include <algorithm>
#include <utility>

#include "serial/parametros_linea.h"
#include "serial/tramas.h"

namespace morvane::job {

namespace {

/// Nothing that a board answers is that long.
constexpr std::size_t demasiado = 600;
/// The quiet after which a slow line counts as quiet, in characters, and how often it is looked at meanwhile.
constexpr std::int64_t caracteres_de_reposo = 5;
constexpr int miradas = 3;

tiempo plazo(const plazos& p, paciencia cual) {
  switch (cual) {
    case paciencia::abrir:
      return p.abrir;
    case paciencia::examen:
      return p.examen;
    case paciencia::normal:
      break;
  }
  return p.respuesta;
}

}  // namespace

tiempo intercambio::en_la_linea(std::int64_t caracteres) const {
  return tiempo_en_la_linea(caracteres, p_.velocidad);
}

/// Appends what has come to `entrada_`.
std::size_t intercambio::tomar() {
  const std::size_t n = p_.linea.leer(trozo_);
  if (n == 0) return 0;
  entrada_.append(trozo_.data(), n);
  gastos.recibidos += static_cast<std::int64_t>(n);
  ultimo_ = ahora();
  return n;
}

bool intercambio::perdida() {
  if (!p_.linea.perdido()) return false;
  if (p_.testigo != nullptr && !std::exchange(contada_, true)) p_.testigo->traza('!', "cuelga", ahora());
  return true;
}

void intercambio::anotar_entrada() {
  if (p_.testigo == nullptr) return;
  for (std::size_t i = 0; i < entrada_.size();) {
    const std::size_t fin = std::min(entrada_.find(ETX, i), entrada_.size() - 1) + 1;
    p_.testigo->traza('<', std::string_view(entrada_).substr(i, fin - i), ultimo_);
    i = fin;
  }
}

contestacion intercambio::pedir(const mandato& m) {
  entrada_.clear();
  if (tomar() > 0) {
    anotar_entrada();
    return {clase::ruido};
  }
  if (perdida()) return {clase::perdida};
  const std::string trama = en_trama(m.texto);
  p_.linea.escribir(trama);
  gastos.enviados += static_cast<std::int64_t>(trama.size());
  const tiempo inicio = ahora();
  if (p_.testigo != nullptr) p_.testigo->traza('>', trama, inicio);
  // Twice the time of the line, since adapters keep characters back.
  const contestacion c = esperar(m, inicio + plazo(p_.espera, m.espera) + 2 * en_la_linea(m.coste()));
  anotar_entrada();
  if (c.buena()) ++gastos.respuestas;
  if (c.que == clase::rechazada) ++gastos.rechazos;
  if (c.que == clase::reset) ++gastos.resets;
  return c;
}

contestacion intercambio::esperar(const mandato& m, tiempo limite) {
  const tiempo hueco = p_.espera.hueco + 2 * en_la_linea(caracteres_de_reposo);
  for (;;) {
    const std::size_t n = tomar();
    if (n > 0) {
      if (entrada_.find(ETX, entrada_.size() - n) != std::string::npos) return juzgar(m);
      if (entrada_.size() > demasiado) return {clase::ruido};
      continue;
    }
    if (perdida()) return {clase::perdida};
    if (p_.mundo.parada() >= 2) return {clase::detenida};
    const tiempo ya = ahora();
    const tiempo hasta = entrada_.empty() ? limite : std::min(limite, ultimo_ + hueco);
    if (ya >= hasta) return sin_final();
    p_.mundo.esperar(hasta - ya);
  }
}

contestacion intercambio::sin_final() const {
  if (entrada_.empty()) return {clase::silencio};
  return {entrada_.front() == STX ? clase::incompleta : clase::ruido};
}

contestacion intercambio::juzgar(const mandato& m) const {
  const std::size_t etx = entrada_.find(ETX);
  const std::size_t stx = entrada_.rfind(STX, etx);
  if (stx == std::string::npos) return {clase::ruido};
  const auto leida = leer_respuesta(std::string_view(entrada_).substr(stx + 1, etx - stx - 1));
  // What a frame among others says counts for nothing but this: the chip has started anew.
  if (leida && leida->es_reset()) return {clase::reset};
  if (etx + 1 < entrada_.size()) return {clase::doble};
  if (stx != 0) return {clase::ruido};
  if (!leida) return {clase::suma_mala};
  if (leida->rechazada() && leida->datos.empty()) return {clase::rechazada, leida->codigo};
  if (!leida->hecha() || leida->datos.size() != m.datos) return {clase::extrana};
  return {clase::buena, '0', leida->datos};
}

bool intercambio::aquietar() {
  const tiempo reposo = p_.espera.reposo + en_la_linea(caracteres_de_reposo);
  const tiempo limite = ahora() + p_.espera.inquieta + reposo;
  for (tiempo callada = ahora();;) {
    if (perdida() || p_.mundo.parada() >= 2) return false;
    entrada_.clear();
    const bool vino = tomar() > 0;
    anotar_entrada();
    const tiempo ya = ahora();
    if (vino) callada = ya;
    if (ya - callada >= reposo) return true;
    if (ya >= limite) return false;
    p_.mundo.pausa(reposo / miradas + tiempo{1});
  }
}

}  // namespace morvane::job
