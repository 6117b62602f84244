#include "linea_win32.h"

namespace morvane {

namespace {

BYTE paridad_de(char paridad) {
  switch (paridad) {
    case 'e':
      return EVENPARITY;
    case 'o':
      return ODDPARITY;
    case 'm':
      return MARKPARITY;
    case 's':
      return SPACEPARITY;
    default:
      return NOPARITY;
  }
}

BYTE parada_de(int medios_bits) {
  if (medios_bits == 3) return ONE5STOPBITS;
  return medios_bits == 4 ? TWOSTOPBITS : ONESTOPBIT;
}

DCB cruda(const parametros_linea& linea) {
  DCB d{};
  d.DCBlength = sizeof d;
  d.fBinary = 1;
  // Of no use without flow control, but drivers refuse two that are equal.
  d.XonChar = 0x11;
  d.XoffChar = 0x13;
  d.BaudRate = static_cast<DWORD>(linea.velocidad);
  d.ByteSize = static_cast<BYTE>(linea.bits_datos);
  d.Parity = paridad_de(linea.paridad);
  d.StopBits = parada_de(linea.medios_bits_parada);
  d.fParity = linea.paridad != 'n' ? 1 : 0;
  d.fDtrControl = DTR_CONTROL_ENABLE;
  d.fRtsControl = RTS_CONTROL_ENABLE;
  return d;
}

/// Drivers may report the speed that their clock gives instead of the one asked for.
bool parecida(DWORD tomada, DWORD pedida) {
  constexpr DWORD por_ciento = 3;
  const DWORD diferencia = tomada > pedida ? tomada - pedida : pedida - tomada;
  return diferencia * std::uint64_t{100} <= pedida * std::uint64_t{por_ciento};
}

}  // namespace

bool ajustar_com(HANDLE puerto, const parametros_linea& linea) {
  DCB pedido = cruda(linea), tomado{};
  tomado.DCBlength = sizeof tomado;
  COMMTIMEOUTS al_momento{MAXDWORD, 0, 0, 0, 0};
  if (::SetCommState(puerto, &pedido) == 0 || ::SetCommTimeouts(puerto, &al_momento) == 0) return false;
  // A driver that cannot do something may do the rest and report success: see what it made of it.
  return ::GetCommState(puerto, &tomado) != 0 && parecida(tomado.BaudRate, pedido.BaudRate) &&
         tomado.ByteSize == pedido.ByteSize && tomado.Parity == pedido.Parity && tomado.StopBits == pedido.StopBits;
}

OVERLAPPED* operacion::nueva() {
  o_ = {};
  o_.hEvent = aviso_.numero();
  return &o_;
}

bool operacion::empezada(BOOL resultado) {
  return en_marcha_ = resultado != 0 || ::GetLastError() == ERROR_IO_PENDING;
}

bool operacion::mirar(HANDLE puerto, DWORD& hechos) {
  hechos = 0;
  if (::GetOverlappedResult(puerto, &o_, &hechos, FALSE) != 0) {
    en_marcha_ = false;
    return true;
  }
  return ::GetLastError() == ERROR_IO_INCOMPLETE;
}

bool operacion::soltada(DWORD paciencia_ms) const {
  return !en_marcha_ || ::WaitForSingleObject(aviso_.numero(), paciencia_ms) == WAIT_OBJECT_0;
}

}  // namespace morvane
