#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/propiedad.h"

/// Windows and their controls as values. The shell fills them in and reacts to their events; a renderer shows them,
/// takes changed properties over, stores what the user typed or chose, and calls the events. Nothing here draws.
/// Positions and sizes are in twips, 1440 to the inch. Texts are UTF-8; "&" in a caption marks the access key.
namespace morvane {

using evento = std::function<void()>;

struct lugar {
  int Left = 0, Top = 0, Width = 0, Height = 0;
  bool operator==(const lugar&) const = default;
};

/// A colour as 0xRRGGBB.
using color = std::uint32_t;

/// What every control has. `Name` is the name of the control in the code; assistive technology falls back on it where
/// a control has neither caption nor tool tip nor label.
struct control {
  control(contador_cambios& cambios, std::string nombre, lugar donde = {});
  control(const control&) = delete;
  control& operator=(const control&) = delete;

  const std::string Name;
  propiedad<lugar> sitio;
  propiedad<bool> Visible;
  propiedad<bool> Enabled;

 protected:
  ~control() = default;
};

/// A font by name and size in points. An empty name stands for the desktop's own font.
struct letra {
  std::string nombre;
  double puntos = 0;
};

struct Label : control {
  Label(contador_cambios& cambios, std::string nombre, std::string texto, lugar donde);
  propiedad<std::string> Caption;
  /// Nothing stands for the colour of what the label stands on.
  std::optional<color> BackColor;
  letra Font;
};

/// A picture of the program, by name.
struct PictureBox : control {
  PictureBox(contador_cambios& cambios, std::string nombre, std::string imagen, lugar donde);
  const std::string Picture;
};

/// A line that parts two areas, along the upper edge of its place.
struct Line : control {
  Line(contador_cambios& cambios, std::string nombre, lugar donde, color tono);
  const color BorderColor;
};

/// How part of a row stands out from the rest: stepping back, as what nobody knows, as a difference, as what was looked
/// for.
enum class realce { tenue, ignorado, distinto, hallado };

/// `cuantos` characters of a row from position `desde`, counted from 0.
struct parte_realzada {
  std::size_t desde, cuantos;
  realce como;
  bool operator==(const parte_realzada&) const = default;
};

/// The rows of a list, each made when it is asked for. They never change: other contents are other rows.
class filas {
 public:
  virtual ~filas() = default;
  virtual std::size_t cuantas() const = 0;
  /// The text of row `indice`, below `cuantas()`.
  virtual std::string texto(std::size_t indice) const = 0;
  /// What of that text stands out, from left to right.
  virtual std::vector<parte_realzada> realces(std::size_t /*indice*/) const { return {}; }
};

struct ListBox : control {
  ListBox(contador_cambios& cambios, std::string nombre, lugar donde, letra tipo);
  const letra Font;
  /// Null when the list is empty.
  propiedad<std::shared_ptr<const filas>> List;
};

struct TextBox : control {
  /// `etiqueta` is the label that names the box, or null.
  TextBox(contador_cambios& cambios, std::string nombre, lugar donde = {}, const Label* etiqueta = nullptr);
  propiedad<std::string> Text;
  const Label* const etiqueta;
};

/// A text box with a list to choose from. What the user types only changes `Text`; `Click` is called when an entry of
/// the list was chosen and stands in `Text`.
struct ComboBox : control {
  ComboBox(contador_cambios& cambios, std::string nombre, std::vector<std::string> lista, lugar donde,
           const Label* etiqueta);
  propiedad<std::string> Text;
  const std::vector<std::string> List;
  const Label* const etiqueta;
  evento Click;
};

struct CommandButton : control {
  CommandButton(contador_cambios& cambios, std::string nombre, std::string texto, lugar donde);
  propiedad<std::string> Caption;
  std::string ToolTipText;
  /// Name of an image of the program, or empty.
  std::string Picture;
  evento Click;
};

struct ProgressBar : control {
  ProgressBar(contador_cambios& cambios, std::string nombre, int minimo, int maximo);
  const int Min, Max;
  /// From `Min` to `Max`.
  propiedad<int> Value;
};

struct Button {
  explicit Button(contador_cambios& cambios, std::string imagen, std::string ayuda);
  /// Name of an image of the program.
  const std::string Image;
  const std::string ToolTipText;
  propiedad<bool> Enabled;
};

/// The bar over the full width at the top of a window. Buttons go by index, the first one is 1.
struct Toolbar : control {
  Toolbar(contador_cambios& cambios, std::string nombre);
  void anadir(std::string imagen, std::string ayuda);
  Button& boton(int indice) { return *Buttons.at(static_cast<std::size_t>(indice) - 1); }

