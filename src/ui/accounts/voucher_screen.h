// The voucher screens: receipts (Form38) and payments (Form23), in cash or by cheque.
#pragma once

#include "accounts/voucher.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class FieldGrid;
class Figure;
class Segments;

// A saved voucher stays on the screen to be printed or corrected, until a new one is begun.
class VoucherScreen : public Sheet {
    Q_OBJECT
  public:
    VoucherScreen(QWidget* host, const Context& context, accounts::VoucherKind kind);
    void open_new();
    // False when there is no such voucher (the message has been shown).
    bool open_edit(const accounts::VoucherKey& key);

  protected:
    void take_focus() override;

  private:
    void build_party(FieldGrid& grid);
    void build_amounts(FieldGrid& grid);
    void build_method(FieldGrid& grid);
    void build_foot();
    void connect_parts();
    void show_voucher();
    void show_party();
    void show_method();
    // False when a date is none (the message has been shown).
    bool read_fields();
    void choose_party();
    void save();
    void print(bool page);
    void choose_voucher();
    void begin_new();
    // The field that the next typing belongs to after a refusal.
    QWidget* refused_field() const;
    QString title() const;

    Context context_;
    accounts::Voucher logic_;
    QLabel* title_;
    QLabel* said_;
    QLineEdit* number_;
    QLineEdit* date_;
    Segments* party_kind_;
    QComboBox* party_;
    Figure* balance_;
    QLineEdit* amount_;
    QLineEdit* discount_;
    QLineEdit* second_amount_;
    Segments* method_;
    QComboBox* store_;
    QComboBox* drawer_;
    QComboBox* bank_;
    QLineEdit* cheque_date_;
    QLineEdit* cheque_owner_;
    QWidget* drawer_box_;
    QList<QWidget*> cheque_boxes_;
    QComboBox* representative_;
    QLineEdit* note_;
    QPushButton* save_;
    QPushButton* print_;
    QPushButton* page_;
};

class Form38 : public VoucherScreen {
    Q_OBJECT
  public:
    Form38(QWidget* host, const Context& context);
};

class Form23 : public VoucherScreen {
    Q_OBJECT
  public:
    Form23(QWidget* host, const Context& context);
};

}  // namespace ui
