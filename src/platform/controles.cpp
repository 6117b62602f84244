#include "platform/controles.h"

namespace morvane {

control::control(contador_cambios& cambios, std::string nombre, lugar donde)
    : Name(std::move(nombre)), sitio(cambios, donde), Visible(cambios, true), Enabled(cambios, true) {}

Label::Label(contador_cambios& cambios, std::string nombre, std::string texto, lugar donde)
    : control(cambios, std::move(nombre), donde), Caption(cambios, std::move(texto)) {}

PictureBox::PictureBox(contador_cambios& cambios, std::string nombre, std::string imagen, lugar donde)
    : control(cambios, std::move(nombre), donde), Picture(std::move(imagen)) {}

Line::Line(contador_cambios& cambios, std::string nombre, lugar donde, color tono)
    : control(cambios, std::move(nombre), donde), BorderColor(tono) {}

ListBox::ListBox(contador_cambios& cambios, std::string nombre, lugar donde, letra tipo)
    : control(cambios, std::move(nombre), donde), Font(std::move(tipo)), List(cambios) {}

TextBox::TextBox(contador_cambios& cambios, std::string nombre, lugar donde, const Label* titulo)
    : control(cambios, std::move(nombre), donde), Text(cambios), etiqueta(titulo) {}

ComboBox::ComboBox(contador_cambios& cambios, std::string nombre, std::vector<std::string> lista, lugar donde,
                   const Label* titulo)
    : control(cambios, std::move(nombre), donde), Text(cambios), List(std::move(lista)), etiqueta(titulo) {}

CommandButton::CommandButton(contador_cambios& cambios, std::string nombre, std::string texto, lugar donde)
    : control(cambios, std::move(nombre), donde), Caption(cambios, std::move(texto)) {}

ProgressBar::ProgressBar(contador_cambios& cambios, std::string nombre, int minimo, int maximo)
    : control(cambios, std::move(nombre)), Min(minimo), Max(maximo), Value(cambios, minimo) {}

Button::Button(contador_cambios& cambios, std::string imagen, std::string ayuda)
    : Image(std::move(imagen)), ToolTipText(std::move(ayuda)), Enabled(cambios, true) {}

Toolbar::Toolbar(contador_cambios& cambios, std::string nombre)
    : control(cambios, std::move(nombre)), cambios_(cambios) {}

void Toolbar::anadir(std::string imagen, std::string ayuda) {
  Buttons.push_back(std::make_unique<Button>(cambios_, std::move(imagen), std::move(ayuda)));
}

Panel::Panel(contador_cambios& cambios, estilo clase, int ancho)
    : Style(clase), Width(ancho), Text(cambios), ToolTipText(cambios) {}

StatusBar::StatusBar(contador_cambios& cambios, std::string nombre, std::string letra)
    : control(cambios, std::move(nombre)), FontName(std::move(letra)), cambios_(cambios) {}

Panel& StatusBar::anadir(Panel::estilo clase, int ancho) {
  Panels.push_back(std::make_unique<Panel>(cambios_, clase, ancho));
  return *Panels.back();
}

Menu::Menu(contador_cambios& cambios, std::string nombre, std::string texto)
    : Name(std::move(nombre)), Caption(cambios, std::move(texto)), Visible(cambios, true), Enabled(cambios, true) {}

Frame::Frame(contador_cambios& cambios, std::string nombre, std::string texto, lugar donde)
    : control(cambios, std::move(nombre), donde), Caption(cambios, std::move(texto)) {}

Form::Form(std::string nombre, std::string texto, int ancho, int alto)
    : Name(std::move(nombre)),
      Caption(cambios, std::move(texto)),
      ScaleWidth(ancho),
      ScaleHeight(alto),
      Visible(cambios, false),
      llamadas(cambios) {}

void Form::Show() {
  if (!Visible && Load) Load();
  Visible = true;
  llamadas = llamadas + 1;
}

void Form::Unload() {
  if (!Visible) return;
  Visible = false;
  if (AlDescargar) AlDescargar();
}

}  // namespace morvane
