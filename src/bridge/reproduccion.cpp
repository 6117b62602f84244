#include "bridge/reproduccion.h"

#include <algorithm>
#include <charconv>

#include "bridge/traza.h"
#include "tramas.h"

namespace puente {

namespace {

constexpr std::string_view abre = "abre", cuelga = "cuelga";

/// `texto` as it stands in a trace, without time and direction.
std::string visible(std::string_view texto) {
  const std::string renglon = renglon_de_traza('>', texto, instante{0});
  return renglon.substr(renglon.find('>') + 2);
}

/// What the escape at the front of `texto` stands for, which is taken off it.
char caracter_de(std::string_view& texto) {
  constexpr std::size_t largo = 4;
  for (const auto& [escape, c] : {std::pair<std::string_view, char>{"<STX>", stx}, {"<ETX>", etx}}) {
    if (!texto.starts_with(escape)) continue;
    texto.remove_prefix(escape.size());
    return c;
  }
  unsigned valor = 0;
  const bool hay = texto.size() >= largo && texto[0] == '<' && texto[largo - 1] == '>';
  const auto fin = hay ? std::from_chars(texto.data() + 1, texto.data() + 3, valor, 16).ptr : nullptr;
  const bool escape = hay && fin == texto.data() + 3;
  const char c = escape ? static_cast<char>(valor) : texto[0];
  texto.remove_prefix(escape ? largo : 1);
  return c;
}

std::string crudo_de(std::string_view texto) {
  std::string crudo;
  while (!texto.empty()) crudo += caracter_de(texto);
  return crudo;
}

template <typename T>
bool numero(std::string_view texto, T& destino) {
  const auto [fin, error] = std::from_chars(texto.data(), texto.data() + texto.size(), destino);
  return error == std::errc() && fin == texto.data() + texto.size();
}

/// "     0.012345 > <STX>A41<ETX>"; false if it is nothing of the kind.
bool leer_renglon(std::string_view linea, renglon_leido& r) {
  constexpr std::size_t cifras = 6;
  linea.remove_prefix(std::min(linea.find_first_not_of(' '), linea.size()));
  const std::size_t punto = linea.find('.');
  if (punto == std::string_view::npos || linea.size() < punto + cifras + 4) return false;
  std::int64_t segundos = 0, micros = 0;
  if (!numero(linea.substr(0, punto), segundos) || !numero(linea.substr(punto + 1, cifras), micros)) return false;
  if (segundos < 0 || segundos > 1'000'000'000 || micros < 0) return false;
  const std::string_view resto = linea.substr(punto + 1 + cifras);
  r.direccion = resto[1];
  if (resto[0] != ' ' || resto[2] != ' ' || std::string_view("<>!").find(r.direccion) == std::string_view::npos) {
    return false;
  }
  r.cuando = std::chrono::seconds{segundos} + instante{micros};
  r.crudo = r.direccion == '!' ? std::string(resto.substr(3)) : crudo_de(resto.substr(3));
  return r.direccion != '!' || r.crudo == abre || r.crudo == cuelga;
}

}  // namespace

traza_leida leer_traza(std::string_view contenido) {
  traza_leida t;
  for (std::size_t n = 1; !contenido.empty(); ++n) {
    const std::size_t fin = std::min(contenido.find('\n'), contenido.size());
    std::string_view linea = contenido.substr(0, fin);
    contenido.remove_prefix(std::min(fin + 1, contenido.size()));
    if (linea.ends_with('\r')) linea.remove_suffix(1);
    if (linea.empty()) continue;
    renglon_leido r{.crudo = {}, .numero = n};
    if (!leer_renglon(linea, r)) return {{}, "línea " + std::to_string(n) + ": no es un renglón de una traza"};
    t.renglones.push_back(std::move(r));
  }
  if (t.renglones.empty()) t.error = "no tiene ningún renglón";
  // A reply that is late may have been noted before what came meanwhile.
  std::ranges::stable_sort(t.renglones, {}, &renglon_leido::cuando);
  return t;
}

reproduccion::reproduccion(std::vector<renglon_leido> renglones, bool al_momento)
    : renglones_(std::move(renglones)), al_momento_(al_momento) {
  if (!renglones_.empty()) base_traza_ = renglones_.front().cuando;
}

void reproduccion::entra(std::string_view datos, instante ahora) {
  if (datos.empty() || colgada()) return;
  avanzar(ahora);
  llegado_.append(datos);
  ultima_llegada_ = ahora;
  avanzar(ahora);
  if (cual_ < renglones_.size() || llegado_.empty() || !desacuerdo_.empty()) return;
  desacuerdo_ = "tras el final de la traza ha llegado " + visible(llegado_);
}

void reproduccion::abierta(instante ahora) {
  ++aperturas_;
  avanzar(ahora);
}

std::optional<instante> reproduccion::proximo() const {
  if (!por_dar_.empty()) return base_;
  if (cual_ == renglones_.size() || colgada()) return std::nullopt;
  const renglon_leido& r = renglones_[cual_];
  const bool espera = r.direccion == '>' || (r.direccion == '!' && r.crudo == abre);
  return espera ? std::nullopt : std::optional(plazo());
}

std::string reproduccion::sale(instante ahora, std::size_t cuantos) {
  avanzar(ahora);
  const std::size_t n = std::min(cuantos, por_dar_.size());
  std::string datos = por_dar_.substr(0, n);
  por_dar_.erase(0, n);
  return datos;
}

instante reproduccion::plazo() const {
  return al_momento_ ? base_ : base_ + (renglones_[cual_].cuando - base_traza_);
}

/// What comes next goes by the time at which this one has happened now.
void reproduccion::seguir(instante base) {
  base_ = base;
  base_traza_ = renglones_[cual_].cuando;
  ++cual_;
}

bool reproduccion::casa_con_lo_llegado() {
  const renglon_leido& r = renglones_[cual_];
  const std::size_t n = std::min(r.crudo.size(), llegado_.size());
  if (llegado_.compare(0, n, r.crudo, 0, n) != 0) {
    desacuerdo_ = "línea " + std::to_string(r.numero) + " de la traza: se esperaba " + visible(r.crudo) +
                  " y ha llegado " + visible(llegado_);
  }
  if (n < r.crudo.size() || !desacuerdo_.empty()) return false;
  llegado_.erase(0, n);
  return true;
}

void reproduccion::avanzar(instante ahora) {
  while (cual_ < renglones_.size() && !colgada()) {
    const renglon_leido& r = renglones_[cual_];
    if (r.direccion == '>') {
      if (llegado_.empty() || !casa_con_lo_llegado()) return;
      seguir(ultima_llegada_);
    } else if (r.direccion == '!' && r.crudo == abre) {
      // Openings that follow one another closely may be told once; what is sent shows that the line is open.
      if (aperturas_ == 0 && llegado_.empty()) return;
      aperturas_ = std::max(aperturas_ - 1, 0);
      seguir(ahora);
    } else {
      if (plazo() > ahora) return;
      if (r.direccion == '<') por_dar_.append(r.crudo);
      if (r.direccion == '!') colgada_ = true;
      ++cual_;
    }
  }
}

std::string reproduccion::lo_que_falta() const {
  if (cual_ == renglones_.size()) return {};
  const renglon_leido& r = renglones_[cual_];
  return "la traza se ha quedado en su línea " + std::to_string(r.numero) + ": faltaba " +
         (r.direccion == '!' ? r.crudo : visible(r.crudo));
}

}  // namespace puente
