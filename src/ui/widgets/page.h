// A page of the office window, on which one kind of work is done.
#pragma once

#include <QWidget>

namespace ui {

// Lists that other pages lead to.
enum class PageList { low_stock, expiring_goods };

// Brings such a list to the front.
class PageLinks {
  public:
    virtual ~PageLinks() = default;
    // Whether the user may see the list.
    virtual bool has(PageList list) const = 0;
    virtual void open(PageList list) = 0;
};

class Page : public QWidget {
  public:
    explicit Page(const char* name) { setObjectName(name); }

    // Called each time the page comes to the front. Reads what it shows again, because others change it
    // meanwhile. May throw.
    virtual void open() = 0;
    // Returns false if the page is to stay in front, after asking whether what was typed may be lost.
    virtual bool may_leave() { return true; }
    // Moves the focus to where the work on the page begins.
    virtual void take_focus() = 0;
    // Shows one of its lists. May throw.
    virtual void show_list(PageList) {}
    // Called once, before the page is opened first.
    virtual void set_links(PageLinks&) {}
};

}  // namespace ui