  std::vector<std::unique_ptr<Button>> Buttons;
  /// Called with the index of the button that was pressed.
  std::function<void(int)> ButtonClick;

 private:
  contador_cambios& cambios_;
};

struct Panel {
  enum class estilo { texto, hora };
  Panel(contador_cambios& cambios, estilo clase, int ancho);
  const estilo Style;
  /// Twips.
  const int Width;
  /// A panel of the style `hora` shows the time of day by itself, whatever stands here.
  propiedad<std::string> Text;
  propiedad<std::string> ToolTipText;
  /// Shown at the panel's place, or null.
  ProgressBar* encima = nullptr;
};

/// The bar at the bottom of a window. Panels go by index, the first one is 1.
struct StatusBar : control {
  StatusBar(contador_cambios& cambios, std::string nombre, std::string letra);
  Panel& anadir(Panel::estilo clase, int ancho);
  Panel& panel(int indice) { return *Panels.at(static_cast<std::size_t>(indice) - 1); }

  const std::string FontName;
  std::vector<std::unique_ptr<Panel>> Panels;

 private:
  contador_cambios& cambios_;
};

/// An entry of a menu, with its list below it where it has one. The caption "-" makes a separator.
struct Menu {
  Menu(contador_cambios& cambios, std::string nombre, std::string texto);
  Menu(const Menu&) = delete;
  Menu& operator=(const Menu&) = delete;

  const std::string Name;
  propiedad<std::string> Caption;
  propiedad<bool> Visible;
  propiedad<bool> Enabled;
  evento Click;
  std::vector<Menu*> lista;
};

struct Frame;

using cualquier_control = std::variant<Label*, PictureBox*, Line*, ListBox*, TextBox*, ComboBox*, CommandButton*,
                                       ProgressBar*, Toolbar*, StatusBar*, Frame*>;

/// A panel with a caption. Its controls stand relative to it and show with it.
struct Frame : control {
  Frame(contador_cambios& cambios, std::string nombre, std::string texto, lugar donde);
  propiedad<std::string> Caption;
  std::vector<cualquier_control> Controls;
};

/// A window. It owns the counter of its controls, so it is declared in front of them; controls and menus are
/// registered in display order and must live as long as the window is shown.
struct Form {
  Form(std::string nombre, std::string texto, int ancho, int alto);
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  contador_cambios cambios;
  const std::string Name;
  propiedad<std::string> Caption;
  /// Size of the client area in twips; the menu bar is not part of it.
  const int ScaleWidth, ScaleHeight;
  color BackColor = 0xFFFFFF;
  /// The user cannot change its size, as with the main window.
  bool fija = false;
  /// Called by `Show` before the window appears, once for each time that it is loaded.
  evento Load;
  /// Called when the window has been taken off the screen.
  evento AlDescargar;
  propiedad<bool> Visible;
  /// Goes up whenever the window is to come to the front.
  propiedad<int> llamadas;
  std::vector<Menu*> menus;
  /// The entries of the context menu of the window's surface.
  std::vector<Menu*> contextual;
  std::vector<cualquier_control> Controls;
  /// Called when the size of a window that is not `fija` has changed, and once when it appears, with the size of the
  /// whole window, its frame included, in twips.
  std::function<void(int ancho, int alto)> Resize;

  /// Shows the window without blocking the others. A window that is shown already only comes to the front, as it is.
  void Show();
  /// Takes the window off the screen, as when the user closes it; the next `Show` loads it anew.
  void Unload();
};

/// The open dialog. `Filter` holds pairs of a description and a pattern, all parted by "|".
struct CommonDialog {
  std::string Name;
  std::string Filter;
  /// The folder that it begins in, as a path of the host, or empty to leave that to the desktop.
  std::string InitDir{};
};

}  // namespace morvane
