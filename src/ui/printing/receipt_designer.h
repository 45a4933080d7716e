// The screen on which a shop designs its receipt, beside a picture that follows every change.
#pragma once

#include <QTemporaryFile>
#include <memory>
#include <optional>

#include "printing/receipt_design.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QVBoxLayout;

namespace sales {
class SalesDesk;
}

namespace ui {

class ReceiptPaper;

// Nothing is kept until it is saved. The picture shows the last receipt, or an example before the first sale,
// as the printers would lay it out. The width is the workstation's, all else the shop's.
class ReceiptDesignerSheet : public Sheet {
    Q_OBJECT
  public:
    ReceiptDesignerSheet(QWidget* host, const Context& context, const sales::SalesDesk& desk);
    // Returns false after saying why the design cannot be read or changed.
    bool open();

  protected:
    void take_focus() override;
    void escape() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* build_fields();
    void build_lines(QVBoxLayout* column);
    QWidget* build_logo();
    void build_switches(QVBoxLayout* column);
    void follow_changes();
    void fill_fonts();
    void show_logo();
    // Takes the typed values into the design. If one is invalid, returns why and leaves the design as it is.
    std::optional<common::Refusal> read();
    void redraw();
    void choose_logo();
    bool take_logo(const std::filesystem::path& file);
    void save();

    Context context_;
    printing::ReceiptDesigner logic_;
    Form<printing::ReceiptDesign> form_;
    std::vector<std::string> fonts_;
    std::unique_ptr<QTemporaryFile> chosen_logo_;
    QString chosen_name_;
    Segments* width_;
    QLabel* logo_;
    QPushButton* save_;
    ReceiptPaper* paper_;
};

}  // namespace ui
