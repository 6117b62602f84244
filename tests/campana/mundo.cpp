#include "mundo.h"

#include <algorithm>
#include <array>

#include "files/texto.h"

namespace campana {

namespace {

using namespace morvane;
using namespace std::chrono_literals;

/// Passes after which an operation counts as one that never ends.
constexpr std::uint64_t demasiadas = 20'000'000;
/// Questions that are answered by Yes one after the other.
constexpr int maximo_si = 5;
/// What is on its way to the program for longer than this may be taken for the reply to a later command.
constexpr instante plazo_de_reposo = 1'400ms;

const std::string ajustes = "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n";

}  // namespace

mundo::programa::programa(mundo& m)
    : linea(m.plat_, m.lejos_), f(m.plat_, m.ficheros_, linea, v), juez(f, linea, m.lejos_, m.firmware_, m.dir_) {}

mundo::mundo(std::uint64_t semilla, cuenta& c)
    : azar_(semilla), cuenta_(c), ficheros_(dir_.ruta()), firmware_(dir_, azar_) {
  dir_.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
  dir_.escribir("SETTINGS.TXT", ajustes);
  plat_.vigilar(lejos_);
  plat_.usuario = [this](const caja& mensaje) { return contestar(mensaje); };
  plat_.eleccion = [this] { return firmware_.alguno(azar_); };
}

mundo::~mundo() {
  plat_.en_cada_pasada = nullptr;
}

respuesta_caja mundo::elegir_respuesta(const caja& mensaje) {
  if (azar_.una_de(12)) return vbNinguna;
  switch (mensaje.teclas) {
    case botones::Aceptar:
      return vbOK;
    case botones::AceptarCancelar:
      return azar_.una_de(2) ? vbOK : vbCancel;
    case botones::SiNo:
      return azar_.una_de(2) ? vbYes : vbNo;
    case botones::SiNoCancelar:
      break;
  }
  if (azar_.una_de(25)) return vbNo;
  return azar_.una_de(2) && preguntas_++ < maximo_si ? vbYes : vbCancel;
}

respuesta_caja mundo::contestar(const caja& mensaje) {
  ++cuenta_.de["box " + mensaje.texto.substr(0, 40)];
  p_->juez.juzgar(mensaje);
  const instante piensa = std::chrono::milliseconds(azar_.hasta(azar_.una_de(5) ? 20'000 : 800));
  plat_.pasar(piensa);
  en_cajas_ += piensa;
  const respuesta_caja respuesta = elegir_respuesta(mensaje);
  if (mensaje.teclas == botones::SiNoCancelar) p_->juez.contar_pregunta(respuesta);
  historia_ += "  [" + mensaje.texto.substr(0, 60) + "] -> " + std::to_string(respuesta) + "\n";
  return respuesta;
}

void mundo::en_una_pasada() {
  if (++pasada_ > demasiadas) throw colgado("passes without end");
  if (pasada_ == muere_en_) throw muerto{};
  if (pasada_ == cierra_en_) {
    pedir_cierre(p_->f);
    if (azar_.una_de(2)) cierra_en_ = pasada_ + 1 + azar_.hasta(200);
  }
  if (nervios_ == 0 || clics_ == 0 || !azar_.una_de(nervios_)) return;
  --clics_;
  ++cuenta_.clics_dentro;
  const gesto g = un_gesto();
  historia_ += "  click " + g.nombre + "\n";
  g.hacer();
}

gesto mundo::un_gesto() {
  std::vector<gesto> todos = gestos(p_->f, azar_);
  // Mostly something that works on the chip or on the image, not what only changes the windows.
  if (!azar_.una_de(4)) {
    constexpr std::array aparte{"men_dir",      "time_",   "frm",  "men_ver_", "men_ac", "men_salir",
                                "men_comparar", "men_pto", "cmb_", "txt_",     "lst_",   "cmd"};
    std::erase_if(todos, [&](const gesto& g) {
      return std::ranges::any_of(aparte, [&](const char* p) { return g.nombre.starts_with(p); });
    });
  }
  return todos[azar_.hasta(todos.size())];
}

/// Draws what goes wrong in the next operation, and what the user does meanwhile.
circunstancias mundo::sortear() {
  circunstancias c;
  plat_.pasar(std::chrono::milliseconds(50 + azar_.hasta(3'000)));
  // The board takes what has come to it before it goes wrong in another way.
  lejos_.entregar(0, plat_.ahora());
  // That may have opened a chip whose cell is stuck from then on.
  if (lejos_.chip.modo.celda_a_0 || lejos_.chip.modo.celda_a_1) p_->juez.chip_cambiado();
  if (azar_.una_de(3)) {
    // What the operation before has left under way may still come.
    const bool pendiente = lejos_.proximo().has_value();
    const bool goteaba = lejos_.placa.fallos.goteo_ms > 1'000 && pendiente;
    c.limpia = !pendiente && !lejos_.colgado();
    c.efecto.desplaza = c.efecto.ensucia =
        goteaba || lejos_.placa.ultimo().value_or(instante{0}) > plat_.ahora() + plazo_de_reposo;
  } else {
    lejos_.reparar();
  }
  // An erase by the clock outlives the program that began it.
  lejos_.chip.pasa(plat_.ahora());
  c.limpia = c.limpia && !lejos_.chip.sigue_borrando();
  puente::faltas fallos;
  puente::conducta modo{.sondeos_de_borrado = static_cast<int>(azar_.hasta(6))};
  if (azar_.una_de(30)) {
    std::ranges::fill(lejos_.chip.flash(), static_cast<std::uint8_t>(azar_.hasta(256)));
    p_->juez.chip_cambiado();
  }

  constexpr std::array cuantas{0, 0, 0, 1, 1, 1, 1, 1, 2, 2};
  c.efecto.solo_tarda = true;
  for (int n = azar_.uno<int>(cuantas); n > 0; --n) {
    const puente::averia& f = puente::averia_al_azar(fallos, modo, azar_);
    ++cuenta_.de[std::string("fault ") + f.nombre];
    historia_ += std::string("  fault ") + f.nombre + "\n";
    c.limpia = false;
    c.efecto.ensucia |= f.efecto.ensucia;
    c.efecto.altera |= f.efecto.altera;
    c.efecto.desplaza |= f.efecto.desplaza;
    c.efecto.no_graba |= f.efecto.no_graba;
    c.efecto.solo_tarda &= f.efecto.solo_tarda;
  }
  if (c.limpia) {
    const auto cable = puente::adaptador_al_azar(azar_);
    ++cuenta_.de["cable " + std::string(cable ? cable->nombre : "none")];
    lejos_.cable.enchufar(cable);
  }
  lejos_.placa.averiar(fallos);
  lejos_.chip.modo = modo;
  c.efecto.solo_tarda &= !c.limpia;
  const std::uint64_t alcance = azar_.una_de(2) ? 40 : 900;
  nervios_ = azar_.una_de(4) ? 1 + azar_.hasta(60) : 0;
  clics_ = nervios_ == 0 ? 0 : 1 + azar_.hasta(15);
  cierra_en_ = azar_.una_de(25) ? 1 + azar_.hasta(alcance) : 0;
  muere_en_ = azar_.una_de(60) ? 1 + azar_.hasta(alcance) : 0;
  c.con_clics = nervios_ != 0;
  // After a Cancel the waits without a watchdog do not wait until one with a watchdog has run.
  c.limpia = c.limpia && !c.con_clics && cierra_en_ == 0 && !p_->f.link.tiempo_agotado;
  return c;
}

void mundo::ejecutar(const std::function<void()>& que) {
  pasada_ = 0;
  preguntas_ = 0;
  en_cajas_ = instante{0};
  const instante antes = plat_.ahora();
  plat_.en_cada_pasada = [this] { en_una_pasada(); };
  try {
    que();
  } catch (const fin_de_programa&) {
    hay_que_arrancar_ = true;
  } catch (const muerto&) {
    hay_que_arrancar_ = true;
    ++cuenta_.muertes;
  } catch (const std::exception& e) {
    p_->juez.fallos.emplace_back(e.what());
    hay_que_arrancar_ = true;
  }
  plat_.en_cada_pasada = nullptr;
  if (hay_que_arrancar_) return;
  p_->juez.terminar(plat_.ahora() - antes - en_cajas_);
  if (!debe_cerrarse(p_->f)) return;
  ++cuenta_.cierres;
  hay_que_arrancar_ = true;
}

void mundo::arrancar() {
  p_.reset();
  p_ = std::make_unique<programa>(*this);
  p_->f.rango.txt_desde.Text = hex(static_cast<std::uint32_t>(azar_.hasta(0x80)), 1);
  p_->f.rango.txt_hasta.Text = hex(static_cast<std::uint32_t>(azar_.hasta(0x200)), 1);
  hay_que_arrancar_ = false;
}

bool mundo::operar() {
  ++cuenta_.operaciones;
  anterior_ = std::move(historia_);
  historia_.clear();
  const bool arranque = hay_que_arrancar_;
  if (arranque) arrancar();
  const circunstancias c = sortear();
  p_->juez.empezar(c);
  if (arranque) {
    historia_ += "start\n";
    ejecutar([this] { Form_Load(p_->f); });
  } else {
    const gesto g = un_gesto();
    ++cuenta_.de["gesture " + g.nombre];
    historia_ += g.nombre + "\n";
    ejecutar(g.hacer);
  }
  return p_->juez.fallos.empty();
}

std::string mundo::informe() const {
  std::string texto = "the operation before:\n" + anterior_ + "this one:\n" + historia_;
  for (const std::string& fallo : p_->juez.fallos) texto += "FAILED: " + fallo + "\n";
  constexpr std::size_t ultimas = 80;
  const std::size_t todas = lejos_.comandos.size();
  return texto + "last frames: " + lejos_.flujo(todas > ultimas ? todas - ultimas : 0) + "\n";
}

}  // namespace campana
