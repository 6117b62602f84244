#pragma once

#include <functional>

#include "image/filas.h"
#include "image/mapa_flash.h"
#include "image/variables_grab.h"
#include "platform/plataforma.h"
#include "shell/buscador.h"

/// The windows that show the buffers. Each list is built when its window loads and stays as it is while the window is
/// open; closing the window discards it.
namespace morvane {

/// A hexadecimal dump. The list follows the size of the window.
struct frm_buffer {
  /// `fuente` gives the rows of the dump when the window loads, and `por_que_vacio` what is said where there are none.
  frm_buffer(std::string nombre, std::string texto, int alto, std::function<std::shared_ptr<const volcado>()> fuente,
             std::function<std::string()> por_que_vacio);
  frm_buffer(const frm_buffer&) = delete;
  frm_buffer& operator=(const frm_buffer&) = delete;

  Form ventana;
  Label Label3, Label2, Label4;
  ListBox lst_buf_salida;
  Menu men_comparar;
  /// Looks through the rows of the list.
  buscador busca;
  /// Stands in the place of the rows where there are none; empty otherwise.
  std::string si_vacio;
  /// The row that is looked at first.
  std::size_t primera_fila = 0;

 private:
  void llenar_lista();
  void poner(std::shared_ptr<const volcado> nuevas);

  std::function<std::shared_ptr<const volcado>()> fuente_;
  std::function<std::string()> por_que_vacio_;
};

/// The addresses at which the two buffers differ, and how many they are. Says that it is done before it appears.
struct frm_buffer_comp {
  /// All must outlive the window. `mapa` knows what of `buffer_entrada` was read.
  frm_buffer_comp(plataforma& plat, const Variables_grab& v, const mapa_flash& mapa);
  frm_buffer_comp(const frm_buffer_comp&) = delete;
  frm_buffer_comp& operator=(const frm_buffer_comp&) = delete;

  Form ventana;
  Label Label3, Label2;
  ListBox lst_compara;
  Label lbl_cuenta;
  /// The rows of the list; null while the window is closed.
  std::shared_ptr<const diferencias> filas;

 private:
  void comparar_buffers();

  plataforma& plat_;
  const Variables_grab& v_;
  const mapa_flash& mapa_;
};

}  // namespace morvane
