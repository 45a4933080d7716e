#include "ui/help/screen.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/help/page.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

HelpScreen::HelpScreen(QWidget* host, Guide guide, const QString& anchor)
    : Sheet(host), guide_(HelpGuide::carried_text(guide)), page_(new HelpPage), pause_([this] { search(); }) {
    setObjectName("help");
    setMinimumSize(px(620), px(460));
    body()->setSpacing(px(10));
    body()->addWidget(build_head());
    auto* middle = new QHBoxLayout;
    middle->setSpacing(px(14));
    contents_ = new ListTable("help_contents", {"المحتويات"}, 0);
    contents_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    middle->addWidget(contents_);
    middle->addWidget(page_, 1);
    body()->addLayout(middle, 1);
    body()->addWidget(build_foot());
    found_.resize(guide_.chapters().size());

    fill_contents();
    page_->installEventFilter(this);
    contents_->installEventFilter(this);
    connect(contents_, &ListTable::row_chosen, this, [this](int row) {
        if (row >= 0) go_to({static_cast<std::size_t>(row), 0});
    });
    connect(contents_, &ListTable::row_taken, this, [this] { page_->setFocus(); });
    connect(page_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        if (const auto place = guide_.find(link.fragment())) go_to(*place);
    });
    go_to(guide_.find(anchor).value_or(HelpPlace{}));
}

QWidget* HelpScreen::build_head() {
    auto* head = new QWidget;
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    row->addWidget(label("المساعدة", "title"));
    title_ = label({}, "side", "help_chapter");
    row->addWidget(title_);
    words_ = text_field("help_search");
    words_->setAccessibleName("بحث في الدليل");
    set_hint(words_, "بحث في الدليل");
    words_->setMaxLength(60);
    words_->installEventFilter(this);
    connect(words_, &QLineEdit::textEdited, this, [this] { pause_.begin(); });
    row->addWidget(words_, 1);
    count_ = label({}, "side", "help_count");
    count_->setMinimumWidth(px(190));
    row->addWidget(count_);
    auto* back = new QPushButton("&رجوع");
    back->setObjectName("help_back");
    back->setAutoDefault(true);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
    row->addWidget(back);
    return head;
}

QWidget* HelpScreen::build_foot() {
    auto* foot = new QWidget;
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(20));
    const std::pair<const char*, const char*> hints[] = {{"↑ ↓", "تحريك النص"},
                                                         {"PgUp PgDn", "صفحة"},
                                                         {"Ctrl ↑ ↓", "الفصل السابق والتالي"},
                                                         {"Enter", "النتيجة التالية"},
                                                         {"Esc", "رجوع"}};
    for (const auto& [key, meaning] : hints) {
        auto* pair = new QHBoxLayout;
        pair->setSpacing(px(6));
        QLabel* cap = label(key, "cap");
        cap->setLayoutDirection(Qt::LeftToRight);
        pair->addWidget(cap);
        pair->addWidget(label(meaning, "caption"));
        row->addLayout(pair);
    }
    row->addStretch(1);
    return foot;
}

void HelpScreen::fill_contents() {
    const QSignalBlocker quiet(contents_);
    std::vector<QStringList> rows;
    for (std::size_t at = 0; at < guide_.chapters().size(); ++at) {
        QString title = guide_.chapters()[at].title();
        if (!found_[at].empty()) title += "  (" + QString::number(found_[at].size()) + ")";
        rows.push_back({title});
    }
    contents_->show_rows(std::move(rows));
    contents_->choose_row(static_cast<int>(shown_.chapter));
}

void HelpScreen::show_place(const HelpPlace& place) {
    if (place.chapter >= guide_.chapters().size()) return;
    shown_ = place;
    title_->setText(guide_.chapters()[place.chapter].title());
    page_->show_chapter(guide_.chapters()[place.chapter], place.section);
    match_ = -1;
    page_->mark(found_[place.chapter], match_);
    const QSignalBlocker quiet(contents_);
    contents_->choose_row(static_cast<int>(place.chapter));
}

void HelpScreen::go_to(const HelpPlace& place) {
    show_place(place);
    search_from_ = shown_.chapter;
}

void HelpScreen::step_chapter(int by) {
    const auto count = static_cast<int>(guide_.chapters().size());
    const int to = static_cast<int>(shown_.chapter) + by;
    if (to >= 0 && to < count) go_to({static_cast<std::size_t>(to), 0});
}

void HelpScreen::turn_page(bool down) {
    if (page_->scroll(down ? QAbstractSlider::SliderPageStepAdd : QAbstractSlider::SliderPageStepSub)) return;
    const std::size_t before = shown_.chapter;
    step_chapter(down ? 1 : -1);
    if (!down && shown_.chapter != before) page_->scroll(QAbstractSlider::SliderToMaximum);
}

void HelpScreen::search() {
    std::size_t all = 0;
    for (std::size_t at = 0; at < found_.size(); ++at) {
        found_[at] = HelpGuide::matches(guide_.chapters()[at], words_->text());
        all += found_[at].size();
    }
    fill_contents();
    match_ = -1;
    const bool nothing = words_->text().trimmed().isEmpty();
    count_->setText(nothing    ? QString()
                    : all == 0 ? QString("لا يوجد ما يطابق البحث")
                               : "عدد النتائج " + figure(all));
    // Always search from where the search began; otherwise each further letter would skip a match.
    if (all == 0) {
        page_->mark({}, match_);
    } else {
        show_first_from(search_from_);
    }
}

// Shows the first match in a chapter, or in the next chapter that has one.
void HelpScreen::show_first_from(std::size_t chapter) {
    while (found_[chapter].empty())
        chapter = (chapter + 1) % found_.size();
    if (chapter != shown_.chapter) show_place({chapter, 0});
    match_ = 0;
    page_->mark(found_[chapter], match_);
}

void HelpScreen::enter() {
    pause_.end();
    if (match_ + 1 < static_cast<int>(found_[shown_.chapter].size())) {
        page_->mark(found_[shown_.chapter], ++match_);
    } else if (std::any_of(found_.begin(), found_.end(), [](const auto& found) { return !found.empty(); })) {
        show_first_from((shown_.chapter + 1) % found_.size());
    }
    search_from_ = shown_.chapter;
}

void HelpScreen::take_focus() {
    words_->setFocus(Qt::OtherFocusReason);
}

// The same keys turn the pages wherever the focus is on the help.
bool HelpScreen::press(int key, Qt::KeyboardModifiers modifiers) {
    const bool control = modifiers == Qt::ControlModifier;
    if (modifiers != Qt::NoModifier && !control && modifiers != Qt::KeypadModifier) return false;
    switch (key) {
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (control) {
                step_chapter(key == Qt::Key_Up ? -1 : 1);
            } else if (contents_->hasFocus()) {
                return false;
            } else {
                page_->scroll(key == Qt::Key_Up ? QAbstractSlider::SliderSingleStepSub
                                                : QAbstractSlider::SliderSingleStepAdd);
            }
            return true;
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            if (control) {
                step_chapter(key == Qt::Key_PageUp ? -1 : 1);
            } else {
                turn_page(key == Qt::Key_PageDown);
            }
            return true;
        default:
            return false;
    }
}

bool HelpScreen::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        (watched == words_ || watched == page_ || watched == contents_)) {
        const auto* pressed = static_cast<QKeyEvent*>(event);
        if (press(pressed->key(), pressed->modifiers())) return true;
    }
    return Sheet::eventFilter(watched, event);
}

void HelpScreen::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1240)), height() - px(24));
    contents_->setFixedWidth(px(width() < px(1200) ? 230 : 280));
}

}  // namespace ui
