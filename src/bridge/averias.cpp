#include "bridge/averias.h"

#include <array>

namespace puente {

namespace {

constexpr std::array<unsigned, 5> retrasos{200, 1'500, 4'900, 7'000, 14'000};
constexpr std::array<unsigned, 4> goteos{20, 400, 3'000, 9'000};
/// Cells of which most programs have something to keep.
constexpr std::uint64_t primeras_celdas = 0x500;

constexpr alcance nada{};
constexpr alcance tarda{.solo_tarda = true};
constexpr alcance ensucia{.ensucia = true};
constexpr alcance altera{.ensucia = true, .altera = true};
constexpr alcance desplaza{.ensucia = true, .desplaza = true};
constexpr alcance no_graba{.no_graba = true};

template <std::uint64_t faltas::*campo>
void en_trama(faltas& f, conducta& /*c*/, azar& /*a*/, std::uint64_t n) {
  f.*campo = n;
}
template <std::uint64_t faltas::*campo>
void en_caracter(faltas& f, conducta& /*c*/, azar& a, std::uint64_t /*n*/) {
  f.*campo = 1 + a.hasta(a.una_de(3) ? 2'000 : 80);
}
template <std::optional<std::uint32_t> conducta::*campo>
void en_celda(faltas& /*f*/, conducta& c, azar& a, std::uint64_t /*n*/) {
  c.*campo = static_cast<std::uint32_t>(a.hasta(primeras_celdas));
}

void cortada(faltas& f, conducta& /*c*/, azar& a, std::uint64_t n) {
  f.cortada_en = n;
  f.cortada_tras = static_cast<unsigned>(a.hasta(a.una_de(2) ? 6 : 70));
}
void tarde(faltas& f, conducta& /*c*/, azar& a, std::uint64_t n) {
  f.retrasada_en = n;
  f.retraso_ms = a.uno<unsigned>(retrasos);
}
void siempre_tarde(faltas& f, conducta& /*c*/, azar& a, std::uint64_t /*n*/) {
  f.retrasa_todas = true;
  f.retraso_ms = a.uno<unsigned>(retrasos);
}
void rechaza(faltas& f, conducta& /*c*/, azar& a, std::uint64_t n) {
  f.error_en = n;
  f.codigo_error = static_cast<char>('1' + a.hasta(9));
}
void ruido_una_vez(faltas& f, conducta& /*c*/, azar& a, std::uint64_t n) {
  f.ruido_en = n;
  (a.una_de(2) ? f.ruido : f.ruido_detras) = 1 + static_cast<unsigned>(a.hasta(90));
}
void borrado_lento(faltas& /*f*/, conducta& c, azar& a, std::uint64_t /*n*/) {
  c.borrado_dura = std::chrono::milliseconds{a.uno<unsigned>(retrasos)};
}
void otras_formas(faltas& f, conducta& /*c*/, azar& a, std::uint64_t /*n*/) {
  f.bloques_enteros = a.una_de(2);
  f.cortos_desde_cero = a.una_de(2);
  f.lecturas_cortas = !(f.bloques_enteros || f.cortos_desde_cero) || a.una_de(2);
}
void muchos_reset(faltas& f, conducta& /*c*/, azar& a, std::uint64_t n) {
  f.reset_en = n;
  f.reset_repetido = static_cast<unsigned>(2 + a.hasta(40));
}
void reset_suelto(faltas& f, conducta& /*c*/, azar& a, std::uint64_t n) {
  f.reset_suelto_en = n;
  f.reset_suelto_ms = static_cast<unsigned>(a.hasta(40));
}
void balbuceo(faltas& f, conducta& /*c*/, azar& a, std::uint64_t n) {
  f.balbuceo_desde = n;
  f.balbuceo_etx = a.una_de(2);
}
void borrado_fallido(faltas& /*f*/, conducta& c, azar& a, std::uint64_t /*n*/) {
  c.falla_borrado = a.una_de(2);
  c.sondeos_de_borrado = static_cast<int>(a.hasta(60));
}
void chip_inerte(faltas& /*f*/, conducta& c, azar& a, std::uint64_t /*n*/) {
  c.falla_config = a.una_de(2);
  c.falla_permiso = a.una_de(3);
  c.mudo = a.una_de(3);
}

using f = faltas;

constexpr std::array todas{
    averia{"muda", nada, en_trama<&f::muda_desde>},
    averia{"calla", nada, en_trama<&f::calla_en>},
    averia{"cortada", nada, cortada},
    averia{"tarde", tarda, tarde},
    averia{"siempre tarde", tarda, siempre_tarde},
    averia{"gotea", tarda, [](f& x, conducta&, azar& a, auto) { x.goteo_ms = a.uno<unsigned>(goteos); }},
    averia{"suma mala", nada, en_trama<&f::suma_mala_en>},
    averia{"suma en minúsculas", nada, en_trama<&f::suma_minuscula_en>},
    averia{"rechaza", nada, rechaza},
    averia{"inactiva", nada, en_trama<&f::inactiva_en>},
    averia{"eco", nada, en_trama<&f::eco_desde>},
    averia{"RESET", nada, en_trama<&f::reset_en>},
    averia{"muchos RESET", desplaza, muchos_reset},
    averia{"RESET suelto", desplaza, reset_suelto},
    averia{"ruido delante", ensucia,
           [](f& x, conducta&, azar& a, auto) { x.ruido = 1 + static_cast<unsigned>(a.hasta(90)); }},
    averia{"ruido detrás", ensucia,
           [](f& x, conducta&, azar& a, auto) { x.ruido_detras = 1 + static_cast<unsigned>(a.hasta(8)); }},
    averia{"ruido una vez", ensucia, ruido_una_vez},
    averia{"balbuceo", ensucia, balbuceo},
    averia{"duplicada", desplaza, en_trama<&f::duplicada_en>},
    averia{"suelta", desplaza, en_trama<&f::suelta_en>},
    averia{"saluda", desplaza, [](f& x, conducta&, azar&, auto) { x.saluda = true; }},
    averia{"carácter alterado", altera, en_caracter<&f::altera>},
    averia{"carácter perdido", altera, en_caracter<&f::pierde>},
    averia{"ida alterada", nada, en_caracter<&f::altera_ida>},
    averia{"ida perdida", nada, en_caracter<&f::pierde_ida>},
    averia{"cuelga", nada, en_trama<&f::cuelga_en>},
    averia{"rearranca", nada, en_trama<&f::rearranca_en>},
    averia{"sin grabar", no_graba,
           [](f& x, conducta&, azar& a, auto) { x.por_mil_sin_grabar = a.una_de(2) ? 20 : 500; }},
    averia{"bit pegado a 0", no_graba, en_celda<&conducta::celda_a_0>},
    averia{"bit pegado a 1", no_graba, en_celda<&conducta::celda_a_1>},
    averia{"borrado fallido", nada, borrado_fallido},
    averia{"chip inerte", nada, chip_inerte},
    averia{"borrado lento", tarda, borrado_lento},
    averia{"formas fijas", nada, [](f& x, conducta&, azar&, auto) { x.formas_fijas = true; }},
    averia{"otras formas", nada, otras_formas},
};

}  // namespace

std::span<const averia> averias() {
  return todas;
}

const averia& averia_al_azar(faltas& f, conducta& c, azar& a) {
  const averia& una = a.uno<averia>(todas);
  una.poner(f, c, a, 1 + a.hasta(a.una_de(3) ? 120 : 22));
  f.semilla = a.hasta(1'000'000);
  return una;
}

}  // namespace puente
