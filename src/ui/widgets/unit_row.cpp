#include "ui/widgets/unit_row.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"

namespace quom {

namespace {

constexpr int least_combo = 68;
constexpr int between_rows = 6, between_boxes = 4, between_pairs = 8;

// Rows of the grid, from that of the unit row on; gaps are rows without a widget.
enum GridRow { gap_before, row_par, gap_par, row_par_refusal, row_other, gap_other, row_other_refusal };

QString shown_name(std::string_view name) {
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace

UnitCombo::UnitCombo(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    setMinimumWidth(least_combo);
}

void UnitCombo::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Space:
        case Qt::Key_F4:
            event->accept();
            return showPopup();
        default:
            return QComboBox::keyPressEvent(event);
    }
}

void UnitCombo::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

UnitRow::UnitRow(QGridLayout* grid, int row, QLabel* caption, NumberBox* par_box, const QByteArray& index)
    : QObject(par_box),
      par(par_box),
      unit(named(new UnitCombo, QByteArray("unit_") + index)),
      other(named(new NumberBox, QByteArray("other_") + index)),
      grid_(grid),
      row_(row),
      caption_(caption),
      equal_(named(new TrimmedLabel(QStringLiteral("=")), QByteArray("equal_") + index)),
      last_(par_box) {
    equal_->setForegroundRole(QPalette::PlaceholderText);
    equal_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    add_form_row(grid, row + row_par, caption, par);
    grid->addWidget(equal_, row + row_other, 0);
    grid->addWidget(other, row + row_other, 1);
    grid->addWidget(unit, row + row_par, 2);
    add_refusal_line(grid, row + row_par_refusal, par, unit);
    add_refusal_line(grid, row + row_other_refusal, other, unit);
    for (NumberBox* box : {par, other}) connect(box, &NumberBox::refusal_changed, this, &UnitRow::set_gaps);
    connect(unit, &QComboBox::currentIndexChanged, this, &UnitRow::choose);
    connect(par, &QLineEdit::textChanged, this, &UnitRow::write_other);
    connect(par, &QLineEdit::textEdited, this, [this] {
        last_ = par;
        emit edited();
    });
    connect(other, &QLineEdit::textEdited, this, [this] {
        last_ = other;
        const QScopedValueRollback guard(writing_, true);
        par->setText(QString::fromStdString(text_in_unit(
            other->typed(), units_[static_cast<std::size_t>(unit->currentIndex())], units_.front())));
        emit edited();
    });
}

void UnitRow::set_units(std::optional<Quantity> quantity, std::vector<InputUnit> units,
                        std::string_view chosen, double M) {
    quantity_ = units.empty() ? std::nullopt : quantity;
    units_ = std::move(units);
    M_ = M;
    const QSignalBlocker quiet(unit);
    unit->clear();
    for (const InputUnit& offered : units_) unit->addItem(shown_name(offered.name));
    unit->setCurrentIndex(units_.empty() ? -1 : static_cast<int>(unit_at(units_, chosen)));
    par->set_unit(quantity_, units_.empty() ? InputUnit{} : units_.front(), M_);
    place();
    write_other();
}

void UnitRow::set_visible(bool visible) {
    visible_ = visible;
    place();
}

// The combo stands beside the box that is typed in.
void UnitRow::place() {
    const bool added = visible_ && other_shown();
    caption_->setVisible(visible_);
    par->setVisible(visible_);
    unit->setVisible(visible_ && units_.size() > 1);
    other->setVisible(added);
    equal_->setVisible(added);
    grid_->removeWidget(unit);
    grid_->addWidget(unit, row_ + (added ? row_other : row_par), 2);
    set_gaps();
    const QString name = spoken(caption_->text().section(QLatin1Char('/'), 0, 0));
    unit->setAccessibleName(QStringLiteral("Unit of ") + name);
    other->setAccessibleName(name + QStringLiteral(" in ") + unit->currentText());
    if (!added) return;
    other->set_unit(quantity_, units_[static_cast<std::size_t>(unit->currentIndex())], M_);
}

void UnitRow::set_gaps() {
    const bool added = visible_ && other_shown();
    grid_->setRowMinimumHeight(row_ + gap_par, added || par->refused() ? between_boxes : 0);
    grid_->setRowMinimumHeight(row_ + gap_other, other->refused() ? between_boxes : 0);
}

void UnitRow::keep_apart(const UnitRow* above) {
    const bool pairs = above && (other_shown() || above->other_shown());
    const int gap = above && visible_ ? (pairs ? between_pairs : between_rows) : 0;
    grid_->setRowMinimumHeight(row_ + gap_before, gap);
}

void UnitRow::choose(int index) {
    if (index < 0) return;
    par->take_back_refusal();
    other->take_back_refusal();
    last_ = par;
    place();
    write_other();
    emit unit_chosen(index == 0 ? QString() : unit->currentText());
    if (!visible_) return;
    typed_box()->setFocus();
    typed_box()->selectAll();
}

void UnitRow::write_other() {
    if (writing_ || !other_shown()) return;
    other->setText(QString::fromStdString(
        text_in_unit(par->typed(), units_.front(), units_[static_cast<std::size_t>(unit->currentIndex())])));
}

NumberBox* UnitRow::typed_box() const { return other_shown() ? other : par; }

BoxText UnitRow::text() const {
    BoxText typed{.text = par->typed()};
    if (refused_box() != other) return typed;
    // No number, or the one that par holds.
    if (par->text().isEmpty()) typed.text = other->typed();
    typed.zero = zero_text(units_.front(), units_[static_cast<std::size_t>(unit->currentIndex())]);
    return typed;
}

NumberBox* UnitRow::refused_box() const {
    if (!other_shown()) return par;
    return par->text().isEmpty() || last_ == other ? other : par;
}

}  // namespace quom
