#include "ui/widgets/result_table.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedLayout>

#include "ui/look/look.h"
#include "ui/main/workbench.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/result_table_view.h"

namespace quom {

namespace {

constexpr int DigitChoices[] = {5, 7, 10, 15};
constexpr int UsualDigits = 7;

const QString DigitsKey = QStringLiteral("result/digits"), FoldedKey = QStringLiteral("result/folded"),
              UnitsKey = QStringLiteral("result/units");

// "h=kJ/kg;p=bar". A name that is no unit of its row is passed over when it is asked for.
QString units_in_memory(const ChosenUnits& units) {
    QStringList parts;
    for (const auto& [key, unit] : units)
        parts.push_back(QString::fromStdString(key) + QLatin1Char('=') + QString::fromStdString(unit));
    return parts.join(QLatin1Char(';'));
}
ChosenUnits units_from_memory(const QString& text) {
    ChosenUnits units;
    for (const QString& part : text.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const qsizetype sign = part.indexOf(QLatin1Char('='));
        if (sign > 0) units[part.left(sign).toStdString()] = part.mid(sign + 1).toStdString();
    }
    return units;
}

QStringList section_keys(const ResultValues& values, bool folded_at_first_only = false) {
    QStringList keys;
    for (const ResultSection& section : values.sections)
        if (section.folded_at_first || !folded_at_first_only)
            keys.push_back(QString::fromStdString(section.key));
    return keys;
}

}  // namespace

ResultTable::ResultTable(Workbench& bench, QWidget* parent)
    : QWidget(parent),
      bench_(bench),
      units_(units_from_memory(bench.memory.value(UnitsKey).toString())),
      view_(named(new ResultTableView(model_, this), "result_table", QStringLiteral("Table of the result"))),
      refused_(hint_label(QStringLiteral("No values: see the line above."), this)),
      pages_(new QStackedLayout(this)),
      corner_(new QWidget(this)),
      digits_(named(new QComboBox(corner_), "result_digits", QStringLiteral("Digits"))),
      fold_(named(new QPushButton(corner_), "result_fold")),
      copy_(named(new QPushButton(QStringLiteral("Copy"), corner_), "result_copy",
                  QStringLiteral("Copy the table"))),
      save_(named(new QPushButton(QStringLiteral("Save as..."), corner_), "result_save",
                  QStringLiteral("Save the table as CSV, text with tabs or HTML"))) {
    setObjectName(QStringLiteral("ResultTable"));
    setFocusProxy(view_);
    refused_->setAlignment(Qt::AlignCenter);
    pages_->setContentsMargins(0, 0, 0, 0);
    pages_->addWidget(view_);
    pages_->addWidget(refused_);
    build_corner();
    connect(view_, &ResultTableView::folding_changed, this, [this] { remember_folding(); });
    connect(view_, &ResultTableView::unit_chosen, this,
            [this](const QModelIndex& row, const QString& name) { choose_unit(row, name, false); });
    connect(view_, &ResultTableView::unit_for_all, this, [this](const QModelIndex& row) {
        choose_unit(row, QString::fromStdString(model_.unit(row).name), true);
    });
    show_refused();
}

void ResultTable::build_corner() {
    corner_->setObjectName(QStringLiteral("result_table_corner"));
    corner_->hide();
    auto* row = new QHBoxLayout(corner_);
    row->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel(QStringLiteral("Digits:"), corner_);
    label->setBuddy(digits_);
    for (const int n : DigitChoices) digits_->addItem(QString::number(n), n);
    const int known = digits_->findData(bench_.memory.value(DigitsKey, UsualDigits).toInt());
    digits_->setCurrentIndex(known >= 0 ? known : digits_->findData(UsualDigits));
    row->addWidget(label);
    row->addWidget(digits_);
    row->addWidget(fold_);
    row->addWidget(copy_);
    row->addWidget(save_);
    // The corner leaves room for the tabs in the narrowest window.
    for (QPushButton* button : {copy_, save_})
        button->setMaximumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 24);
    // The button keeps its width whichever caption it has.
    fold_->setText(QStringLiteral("Unfold all"));
    fold_->ensurePolished();
    fold_->setMinimumWidth(fold_->sizeHint().width());
    connect(digits_, &QComboBox::currentIndexChanged, this, [this] {
        bench_.memory.set(DigitsKey, digits());
        show_values();
    });
    connect(fold_, &QPushButton::clicked, this,
            [this] { view_->fold(view_->any_unfolded() ? section_keys(values_) : QStringList()); });
    connect(copy_, &QPushButton::clicked, this, [this] { view_->copy_all(); });
    connect(save_, &QPushButton::clicked, this, [this] { view_->save_all(); });
}

int ResultTable::digits() const { return digits_->currentData().toInt(); }

void ResultTable::show_outcome(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup) {
    stale_ = false;
    if (!outcome.has_result()) return show_refused();
    values_ = make_result_values(fluid, outcome, setup);
    shows_values_ = true;
    show_values();
}

void ResultTable::show_refused() {
    shows_values_ = false;
    show_controls();
}

void ResultTable::set_stale(bool stale) {
    stale_ = stale;
    show_controls();
}

void ResultTable::show_values() {
    if (!shows_values_) return;
    const QScopedValueRollback quiet(folding_, true);
    QStringList folded = section_keys(values_, true);
    if (const QVariant kept = bench_.memory.value(FoldedKey); kept.isValid())
        folded = kept.toString().split(QLatin1Char(','));
    model_.show(values_, units_, bench_.document().units, digits());
    view_->fold(folded);
    show_controls();
}

void ResultTable::show_controls() {
    pages_->setCurrentWidget(shows_values_ ? static_cast<QWidget*>(view_) : refused_);
    setFocusProxy(shows_values_ ? view_ : nullptr);
    view_->set_stale(stale_);
    digits_->setEnabled(shows_values_ && !stale_);
    fold_->setEnabled(shows_values_);
    copy_->setEnabled(shows_values_);
    save_->setEnabled(shows_values_);
    const QString caption =
        view_->any_unfolded() || !shows_values_ ? QStringLiteral("Fold all") : QStringLiteral("Unfold all");
    fold_->setText(caption);
    fold_->setAccessibleName(caption);
}

void ResultTable::remember_folding() {
    if (folding_) return;
    bench_.memory.set(FoldedKey, view_->folded().join(QLatin1Char(',')));
    show_controls();
}

void ResultTable::choose_unit(const QModelIndex& row, const QString& name, bool for_all) {
    const ResultRow& chosen = *model_.row_of(row);
    const std::vector<std::string> keys = rows_alike(values_, chosen);
    if (for_all)
        for (const std::string& key : keys) units_[key] = name.toStdString();
    else
        units_[chosen.key] = name.toStdString();
    bench_.memory.set(UnitsKey, units_in_memory(units_));
    show_values();
}

}  // namespace quom
