// The entries of the office window: each row says what an entry is called, who may use it and what it opens.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "signin/permissions.h"
#include "ui/widgets/page.h"

namespace ui {
struct Context;
}

namespace office {

struct Entry {
    QString name;                        // part of the object name of its button: "office_goods"
    QString caption;                     // with "&" before the mnemonic
    std::vector<signin::Action> rights;  // any of them will do
    // Makes the page; null for an entry that opens a sheet over the window instead.
    ui::Page* (*make)(const ui::Context& context);
    void (*run)(QWidget* window, const ui::Context& context) = nullptr;
    std::vector<ui::PageList> lists = {};  // that other pages lead to
};

// In the order of the working day: the first that the user may use is in front after sign-in.
const std::vector<Entry>& entries();

}  // namespace office
