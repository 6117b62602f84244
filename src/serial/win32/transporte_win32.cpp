#include "serial/transporte_win32.h"

#include <algorithm>
#include <chrono>

#include "linea_win32.h"
#include "puertos_win32.h"

namespace morvane {

namespace {

/// Far above all that can be under way at once; more than this waits only for a far end that reads nothing.
constexpr std::size_t salida_maxima = std::size_t{64} * 1024;
constexpr std::chrono::milliseconds plazo_vaciado{100};
constexpr DWORD paciencia_al_cancelar = 500, pausa_vaciado = 1;

}  // namespace

/// An open port. What the host reads into and writes out of must stay in its place for as long as it does so.
struct transporte_win32::linea_abierta {
  explicit linea_abierta(HANDLE abierto) : puerto(abierto) {}

  bool sigue_ahi(DWORD& por_salir) const;
  bool recibir(std::span<char> destino, std::size_t& cuantos);
  bool enviar();
  bool soltar();

  manejador puerto;
  operacion lectura, escritura;
  std::array<char, 1024> entrada{};
  std::size_t inicio = 0, fin = 0;
  /// What the host is sending, and what comes behind it.
  std::string en_camino, salida;
};

/// Also lets the line go on after an error such as a break. `por_salir`: characters that the driver still has to send.
bool transporte_win32::linea_abierta::sigue_ahi(DWORD& por_salir) const {
  DWORD errores = 0;
  COMSTAT estado{};
  if (::ClearCommError(puerto.numero(), &errores, &estado) == 0) return false;
  por_salir = estado.cbOutQue;
  return true;
}

bool transporte_win32::linea_abierta::recibir(std::span<char> destino, std::size_t& cuantos) {
  if (inicio == fin) {
    inicio = fin = 0;
    const auto cabida = static_cast<DWORD>(entrada.size());
    if (!lectura.en_marcha() &&
        !lectura.empezada(::ReadFile(puerto.numero(), entrada.data(), cabida, nullptr, lectura.nueva()))) {
      return false;
    }
    DWORD hechos = 0;
    if (!lectura.mirar(puerto.numero(), hechos)) return false;
    fin = hechos;
  }
  cuantos = std::min(fin - inicio, destino.size());
  std::copy_n(entrada.begin() + static_cast<std::ptrdiff_t>(inicio), cuantos, destino.begin());
  inicio += cuantos;
  return true;
}

bool transporte_win32::linea_abierta::enviar() {
  while (!en_camino.empty() || !salida.empty()) {
    if (!escritura.en_marcha()) {
      if (en_camino.empty()) en_camino.swap(salida);
      const auto cuantos = static_cast<DWORD>(en_camino.size());
      if (!escritura.empezada(::WriteFile(puerto.numero(), en_camino.data(), cuantos, nullptr, escritura.nueva()))) {
        return false;
      }
    }
    DWORD hechos = 0;
    if (!escritura.mirar(puerto.numero(), hechos)) return false;
    if (escritura.en_marcha()) return true;
    en_camino.erase(0, hechos);
    if (hechos == 0) return true;
  }
  return true;
}

/// Calls off what is under way. False if the driver goes on with it.
bool transporte_win32::linea_abierta::soltar() {
  ::PurgeComm(puerto.numero(), PURGE_TXABORT | PURGE_TXCLEAR | PURGE_RXABORT | PURGE_RXCLEAR);
  ::CancelIoEx(puerto.numero(), nullptr);
  return lectura.soltada(paciencia_al_cancelar) && escritura.soltada(paciencia_al_cancelar);
}

transporte_win32::transporte_win32(const std::filesystem::path& /*directorio*/) {}

transporte_win32::~transporte_win32() {
  cerrar();
}

std::filesystem::path transporte_win32::dispositivo(int numero) const {
  if (numero < 0 || numero > 9 || aparato_tras(numero).empty()) return {};
  return dispositivo_com(numero);
}

void* transporte_win32::aviso() const {
  return linea_ && linea_->lectura.en_marcha() ? linea_->lectura.aviso() : nullptr;
}

bool transporte_win32::existe(int numero) {
  causa_.reset();
  return !dispositivo(numero).empty() || falla({.puerto = numero});
}

bool transporte_win32::falla(causa_puerto porque) {
  causa_ = std::move(porque);
  if (al_fallar) al_fallar(*causa_);
  return false;
}

bool transporte_win32::abrir(int numero, const parametros_linea& linea) {
  cerrar();
  if (!existe(numero)) return false;
  const HANDLE puerto = ::CreateFileW(dispositivo_com(numero).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
  // At once: what else is made meanwhile has errors of its own.
  if (puerto == INVALID_HANDLE_VALUE) return falla(causa_de_apertura(numero, ::GetLastError()));
  auto nueva = std::make_unique<linea_abierta>(puerto);
  if (!ajustar_com(puerto, linea)) {
    return falla({.cual = causa_puerto::clase::parametros, .puerto = numero, .linea = linea});
  }
  ::PurgeComm(puerto, PURGE_RXABORT | PURGE_RXCLEAR | PURGE_TXABORT | PURGE_TXCLEAR);
  linea_ = std::move(nueva);
  return true;
}

void transporte_win32::perder() {
  perdido_ = true;
  linea_->salida.clear();
}

void transporte_win32::escribir(std::string_view datos) {
  if (!linea_ || perdido_) return;
  if (linea_->en_camino.size() + linea_->salida.size() + datos.size() > salida_maxima) return;
  linea_->salida.append(datos);
  if (!linea_->enviar()) perder();
}

std::size_t transporte_win32::leer(std::span<char> destino) {
  if (!linea_ || perdido_) return 0;
  DWORD por_salir = 0;
  std::size_t cuantos = 0;
  // Some drivers read nothing for ever when the device is gone, but can no longer tell its state.
  const bool bien =
      linea_->enviar() && linea_->recibir(destino, cuantos) && (cuantos > 0 || linea_->sigue_ahi(por_salir));
  if (!bien) perder();
  return bien ? cuantos : 0;
}

void transporte_win32::cerrar() {
  if (!linea_) return;
  const auto limite = std::chrono::steady_clock::now() + plazo_vaciado;
  DWORD por_salir = 0;
  while (!perdido_ && std::chrono::steady_clock::now() < limite) {
    if (!linea_->enviar() || !linea_->sigue_ahi(por_salir)) break;
    if (linea_->en_camino.empty() && linea_->salida.empty() && por_salir == 0) break;
    ::Sleep(pausa_vaciado);
  }
  if (!linea_->soltar()) {
    // What a driver does not let go of must not be freed under it; the port itself can be given back.
    linea_->puerto.cerrar();
    (void)linea_.release();
  }
  linea_.reset();
  perdido_ = false;
}

void transporte_win32::descartar_salida() {
  if (!linea_) return;
  linea_->salida.clear();
  ::PurgeComm(linea_->puerto.numero(), PURGE_TXABORT | PURGE_TXCLEAR);
}

}  // namespace morvane
