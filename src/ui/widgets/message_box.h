// The message and question boxes, and the prompts of the logic shown as such boxes.
#pragma once

#include "common/prompts.h"
#include "ui/widgets/sheet.h"

class QPushButton;

namespace ui {

class MessageBox : public Sheet {
    Q_OBJECT
  public:
    enum class Buttons { ok, yes_no };
    // run() returns 1 for Yes or OK, 2 for No, and 0 after Esc. Enter presses the marked button: Yes if the
    // box merely asks, No if its icon warns, so that a hasty Enter does no harm.
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

// Shows messages and questions as boxes over whatever screen is in use.
class ScreenPrompts final : public common::Prompts {
  public:
    void message(std::string_view text, common::Icon icon = common::Icon::none) override;
    common::Answer ask(std::string_view text, common::Icon icon = common::Icon::question) override;
};

}  // namespace ui
