#include "ui/main/palette.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "forms/palette_form.h"
#include "ui/look/look.h"
#include "ui/look/svg_icons.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/palette_entries.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

constexpr int WidthDigits = 79, BelowToolbar = 24, Inset = 10, IconSide = 16;
constexpr int IdRole = Qt::UserRole, HitRole = Qt::UserRole + 1;

// A piece of a text in one kind of letters.
struct Piece {
    QString text;
    bool match = false;
};

QVector<Piece> pieces(const std::string& text, const std::vector<TextPart>& marks) {
    QVector<Piece> list;
    std::size_t at = 0;
    for (const TextPart& mark : marks) {
        list.push_back({QString::fromStdString(text.substr(at, mark.begin - at)), false});
        list.push_back({QString::fromStdString(text.substr(mark.begin, mark.length)), true});
        at = mark.begin + mark.length;
    }
    list.push_back({QString::fromStdString(text.substr(at)), false});
    return list;
}

// Icon, text with what was typed in bold, detail or reason behind it, kind in a column of its own.
class HitRow : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {100, option.fontMetrics.height() + 12};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& at) const override {
        const auto hit = at.data(HitRole).value<std::shared_ptr<const PaletteHit>>();
        if (!hit) return;
        const bool marked = option.state & QStyle::State_Selected;
        const bool can_run = hit->entry.reason.empty();
        const QPalette& colours = option.palette;
        painter->save();
        if (marked) painter->fillRect(option.rect, colours.color(QPalette::Active, QPalette::Highlight));
        const auto ink = [&](const QColor& plain) {
            return marked ? colours.color(QPalette::Active, QPalette::HighlightedText) : plain;
        };
        const QColor hint = ink(colours.color(QPalette::PlaceholderText));
        const QColor text = can_run ? ink(colours.color(QPalette::Active, QPalette::Text))
                                    : colours.color(QPalette::Disabled, QPalette::Text);
        const QRect row = option.rect.adjusted(Inset, 0, -Inset, 0);
        svg_icon(palette_icon(hit->entry.kind))
            .paint(painter, QRect(row.left(), row.center().y() - IconSide / 2, IconSide, IconSide),
                   Qt::AlignCenter,
                   !can_run ? QIcon::Disabled
                   : marked ? QIcon::Selected
                            : QIcon::Normal);
        const int kind = kind_width(option.fontMetrics);
        QRect room = row.adjusted(IconSide + Inset, 0, -kind - Inset, 0);
        const auto draw = [&](const Piece& piece, const QColor& plain) {
            QFont font = option.font;
            if (piece.match) font.setWeight(QFont::Bold);
            painter->setFont(font);
            const bool head = piece.match && can_run && !marked;
            painter->setPen(head ? look_colour(LookColour::SectionHead) : plain);
            const QFontMetrics metrics(font);
            painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                              metrics.elidedText(piece.text, Qt::ElideRight, room.width()));
            room.setLeft(std::min(room.right(), room.left() + metrics.horizontalAdvance(piece.text)));
        };
        for (const Piece& piece : pieces(hit->entry.text, hit->marks)) draw(piece, text);
        room.setLeft(room.left() + Inset);
        if (!can_run)
            draw({QString::fromStdString(hit->entry.reason), false}, hint);
        else
            for (const Piece& piece : pieces(hit->entry.detail, hit->detail_marks)) draw(piece, hint);
        room = QRect(row.right() - kind, row.top(), kind, row.height());
        draw({kind_text(hit->entry.kind), false}, hint);
        painter->restore();
    }

    static QString kind_text(PaletteKind kind) {
        const std::string_view text = palette_kind_text(kind);
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }

 private:
    static int kind_width(const QFontMetrics& metrics) {
        int width = 0;
        for (int kind = 0; kind <= static_cast<int>(PaletteKind::help); ++kind)
            width = std::max(width, metrics.horizontalAdvance(kind_text(static_cast<PaletteKind>(kind))));
        return width + 2;
    }
};

}  // namespace

Palette::Palette(mdiQUOM& frame, const mdiMenus& menus)
    : QFrame(&frame),
      txtFind(named(new QLineEdit(this), "txtFind",
                    QStringLiteral("Find a substance, calculation, window or help page"))),
      lstHits(named(new QListView(this), "lstHits", QStringLiteral("What was found"))),
      lblKeys(
          named(hint_label(QStringLiteral("<Up> <Down> choose   <Enter> go   <Esc> back"), this), "lblKeys")),
      lblHits(named(hint_label({}, this), "lblHits")),
      frame_(frame),
      menus_(menus),
      rows_(new QStandardItemModel(this)) {
    named(this, "palette", QStringLiteral("Find"));
    setAutoFillBackground(true);
    txtFind->setMinimumHeight(30);
    txtFind->setPlaceholderText(QStringLiteral("substance, calculation, window or help page"));
    txtFind->addAction(svg_icon(QStringLiteral("search")), QLineEdit::LeadingPosition)
        ->setText(QStringLiteral("Find"));
    lstHits->setModel(rows_);
    lstHits->setItemDelegate(new HitRow(lstHits));
    lstHits->setUniformItemSizes(true);
    lstHits->setFocusPolicy(Qt::NoFocus);
    lstHits->setFrameShape(QFrame::NoFrame);
    lstHits->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstHits->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstHits->viewport()->setAutoFillBackground(false);
    for (QLabel* label : {lblKeys, lblHits}) label->setWordWrap(false);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblKeys);
    bottom->addStretch();
    bottom->addWidget(lblHits);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Inset, Inset, Inset, Inset);
    layout->setSpacing(8);
    layout->addWidget(txtFind);
    layout->addWidget(lstHits);
    layout->addWidget(rule(this));
    layout->addLayout(bottom);
    txtFind->installEventFilter(this);
    connect(txtFind, &QLineEdit::textChanged, this, &Palette::fill);
    connect(lstHits, &QListView::clicked, this, [this](const QModelIndex& at) {
        lstHits->setCurrentIndex(at);
        run();
    });
    hide();
}

