// Labels drawn on a roll or on sheets.
#pragma once

#include "printing/labels.h"
#include "printing/pages/canvas.h"
#include "printing/pages/page_set.h"

namespace printing::pages {

class LabelPages final : public PageSet {
  public:
    explicit LabelPages(LabelJob job);

    QString name() const override { return "labels"; }
    int count() const override { return job_.pages(); }
    QSizeF size() const override { return {job_.paper.page_width, job_.paper.page_height}; }
    void draw(QPainter& painter, double dots_per_mm, int page) const override;

  private:
    void draw_label(const Canvas& canvas, const QRectF& area, const Label& label) const;

    LabelJob job_;
    std::vector<const Label*> places_;  // null for a place that stays empty
};

}  // namespace printing::pages
