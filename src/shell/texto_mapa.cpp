#include "shell/texto_mapa.h"

#include <algorithm>
#include <array>

#include "flash/bloque.h"
#include "frases/numeros.h"

namespace morvane {

namespace {

/// "Leída" for a cell that lies within `hecho_en`, else "Leída en parte (…)" with the addresses that do.
std::string hasta_donde(const char* participio, tramo celda, tramo hecho_en) {
  if (hecho_en.contiene(celda)) return participio;
  const tramo parte{std::max(celda.desde, hecho_en.desde), std::min(celda.hasta, hecho_en.hasta)};
  return participio + (" en parte (" + direcciones(parte) + ")");
}

std::string lo_que_hay_en_el_chip(const mapa_flash& m, int celda) {
  const tramo t = tramo_de_celda(celda);
  std::string texto;
  if (m.sabe(celda, saber::borrada)) texto += "\nBorrada";
  if (m.sabe(celda, saber::escrita)) texto += "\n" + hasta_donde("Escrita", t, m.escrito());
  if (m.sabe(celda, saber::escrita_antes)) texto += "\nEscrita con un archivo anterior";
  if (m.sabe(celda, saber::igual)) texto += "\nVerificada: igual que la imagen";
  if (m.sabe(celda, saber::distinta)) texto += "\nVerificada: su zona difiere de la imagen";
  if (m.sabe(celda, saber::sin_confirmar)) texto += "\nEl chip no ha confirmado alguna palabra";
  if (m.sabe(celda, saber::leida)) texto += "\n" + hasta_donde("Leída", t, m.leido());
  return texto.empty() ? "\nNo se sabe qué contiene el chip" : texto;
}

}  // namespace

aspecto aspecto_de(const mapa_flash& mapa, int celda) {
  constexpr std::pair<saber, aspecto> orden[] = {
      {saber::distinta, aspecto::distinta},           {saber::igual, aspecto::igual},
      {saber::sin_confirmar, aspecto::sin_confirmar}, {saber::escrita, aspecto::escrita},
      {saber::escrita_antes, aspecto::escrita_antes}, {saber::borrada, aspecto::borrada}};
  for (const auto& [cual, como] : orden) {
    if (mapa.sabe(celda, cual)) return como;
  }
  return aspecto::desconocida;
}

const char* nombre_de(aspecto cual) {
  switch (cual) {
    case aspecto::borrada:
      return "Borrada";
    case aspecto::escrita:
      return "Escrita";
    case aspecto::escrita_antes:
      return "Escrita antes";
    case aspecto::sin_confirmar:
      return "Sin confirmar";
    case aspecto::igual:
      return "Igual";
    case aspecto::distinta:
      return "Distinta";
    case aspecto::desconocida:
      break;
  }
  return "No se sabe";
}

std::string texto_de_celda(const mapa_flash& mapa, int celda) {
  const tramo t = tramo_de_celda(celda);
  const std::int32_t bloque = t.desde - t.desde % chip.bloque;
  return direcciones(t) + ", bloque " + direcciones({bloque, bloque + chip.bloque}) +
         lo_que_hay_en_el_chip(mapa, celda) +
         (mapa.sabe(celda, saber::imagen) ? "\nLa imagen tiene datos aquí" : "\nLa imagen está vacía aquí");
}

std::string resumen_del_mapa(const mapa_flash& mapa) {
  std::array<int, aspectos> cuentas{};
  int con_datos = 0, leidas = 0;
  for (int i = 0; i < celdas_del_mapa; ++i) {
    ++cuentas.at(static_cast<std::size_t>(aspecto_de(mapa, i)));
    con_datos += mapa.sabe(i, saber::imagen);
    leidas += mapa.sabe(i, saber::leida);
  }
  std::string texto = std::to_string(celdas_del_mapa) + " celdas de " + std::to_string(bytes_por_celda) + " bytes";
  for (int i = 0; i < aspectos; ++i) {
    const int cuantas = cuentas.at(static_cast<std::size_t>(i));
    if (cuantas > 0) texto += std::string("; ") + nombre_de(static_cast<aspecto>(i)) + ": " + std::to_string(cuantas);
  }
  if (con_datos > 0) texto += "; con datos en la imagen: " + std::to_string(con_datos);
  if (leidas > 0) texto += "; leídas: " + std::to_string(leidas);
  return texto;
}

}  // namespace morvane
