#include <array>
#include <cerrno>

#include "abrir.h"
#include "files/fichero_entero.h"
#include "platform/rutas.h"
#include "provisionales.h"

/// Atomic replacement of a file: every step is checked, and up to the renaming the old file is not touched.
namespace morvane {

namespace fs = std::filesystem;

namespace {

/// A virus scanner or an indexer holds a file that was just written for a moment.
constexpr int intentos_de_mudanza = 10;
constexpr DWORD entre_intentos = 10;
/// Units of the host's file times in a second.
constexpr std::uint64_t por_segundo = 10'000'000;

std::uint64_t entero(const FILETIME& t) {
  return std::uint64_t{t.dwHighDateTime} << 32 | t.dwLowDateTime;
}

bool vive(std::int32_t pid) {
  const manejador proceso(::OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(pid)));
  if (!proceso.abierto()) return ::GetLastError() != ERROR_INVALID_PARAMETER;
  return ::WaitForSingleObject(proceso.numero(), 0) == WAIT_TIMEOUT;
}

bool es_viejo(const WIN32_FIND_DATAW& que) {
  FILETIME ahora{};
  ::GetSystemTimeAsFileTime(&ahora);
  return entero(que.ftLastWriteTime) + edad_para_barrer * por_segundo < entero(ahora);
}

/// Removes from `carpeta` the provisional files that processes have left there which no longer run.
void barrer_provisionales(const fs::path& carpeta) {
  WIN32_FIND_DATAW uno{};
  const HANDLE lista = ::FindFirstFileW(ruta_larga(carpeta / ".morvane-*.tmp").c_str(), &uno);
  if (lista == INVALID_HANDLE_VALUE) return;
  do {
    const auto pid = dueno_del_provisional(estrecho(uno.cFileName));
    const bool ajeno = pid && static_cast<DWORD>(*pid) != ::GetCurrentProcessId();
    if (ajeno && es_viejo(uno) && !vive(*pid)) ::DeleteFileW(ruta_larga(carpeta / uno.cFileName).c_str());
  } while (::FindNextFileW(lista, &uno) != 0);
  ::FindClose(lista);
}

/// The file that `ruta` leads to over symbolic links; itself if it is none or leads nowhere.
fs::path seguir_enlaces(const fs::path& ruta) {
  const DWORD que = ::GetFileAttributesW(ruta_larga(ruta).c_str());
  if (que == INVALID_FILE_ATTRIBUTES || (que & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return ruta;
  const manejador abierto(::CreateFileW(ruta_larga(ruta).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  std::wstring nombre(abierto.abierto() ? 32768 : 0, L'\0');
  nombre.resize(::GetFinalPathNameByHandleW(abierto.numero(), nombre.data(), static_cast<DWORD>(nombre.size()), 0));
  return nombre.empty() ? ruta : fs::path(nombre);
}

/// A new file with `contenido` beside another one; its path in `nuevo`. 0, or the number of the error; then there is
/// none.
int llenar(const fs::path& carpeta, std::string_view contenido, std::wstring& nuevo) {
  manejador archivo;
  for (unsigned intento = 0; !archivo.abierto(); ++intento) {
    const auto pid = static_cast<std::int32_t>(::GetCurrentProcessId());
    nuevo = ruta_larga(carpeta / nombre_provisional(pid, intento));
    archivo =
        manejador(::CreateFileW(nuevo.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!archivo.abierto() && ultimo_error() != EEXIST) return ultimo_error();
  }
  int error = escribir_todo(archivo.numero(), contenido);
  if (error == 0 && ::FlushFileBuffers(archivo.numero()) == 0) error = ultimo_error();
  archivo.cerrar();
  if (error != 0) ::DeleteFileW(nuevo.c_str());
  return error;
}

int sustituir(const std::wstring& nuevo, const std::wstring& definitivo) {
  DWORD error = ERROR_SUCCESS;
  for (int i = 0; i < intentos_de_mudanza; ++i) {
    if (i > 0) ::Sleep(entre_intentos);
    if (::MoveFileExW(nuevo.c_str(), definitivo.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) {
      return 0;
    }
    error = ::GetLastError();
    if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED) break;
  }
  ::DeleteFileW(nuevo.c_str());
  return error_de(error);
}

}  // namespace

error_archivo archivos::guardar(std::string_view nombre, std::string_view contenido) const {
  return reemplazar_archivo(encontrar(nombre), contenido);
}

error_archivo reemplazar_archivo(const fs::path& ruta, std::string_view contenido) {
  const fs::path definitivo = seguir_enlaces(ruta);
  // Says what stands in the way: a folder, a device, a file that may only be read. What is open cannot be replaced.
  const int viejo = abrir_normal(definitivo, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, true).error;
  if (viejo != 0 && viejo != ENOENT && viejo != EBUSY) return viejo;
  if (definitivo.filename().empty()) return ENOENT;
  std::wstring nuevo;
  if (const int error = llenar(definitivo.parent_path(), contenido, nuevo)) return error;
  if (const int error = sustituir(nuevo, ruta_larga(definitivo))) return error;
  barrer_provisionales(definitivo.parent_path());
  return 0;
}

}  // namespace morvane
