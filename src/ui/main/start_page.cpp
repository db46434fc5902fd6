#include "ui/main/start_page.h"

#include <QChildEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QStyleOption>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/menu_actions.h"
#include "ui/main/project_actions.h"
#include "ui/main/quick_start.h"
#include "ui/main/recent_files.h"
#include "ui/main/start_page_parts.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr int Gap = 12, ColumnDigits = 113, SideMargin = 20;
constexpr int RowInset = 10, IconGap = 12;

QString text_of(std::string_view text) { return QString::fromUtf8(text.data(), qsizetype(text.size())); }

QLabel* plain_label(const QString& text, QWidget* parent, double points, bool head) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QFont font = head ? head_font() : parent->font();
    font.setPointSizeF(font.pointSizeF() + points);
    label->setFont(font);
    return label;
}

QWidget* make_steps(QWidget* parent) {
    auto* card = new StartCardFrame(parent);
    card->add_head(QStringLiteral("First steps"));
    auto* row = new QHBoxLayout;
    row->setContentsMargins(8, 4, 8, 6);
    row->setSpacing(2 * Gap);
    int number = 0;
    for (const StartText& step : first_steps()) {
        auto* grid = new QGridLayout;
        grid->setHorizontalSpacing(8);
        grid->setVerticalSpacing(2);
        auto* head = head_label(text_of(step.head), card);
        head->setMinimumHeight(22);
        grid->addWidget(new StepRing(++number, card), 0, 0, Qt::AlignTop);
        grid->addWidget(head, 0, 1);
        grid->addWidget(hint_label(text_of(step.text), card), 1, 1, Qt::AlignTop);
        grid->setColumnStretch(1, 1);
        row->addLayout(grid, 1);
    }
    card->column->addLayout(row);
    return card;
}

QWidget* make_keys(QWidget* parent) {
    QVector<KeyCaps::Key> keys;
    for (const StartText& key : start_keys()) keys.push_back({text_of(key.head), text_of(key.text)});
    return named(new KeyCaps(std::move(keys), parent), "startKeys");
}

}  // namespace

StartRowButton::StartRowButton(const StartRow& row, QWidget* parent)
    : QAbstractButton(parent), second_(text_of(row.second)), right_(text_of(row.right)) {
    setText(text_of(row.text));
    setIcon(svg_icon(text_of(row.icon)));
    const int side = second_.isEmpty() ? 16 : 24;
    setIconSize({side, side});
    setEnabled(row.enabled);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(text());
    setAccessibleDescription((second_ + QLatin1Char(' ') + right_).trimmed());
}

QSize StartRowButton::sizeHint() const {
    const QFontMetrics head(head_font());
    const int height = second_.isEmpty() ? std::max(26, fontMetrics().height() + 10)
                                         : head.height() + fontMetrics().height() + 12;
    const QFontMetrics metrics = second_.isEmpty() ? fontMetrics() : head;
    const int right = right_.isEmpty() ? 0 : fontMetrics().horizontalAdvance(right_) + Gap;
    return {RowInset + 24 + IconGap + metrics.horizontalAdvance(text()) + right + RowInset, height};
}

void StartRowButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool marked = isEnabled() && (hasFocus() || underMouse());
    if (marked) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Midlight));
        painter.drawRoundedRect(rect(), 3, 3);
    }
    if (hasFocus()) {
        painter.setPen(QPen(look_colour(LookColour::Accent), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 3, 3);
    }
    const bool two_lines = !second_.isEmpty();
    const int side = iconSize().width();
    icon().paint(&painter, QRect(RowInset + (two_lines ? 0 : 2), (height() - side) / 2, side, side),
                 Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor ink = palette().color(group, QPalette::WindowText);
    const QColor hint = isEnabled() && !marked ? palette().color(QPalette::PlaceholderText) : ink;
    QRect lines = rect().adjusted(RowInset + 24 + (two_lines ? IconGap : 4), two_lines ? 5 : 0, -RowInset - 2,
                                  two_lines ? -5 : 0);
    const auto draw = [&](const QRect& where, Qt::Alignment side_of, const QString& words,
                          const QColor& colour) {
        painter.setPen(colour);
        painter.drawText(where, side_of | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(words, Qt::ElideRight, where.width()));
    };
    if (!right_.isEmpty()) {
        draw(lines, Qt::AlignRight | Qt::AlignVCenter, right_, hint);
        lines.setRight(lines.right() - fontMetrics().horizontalAdvance(right_) - Gap);
    }
    if (!two_lines) return draw(lines, Qt::AlignLeft | Qt::AlignVCenter, text(), ink);
    painter.setFont(head_font());
    draw(lines, Qt::AlignLeft | Qt::AlignTop, text(), ink);
    painter.setFont(font());
    draw(lines, Qt::AlignLeft | Qt::AlignBottom, second_, hint);
}

void StartRowButton::go(int step) {
    const auto rows = parentWidget()->findChildren<StartRowButton*>(QString(), Qt::FindDirectChildrenOnly);
    for (qsizetype at = rows.indexOf(this) + step; at >= 0 && at < rows.size(); at += step)
        if (rows[at]->isEnabled()) return rows[at]->setFocus(Qt::TabFocusReason);
}

void StartRowButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return click();
        case Qt::Key_Up:
            return go(-1);
        case Qt::Key_Down:
            return go(1);
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

StartPage::StartPage(mdiQUOM& frame, QMdiArea* area) : QScrollArea(area), frame_(frame), area_(area) {
    named(this, "startPage", QStringLiteral("Start page"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    area->installEventFilter(this);
    area->viewport()->installEventFilter(this);
    hide();
}

void StartPage::refresh() {
    bool wanted = frame_.session().database.DatabaseKind == 0;
    for (const QMdiSubWindow* sub : area_->subWindowList()) wanted = wanted && sub->isHidden();
    if (!wanted) return hide();
    if (!isHidden()) return;
    if (StartPageForm form =
            start_page_form(frame_.session(), {recent_substances(frame_.bench().memory),
                                               recent_files(frame_.bench().memory, RecentFiles::projects),
                                               recent_files(frame_.bench().memory, RecentFiles::data)});
        form != form_ || !widget())
        build(form);
    cover_area();
    show();
    raise();
    focus_first();
}

void StartPage::focus_first() {
    for (auto* row : findChildren<StartRowButton*>())
        if (row->isEnabled()) return row->setFocus(Qt::OtherFocusReason);
}

void StartPage::build(const StartPageForm& form) {
    form_ = form;
    auto* page = new QWidget;
    QPalette ground = page->palette();
    ground.setColor(QPalette::Window, look_colour(LookColour::MdiGround));
    viewport()->setPalette(ground);
    viewport()->setAutoFillBackground(true);

    auto* column = new QVBoxLayout;
    column->setSpacing(Gap);
    column->addStretch(2);
    auto* hint = new QVBoxLayout;
    hint->setSpacing(4);
    hint->addWidget(plain_label(QString::fromStdString(form.headline), page, 5, true));
    auto* sentence = plain_label(QString::fromStdString(form.sentence), page, 1, false);
    QPalette colours = sentence->palette();
    colours.setColor(QPalette::WindowText, look_colour(LookColour::MdiHint));
    sentence->setPalette(colours);
    hint->addWidget(sentence);
    column->addLayout(hint);
    column->addWidget(make_cards(form));
    column->addWidget(make_steps(page));
    column->addWidget(make_keys(page));
    column->addStretch(3);

    auto* middle = new QWidget(page);
    column->setContentsMargins(0, SideMargin, 0, SideMargin);
    middle->setLayout(column);
    middle->setMaximumWidth(text_width(*this, ColumnDigits));
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(SideMargin, 0, SideMargin, 0);
    row->addStretch(1);
    row->addWidget(middle, 1000);
    row->addStretch(1);
    setWidget(page);  // the page before goes
    page->setAutoFillBackground(false);
}

QWidget* StartPage::make_cards(const StartPageForm& form) {
    auto* pair = new QWidget;
    cards_ = new QBoxLayout(QBoxLayout::LeftToRight, pair);
    cards_->setContentsMargins(0, 0, 0, 0);
    cards_->setSpacing(Gap);
    int number = 0;
    const auto fill = [&](StartCardFrame* frame, const StartCard& card) {
        frame->add_head(QString::fromStdString(card.head));
        for (const StartRow& entry : card.rows) {
            auto* button = new StartRowButton(entry, frame);
            button->setObjectName(QStringLiteral("startRow_%1").arg(number++));
            connect(button, &QAbstractButton::clicked, this, [this, entry] { run(entry); });
            frame->column->addWidget(button);
        }
    };
    auto* left = new StartCardFrame(pair);
    fill(left, form.begin);
    auto* right = new StartCardFrame(pair);
    for (const StartCard& card : form.beside) fill(right, card);
    for (StartCardFrame* frame : {left, right}) {
        frame->column->addStretch();
        frame->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        cards_->addWidget(frame, 1);
    }
    return pair;
}

void StartPage::run(const StartRow& row) {
    switch (row.command) {
        case StartCommand::open_starter:
            return open_starter(frame_);
        case StartCommand::open_database:
            return open_database(frame_, 7);
        case StartCommand::recent_substance: {
            const std::vector<RecentSubstance> recent = recent_substances(frame_.bench().memory);
            if (const auto at = static_cast<std::size_t>(row.index); at < recent.size())
                take_recent(frame_, recent[at]);
            return;
        }
        case StartCommand::example:
            return run_example(frame_, examples()[static_cast<std::size_t>(row.index)]);
        case StartCommand::load_last_session:
            return load_last_session(frame_, 0);
        case StartCommand::load_project:
            return ask_for_project(frame_, 0);
        case StartCommand::recent_project:
        case StartCommand::recent_data: {
            const auto kind =
                row.command == StartCommand::recent_data ? RecentFiles::data : RecentFiles::projects;
            const auto recent = recent_files(frame_.bench().memory, kind);
            if (const auto at = static_cast<std::size_t>(row.index); at < recent.size())
                open_recent(frame_, kind, recent[at]);
            return;
        }
    }
}

void StartPage::cover_area() {
    setGeometry(area_->contentsRect());
    if (!widget()) return;
    int widest = 0;
    for (const auto* row : findChildren<StartRowButton*>())
        widest = std::max(widest, row->sizeHint().width());
    const int column = std::min(width() - 2 * SideMargin, text_width(*this, ColumnDigits));
    const bool beside = 2 * (widest + 12) + Gap <= column;
    cards_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

// Windows of the area come, are shown, are hidden and go.
bool StartPage::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == area_) {
        if (type == QEvent::Resize) cover_area();
        if (type == QEvent::FocusIn && isVisible()) focus_first();
    } else if (watched == area_->viewport()) {
        if (type == QEvent::ChildAdded) static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
        if (type == QEvent::ChildRemoved)
            QMetaObject::invokeMethod(this, &StartPage::refresh, Qt::QueuedConnection);
    } else if (type == QEvent::ShowToParent || type == QEvent::HideToParent) {
        refresh();
    }
    return QScrollArea::eventFilter(watched, event);
}

void StartPage::changeEvent(QEvent* event) {
    QScrollArea::changeEvent(event);
    if (!widget() ||
        (event->type() != QEvent::ApplicationPaletteChange && event->type() != QEvent::FontChange))
        return;
    build(StartPageForm(form_));
    cover_area();
}

}  // namespace quom
