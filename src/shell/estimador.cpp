#include "shell/estimador.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "files/texto.h"
#include "frases/frases.h"
#include "frases/numeros.h"
#include "serial/parametros_linea.h"

namespace morvane {

namespace {

using namespace std::chrono_literals;

constexpr instante entre_textos = 500ms;
constexpr instante ventana = 20s;
/// Before that the speed is a matter of luck.
constexpr instante primera_prediccion = 1s;
/// Exchanges before which nothing is said of how long they take, and milliseconds that one must take too long.
constexpr std::uint64_t intercambios_para_juzgar = 50;
constexpr double retencion_visible = 2;

double en_segundos(instante cuanto) {
  return std::chrono::duration<double>(cuanto).count();
}

const char* nombre_de(labor::clase cual) {
  constexpr std::array nombres{"Borrando", "Grabando", "Leyendo", "Verificando", "Verificando", "Reset"};
  return nombres.at(static_cast<std::size_t>(cual));
}

/// What the chip has gone through, in the past.
const char* hecho(labor::clase cual) {
  switch (cual) {
    case labor::clase::borrar:
      return "Borrado";
    case labor::clase::grabar:
      return "Grabado";
    case labor::clase::leer:
      return "Leído";
    case labor::clase::verificar:
      return "Igual";
    case labor::clase::examinar:
      return "En blanco";
    case labor::clase::reiniciar:
      return "Reset enviado";
  }
  return "";
}

const char* sin_hacer(labor::clase cual) {
  return cual == labor::clase::grabar ? "No grabado" : cual == labor::clase::borrar ? "No borrado" : "Falla";
}

std::string en_hex(std::int32_t dir) {
  return hex(static_cast<std::uint32_t>(dir), 6);
}

std::string desenlace(const labor& m) {
  const bool con_sitio = m.cual != labor::clase::borrar && m.cual != labor::clase::reiniciar;
  switch (m.como) {
    case labor::final::hecha:
      return hecho(m.cual);
    case labor::final::detenida:
      return "Detenido en " + en_hex(m.donde.hasta);
    case labor::final::distinta:
      return (m.cual == labor::clase::examinar ? "Con datos en " : "Distinto en ") + direcciones(m.donde);
    case labor::final::fallida:
      return sin_hacer(m.cual);
    case labor::final::interrumpida:
      break;
  }
  return con_sitio ? "Interrumpido en " + en_hex(m.donde.hasta) : "Interrumpido";
}

std::string tiempo_en_palabras(instante cuanto) {
  const double segundos = en_segundos(cuanto);
  if (segundos < 0.05) return "< 0,1 s";
  return segundos < 59.95 ? decimal(segundos) + " s" : reloj_de(std::llround(segundos));
}

}  // namespace

std::string reloj_de(std::int64_t segundos) {
  char texto[48];
  const long long horas = segundos / 3600, minutos = segundos / 60 % 60, resto = segundos % 60;
  if (horas > 0) {
    std::snprintf(texto, sizeof texto, "%lld:%02lld:%02lld", horas, minutos, resto);
  } else {
    std::snprintf(texto, sizeof texto, "%lld:%02lld", minutos, resto);
  }
  return texto;
}

std::string velocidad_de(double bytes_por_segundo) {
  if (bytes_por_segundo < 1000) return std::to_string(std::lround(bytes_por_segundo)) + " B/s";
  if (bytes_por_segundo < 9950) return decimal(bytes_por_segundo / 1000) + " kB/s";
  return std::to_string(std::lround(bytes_por_segundo / 1000)) + " kB/s";
}

std::string lentitud(const labor& m, const trafico& hubo, instante gastado) {
  // Others wait for the chip, or for the board that goes over a whole block.
  if (m.cual != labor::clase::grabar && m.cual != labor::clase::leer) return {};
  if (hubo.respuestas < intercambios_para_juzgar || hubo.velocidad <= 0) return {};
  const double n = static_cast<double>(hubo.respuestas);
  const double debe =
      en_segundos(tiempo_en_la_linea(static_cast<std::int64_t>(hubo.caracteres), hubo.velocidad)) * 1000 / n;
  const double tarda = en_segundos(gastado) * 1000 / n;
  if (tarda <= 2 * debe || tarda - debe < retencion_visible) return {};
  return "Cada intercambio tarda " + decimal(tarda) + " ms, y sus caracteres solo " + decimal(debe) +
         " ms: el adaptador retiene las respuestas, o la placa tarda en darlas. Qué se puede hacer: en el manual (F1), "
         "«Todo va despacio»";
}

void estimador::empezar() {
  dicho_ = {};
  lenta_.clear();
}

void estimador::empezar_operacion(const labor& m, instante ahora, const trafico& linea) {
  antes_ = linea;
  vista_en_ = ahora;
  lenta_.clear();
  vista_ = m.cuantas;
  muestras_.assign(1, {m.inicio, 0});
  proxima_ = m.inicio;
  prometido_ = instante{0};
}

void estimador::mirar(const labor& m, instante ahora, const trafico& linea) {
  if (!m.en_curso) return;
  if (m.cuantas != vista_) empezar_operacion(m, ahora, linea);
  if (ahora < proxima_) return;
  proxima_ = ahora + entre_textos;
  const std::string nombre = nombre_de(m.cual);
  if (m.total <= 0) {
    const std::string van = reloj_de((ahora - m.inicio) / 1s);
    dicho_ = {nombre + " · " + van, nombre + ": van " + van};
    return;
  }
  muestras_.push_back({ahora, m.hechos});
  while (muestras_.size() > 2 && muestras_[1].cuando <= ahora - ventana) muestras_.pop_front();
  const std::string parte = std::to_string(std::clamp<std::int64_t>(m.hechos * 100 / m.total, 0, 100)) + " %";
  // The bar of a range that begins high counts from address 0 on and stays short of full.
  const bool otra_barra = m.cual == labor::clase::leer && m.donde.desde > 0;
  dicho_ = {otra_barra ? nombre : parte, nombre + ": " + parte};
  const double rapidez = velocidad();
  if (rapidez <= 0 || ahora - m.inicio < primera_prediccion) return;
  const std::string falta = reloj_de(segundos_que_faltan(m, rapidez));
  dicho_.breve += " · " + velocidad_de(rapidez) + " · " + falta;
  dicho_.extenso += ", " + velocidad_de(rapidez) + ", quedan " + falta;
  const trafico hubo{linea.caracteres - antes_.caracteres, linea.respuestas - antes_.respuestas, linea.velocidad};
  lenta_ = lentitud(m, hubo, ahora - vista_en_);
  anadir_lentitud();
}

void estimador::anadir_lentitud() {
  if (!lenta_.empty()) dicho_.extenso += "\n" + lenta_;
}

double estimador::velocidad() const {
  const muestra &primera = muestras_.front(), &ultima = muestras_.back();
  const double tiempo = en_segundos(ultima.cuando - primera.cuando);
  return tiempo > 0 ? static_cast<double>(ultima.hechos - primera.hechos) / tiempo : 0;
}

/// Keeps to what was promised as long as that is near enough.
std::int64_t estimador::segundos_que_faltan(const labor& m, double bytes_por_segundo) {
  const instante ahora = muestras_.back().cuando;
  const double quedan = static_cast<double>(std::max<std::int64_t>(m.total - m.hechos, 0)) / bytes_por_segundo;
  const double prometidos = en_segundos(prometido_ - ahora);
  if (std::abs(prometidos - quedan) > std::max(1.5, quedan * 0.08)) {
    prometido_ = ahora + std::chrono::duration_cast<instante>(std::chrono::duration<double>(quedan));
  }
  return std::max<std::int64_t>(std::llround(en_segundos(prometido_ - ahora)), m.hechos < m.total ? 1 : 0);
}

void estimador::acabar(const labor& m) {
  const std::string tardo = tiempo_en_palabras(m.gastado);
  const bool hecha = m.como == labor::final::hecha, dudosa = m.sin_confirmar > 0;
  std::string como = desenlace(m);
  if (dudosa) {
    como += ", " + entero(m.sin_confirmar, 4) + " sin confirmar";
  } else if (hecha && m.cual != labor::clase::reiniciar) {
    como += " en " + tardo;
  }
  dicho_ = {como, desenlace(m) + "; ha durado " + tardo, dudosa || (!hecha && m.como != labor::final::detenida)};
  anadir_lentitud();
}

void estimador::sin_operacion(const std::string& por_que) {
  dicho_ = {por_que, por_que + ": no se ha hecho nada", true};
}

void estimador::cargada(const informe_carga& i) {
  dicho_ = {frase_breve(i), frase(i), i.dudoso() || i.tramos.empty()};
  for (const std::string& uno : avisos_de(i)) dicho_.extenso += "\n" + uno;
}

}  // namespace morvane
