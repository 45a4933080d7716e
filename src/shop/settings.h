// The settings of the shop as the office shows and changes them: those of the row of `basic` that the
// programs read, and those of the tills (database/till_settings.h).
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "database/till_settings.h"
#include "signin/session.h"

namespace shop {

enum class SettingKind { text, digits, percent, font_size, port, yes_or_no, price_level, store, main_drawer };

struct Setting {
    std::string_view group;
    std::string_view caption;
    std::string_view explained;
    std::string_view column = {};                 // of `basic`; else
    const database::TillSetting* till = nullptr;  // a setting of the tills
    SettingKind kind = SettingKind::text;
    bool is_required = false;

    bool is_choice() const { return kind >= SettingKind::yes_or_no; }
};

// A setting with its value: the text as it is stored, and as it is shown.
struct SettingValue {
    Setting setting;
    std::string stored;
    std::string shown;
};

class SettingsEditor {
  public:
    SettingsEditor(database::Connection& connection, signin::Session& session, common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    void open();
    const std::vector<SettingValue>& values() const { return values_; }
    // The choices of a setting, and the code of the stored one; nothing if it is not among them.
    std::vector<common::Choice> choices(const Setting& setting) const;
    std::optional<std::int64_t> chosen(const SettingValue& value) const;

    // Stores what was typed, or the code that was chosen; an empty text unsets a setting of the tills.
    // Refused if it is not a valid value, or if another office changed the setting since it was read. A
    // refusal without text has been shown already.
    std::optional<common::Refusal> save(const SettingValue& read, std::string_view typed);

  private:
    std::optional<common::Refusal> read_typed(const Setting& setting, std::string_view typed,
                                              std::string& stored) const;
    std::optional<common::Refusal> check_place(const Setting& setting, std::string_view code) const;
    void tell_missing_folders();
    void write(const Setting& setting, const std::string& stored);
    std::string stored_value(const Setting& setting);
    std::string shown(const Setting& setting, const std::string& stored) const;

    database::Connection& connection_;
    signin::Session& session_;
    common::Services services_;
    std::vector<SettingValue> values_;
    std::vector<common::Choice> stores_;
    std::vector<common::Choice> drawers_;  // of all stores, by place_code
};

}  // namespace shop
