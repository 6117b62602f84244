#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "serial/causa_puerto.h"

namespace morvane {

/// A serial device of the host.
struct aparato {
  std::filesystem::path dispositivo;
  /// What links to it should name: a path that follows the device when it is plugged in elsewhere, where there is one.
  std::filesystem::path estable;
  /// What it calls itself, such as "FT232R USB UART (FTDI)"; empty if it says nothing.
  std::string nombre;
  /// The kernel's driver for it, such as "ftdi_sio"; empty where that cannot be told.
  std::string conductor{};
};

/// The serial devices that are there now, in the order of their paths, pseudo-terminals left out. `raiz` is the root of
/// the host's files.
std::vector<aparato> aparatos(const std::filesystem::path& raiz = "/");

/// Where a port leads, what is there, and whether it could be opened.
struct descripcion_puerto {
  int numero = 0;
  /// Why it leads to no device; then nothing else is known.
  std::optional<causa_puerto> falta{};
  std::filesystem::path dispositivo{};
  /// The simulated board is at its far end.
  bool placa_simulada = false;
  /// What the device calls itself; empty if it says nothing.
  std::string nombre{};
  /// The kernel's driver for it; empty where that cannot be told.
  std::string conductor{};
  /// Why this user could not open it.
  std::optional<causa_puerto> cerrado{};
  /// The program that has it open, empty if none; nothing where that cannot be told.
  std::optional<std::string> quien{};
};

/// Of the port `numero` (0 to 9) of the program in `directorio`. Opens nothing.
descripcion_puerto describir_puerto(const std::filesystem::path& directorio, int numero);

/// True if the port `numero` has a link of its own, to whatever it leads.
bool tiene_enlace(const std::filesystem::path& directorio, int numero);

/// Makes the port `numero` (1 to 9) lead to `destino`, in place of where its link led before. Gives why that could
/// not be done; then all is as before.
std::optional<causa_puerto> enlazar_puerto(const std::filesystem::path& directorio, int numero,
                                           const std::filesystem::path& destino);

/// Takes the link of the port `numero` away; the same results. Without a link nothing happens.
std::optional<causa_puerto> quitar_enlace(const std::filesystem::path& directorio, int numero);

}  // namespace morvane
