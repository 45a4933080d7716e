// The message and question boxes, and the prompts of the logic shown as such boxes.
#pragma once

#include "common/prompts.h"
#include "ui/widgets/sheet.h"

class QHBoxLayout;
class QPushButton;

namespace ui {

class MessageBox : public Sheet {
    Q_OBJECT
  public:
    // A box with one button, or a question with two. run() returns 1 for Yes or OK, 2 for No, and 0 after
    // Esc. Enter presses the marked button: Yes if the box merely asks, No if its icon warns, so that a
    // hasty Enter does no harm.
    MessageBox(QWidget* host, const QString& text, common::Icon icon,
               const common::Choices* question = nullptr);

    // Adds a button to a message; run() returns 3 for it. "&" stands before its mnemonic.
    void offer(const QString& caption);

    QString text() const { return text_; }
    bool is_question() const { return is_question_; }
    // Returns true if the box only reports what was done.
    bool is_news() const { return icon_ == common::Icon::information; }

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QPushButton* button(const QString& caption, const char* name, int result);

    QString text_;
    bool is_question_;
    QHBoxLayout* answers_ = nullptr;
    common::Icon icon_;
    QPushButton* marked_ = nullptr;
};

// Shows messages and questions as boxes over whatever screen is in use.
class ScreenPrompts final : public common::Prompts {
  public:
    void message(std::string_view text, common::Icon icon = common::Icon::none) override;
    common::Answer choose(std::string_view text, const common::Choices& choices, common::Icon icon) override;
};

}  // namespace ui
