#pragma once

#include <functional>
#include <vector>

#include "files/causa_archivo.h"
#include "informe.h"
#include "job/ordenes.h"

namespace morvane::console {

/// What an order is handed.
struct llamada {
  const argumentos& a;
  exterior& fuera;
  informe& cara;
};

/// Which port an order goes to and how it is set.
struct puerto_elegido {
  destino_puerto adonde;
  parametros_linea como;
  /// As the user knows it: COM3, or a path.
  std::string nombre;
};

/// The program's folder: the one that was named, else that of the executable. Fails if it is not there.
std::filesystem::path carpeta_de(const llamada& ll);
/// What arguments and settings say. Fails if the settings cannot be read or make no sense.
puerto_elegido elegir_puerto(const llamada& ll);

/// What a job gave, and where it was done.
struct trabajo_hecho {
  job::resultado r;
  puerto_elegido puerto;
  std::filesystem::path dispositivo;
  /// The command that it ended at, without its frame; empty if none went out.
  std::string comando;
  /// Why the trace that was wanted is not whole.
  std::optional<causa_archivo> sin_traza;
};

/// Opens the line, has the job done, closes the line. Fails if there is no line to be had.
trabajo_hecho con_placa(const llamada& ll, const std::function<job::resultado(const job::puesto&)>& trabajo);

/// The end of a job that did not go well, or one with `texto` that did; with the fields that all jobs have.
cierre cierre_de(const llamada& ll, const trabajo_hecho& t, std::string texto);

}  // namespace morvane::console
