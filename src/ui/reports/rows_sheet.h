// The rows behind a figure of a report, over its page; a document among them opens its lines.
#pragma once

#include "reports/behind.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace ui {

class ListTable;

class RowsSheet : public Sheet {
    Q_OBJECT
  public:
    // Lines of a document are shown on a sheet named `document_lines`, other rows on `report_rows`.
    RowsSheet(QWidget* host, const Context& context, reports::Behind behind,
              const char* name = "report_rows");

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void open_document(int row);

    Context context_;
    reports::Behind behind_;
    ListTable* rows_;
    QLabel* note_;
};

}  // namespace ui
