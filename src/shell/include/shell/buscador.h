#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "image/busqueda.h"
#include "image/filas.h"

namespace morvane {

/// What a text to look for stands for: pairs of hexadecimal digits, or characters.
enum class clase_busqueda { bytes, texto };

/// Leads the user about in a dump, and tells how it went.
class buscador {
 public:
  /// What is looked through from now on; null for nothing. What was found before is forgotten.
  void mirar(std::shared_ptr<const volcado> donde);

  /// The byte at an address, which the user has written in hexadecimal digits. False if there is none.
  bool ir(std::string_view direccion);
  /// The next place of `que` in the direction `hacia`. It begins at the place that was found last, if that is of the
  /// same search and shows in row `fila`, from 0, and at that row otherwise. False if there is none.
  bool buscar(std::string_view que, clase_busqueda como, sentido hacia, std::size_t fila);

  /// The bytes that the last step has led to; nothing if it failed.
  const std::optional<tramo>& hallado() const { return hallado_; }
  /// How the last step went, for the user.
  const std::string& mensaje() const { return mensaje_; }

 private:
  struct pedido {
    std::string que;
    clase_busqueda como = clase_busqueda::bytes;
    bool operator==(const pedido&) const = default;
  };
  bool fallar(std::string motivo);
  std::size_t partida(sentido hacia, std::size_t fila, bool continua) const;

  std::shared_ptr<const volcado> donde_;
  std::optional<tramo> hallado_;
  /// The search that `hallado_` is of.
  std::optional<pedido> ultimo_;
  std::string mensaje_;
};

}  // namespace morvane
