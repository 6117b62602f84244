#include <cwctype>
#include <functional>

#include "abrir.h"
#include "files/archivos.h"

namespace morvane {

namespace {

/// A name for the folder that all programs of this kind on the host agree on, whoever runs them.
std::wstring nombre_del_turno(const std::filesystem::path& carpeta) {
  std::wstring entera = ruta_larga(std::filesystem::absolute(carpeta));
  for (wchar_t& c : entera) c = static_cast<wchar_t>(std::towlower(c));
  return L"Global\\morvane-" + std::to_wstring(std::hash<std::wstring>()(entera));
}

}  // namespace

void archivos::por_turno(std::string_view nombre, const std::function<void()>& trabajo,
                         std::chrono::milliseconds paciencia) const {
  // Without a list of those who may, since it is made by whoever comes first and everybody waits on it.
  SECURITY_DESCRIPTOR para_todos;
  ::InitializeSecurityDescriptor(&para_todos, SECURITY_DESCRIPTOR_REVISION);
  ::SetSecurityDescriptorDacl(&para_todos, TRUE, nullptr, FALSE);
  SECURITY_ATTRIBUTES atributos{sizeof atributos, &para_todos, FALSE};
  const manejador turno(::CreateMutexW(&atributos, FALSE, nombre_del_turno(anfitrion(nombre).parent_path()).c_str()));
  bool mio = false;
  if (turno.abierto()) {
    const DWORD espera = ::WaitForSingleObject(turno.numero(), static_cast<DWORD>(paciencia.count()));
    // That of a program that has died is anybody's.
    mio = espera == WAIT_OBJECT_0 || espera == WAIT_ABANDONED;
  }
  const struct devolucion {
    ~devolucion() {
      if (h != nullptr) ::ReleaseMutex(h);
    }
    HANDLE h;
  } al_final{mio ? turno.numero() : nullptr};
  trabajo();
}

}  // namespace morvane
