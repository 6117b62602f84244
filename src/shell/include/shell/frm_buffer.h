#pragma once

#include <functional>

#include "image/filas.h"
#include "image/variables_grab.h"
#include "platform/plataforma.h"
#include "shell/buscador.h"

/// The windows that show the buffers. Each list is built when its window loads and stays as it is while the window is
/// open; closing the window discards it.
namespace morvane {

/// A hexadecimal dump. The list follows the size of the window.
struct frm_buffer {
  /// `fuente` gives the rows of the dump when the window loads.
  frm_buffer(std::string nombre, std::string texto, int alto, std::function<std::shared_ptr<const volcado>()> fuente);
  frm_buffer(const frm_buffer&) = delete;
  frm_buffer& operator=(const frm_buffer&) = delete;

  Form ventana;
  Label Label3, Label2, Label4;
  ListBox lst_buf_salida;
  Menu men_comparar;
  /// Looks through the rows of the list.
  buscador busca;

 private:
  void llenar_lista();
  void poner(std::shared_ptr<const volcado> nuevas);

  std::function<std::shared_ptr<const volcado>()> fuente_;
};

/// The addresses at which the two buffers differ, and how many they are. Says that it is done before it appears.
struct frm_buffer_comp {
  /// Both must outlive the window.
  frm_buffer_comp(plataforma& plat, const Variables_grab& v);
  frm_buffer_comp(const frm_buffer_comp&) = delete;
  frm_buffer_comp& operator=(const frm_buffer_comp&) = delete;

  Form ventana;
  Label Label3, Label2;
  ListBox lst_compara;
  Label lbl_cuenta;

 private:
  void comparar_buffers();

  plataforma& plat_;
  const Variables_grab& v_;
};

}  // namespace morvane
