#include "shell/frm_about.h"

namespace morvane {

namespace {

constexpr const char* titulo_programa = "Morvane";

/// Major, minor and revision number, as the build knows them.
constexpr const char* numero_de_version = MORVANE_VERSION;

}  // namespace

frmAbout::frmAbout(plataforma& plat)
    : ventana("frmAbout", "Acerca de MiApl", 5730, 3555),
      picIcon(ventana.cambios, "picIcon", "morvane", {240, 240, 960, 960}),
      lblTitle(ventana.cambios, "lblTitle", "Título de la aplicación", {1410, 240, 4080, 480}),
      lblVersion(ventana.cambios, "lblVersion", "Versión", {1410, 780, 4080, 285}),
      lblDescription(ventana.cambios, "lblDescription", "Descripción de la aplicación", {1410, 1125, 4080, 885}),
      lblDisclaimer(ventana.cambios, "lblDisclaimer", "Advertencia: ...", {240, 2625, 3060, 825}),
      cmdOK(ventana.cambios, "cmdOK", "Aceptar", {3420, 2535, 2070, 405}),
      cmdSysInfo(ventana.cambios, "cmdSysInfo", "&Info. del sistema...", {3420, 3000, 2070, 405}),
      Line1(ventana.cambios, "Line1", {120, 2355, 5490, 15}, 0x808080),
      Line1b(ventana.cambios, "Line1", {120, 2370, 5490, 15}, 0xFFFFFF) {
  lblTitle.Font.puntos = 18;
  ventana.BackColor = 0xE0E0E0;
  ventana.fija = true;
  ventana.Controls = {&picIcon, &lblTitle,      &lblVersion, &lblDescription, &Line1,
                      &Line1b,  &lblDisclaimer, &cmdOK,      &cmdSysInfo};
  ventana.Load = [this] {
    ventana.Caption = std::string("Acerca de ") + titulo_programa;
    lblVersion.Caption = std::string("Versión ") + numero_de_version;
    lblTitle.Caption = titulo_programa;
  };
  cmdOK.Click = [this] { ventana.Unload(); };
  cmdSysInfo.Click = [&plat] { StartSysInfo(plat); };
}

}  // namespace morvane
