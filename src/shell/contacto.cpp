#include "shell/contacto.h"

#include <charconv>

#include "shell/frm_principal.h"

namespace morvane {

namespace {

using estado = contacto::estado;

void anotar(frm_principal& f, estado cual) {
  contacto& c = f.placa;
  c.cual = cual;
  c.puerto = f.link.cuentas.puerto;
  c.hora = f.plat.hora();
  if (cual != estado::responde) ++c.fallidos;
}

std::string lo_de_la_placa(const contacto& c) {
  switch (c.cual) {
    case estado::responde:
      return "La placa respondió a las " + c.hora;
    case estado::calla:
      return "La placa no respondió a las " + c.hora;
    case estado::sin_puerto:
      return "No se pudo abrir a las " + c.hora;
    case estado::ninguno:
      break;
  }
  return "Todavía no se ha hablado con la placa";
}

}  // namespace

void empezar_contacto(frm_principal& f) {
  f.placa.al_empezar = f.link.cuentas;
}

void acabar_contacto(frm_principal& f) {
  const cuentas_de_linea &antes = f.placa.al_empezar, &ahora = f.link.cuentas;
  mirar_contacto(f);
  if (ahora.respuestas != antes.respuestas) return;
  if (ahora.aperturas != antes.aperturas) return anotar(f, estado::calla);
  if (ahora.negadas != antes.negadas) anotar(f, estado::sin_puerto);
}

void mirar_contacto(frm_principal& f) {
  if (f.placa.vistas == f.link.cuentas.respuestas) return;
  f.placa.vistas = f.link.cuentas.respuestas;
  anotar(f, estado::responde);
}

trafico trafico_de(const enlace& e) {
  trafico t{e.cuentas.enviados + e.control_serie.recibidos(), e.cuentas.respuestas, 0};
  const std::string& velocidad = e.valores.velocidad;
  (void)std::from_chars(velocidad.data(), velocidad.data() + velocidad.size(), t.velocidad);
  return t;
}

letrero letrero_de(const frm_principal& f, const std::string& rotulo) {
  const campos_ajustes& a = f.link.valores;
  if (a.puerto.empty()) return {"Sin puerto elegido", "Pulse para elegir uno", true};
  const bool el_mismo = f.placa.puerto == a.puerto;
  const contacto c = el_mismo ? f.placa : contacto{};
  return {rotulo + (a.velocidad.empty() ? "" : " · " + a.velocidad), lo_de_la_placa(c),
          c.cual == estado::calla || c.cual == estado::sin_puerto};
}

std::string sin_contacto(const frm_principal& f) {
  switch (f.placa.cual) {
    case estado::calla:
      return "La placa no responde";
    case estado::sin_puerto:
      return "No se abre " + f.placa.puerto;
    case estado::responde:
    case estado::ninguno:
      break;
  }
  return {};
}

}  // namespace morvane
