#pragma once

#include <cstdint>
#include <string>

#include "platform/anfitrion.h"
#include "platform/plataforma.h"

namespace morvane {

/// The box that names the program and its version, and starts the desktop's own program about the system.
struct frmAbout {
  /// `plat` must outlive the window.
  explicit frmAbout(plataforma& plat);
  frmAbout(const frmAbout&) = delete;
  frmAbout& operator=(const frmAbout&) = delete;

  Form ventana;
  PictureBox picIcon;
  Label lblTitle, lblVersion, lblDescription, lblDisclaimer;
  CommandButton cmdOK, cmdSysInfo;
  Line Line1, Line1b;
};

/// Starts the program about the system: the one that the registry names, or one of the desktop's own. The user is told
/// if there is none or it cannot be started.
void StartSysInfo(plataforma& plat);

/// Reads a value of the registry as text: a string without its closing zero, or a number in decimal digits. A value of
/// any other type leaves `KeyVal` alone. False, and `KeyVal` empty, if it cannot be read.
bool GetKeyValue(anfitrion& maquina, std::int32_t KeyRoot, const std::string& KeyName, const std::string& SubKeyRef,
                 std::string& KeyVal);

}  // namespace morvane
