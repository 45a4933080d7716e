// A button that shows the key it stands for: beside its caption on a strip, below it on a payment option.
#pragma once

#include <QPushButton>

namespace ui {

class KeyButton : public QPushButton {
  public:
    enum class Look { strip, tool, pay, save };
    // `name` is the object name; `key` the cap's text ("F2", "⇧F9").
    KeyButton(const QString& name, const QString& key, const QString& caption, Look look,
              QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont font_of(bool cap) const;

    QString key_;
    QString caption_;
    Look look_;
};

}  // namespace ui
