#pragma once

#include <cstdint>

#include "job/entorno.h"
#include "serial/transporte.h"

namespace morvane::job {

/// How long a job waits for what. The time that the characters themselves take at the line's speed comes on top.
struct plazos {
  /// For the reply to "A" and "D", to "C", to anything else.
  tiempo abrir = std::chrono::seconds{2};
  tiempo examen = std::chrono::seconds{10};
  tiempo respuesta = std::chrono::seconds{5};
  /// A reply that has begun and gets no further for this long is given up.
  tiempo hueco = std::chrono::seconds{1};
  /// A line in doubt is quiet when nothing has come for this long; it is given up when that is not so after `inquieta`.
  tiempo reposo = std::chrono::milliseconds{150};
  tiempo inquieta = std::chrono::seconds{15};
  /// No character for this long, however often it is asked: nobody is there.
  tiempo silencio = std::chrono::seconds{16};
  /// Between two polls of an erase, and for all of them.
  tiempo sondeo = std::chrono::milliseconds{20};
  tiempo borrado = std::chrono::seconds{30};
};

/// Where a job is done. What is referred to must outlive the job; `linea` is open, and its far end is nobody else's.
struct puesto {
  transporte& linea;
  entorno& mundo;
  observador* testigo = nullptr;
  /// Bits a second of the line, 0 if it has no pace.
  int velocidad = 0;
  plazos espera{};
};

/// What a job has cost.
struct cuenta {
  std::int64_t enviados = 0, recibidos = 0;
  /// Replies that counted, refusals not among them.
  std::int64_t respuestas = 0;
  std::int64_t repetidas = 0, rechazos = 0, resets = 0, reaperturas = 0, palabras_otra_vez = 0;
  std::int64_t caracteres() const { return enviados + recibidos; }
};

}  // namespace morvane::job
