#include <cerrno>

#include "abrir.h"
#include "files/archivos.h"

namespace morvane {

namespace {

/// A file edited by hand may lack its last line end; what is added must not run into that line. Leaves the next
/// writing at the end of the file.
bool falta_final_de_linea(HANDLE archivo, std::int64_t largo) {
  char ultimo = '\n';
  DWORD hechos = 0;
  LARGE_INTEGER donde{};
  donde.QuadPart = largo - 1;
  const bool leido = largo > 0 && ::SetFilePointerEx(archivo, donde, nullptr, FILE_BEGIN) != 0 &&
                     ::ReadFile(archivo, &ultimo, 1, &hechos, nullptr) != 0 && hechos == 1;
  return leido && ultimo != '\n' && ultimo != '\r';
}

}  // namespace

error_archivo archivos::anadir_linea(std::string_view nombre, std::string_view texto) const {
  const apertura abierto = abrir_normal(encontrar(nombre), GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS, true);
  if (abierto.error != 0) return abierto.error;
  const HANDLE archivo = abierto.archivo.numero();
  LARGE_INTEGER antes{};
  if (::GetFileSizeEx(archivo, &antes) == 0) return ultimo_error();
  std::string entero = falta_final_de_linea(archivo, antes.QuadPart) ? "\r\n" : "";
  entero += texto;
  if (::SetFilePointerEx(archivo, {}, nullptr, FILE_END) == 0) return ultimo_error();
  int error = escribir_todo(archivo, entero);
  if (error == 0 && ::FlushFileBuffers(archivo) == 0) error = ultimo_error();
  // Not kept for certain, so not kept at all; and half a line would be read as a path.
  if (error != 0) (void)cortar(archivo, antes.QuadPart);
  return error;
}

}  // namespace morvane
