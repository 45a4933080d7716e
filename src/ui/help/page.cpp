#include "ui/help/page.h"

#include <QApplication>
#include <QImageReader>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>
#include <algorithm>

#include "ui/widgets/colours.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

constexpr auto note_background = "#fdf6da";     // behind a note
constexpr auto match_background = "#fff1b8";    // behind each match
constexpr auto current_background = "#ffc53d";  // behind the current match

// Runs an action for every table in a frame and in the frames inside it.
void each_table(QTextFrame* frame, const std::function<void(QTextTable*)>& action) {
    for (QTextFrame* child : frame->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(child)) action(table);
        each_table(child, action);
    }
}

}  // namespace

HelpPage::HelpPage(QWidget* parent) : QTextBrowser(parent) {
    setObjectName("help_page");
    setOpenLinks(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setSingleStep(px(44));
    set_role(this, "helppage");
}

void HelpPage::show_chapter(const HelpChapter& chapter, std::size_t section) {
    chapter_ = chapter;
    section_ = section;
    lay_out();
    go_to_section();
}

void HelpPage::go_to_section() {
    QScrollBar* bar = verticalScrollBar();
    if (section_ == 0 || section_ >= headings_.size()) {
        bar->setValue(0);
    } else {
        QTextCursor cursor(document());
        cursor.setPosition(headings_[section_]);
        bar->setValue(bar->value() + cursorRect(cursor).top() - px(12));
    }
    scrolled_to_ = bar->value();
}

void HelpPage::lay_out() {
    // A new document each time: one that is filled again keeps formats of its former content.
    QTextDocument* former = document();
    const bool own = former->parent() == this;  // the first document belongs to the widget
    auto* page = new QTextDocument(this);
    page->setDefaultFont(font());
    page->setDocumentMargin(px(18));
    page->setUndoRedoEnabled(false);
    QTextOption option = page->defaultTextOption();
    option.setTextDirection(Qt::RightToLeft);
    page->setDefaultTextOption(option);
    write_chapter(*page, chapter_.text);
    setDocument(page);
    if (own) former->deleteLater();  // Qt may be iterating over the children now
    headings_.clear();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0) headings_.push_back(block.position());
        format_block(block);
        format_keys_and_links(block);
    }
    format_tables();
}

void HelpPage::format_block(const QTextBlock& block) {
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    format.setLayoutDirection(Qt::RightToLeft);
    format.setAlignment(Qt::AlignLeft);  // means the right in right-to-left text
    format.setLineHeight(100, QTextBlockFormat::ProportionalHeight);
    format.setTopMargin(px(2));
    format.setBottomMargin(px(4));
    const int level = format.headingLevel();
    if (level > 0) {
        format.setTopMargin(px(level == 2 ? 0 : 14));
        QTextCharFormat words;
        words.setFontWeight(QFont::Bold);
        words.setProperty(QTextFormat::FontPixelSize, px(level == 2 ? 26 : 20));
        words.setForeground(QColor(level == 2 ? colour::ink : colour::focus));
        cursor.select(QTextCursor::BlockUnderCursor);
        cursor.mergeCharFormat(words);
        cursor = QTextCursor(block);
    } else if (format.hasProperty(QTextFormat::BlockQuoteLevel)) {
        format.setBackground(QColor(note_background));
        format.setLeftMargin(px(10));
        format.setRightMargin(px(10));
    }
    cursor.setBlockFormat(format);
}

void HelpPage::format_keys_and_links(const QTextBlock& block) {
    struct Words {
        int at, length;
        QTextCharFormat format;
    };
    std::vector<Words> words;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
        const QTextFragment fragment = at.fragment();
        QTextCharFormat format = fragment.charFormat();
        if (format.isImageFormat()) continue;
        if (format.fontFixedPitch()) {  // a key
            format.setFontFixedPitch(false);
            format.setFontFamilies(QApplication::font().families());
            format.setBackground(QColor(colour::cap));
            format.setForeground(QColor(colour::slate));
        } else if (format.isAnchor()) {
            format.setForeground(QColor(colour::focus));
        } else {
            continue;
        }
        words.push_back({fragment.position(), fragment.length(), format});
    }
    for (const Words& these : words) {
        QTextCursor cursor(document());
        cursor.setPosition(these.at);
        cursor.setPosition(these.at + these.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(these.format);
    }
}

void HelpPage::format_tables() {
    each_table(document()->rootFrame(), [](QTextTable* table) {
        QTextTableFormat format = table->format();
        format.setLayoutDirection(Qt::RightToLeft);
        format.setBorderCollapse(true);
        format.setBorder(1);
        format.setBorderBrush(QColor(colour::line));
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setCellPadding(px(6));
        format.setCellSpacing(0);
        format.setTopMargin(px(8));
        format.setBottomMargin(px(12));
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        if (table->columns() == 2) {
            constexpr double explanation = 62;  // percent
            format.setColumnWidthConstraints({QTextLength(QTextLength::PercentageLength, explanation),
                                              QTextLength(QTextLength::PercentageLength, 100 - explanation)});
        }
        table->setFormat(format);
        for (int column = 0; column < table->columns(); ++column) {
            QTextTableCell cell = table->cellAt(0, column);
            QTextCharFormat head = cell.format();
            head.setBackground(QColor(colour::strip));
            cell.setFormat(head);
        }
    });
}

QVariant HelpPage::loadResource(int type, const QUrl& name) {
    if (type != QTextDocument::ImageResource) return {};
    QImageReader reader(HelpGuide::picture(name.path()));
    QImage picture = reader.read();
    if (picture.isNull()) return {};
    // A pixel of the picture is one of the 1366×768 screen, unless the picture would be wider than the page.
    const double ratio = devicePixelRatioF();
    const double room = viewport()->width() - 2 * document()->documentMargin() - px(8);
    const double width = std::min<double>(px(picture.width()), room);
    picture = picture.scaledToWidth(std::max(1, static_cast<int>(width * ratio)), Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

void HelpPage::resizeEvent(QResizeEvent* event) {
    const bool wider = event->size().width() != event->oldSize().width();
    QTextBrowser::resizeEvent(event);
    if (!wider || chapter_.sections.empty()) return;
    if (verticalScrollBar()->value() == scrolled_to_) {
        lay_out();
        go_to_section();
        return;
    }
    // The pictures are scaled again for the new width. Keep the place that is being read.
    QScrollBar* bar = verticalScrollBar();
    const double at = bar->maximum() == 0 ? 0 : static_cast<double>(bar->value()) / bar->maximum();
    lay_out();
    bar->setValue(static_cast<int>(at * bar->maximum()));
}

void HelpPage::mark(const std::vector<HelpMatch>& matches, int current) {
    QList<ExtraSelection> marks;
    for (std::size_t at = 0; at < matches.size(); ++at) {
        ExtraSelection selection;
        selection.cursor = QTextCursor(document());
        selection.cursor.setPosition(matches[at].at);
        selection.cursor.setPosition(matches[at].at + matches[at].length, QTextCursor::KeepAnchor);
        const bool shown = static_cast<int>(at) == current;
        selection.format.setBackground(QColor(shown ? current_background : match_background));
        marks << selection;
        if (shown) {
            const int top = cursorRect(selection.cursor).top();
            verticalScrollBar()->setValue(verticalScrollBar()->value() + top - viewport()->height() / 3);
        }
    }
    setExtraSelections(marks);
}

bool HelpPage::scroll(QAbstractSlider::SliderAction action) {
    const int before = verticalScrollBar()->value();
    verticalScrollBar()->triggerAction(action);
    return verticalScrollBar()->value() != before;
}

}  // namespace ui
