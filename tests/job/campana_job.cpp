#include "job/campana_job.h"

#include <array>
#include <sstream>

#include "bridge/azar.h"
#include "job/banco_job.h"

namespace apoyo {

namespace {

using namespace morvane;
using namespace morvane::job;
using puente::azar;

/// A kind of fault. One that passes may cost time and nothing else.
struct averia_job {
  const char* nombre;
  bool pasajera;
  void (*poner)(puente::faltas& f, puente::conducta& c, azar& a, std::uint64_t n);
};

using F = puente::faltas;
using C = puente::conducta;
using N = std::uint64_t;

constexpr std::array<unsigned, 5> retrasos{200, 1'500, 4'900, 7'000, 14'000};

unsigned pocos(azar& a, N hasta) {
  return static_cast<unsigned>(1 + a.hasta(hasta));
}

constexpr std::array averias_job{
    averia_job{"ninguna", true, [](F&, C&, azar&, N) {}},
    averia_job{"calla", true, [](F& f, C&, azar&, N n) { f.calla_en = n; }},
    averia_job{"cortada", true,
               [](F& f, C&, azar& a, N n) {
                 f.cortada_en = n;
                 f.cortada_tras = static_cast<unsigned>(a.hasta(a.una_de(2) ? 6 : 70));
               }},
    averia_job{"tarde", true,
               [](F& f, C&, azar& a, N n) {
                 f.retrasada_en = n;
                 f.retraso_ms = a.uno<unsigned>(retrasos);
               }},
    averia_job{"suma mala", true, [](F& f, C&, azar&, N n) { f.suma_mala_en = n; }},
    averia_job{"suma en minúsculas", true, [](F& f, C&, azar&, N n) { f.suma_minuscula_en = n; }},
    averia_job{"rechaza", true,
               [](F& f, C&, azar& a, N n) {
                 f.error_en = n;
                 f.codigo_error = static_cast<char>('1' + a.hasta(9));
               }},
    averia_job{"inactiva", true, [](F& f, C&, azar&, N n) { f.inactiva_en = n; }},
    averia_job{"RESET", true, [](F& f, C&, azar&, N n) { f.reset_en = n; }},
    averia_job{"muchos RESET", true,
               [](F& f, C&, azar& a, N n) {
                 f.reset_en = n;
                 f.reset_repetido = 1 + pocos(a, 40);
               }},
    averia_job{"RESET suelto", true,
               [](F& f, C&, azar& a, N n) {
                 f.reset_suelto_en = n;
                 f.reset_suelto_ms = static_cast<unsigned>(a.hasta(40));
               }},
    averia_job{"duplicada", true, [](F& f, C&, azar&, N n) { f.duplicada_en = n; }},
    averia_job{"suelta", true, [](F& f, C&, azar&, N n) { f.suelta_en = n; }},
    averia_job{"saluda", true, [](F& f, C&, azar&, N) { f.saluda = true; }},
    averia_job{"carácter alterado", true, [](F& f, C&, azar& a, N) { f.altera = pocos(a, a.una_de(2) ? 2'000 : 80); }},
    averia_job{"carácter perdido", true, [](F& f, C&, azar& a, N) { f.pierde = pocos(a, a.una_de(2) ? 2'000 : 80); }},
    averia_job{"ida alterada", true, [](F& f, C&, azar& a, N) { f.altera_ida = pocos(a, a.una_de(2) ? 2'000 : 80); }},
    averia_job{"ida perdida", true, [](F& f, C&, azar& a, N) { f.pierde_ida = pocos(a, a.una_de(2) ? 2'000 : 80); }},
    averia_job{"rearranca", true, [](F& f, C&, azar&, N n) { f.rearranca_en = n; }},
    averia_job{"ruido una vez", true,
               [](F& f, C&, azar& a, N n) {
                 f.ruido_en = n;
                 (a.una_de(2) ? f.ruido : f.ruido_detras) = pocos(a, 90);
               }},
    averia_job{"siempre un poco tarde", true,
               [](F& f, C&, azar& a, N) {
                 f.retrasa_todas = true;
                 f.retraso_ms = pocos(a, 900);
               }},
    averia_job{"formas fijas", true, [](F& f, C&, azar&, N) { f.formas_fijas = true; }},
    averia_job{"bloques enteros", true, [](F& f, C&, azar&, N) { f.bloques_enteros = true; }},
    averia_job{"cortos desde cero", true, [](F& f, C&, azar&, N) { f.cortos_desde_cero = true; }},
    averia_job{"lecturas cortas", true, [](F& f, C&, azar&, N) { f.lecturas_cortas = true; }},
    averia_job{"borrado lento", true,
               [](F&, C& c, azar& a, N) { c.borrado_dura = std::chrono::milliseconds{pocos(a, 20'000)}; }},
    averia_job{"muda", false, [](F& f, C&, azar&, N n) { f.muda_desde = n; }},
    averia_job{"eco", false, [](F& f, C&, azar&, N n) { f.eco_desde = n; }},
    averia_job{"gotea", false, [](F& f, C&, azar& a, N) { f.goteo_ms = pocos(a, 3'000); }},
    averia_job{"ruido", false, [](F& f, C&, azar& a, N) { (a.una_de(2) ? f.ruido : f.ruido_detras) = pocos(a, 90); }},
    averia_job{"balbuceo", false,
               [](F& f, C&, azar& a, N n) {
                 f.balbuceo_desde = n;
                 f.balbuceo_etx = a.una_de(2);
               }},
    averia_job{"cuelga", false, [](F& f, C&, azar&, N n) { f.cuelga_en = n; }},
    averia_job{"sin grabar", false, [](F& f, C&, azar& a, N) { f.por_mil_sin_grabar = a.una_de(2) ? 20 : 500; }},
    averia_job{"bit a 0", false, [](F&, C& c, azar& a, N) { c.celda_a_0 = pocos(a, 0x500); }},
    averia_job{"bit a 1", false, [](F&, C& c, azar& a, N) { c.celda_a_1 = pocos(a, 0x500); }},
    averia_job{"falla borrado", false, [](F&, C& c, azar&, N) { c.falla_borrado = true; }},
    averia_job{"borrado sin fin", false, [](F&, C& c, azar&, N) { c.sondeos_de_borrado = 1'000'000; }},
    averia_job{"falla config", false, [](F&, C& c, azar&, N) { c.falla_config = true; }},
    averia_job{"falla permiso", false, [](F&, C& c, azar&, N) { c.falla_permiso = true; }},
    averia_job{"mudo", false, [](F&, C& c, azar&, N) { c.mudo = true; }},
};

Variables_grab sortear_imagen(azar& a) {
  Variables_grab v = imagen_vacia();
  for (N trozos = 1 + a.hasta(3); trozos > 0; --trozos) {
    const auto dir = static_cast<std::int32_t>(a.una_de(2) ? a.hasta(0x600) : a.hasta(chip.flash - 0x200));
    std::vector<std::uint8_t> d = ruidosos(1 + a.hasta(120), static_cast<std::uint32_t>(a.hasta(1'000'000)));
    if (a.una_de(3)) std::fill_n(d.begin(), d.size() / 2, std::uint8_t{0xFF});
    poner(v, dir, d);
  }
  if (a.una_de(6)) poner(v, 0x414, {0xFF, 0xFF, 0x4A, 0xC8});
  return v;
}

class mundo {
 public:
  explicit mundo(N semilla) : azar_(semilla), b_(azar_.una_de(2) ? 0 : 115'200), v_(sortear_imagen(azar_)), que_(v_) {}

  mundo_juzgado correr() {
    const averia_job& av = averias_job[azar_.hasta(averias_job.size())];
    preparar();
    puente::faltas f{.semilla = azar_.hasta(1'000)};
    C modo{.sondeos_de_borrado = static_cast<int>(azar_.hasta(8))};
    av.poner(f, modo, azar_, 1 + azar_.hasta(azar_.una_de(3) ? 250 : 40));
    b_.lejos.cable.enchufar(puente::adaptador_al_azar(azar_));
    b_.lejos.placa.averiar(f);
    b_.lejos.chip.modo = modo;
    if (f.saluda) b_.linea.abrir(1, {});
    if (f.saluda) b_.lejos.placa.abierta(b_.plat.ahora());
    // A cell that is stuck is so before the order, too.
    b_.lejos.chip.abrir();
    b_.lejos.chip.cerrar();
    antes_.assign(b_.flash().begin(), b_.flash().end());
    juicio_.averia = av.nombre;
    juicio_.pasajera = av.pasajera;
    try {
      ordenar();
    } catch (const colgado& c) {
      fallo({}, c.what());
    }
    return juicio_;
  }

 private:
  void preparar() {
    switch (azar_.hasta(4)) {
      case 0:
        break;
      case 1:
        b_.llenar(que_);
        break;
      case 2:
        b_.llenar(que_);
        b_.flash()[azar_.hasta(chip.flash)] ^= static_cast<std::uint8_t>(1 << azar_.hasta(8));
        break;
      default:
        b_.llenar(objetivo(sortear_imagen(azar_)));
    }
  }

  bool protegida() const {
    const auto f = b_.lejos.chip.flash();
    return std::equal(puente::chip::palabra.begin(), puente::chip::palabra.end(), f.begin() + 0x414);
  }
  firma del_chip() const {
    objetivo o;
    o.bytes.assign(b_.lejos.chip.flash().begin(), b_.lejos.chip.flash().end());
    return o.sumas();
  }
  bool intacto() { return std::ranges::equal(b_.flash(), antes_); }

  void fallo(const resultado& r, const std::string& que) {
    if (!juicio_.error.empty()) return;
    std::ostringstream o;
    o << que << ": fin " << static_cast<int>(r.fin.que) << " por " << static_cast<int>(r.fin.por) << " en "
      << r.fin.comando << " dir " << r.fin.direccion.value_or(-1) << " codigo " << r.fin.codigo << "\n  "
      << b_.lejos.flujo(b_.lejos.comandos.size() > 60 ? b_.lejos.comandos.size() - 60 : 0);
    juicio_.error = o.str();
  }

  /// `debia` is what comes of the order on a board without a fault.
  void juzgar(const resultado& r, desenlace debia, bool verdad) {
    juicio_.fin = static_cast<int>(r.fin.que);
    if (juicio_.pasajera && r.fin.que != debia) fallo(r, "a passing fault changed the end");
    const bool afirma = r.fin.que == desenlace::hecho || r.fin.que == desenlace::distinta;
    if (afirma && !verdad) fallo(r, "the claim is false");
    if (juicio_.pasajera && (!r.cerrado || b_.lejos.chip.abierto())) fallo(r, "the chip is open");
    if (r.gastos.enviados != static_cast<std::int64_t>(b_.linea.escrito().size())) fallo(r, "wrong count");
  }

  void ordenar() {
    const bool cerrada = protegida();
    const prueba como = azar_.una_de(30) ? prueba::lectura : prueba::sumas;
    const auto segun = [&](bool igual) {
      if (cerrada) return desenlace::protegida;
      return igual ? desenlace::hecho : desenlace::distinta;
    };
    const auto ve = [&] { return como == prueba::lectura ? b_.tiene(que_) : del_chip() == que_.sumas(); };
    switch (azar_.hasta(10)) {
      case 0: {
        juicio_.orden = "borrar";
        const auto r = borrar(b_.p);
        return juzgar(r, desenlace::hecho, b_.tiene(objetivo{}));
      }
      case 1: {
        juicio_.orden = "verificar";
        const bool igual = ve();
        const auto r = verificar(b_.p, que_, como);
        bool verdad = intacto() && igual == r.fin.bien();
        if (r.fin.que == desenlace::distinta) verdad = verdad && diferencias_ciertas(r, como);
        return juzgar(r, segun(igual), verdad);
      }
      case 2: {
        juicio_.orden = "leer";
        const auto desde = static_cast<std::int32_t>(azar_.hasta(chip.flash));
        const auto largo = static_cast<std::int32_t>(1 + azar_.hasta(azar_.una_de(2) ? 300 : 9'000));
        const tramo donde{desde, std::min(desde + largo, chip.flash)};
        const auto r = leer(b_.p, donde);
        const auto hay = b_.flash().subspan(desde, static_cast<std::size_t>(donde.largo()));
        return juzgar(r, segun(true), intacto() && std::ranges::equal(r.leido, hay));
      }
      case 3: {
        juicio_.orden = "identificar";
        const firma f[]{objetivo(sortear_imagen(azar_)).sumas(), que_.sumas()};
        const bool esta = f[0] == del_chip() || f[1] == del_chip();
        const auto r = identificar(b_.p, f);
        const bool igual = del_chip() == que_.sumas();
        const bool dice = !r.identificados.empty() && r.identificados.back() == 1;
        return juzgar(r, segun(esta), intacto() && igual == dice);
      }
      case 4: {
        juicio_.orden = "proteger";
        const bool cabe = (antes_[0x416] & 0x4A) == 0x4A && (antes_[0x417] & 0xC8) == 0xC8 && antes_[0x414] == 0xFF &&
                          antes_[0x415] == 0xFF;
        const auto r = proteger(b_.p);
        return juzgar(r, cabe ? desenlace::hecho : desenlace::distinta, r.fin.bien() ? protegida() : intacto());
      }
      case 5: {
        juicio_.orden = azar_.una_de(2) ? "reiniciar" : "estado";
        const auto r = juicio_.orden == "estado" ? ver_estado(b_.p) : reiniciar(b_.p);
        return juzgar(r, desenlace::hecho, intacto());
      }
      default: {
        juicio_.orden = "grabar";
        const auto r = grabar(b_.p, que_, {.prueba = como, .todo = que_.escrito.largo() < 0x2000 && azar_.una_de(3)});
        return juzgar(r, desenlace::hecho, r.fin.que == desenlace::hecho && ve());
      }
    }
  }

  /// Each range that is told differs at both its ends, and by reading none is left out.
  bool diferencias_ciertas(const resultado& r, prueba como) {
    for (const diferencia& d : r.diferencias) {
      for (const std::int32_t dir : {d.donde.desde, d.donde.hasta - 1}) {
        if (b_.flash()[dir] == que_.bytes[static_cast<std::size_t>(dir)]) return false;
      }
    }
    return !r.diferencias.empty() && (como == prueba::sumas || r.diferencias == comparar(que_, b_.flash()));
  }

  azar azar_;
  banco_job b_;
  Variables_grab v_;
  objetivo que_;
  std::vector<std::uint8_t> antes_;
  mundo_juzgado juicio_;
};

}  // namespace

mundo_juzgado juzgar_mundo(std::uint64_t semilla) {
  return mundo(semilla).correr();
}

}  // namespace apoyo
