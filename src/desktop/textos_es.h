#pragma once

#include <QTranslator>

namespace morvane {

/// Qt's own texts of the open dialog and of the text boxes in Spanish, for hosts without Qt's translations.
class textos_es final : public QTranslator {
 public:
  using QTranslator::QTranslator;

  bool isEmpty() const override { return false; }
  QString translate(const char* contexto, const char* original, const char* aclaracion, int cantidad) const override;
};

}  // namespace morvane
