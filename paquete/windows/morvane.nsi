; The installer: VERSION, ORIGEN (the program's directory as it is laid out) and SALIDA are given on the command line.
Target amd64-unicode
!include MUI2.nsh

!define CLAVE "Software\Microsoft\Windows\CurrentVersion\Uninstall\Morvane"
Name "Morvane"
OutFile "${SALIDA}"
InstallDir "$PROGRAMFILES64\Morvane"
InstallDirRegKey HKLM "${CLAVE}" "InstallLocation"
RequestExecutionLevel admin
SetCompressor /SOLID lzma
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Morvane"
VIAddVersionKey "FileDescription" "Instalador de Morvane"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Morvane authors"

!define MUI_ICON "${ICONO}"
!define MUI_UNICON "${ICONO}"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\morvane.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"

Function .onInit
  SetRegView 64
FunctionEnd

Function un.onInit
  SetRegView 64
FunctionEnd

Section
  SetShellVarContext all
  SetOutPath "$INSTDIR"
  File /r /x SETTINGS.TXT "${ORIGEN}\*.*"
  ; Those of an earlier version stay.
  SetOverwrite off
  File "${ORIGEN}\SETTINGS.TXT"
  SetOverwrite on
  ; Where the journal of what is written has its place. Not taken away: it is the user's.
  CreateDirectory "C:\Datos\TORVAX-m68k"
  CreateShortCut "$SMPROGRAMS\Morvane.lnk" "$INSTDIR\morvane.exe"
  WriteUninstaller "$INSTDIR\desinstalar.exe"
  WriteRegStr HKLM "${CLAVE}" "DisplayName" "Morvane"
  WriteRegStr HKLM "${CLAVE}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${CLAVE}" "DisplayIcon" "$INSTDIR\morvane.exe"
  WriteRegStr HKLM "${CLAVE}" "Publisher" "The Morvane authors"
  WriteRegStr HKLM "${CLAVE}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${CLAVE}" "UninstallString" '"$INSTDIR\desinstalar.exe"'
  WriteRegDWORD HKLM "${CLAVE}" "NoModify" 1
  WriteRegDWORD HKLM "${CLAVE}" "NoRepair" 1
SectionEnd

; What was installed, by name: settings and lists, here or in the user's folder, stay.
Section Uninstall
  SetShellVarContext all
  Delete "$SMPROGRAMS\Morvane.lnk"
  Delete "$INSTDIR\*.exe"
  Delete "$INSTDIR\*.dll"
  Delete "$INSTDIR\qt.conf"
  RMDir /r "$INSTDIR\platforms"
  RMDir /r "$INSTDIR\translations"
  RMDir /r "$INSTDIR\muestras"
  RMDir "$INSTDIR\puertos"
  RMDir /r "$INSTDIR\unidades"
  RMDir "$INSTDIR"
  DeleteRegKey HKLM "${CLAVE}"
SectionEnd
