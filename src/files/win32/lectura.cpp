#include "lectura.h"

#include "abrir.h"
#include "platform/rutas.h"

namespace morvane {

namespace {

std::uint64_t entero(DWORD alto, DWORD bajo) {
  return std::uint64_t{alto} << 32 | bajo;
}

}  // namespace

struct lectura::archivo {
  manejador abierto;
  BY_HANDLE_FILE_INFORMATION al_abrir{};
  int error = 0;
};

lectura::lectura() : a_(std::make_unique<archivo>()) {}
lectura::~lectura() = default;

int lectura::abrir(const std::string& ruta) {
  a_->al_abrir = {};
  apertura abierto = abrir_normal(ruta_de(ruta), GENERIC_READ, OPEN_EXISTING, true);
  a_->abierto = std::move(abierto.archivo);
  if (abierto.error != 0) return abierto.error;
  return ::GetFileInformationByHandle(a_->abierto.numero(), &a_->al_abrir) != 0 ? 0 : ultimo_error();
}

bool lectura::abierta() const {
  return a_->abierto.abierto();
}

void lectura::cerrar() {
  a_->abierto.cerrar();
}

std::uint64_t lectura::tamano() const {
  return entero(a_->al_abrir.nFileSizeHigh, a_->al_abrir.nFileSizeLow);
}

std::int64_t lectura::leer(char* destino, std::size_t cuantos) {
  DWORD hechos = 0;
  const bool bien = ::ReadFile(a_->abierto.numero(), destino, static_cast<DWORD>(cuantos), &hechos, nullptr) != 0;
  a_->error = bien ? 0 : ultimo_error();
  return bien ? std::int64_t{hechos} : -1;
}

int lectura::error() const {
  return a_->error;
}

bool lectura::sigue_igual() const {
  const BY_HANDLE_FILE_INFORMATION& antes = a_->al_abrir;
  BY_HANDLE_FILE_INFORMATION ahora{};
  return ::GetFileInformationByHandle(a_->abierto.numero(), &ahora) != 0 &&
         entero(ahora.nFileSizeHigh, ahora.nFileSizeLow) == tamano() &&
         ::CompareFileTime(&ahora.ftLastWriteTime, &antes.ftLastWriteTime) == 0;
}

}  // namespace morvane
