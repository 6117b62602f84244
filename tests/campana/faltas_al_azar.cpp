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
std::uint64_t caracter(azar& a) {
  return 1 + a.hasta(a.una_de(3) ? 2'000 : 80);
}

}  // namespace

const std::vector<falta>& faltas() {
  static const std::vector<falta> todas{
      {"muda", nada, [](linea_mala& l, azar&, std::uint64_t n) { placa(l).muda_desde = en(l, n); }},
      {"calla", nada, [](linea_mala& l, azar&, std::uint64_t n) { placa(l).calla_en = en(l, n); }},
      {"cortada", nada,
       [](linea_mala& l, azar& a, std::uint64_t n) {
         placa(l).cortada_en = en(l, n);
         placa(l).cortada_tras = static_cast<unsigned>(a.hasta(a.una_de(2) ? 6 : 70));
       }},
      {"tarde", tarda,
       [](linea_mala& l, azar& a, std::uint64_t n) {
         placa(l).retrasada_en = en(l, n);
         placa(l).retraso_ms = a.uno<unsigned>(retrasos);
       }},
      {"siempre tarde", tarda,
       [](linea_mala& l, azar& a, std::uint64_t) {
         placa(l).retrasa_todas = true;
         placa(l).retraso_ms = a.uno<unsigned>(retrasos);
       }},
      {"gotea", tarda, [](linea_mala& l, azar& a, std::uint64_t) { placa(l).goteo_ms = a.uno<unsigned>(goteos); }},
      {"suma mala", nada, [](linea_mala& l, azar&, std::uint64_t n) { placa(l).suma_mala_en = en(l, n); }},
      {"suma minúscula", nada, [](linea_mala& l, azar&, std::uint64_t n) { placa(l).suma_minuscula_en = en(l, n); }},
      {"rechaza", nada,
       [](linea_mala& l, azar& a, std::uint64_t n) {
         placa(l).error_en = en(l, n);
         placa(l).codigo_error = static_cast<char>('1' + a.hasta(9));
       }},
      {"RESET", nada, [](linea_mala& l, azar&, std::uint64_t n) { placa(l).reset_en = en(l, n); }},
      {"muchos RESET", desplaza,
       [](linea_mala& l, azar& a, std::uint64_t n) {
         placa(l).reset_en = en(l, n);
         placa(l).reset_repetido = static_cast<unsigned>(2 + a.hasta(40));
       }},
      {"RESET suelto", desplaza,
       [](linea_mala& l, azar& a, std::uint64_t n) {
         l.mal.reset_en = n;
         l.mal.reset_tras = std::chrono::microseconds(a.hasta(40'000));
       }},
      {"ruido delante", ensucia,
       [](linea_mala& l, azar& a, std::uint64_t) { placa(l).ruido = static_cast<unsigned>(1 + a.hasta(90)); }},
      {"ruido detrás", ensucia, [](linea_mala& l, azar&, std::uint64_t) { l.mal.ruido_detras = true; }},
      {"balbuceo", ensucia,
       [](linea_mala& l, azar& a, std::uint64_t n) {
         placa(l).balbuceo_desde = en(l, n);
         placa(l).balbuceo_etx = a.una_de(2);
       }},
      {"duplicada", desplaza, [](linea_mala& l, azar&, std::uint64_t n) { l.mal.duplicada_en = n; }},
      {"suelta", desplaza, [](linea_mala& l, azar&, std::uint64_t n) { l.mal.suelta_en = n; }},
      {"saludo", desplaza, [](linea_mala& l, azar&, std::uint64_t) { l.mal.suelta_en = 0; }},
      {"carácter alterado", altera, [](linea_mala& l, azar& a, std::uint64_t) { l.mal.altera = caracter(a); }},
      {"carácter perdido", altera, [](linea_mala& l, azar& a, std::uint64_t) { l.mal.pierde = caracter(a); }},
      {"ida alterada", nada, [](linea_mala& l, azar& a, std::uint64_t) { l.mal.altera_ida = caracter(a); }},
      {"ida perdida", nada, [](linea_mala& l, azar& a, std::uint64_t) { l.mal.pierde_ida = caracter(a); }},
      {"cuelga", nada, [](linea_mala& l, azar&, std::uint64_t n) { l.mal.cuelga_en = n; }},
      {"rearranca", nada, [](linea_mala& l, azar&, std::uint64_t n) { l.mal.rearranca_en = n; }},
      {"sin grabar", no_graba,
       [](linea_mala& l, azar& a, std::uint64_t) {
         placa(l).por_mil_sin_grabar = a.una_de(2) ? 20 : 500;
         placa(l).semilla = a.hasta(1'000);
       }},
      {"bit pegado a 0", no_graba,
       [](linea_mala& l, azar& a, std::uint64_t) { l.mal.celda_baja = static_cast<std::uint32_t>(a.hasta(0x500)); }},
      {"bit pegado a 1", no_graba,
       [](linea_mala& l, azar& a, std::uint64_t) { l.mal.celda_alta = static_cast<std::uint32_t>(a.hasta(0x100)); }},
      {"borrado fallido", nada,
       [](linea_mala& l, azar& a, std::uint64_t) {
         l.lejos.chip.falla_borrado = a.una_de(2);
         l.lejos.chip.sondeos_de_borrado = static_cast<int>(a.hasta(60));
       }},
      {"chip inerte", nada,
       [](linea_mala& l, azar& a, std::uint64_t) {
         l.lejos.chip.falla_config = a.una_de(2);
         l.lejos.chip.falla_permiso = a.una_de(3);
         l.lejos.chip.mudo = a.una_de(3);
       }},
  };
  return todas;
}

}  // namespace campana
