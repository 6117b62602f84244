#pragma once

#include <QMenu>
#include <QTimer>

namespace morvane {

/// A menu in which a letter leads to the next entry that begins with it and has no access key; nothing is chosen until
/// the user does so, however the menu was opened.
class menu_letras final : public QMenu {
 public:
  explicit menu_letras(QWidget* padre);

 protected:
  void keyPressEvent(QKeyEvent* tecla) override;
  void showEvent(QShowEvent* suceso) override;

 private:
  bool ir_a(QChar letra);

  QTimer soltar_;
};

}  // namespace morvane
