#pragma once

#include <utility>

namespace morvane {

/// Counts the changes of the properties of one window. A renderer compares it with the value that it saw last.
class contador_cambios {
 public:
  void sumar() { ++cambios_; }
  unsigned long valor() const { return cambios_; }

 private:
  unsigned long cambios_ = 0;
};

/// A property of a control. It reads like its value; storing a different value bumps the counter of the window that
/// the control stands in, storing an equal one does nothing. The counter must outlive the property.
template <class T>
class propiedad {
 public:
  explicit propiedad(contador_cambios& cambios, T inicial = T{}) : cambios_(cambios), valor_(std::move(inicial)) {}
  propiedad(const propiedad&) = delete;
  propiedad& operator=(const propiedad&) = delete;

  propiedad& operator=(T nuevo) {
    if (nuevo == valor_) return *this;
    valor_ = std::move(nuevo);
    cambios_.sumar();
    return *this;
  }
  operator const T&() const { return valor_; }
  const T& valor() const { return valor_; }

 private:
  contador_cambios& cambios_;
  T valor_;
};

}  // namespace morvane
