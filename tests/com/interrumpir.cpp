// interrumpir MS PROGRAMA PALABRA...: runs a program in a console of its own and tells it Ctrl-C after so many
// milliseconds. Ends with the program's code.
#include <windows.h>

#include <string>

int wmain(int cuantas, wchar_t** palabras) {
  if (cuantas < 3) return 64;
  std::wstring orden;
  for (int i = 2; i < cuantas; ++i) orden += (i == 2 ? L"\"" : L" \"") + std::wstring(palabras[i]) + L"\"";
  ::FreeConsole();
  if (::AllocConsole() == 0) return 65;
  STARTUPINFOW como{};
  como.cb = sizeof como;
  PROCESS_INFORMATION que{};
  if (::CreateProcessW(nullptr, orden.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &como, &que) == 0)
    return 66;
  ::Sleep(static_cast<DWORD>(std::stoul(palabras[1])));
  // From here on only: a child would take it over.
  ::SetConsoleCtrlHandler(nullptr, TRUE);
  if (::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) == 0) return 67;
  constexpr DWORD paciencia = 20000;
  if (::WaitForSingleObject(que.hProcess, paciencia) != WAIT_OBJECT_0) {
    ::TerminateProcess(que.hProcess, 1);
    return 68;
  }
  DWORD codigo = 69;
  ::GetExitCodeProcess(que.hProcess, &codigo);
  return static_cast<int>(codigo);
}
