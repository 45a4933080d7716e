// Pages of a training: the pages themselves with the word "training" across them.
#pragma once

#include <memory>

#include "printing/pages/page_set.h"

namespace printing::pages {

class TrainingPages final : public PageSet {
  public:
    explicit TrainingPages(std::shared_ptr<const PageSet> pages) : pages_(std::move(pages)) {}

    QString name() const override { return "training-" + pages_->name(); }
    int count() const override { return pages_->count(); }
    QSizeF size() const override { return pages_->size(); }
    void draw(QPainter& painter, double dots_per_mm, int page) const override;

  private:
    std::shared_ptr<const PageSet> pages_;
};

}  // namespace printing::pages