Palette::~Palette() = default;

void Palette::open() {
    focus_before_ = QApplication::focusWidget();
    entries_ = std::make_unique<PaletteEntries>(frame_, menus_);
    txtFind->clear();
    fill();
    show();
    raise();
    txtFind->setFocus(Qt::ShortcutFocusReason);
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && now != this && !isAncestorOf(now)) drop();
    });
}

void Palette::drop() {
    qApp->removeEventFilter(this);
    disconnect(qApp, nullptr, this, nullptr);
    hide();
    rows_->clear();
    entries_.reset();
}

void Palette::leave() {
    const QPointer<QWidget> before = focus_before_;
    drop();
    if (before && before->isVisible()) before->setFocus(Qt::OtherFocusReason);
}

void Palette::fill() {
    if (!entries_) return;
    const QString typed = txtFind->text();
    rows_->clear();
    for (PaletteHit& hit : entries_->find(typed.toStdString())) {
        auto* row = new QStandardItem(QString::fromStdString(hit.entry.text));
        const QString reason = QString::fromStdString(hit.entry.reason);
        row->setData(QString::fromStdString(hit.entry.id), IdRole);
        row->setData(HitRow::kind_text(hit.entry.kind) + QLatin1Char(' ') +
                         (reason.isEmpty() ? QString::fromStdString(hit.entry.detail) : reason),
                     Qt::AccessibleDescriptionRole);
        row->setToolTip(row->text());
        row->setEnabled(reason.isEmpty());
        row->setData(QVariant::fromValue(std::make_shared<const PaletteHit>(std::move(hit))), HitRole);
        rows_->appendRow(row);
    }
    const int hits = rows_->rowCount();
    lblHits->setText(hits == 0 && typed.trimmed().isEmpty() ? QString()
                     : hits == 0                            ? QStringLiteral("Nothing found.")
                     : hits == 1                            ? QStringLiteral("1 hit")
                                                            : QStringLiteral("%1 hits").arg(hits));
    lstHits->setVisible(hits > 0);
    mark(0, 1);
    place();
}

void Palette::place() {
    const int row = lstHits->fontMetrics().height() + 12;
    lstHits->setFixedHeight(std::min(rows_->rowCount(), static_cast<int>(PaletteRows)) * row);
    layout()->activate();
    const int width = std::min(text_width(*this, WidthDigits), frame_.width() - 2 * Inset);
    const auto* toolbar = frame_.findChild<QToolBar*>(QStringLiteral("Toolbar1"));
    const int top = (toolbar ? toolbar->geometry().bottom() + 1 : 0) + BelowToolbar;
    setGeometry((frame_.width() - width) / 2, top, width, layout()->sizeHint().height());
}

void Palette::mark(int row, int step) {
    for (; row >= 0 && row < rows_->rowCount(); row += step) {
        if (!rows_->item(row)->isEnabled()) continue;
        lstHits->setCurrentIndex(rows_->index(row, 0));
        lstHits->scrollTo(lstHits->currentIndex());
        txtFind->setAccessibleDescription(rows_->item(row)->text());
        return;
    }
}

void Palette::move(int rows) {
    const int now = lstHits->currentIndex().row();
    const int wanted = std::clamp(now + rows, 0, std::max(0, rows_->rowCount() - 1));
    const int step = rows < 0 ? -1 : 1;
    mark(wanted, step);
    // A page that ends on rows that cannot run: the last one before them.
    if (lstHits->currentIndex().row() == now && std::abs(rows) > 1) mark(wanted, -step);
}

void Palette::run() {
    const QModelIndex at = lstHits->currentIndex();
    if (!at.isValid() || !(at.flags() & Qt::ItemIsEnabled)) return;
    const std::string id = at.data(IdRole).toString().toStdString();
    leave();
    run_palette_entry(frame_, menus_, id);
}

bool Palette::key(int key) {
    switch (key) {
        case Qt::Key_Up:
        case Qt::Key_Backtab:
            move(-1);
            return true;
        case Qt::Key_Down:
        case Qt::Key_Tab:
            move(1);
            return true;
        case Qt::Key_PageUp:
            move(-static_cast<int>(PaletteRows));
            return true;
        case Qt::Key_PageDown:
            move(static_cast<int>(PaletteRows));
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            run();
            return true;
        case Qt::Key_Escape:
            leave();
            return true;
        default:
            return false;
    }
}

bool Palette::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtFind && event->type() == QEvent::KeyPress)
        return key(static_cast<QKeyEvent*>(event)->key());
    if (event->type() == QEvent::MouseButtonPress && isVisible()) {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget != this && !isAncestorOf(widget)) leave();
    }
    if (watched == &frame_ && event->type() == QEvent::Resize && isVisible()) place();
    return false;
}

void Palette::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(look_colour(LookColour::InputBorder));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace quom
