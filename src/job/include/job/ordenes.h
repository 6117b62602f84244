#pragma once

#include <span>

#include "image/tramo.h"
#include "job/objetivo.h"
#include "job/puesto.h"
#include "job/resultado.h"

/// The orders. Each expects an open line, opens the chip, does one thing, closes the chip whatever happened, and tells
/// what it knows. Nothing is thrown, nothing is kept. `hecho` means done and proved.
namespace morvane::job {

/// Does a board answer, and what does its chip say of itself?
resultado ver_estado(const puesto& p);

/// Erases the flash unless it is proven blank, and proves that it is. Lifts a protection.
resultado borrar(const puesto& p);

struct opciones_grabar {
  job::prueba prueba = prueba::sumas;
  /// Words of FFFFFFFF are written too.
  bool todo = false;
};

/// Erases unless proven blank, writes, and proves all of the flash. Lifts a protection. After anything but `hecho`
/// nothing may be assumed about the flash, unless `diferencias` tells; `archivo` speaks to no board.
resultado grabar(const puesto& p, const objetivo& que, opciones_grabar como = {});

/// Proves that the chip holds `que`, or tells where and how it differs.
resultado verificar(const puesto& p, const objetivo& que, job::prueba como = prueba::sumas);

/// Reads `donde`, a range of the flash that is not empty.
resultado leer(const puesto& p, tramo donde);

/// Which of these is in the chip, by sums? `distinta` if none is.
resultado identificar(const puesto& p, std::span<const firma> candidatas);

resultado reiniciar(const puesto& p);

/// Writes the protection word and proves, by closing and opening, that the chip is protected. One that is stays as it
/// is. `distinta` if something stands in the word's place that would spoil it; then nothing was written.
resultado proteger(const puesto& p);

/// What the line and its adapter cost per exchange. Changes nothing.
resultado medir(const puesto& p, int muestras = 50);

}  // namespace morvane::job
