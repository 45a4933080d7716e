// The sign-in window, and the sheet on which the signed-in user changes his password.
#pragma once

#include "signin/sign_in.h"
#include "ui/signin/front_window.h"
#include "ui/signin/keyboard.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace ui {

class SignInWindow : public FrontWindow {
    Q_OBJECT
  public:
    // Has a button for a training if it offers one.
    SignInWindow(const Context& context, bool offers_training);
    // Shows the window until somebody has signed in. Returns false if the program must end instead.
    bool run();
    // Whether the window was left for a training instead.
    bool wants_training() const { return wants_training_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void fill();
    void confirm();
    // Shows the keyboard's layout, and how long the chosen user must wait.
    void show_state();

    Context context_;
    signin::SignIn logic_;
    QComboBox* user_;
    QLineEdit* password_;
    bool wants_training_ = false;
    QLabel* keyboard_;
    QLabel* pause_;
    KeyboardState typed_with_;
    QLabel* backup_;         // when the shop was last copied
    QLabel* backup_failed_;  // where it could not be copied to
};

// Changes the password of the signed-in user.
class PasswordSheet : public Sheet {
    Q_OBJECT
  public:
    PasswordSheet(QWidget* host, const Context& context);

  private:
    void confirm();

    Context context_;
    QLineEdit* old_;
    QLineEdit* new_;
    QLineEdit* again_;
};

}  // namespace ui
