#include "bridge/placa.h"

#include <algorithm>

#include "tramas.h"

namespace puente {

namespace {

constexpr unsigned baudios_balbuceo = 115'200;
constexpr int maximo_balbuceo = 4096;
constexpr unsigned maximo_reset = 1000;
constexpr unsigned maximo_ruido = 10'000;

/// What a good board would send around `contenido`.
std::string en_trama(std::string_view contenido) {
  return stx + std::string(contenido) + suma(contenido) + etx;
}

/// Does to a character what the line does to it. False if it is lost.
bool danar(char& c, std::uint64_t cual, std::uint64_t alterado, std::uint64_t perdido) {
  if (cual == alterado) c ^= 0x11;
  return cual != perdido;
}

instante milisegundos(std::uint64_t ms) {
  return std::chrono::milliseconds{ms};
}

}  // namespace

placa::placa(chip& c, ritmo paso, faltas f) : fallos(f), chip_(c), paso_(paso), azar_(f.semilla) {}

void placa::entra(std::string_view datos, instante ahora) {
  avanzar(ahora);
  while (!datos.empty() && !colgada_) {
    const std::string_view trozo = datos.substr(0, hueco());
    if (trozo.empty()) return;
    const instante inicio = std::max(ahora, libre_placa_);
    for (std::size_t i = 0; i < trozo.size(); ++i) {
      libre_placa_ = inicio + paso_.caracteres(i + 1);
      char c = trozo[i];
      if (danar(c, ++entrados_, fallos.altera_ida, fallos.pierde_ida)) hacia_placa_.push_back({c, libre_placa_});
    }
    datos.remove_prefix(trozo.size());
    avanzar(ahora);
  }
}

std::optional<instante> placa::proximo() const {
  std::optional<instante> primero;
  for (const auto* cola : {&hacia_placa_, &hacia_pc_, &sueltos_}) {
    if (!cola->empty()) primero = std::min(primero.value_or(instante::max()), cola->front().llega);
  }
  return primero;
}

std::optional<instante> placa::ultimo() const {
  std::optional<instante> ultimo;
  for (const auto* cola : {&hacia_pc_, &sueltos_}) {
    if (!cola->empty()) ultimo = std::max(ultimo.value_or(instante::min()), cola->back().llega);
  }
  return ultimo;
}

std::string placa::sale(instante ahora, std::size_t cuantos) {
  avanzar(ahora);
  std::string datos;
  for (; datos.size() < cuantos; cola_que_sigue().pop_front()) {
    const auto& cola = cola_que_sigue();
    if (cola.empty() || cola.front().llega > ahora) break;
    datos.push_back(cola.front().c);
  }
  return datos;
}

std::deque<placa::caracter>& placa::cola_que_sigue() {
  const bool suelto = !sueltos_.empty() && (hacia_pc_.empty() || sueltos_.front().llega <= hacia_pc_.front().llega);
  return suelto ? sueltos_ : hacia_pc_;
}

void placa::vaciar() {
  hacia_placa_.clear();
  hacia_pc_.clear();
  sueltos_.clear();
  trama_.clear();
  en_trama_ = false;
  libre_placa_ = instante{0};
  balbucea_ = balbucea_ && fallos.balbuceo_desde != 0;
  if (balbucea_) {
    balbucear(libre_pc_);
  } else {
    libre_pc_ = instante{0};
  }
}

void placa::abierta(instante ahora) {
  if (fallos.saluda) soltar(en_trama("0"), ahora);
}

void placa::averiar(const faltas& f) {
  fallos = f;
  balbucea_ = balbucea_ && f.balbuceo_desde != 0;
  tramas_ = entrados_ = salidos_ = 0;
  azar_.seed(f.semilla);
}

void placa::reparar() {
  averiar({});
  vaciar();
  colgada_ = false;
}

void placa::avanzar(instante ahora) {
  while (!hacia_placa_.empty() && hacia_placa_.front().llega <= ahora) {
    const caracter k = hacia_placa_.front();
    hacia_placa_.pop_front();
    recibir(k.c, k.llega);
  }
  if (balbucea_) balbucear(ahora);
}

void placa::recibir(char c, instante cuando) {
  if (c == stx) {
    trama_.clear();
    en_trama_ = true;
  } else if (c == etx && en_trama_) {
    en_trama_ = false;
    atender(cuando);
  } else if (en_trama_ && trama_.size() <= maximo_trama) {
    trama_.push_back(c);
  }
}

void placa::colgar() {
  balbucea_ = false;
  vaciar();
  chip_.reiniciar();
  colgada_ = true;
}

void placa::atender(instante cuando) {
  const std::uint64_t n = ++tramas_;
  const auto desde = [n](std::uint64_t primera) { return primera != 0 && n >= primera; };
  if (traza) traza('>', stx + trama_ + etx, cuando);
  chip_.pasa(cuando);
  if (n == fallos.cuelga_en) return colgar();
  if (n == fallos.suelta_en) soltar(en_trama("0"), cuando);
  if (n == fallos.rearranca_en || n == fallos.reset_suelto_en) chip_.reiniciar();
  if (n == fallos.rearranca_en) {
    hacia_pc_.clear();
    sueltos_.clear();
  }
  if (n == fallos.reset_suelto_en) soltar(en_trama("1RESET"), cuando + milisegundos(fallos.reset_suelto_ms));
  if (desde(fallos.balbuceo_desde) && !balbucea_) {
    balbucea_ = true;
    libre_pc_ = std::max(libre_pc_, cuando);
  }
  if (balbucea_ || desde(fallos.muda_desde)) return;
  if (desde(fallos.eco_desde)) return poner(stx + trama_ + etx, cuando);
  if (n == fallos.reset_en) {
    chip_.reiniciar();
    for (unsigned i = 0; i < std::min(fallos.reset_repetido, maximo_reset); ++i) responder("1RESET", cuando);
    return;
  }
  std::string contenido(1, n == fallos.error_en ? fallos.codigo_error : juzgar(trama_));
  if (contenido == "0" && n != fallos.error_en) {
    contenido = ejecutar(std::string_view(trama_).substr(0, trama_.size() - 2));
  }
  if (n == fallos.inactiva_en && trama_.starts_with('c')) contenido = "0FF";
  if (n != fallos.calla_en) responder(contenido, cuando);
}

void placa::responder(std::string_view contenido, instante cuando) {
  std::string digitos = suma(contenido);
  if (tramas_ == fallos.suma_mala_en) digitos[1] = digitos[1] == '0' ? '1' : '0';
  if (tramas_ == fallos.suma_minuscula_en) {
    for (char& c : digitos) c = c >= 'A' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  std::string crudo = stx + std::string(contenido) + digitos + etx;
  if (tramas_ == fallos.cortada_en) crudo.resize(std::min<std::size_t>(crudo.size(), fallos.cortada_tras));
  if (tramas_ == fallos.duplicada_en) crudo += crudo;
  const bool tarde = fallos.retrasa_todas || tramas_ == fallos.retrasada_en;
  const bool ruidosa = fallos.ruido_en == 0 || tramas_ == fallos.ruido_en;
  if (ruidosa) crudo = ruido(fallos.ruido) + crudo + ruido(fallos.ruido_detras);
  poner(crudo, cuando + milisegundos(tarde ? fallos.retraso_ms : 0));
}

void placa::poner(std::string_view crudo, instante cuando) {
  crudo = crudo.substr(0, capacidad - hacia_pc_.size());
  if (crudo.empty()) return;
  const instante inicio = std::max(cuando, libre_pc_);
  for (std::size_t i = 0; i < crudo.size(); ++i) {
    libre_pc_ = inicio + paso_.caracteres(i + 1) + milisegundos(i * std::uint64_t{fallos.goteo_ms});
    char c = crudo[i];
    if (danar(c, ++salidos_, fallos.altera, fallos.pierde)) hacia_pc_.push_back({c, libre_pc_});
  }
  if (traza) traza('<', crudo, libre_pc_);
}

/// What comes of itself holds nothing up that is on its way.
void placa::soltar(std::string_view crudo, instante cuando) {
  for (const char c : crudo.substr(0, capacidad - sueltos_.size())) sueltos_.push_back({c, cuando});
  std::ranges::stable_sort(sueltos_, {}, &caracter::llega);
  if (traza) traza('<', crudo, cuando);
}

/// Keeps the next character always under way, and never makes up for more than `maximo_balbuceo` that nobody took.
void placa::balbucear(instante ahora) {
  const ritmo paso{paso_.baudios == 0 ? baudios_balbuceo : paso_.baudios};
  const instante uno = std::max(paso.caracteres(1), instante{1});
  libre_pc_ = std::max(libre_pc_, ahora - uno * maximo_balbuceo);
  while ((hacia_pc_.empty() || hacia_pc_.back().llega <= ahora) && hacia_pc_.size() < capacidad) {
    libre_pc_ += uno;
    hacia_pc_.push_back({fallos.balbuceo_etx && azar_() % 16 == 0 ? etx : ruidoso(), libre_pc_});
  }
}

std::string placa::ruido(unsigned cuantos) {
  std::string texto(std::min(cuantos, maximo_ruido), ' ');
  for (char& c : texto) c = ruidoso();
  return texto;
}

char placa::ruidoso() {
  const auto c = static_cast<unsigned char>(azar_() % 254);
  return static_cast<char>(c < 2 ? c : c + 2);
}

}  // namespace puente
