#include "textos_es.h"

#include <array>
#include <string_view>

namespace morvane {
namespace {

struct par {
  std::string_view original;
  const char* texto;
};

constexpr std::array contextos{std::string_view("QFileDialog"),    std::string_view("QFileSystemModel"),
                               std::string_view("QLineEdit"),      std::string_view("QWidgetTextControl"),
                               std::string_view("QPlatformTheme"), std::string_view("QAbstractFileIconProvider"),
                               std::string_view("QMessageBox")};

constexpr par pares[] = {
    {"&Open", "&Abrir"},
    {"&Choose", "&Elegir"},
    {"Name", "Nombre"},
    {"Size", "Tamaño"},
    {"Type", "Tipo"},
    {"Date Modified", "Modificado"},
    {"Computer", "Equipo"},
    {"Folder", "Carpeta"},
    {"File Folder", "Carpeta"},
    {"%1 File", "Archivo %1"},
    {"Back", "Atrás"},
    {"Forward", "Adelante"},
    {"Go back", "Ir atrás"},
    {"Go forward", "Ir adelante"},
    {"Parent Directory", "Carpeta superior"},
    {"Go to the parent directory", "Ir a la carpeta superior"},
    {"Create New Folder", "Crear carpeta"},
    {"Create a New Folder", "Crear una carpeta"},
    {"&New Folder", "Carpeta &nueva"},
    {"New Folder", "Carpeta nueva"},
    {"List View", "Lista"},
    {"Change to list view mode", "Ver como lista"},
    {"Detail View", "Detalles"},
    {"Change to detail view mode", "Ver con detalles"},
    {"Sidebar", "Barra lateral"},
    {"Files", "Archivos"},
    {"Recent Places", "Lugares recientes"},
    {"&Rename", "&Renombrar"},
    {"Show &hidden files", "Mostrar archivos &ocultos"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.",
     "%1\nNo existe este archivo.\nCompruebe su nombre."},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\nNo existe esta carpeta.\nCompruebe su nombre."},
    {"OK", "Aceptar"},
    {"Cancel", "Cancelar"},
    {"&Yes", "Sí"},
    {"&No", "No"},
    {"&Undo", "&Deshacer"},
    {"&Redo", "&Rehacer"},
    {"Cu&t", "Cor&tar"},
    {"&Copy", "&Copiar"},
    {"&Paste", "&Pegar"},
    {"Delete", "Eliminar"},
    {"&Delete", "&Eliminar"},
    {"Select All", "Seleccionar todo"},
};

}  // namespace

QString textos_es::translate(const char* contexto, const char* original, const char* /*aclaracion*/,
                             int /*cantidad*/) const {
  for (const std::string_view uno : contextos) {
    if (uno != contexto) continue;
    for (const par& p : pares) {
      if (p.original == original) return QString::fromUtf8(p.texto);
    }
  }
  return {};
}

}  // namespace morvane
