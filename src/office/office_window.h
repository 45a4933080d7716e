// The window of the office: its pages, and the entries that lead to them.
#pragma once

#include <QPushButton>
#include <QWidget>
#include <vector>

#include "office/pages.h"
#include "ui/widgets/context.h"

class QLabel;
class QStackedWidget;
class QVBoxLayout;

namespace office {

class OfficeWindow : public QWidget, private ui::PageLinks {
    Q_OBJECT
  public:
    explicit OfficeWindow(const ui::Context& context);
    // Brings the first page that the user may use to the front.
    void open();

  signals:
    // The user leaves the program.
    void finished();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    struct Place {
        const Entry* entry;
        QPushButton* button;
        ui::Page* page = nullptr;  // made when it is opened first
    };
    QWidget* build_head();
    QWidget* build_entries();
    void add_entry(const Entry& entry, QVBoxLayout& column);
    void open_entry(Place& place);
    bool show_page(Place& place);
    bool has(ui::PageList list) const override { return place_of(list) < places_.size(); }
    void open(ui::PageList list) override;
    // The number of places if the user has no page with the list.
    std::size_t place_of(ui::PageList list) const;
    void mark_current();
    void leave();
    bool may_leave_page();

    ui::Context context_;
    std::vector<Place> places_;
    const Place* current_ = nullptr;
    QStackedWidget* stack_;
    QLabel* clock_;
};

}  // namespace office
