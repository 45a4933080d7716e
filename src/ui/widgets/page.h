// A page of the office window, on which one kind of work is done.
#pragma once

#include <QWidget>

namespace ui {

class Page : public QWidget {
  public:
    explicit Page(const char* name) { setObjectName(name); }

    // Called each time the page comes to the front: it reads what it shows, for others change it meanwhile.
    // May throw.
    virtual void open() = 0;
    // Returns false if the page is to stay in front, after asking whether what was typed may be lost.
    virtual bool may_leave() { return true; }
    // Moves the focus to where the work on the page begins.
    virtual void take_focus() = 0;
};

}  // namespace ui
