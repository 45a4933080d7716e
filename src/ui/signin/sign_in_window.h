// The sign-in window.
#pragma once

#include <QWidget>

#include "signin/sign_in.h"
#include "ui/widgets/context.h"

class QComboBox;
class QEventLoop;
class QLineEdit;

namespace ui {

class SignInWindow : public QWidget {
    Q_OBJECT
  public:
    explicit SignInWindow(const Context& context);
    // Shows the window until somebody has signed in. Returns false if the program must end instead.
    bool run();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void fill();
    void confirm();
    void leave(bool signed_in);

    Context context_;
    signin::SignIn logic_;
    QComboBox* user_;
    QLineEdit* password_;
    QEventLoop* loop_ = nullptr;
    bool signed_in_ = false;
};

}  // namespace ui
