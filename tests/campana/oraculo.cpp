#include "oraculo.h"

#include <algorithm>
#include <array>

#include "files/texto.h"
#include "flash/bloque.h"

namespace campana {

namespace {

using namespace morvane;
using namespace std::chrono_literals;

constexpr instante por_intercambio = 35s;
constexpr int maximo_otras = 7;

bool tiene(const std::string& texto, std::string_view parte) {
  return texto.find(parte) != std::string::npos;
}

}  // namespace

oraculo::oraculo(frm_principal& f, const transporte_memoria& linea, const apoyo::placa_lejos& lejos,
                 const ficheros_al_azar& ficheros, const apoyo::carpeta& dir)
    : f_(f), linea_(linea), lejos_(lejos), ficheros_(ficheros), dir_(dir), mapa_(f.avance.mapa, f.v, lejos.chip) {}

void oraculo::empezar(const circunstancias& c) {
  c_ = c;
  dicho.clear();
  desde_ = linea_.escrito().size();
  preguntas_ = interrumpidas_ = otras_ = 0;
  rechazo_ = sin_mirar_ = false;
  estaba_protegida_ = protegida();
}

void oraculo::exigir(bool bien, const std::string& que) {
  if (!bien) fallos.push_back(que);
}

/// Each phrase that announces a success, what it promises, and the faults under which it may stand all the same.
void oraculo::juzgar(const caja& mensaje) {
  const std::string& t = mensaje.texto;
  dicho.push_back(t);
  const puente::alcance& e = c_.efecto;
  if (mensaje.titulo == "Atención respuesta del Chip") rechazo_ = true;
  if (tiene(t, "¡Ha terminado de borrar!")) exigir(rechazo_ || e.no_graba || borrada(), "false: " + t);
  if (tiene(t, "¡Ha terminado de grabar!")) exigir(grabada(), "false: " + t);
  if (tiene(t, "¡Ha terminado de Leer!")) exigir(rechazo_ || e.altera || e.desplaza || leida(), "false: " + t);
  if (tiene(t, ", está borrada")) exigir(e.altera || e.desplaza || borrada(), "false: " + t);
  if (tiene(t, "está correcto")) exigir(e.altera || e.desplaza || sumas_iguales(), "false: " + t);
  if (tiene(t, "ha sido exitosa")) exigir(rechazo_ || e.altera || e.desplaza || bytes_iguales(), "false: " + t);
  // The look that decides comes behind a "D".
  if (tiene(t, "EzPort está activo")) sin_mirar_ = !enviados('D').empty();
  if (tiene(t, "Se ha protegido")) exigir(protegida() && (!sin_mirar_ || estaba_protegida_), "false: " + t);
  if (tiene(t, "Ha terminado de cargar")) exigir(cargado(), "false: " + t);
  if (c_.limpia && !protegida()) {
    if (tiene(t, "difiere")) exigir(!sumas_iguales(), "false: " + t);
    if (tiene(t, "contiene datos")) exigir(!borrada(), "false: " + t);
    if (tiene(t, "no coinciden")) exigir(!bytes_iguales(), "false: " + t);
    for (const char* queja : {"No hay respuesta", "se ha interrumpido", "Error al", "excedido", "Cheksum", "RESET"}) {
      exigir(!tiene(t, queja), "nothing was wrong: " + t);
    }
  }
  if (tiene(t, "se ha interrumpido")) {
    ++interrumpidas_;
  } else if (!tiene(t, "No hay respuesta")) {
    ++otras_;
  }
}

void oraculo::contar_pregunta(respuesta_caja respuesta) {
  if (respuesta != vbYes) ++preguntas_;
}

void oraculo::terminar(instante pasado) {
  const auto tramas = std::ranges::count(linea_.escrito().begin() + static_cast<std::ptrdiff_t>(desde_),
                                         linea_.escrito().end(), '\x03');
  exigir(pasado < por_intercambio * (tramas + static_cast<int>(dicho.size()) + 2), "it took too long");
  exigir(!f_.serial.PortOpen() && !linea_.abierta(), "the port stays open");
  exigir(f_.serial.InputLen() == 1 && f_.serial.RThreshold() == 1, "not in the character mode");
  exigir(!f_.link.spera_resp.Enabled(), "the watchdog runs on");
  exigir(f_.ordenes == 0 && !f_.cargando, "something counts as running");
  const std::string_view escrito = std::string_view(linea_.escrito()).substr(desde_);
  for (const auto& m : mapa_.terminar(escrito, c_.efecto, c_.limpia || c_.efecto.solo_tarda)) exigir(false, m);
  for (const auto& boton : f_.barra.Buttons) exigir(boton->Enabled, "a button stays disabled");
  if (c_.con_clics) return;
  exigir(preguntas_ <= 1, "more than one question");
  exigir(interrumpidas_ <= 1, "told twice that it has been broken off");
  exigir(interrumpidas_ == 0 || tiene(dicho.back(), "se ha interrumpido"), "something is said after the breaking off");
  exigir(otras_ <= maximo_otras, "a storm of boxes");
}

std::vector<std::string> oraculo::enviados(char letra) const {
  std::vector<std::string> lista;
  const std::string_view todo = std::string_view(linea_.escrito()).substr(desde_);
  for (std::size_t i = 0; (i = todo.find('\x02', i)) != todo.npos; ++i) {
    if (todo[i + 1] == letra) lista.emplace_back(todo.substr(i, todo.find('\x03', i) + 1 - i));
  }
  return lista;
}

bool oraculo::borrada() const {
  return std::ranges::all_of(lejos_.chip.flash(), [](std::uint8_t b) { return b == 0xFF; });
}

/// Every word has gone out, in order and into the journal. With a board that does what it is told, the chip holds the
/// image and nothing else.
bool oraculo::grabada() const {
  const std::vector<std::string> palabras = enviados('g');
  const std::int32_t tope = f_.v.dir_max;
  std::int32_t dir = 0;
  while (dir <= tope && f_.v.mascara_salida[static_cast<std::size_t>(dir)] == 0) ++dir;
  const std::int32_t inicio = dir - dir % 4;
  std::size_t n = 0;
  for (dir = inicio; dir <= tope; dir += 4, ++n) {
    std::string texto = "\x02g" + hex(static_cast<std::uint32_t>(dir), 6);
    for (std::size_t i = 0; i < 4; ++i) {
      texto += hex(dir >= total_flash ? 0xFF : f_.v.buffer_salida[static_cast<std::size_t>(dir) + i], 2);
    }
    if (n >= palabras.size() || !palabras[n].starts_with(texto)) return false;
  }
  if (n != palabras.size() || !diario_igual(palabras)) return false;
  if (!c_.limpia && !c_.efecto.solo_tarda) return true;
  const auto flash = lejos_.chip.flash();
  for (std::int32_t i = 0; i < total_flash; ++i) {
    const bool dentro = i >= inicio && i <= (tope | 3);
    const std::uint8_t debe = dentro ? f_.v.buffer_salida[static_cast<std::size_t>(i)] : 0xFF;
    if (flash[static_cast<std::size_t>(i)] != debe) return false;
  }
  return true;
}

bool oraculo::diario_igual(const std::vector<std::string>& palabras) const {
  std::string todas;
  for (const std::string& p : palabras) todas += p + "\r\n";
  return dir_.leer("unidades/c/Datos/TORVAX-m68k/memoria.txt") == todas;
}

bool oraculo::leida() const {
  const auto flash = lejos_.chip.flash();
  const std::vector<std::string> pedidos = enviados('e');
  std::int64_t fin = -1;
  for (const std::string& p : pedidos) {
    const std::int64_t base = valor_hex(std::string_view(p).substr(2, 6));
    for (std::int64_t i = base; i < base + 32 && hay_celda(i); ++i) {
      const std::uint8_t debe = i < total_flash ? flash[static_cast<std::size_t>(i)] : 0xFF;
      if (f_.v.buffer_entrada[static_cast<std::size_t>(i)] != debe) return false;
    }
    fin = base + 31;
  }
  return pedidos.empty() || fin >= std::min<std::int64_t>(f_.v.dir_fin_lectura, total_flash - 1) || pedidos.size() == 1;
}

bool oraculo::sumas_iguales() const {
  const auto flash = lejos_.chip.flash();
  const auto suma = [](const auto& b, std::int32_t desde, std::int32_t cuenta) {
    std::uint64_t total = 0;
    for (std::int32_t i = desde; i < desde + cuenta; ++i) total += b[static_cast<std::size_t>(i)];
    return total;
  };
  if (suma(flash, 0, 1025) != suma(f_.v.buffer_salida, 0, 1025)) return false;
  for (std::int32_t i = 0; i < total_flash && i <= f_.v.dir_max; i += chip.bloque) {
    if (suma(flash, i, chip.bloque) != suma(f_.v.buffer_salida, i, chip.bloque)) return false;
  }
  return true;
}

/// As the comparison goes: whole groups of 16, of which the one that begins at the top is not looked at.
bool oraculo::bytes_iguales() const {
  const std::int32_t hasta = std::min((f_.v.dir_max + 15) / 16 * 16, total_flash);
  return std::equal(f_.v.buffer_salida.begin(), f_.v.buffer_salida.begin() + hasta, lejos_.chip.flash().begin());
}

bool oraculo::protegida() const {
  const auto& palabra = puente::chip::palabra;
  return std::equal(palabra.begin(), palabra.end(), lejos_.chip.flash().begin() + puente::chip::dir_proteccion);
}

bool oraculo::cargado() const {
  const contenido* c = ficheros_.de(f_.v.ruta_archivo);
  // A load that a pending stop has ended says the same and leaves the image empty.
  if (c != nullptr && f_.v.dir_max == 0 && f_.avance.cancelar) return true;
  if (c == nullptr || !c->vale || f_.v.dir_max != c->dir_max) return false;
  std::vector<std::uint8_t> debe(total_celdas, 0xFF);
  for (const auto& [dir, byte] : c->bytes) debe[static_cast<std::size_t>(dir)] = byte;
  return f_.v.buffer_salida == debe;
}

}  // namespace campana
