#include "ui/neighbours.h"

#include "ui/password_screen.h"
#include "ui/shift_screen.h"

namespace ui {

Screens neighbours(const Context& context) {
    Screens screens;
    screens.add({"f8", "ال&ورديات", Qt::Key_F8, false, "F8", [context](QWidget* host) {
                     shift2s screen(host, context);
                     if (screen.open()) screen.run();
                 }});
    screens.add({"password", "تغيير كلمة ال&سر", 0, false, {}, [context](QWidget* host) {
                     Form63(host, context).run();
                 }});
    return screens;
}

}  // namespace ui
