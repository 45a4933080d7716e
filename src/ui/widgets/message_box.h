// The message and question boxes.
#pragma once

#include "common/prompts.h"
#include "ui/widgets/sheet.h"

class QPushButton;

namespace ui {

class MessageBox : public Sheet {
    Q_OBJECT
  public:
    enum class Buttons { ok, yes_no };
    // A question answers 1 for Yes and 0 for No. Enter takes the marked button: Yes where the box merely
    // asks, No where its icon warns, so that a hasty Enter does no harm. Esc is No.
    MessageBox(QWidget* host, const QString& text, common::Icon icon, Buttons buttons);

    QString text() const { return text_; }
    bool is_question() const { return buttons_ == Buttons::yes_no; }

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QPushButton* button(std::string_view caption, const char* name, int result);

    QString text_;
    Buttons buttons_;
    QPushButton* marked_ = nullptr;
};

}  // namespace ui
