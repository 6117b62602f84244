#include "faltas_al_azar.h"

#include <array>

namespace campana {

namespace {

using namespace std::chrono_literals;

constexpr std::array<unsigned, 5> retrasos{200, 1'500, 4'900, 7'000, 14'000};
constexpr std::array<unsigned, 4> goteos{20, 400, 3'000, 9'000};

constexpr alcance nada{};
constexpr alcance tarda{.solo_tarda = true};
constexpr alcance ensucia{.ensucia = true};
constexpr alcance altera{.ensucia = true, .altera = true};
constexpr alcance desplaza{.ensucia = true, .desplaza = true};
constexpr alcance no_graba{.no_graba = true};

puente::faltas& placa(linea_mala& l) {
  return l.lejos.placa.fallos;
}
std::uint64_t en(linea_mala& l, std::uint64_t n) {
  return l.lejos.placa.tramas() + n;
}

template <std::uint64_t puente::faltas::*campo>
void en_placa(linea_mala& l, azar& /*a*/, std::uint64_t n) {
  placa(l).*campo = en(l, n);
}
template <std::uint64_t averia::*campo>
void en_linea(linea_mala& l, azar& /*a*/, std::uint64_t n) {
  l.mal.*campo = n;
}
template <std::uint64_t averia::*campo>
void en_caracter(linea_mala& l, azar& a, std::uint64_t /*n*/) {
  l.mal.*campo = 1 + a.hasta(a.una_de(3) ? 2'000 : 80);
}

void cortada(linea_mala& l, azar& a, std::uint64_t n) {
  placa(l).cortada_en = en(l, n);
  placa(l).cortada_tras = static_cast<unsigned>(a.hasta(a.una_de(2) ? 6 : 70));
}
void tarde(linea_mala& l, azar& a, std::uint64_t n) {
  placa(l).retrasada_en = en(l, n);
  placa(l).retraso_ms = a.uno<unsigned>(retrasos);
}
void siempre_tarde(linea_mala& l, azar& a, std::uint64_t /*n*/) {
  placa(l).retrasa_todas = true;
  placa(l).retraso_ms = a.uno<unsigned>(retrasos);
}
void rechaza(linea_mala& l, azar& a, std::uint64_t n) {
  placa(l).error_en = en(l, n);
  placa(l).codigo_error = static_cast<char>('1' + a.hasta(9));
}
void muchos_reset(linea_mala& l, azar& a, std::uint64_t n) {
  placa(l).reset_en = en(l, n);
  placa(l).reset_repetido = static_cast<unsigned>(2 + a.hasta(40));
}
void reset_suelto(linea_mala& l, azar& a, std::uint64_t n) {
  l.mal.reset_en = n;
  l.mal.reset_tras = std::chrono::microseconds(a.hasta(40'000));
}
void balbuceo(linea_mala& l, azar& a, std::uint64_t n) {
  placa(l).balbuceo_desde = en(l, n);
  placa(l).balbuceo_etx = a.una_de(2);
}
void sin_grabar(linea_mala& l, azar& a, std::uint64_t /*n*/) {
  placa(l).por_mil_sin_grabar = a.una_de(2) ? 20 : 500;
  placa(l).semilla = a.hasta(1'000);
}
void borrado_fallido(linea_mala& l, azar& a, std::uint64_t /*n*/) {
  l.lejos.chip.falla_borrado = a.una_de(2);
  l.lejos.chip.sondeos_de_borrado = static_cast<int>(a.hasta(60));
}
void chip_inerte(linea_mala& l, azar& a, std::uint64_t /*n*/) {
  l.lejos.chip.falla_config = a.una_de(2);
  l.lejos.chip.falla_permiso = a.una_de(3);
  l.lejos.chip.mudo = a.una_de(3);
}

using f = puente::faltas;

constexpr std::array todas{
    falta{"muda", nada, en_placa<&f::muda_desde>},
    falta{"calla", nada, en_placa<&f::calla_en>},
    falta{"cortada", nada, cortada},
    falta{"tarde", tarda, tarde},
    falta{"siempre tarde", tarda, siempre_tarde},
    falta{"gotea", tarda, [](linea_mala& l, azar& a, auto) { placa(l).goteo_ms = a.uno<unsigned>(goteos); }},
    falta{"suma mala", nada, en_placa<&f::suma_mala_en>},
    falta{"suma minúscula", nada, en_placa<&f::suma_minuscula_en>},
    falta{"rechaza", nada, rechaza},
    falta{"RESET", nada, en_placa<&f::reset_en>},
    falta{"muchos RESET", desplaza, muchos_reset},
    falta{"RESET suelto", desplaza, reset_suelto},
    falta{"ruido delante", ensucia,
          [](linea_mala& l, azar& a, auto) { placa(l).ruido = static_cast<unsigned>(1 + a.hasta(90)); }},
    falta{"ruido detrás", ensucia, [](linea_mala& l, azar&, auto) { l.mal.ruido_detras = true; }},
    falta{"balbuceo", ensucia, balbuceo},
    falta{"duplicada", desplaza, en_linea<&averia::duplicada_en>},
    falta{"suelta", desplaza, en_linea<&averia::suelta_en>},
    falta{"saludo", desplaza, [](linea_mala& l, azar&, auto) { l.mal.suelta_en = 0; }},
    falta{"carácter alterado", altera, en_caracter<&averia::altera>},
    falta{"carácter perdido", altera, en_caracter<&averia::pierde>},
    falta{"ida alterada", nada, en_caracter<&averia::altera_ida>},
    falta{"ida perdida", nada, en_caracter<&averia::pierde_ida>},
    falta{"cuelga", nada, en_linea<&averia::cuelga_en>},
    falta{"rearranca", nada, en_linea<&averia::rearranca_en>},
    falta{"sin grabar", no_graba, sin_grabar},
    falta{"bit pegado a 0", no_graba,
          [](linea_mala& l, azar& a, auto) { l.mal.celda_baja = static_cast<std::uint32_t>(a.hasta(0x500)); }},
    falta{"bit pegado a 1", no_graba,
          [](linea_mala& l, azar& a, auto) { l.mal.celda_alta = static_cast<std::uint32_t>(a.hasta(0x100)); }},
    falta{"borrado fallido", nada, borrado_fallido},
    falta{"chip inerte", nada, chip_inerte},
};

}  // namespace

std::span<const falta> faltas() {
  return todas;
}

}  // namespace campana
