#include "ui/windows/picture_dialogs.h"

#include <QComboBox>
#include <QGridLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/main/ui_memory.h"
#include "ui/widgets/end_row.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/refusal_line.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

const QString VectorKey = QStringLiteral("picture/vector"), FormatKey = QStringLiteral("picture/format");
const QString SizeKeys[] = {QStringLiteral("picture/width"), QStringLiteral("picture/height"),
                            QStringLiteral("picture/dpi")};

QPushButton* button(const char* name, const char* caption) {
    return named(new QPushButton(QLatin1String(caption)), name, QLatin1String(caption));
}

}  // namespace

ClipboardDialog::ClipboardDialog(UiMemory& memory, QWidget* parent) : QDialog(parent), memory_(memory) {
    setObjectName(QStringLiteral("ClipboardDialog"));
    setWindowTitle(QStringLiteral("Diagram to the Clipboard"));
    optBitmap = named(new QRadioButton(shown(bitmap_choice)), "optBitmap", shown(bitmap_choice));
    optVector = named(new QRadioButton(shown(vector_choice)), "optVector", shown(vector_choice));
    (memory_.value(VectorKey, false).toBool() ? optVector : optBitmap)->setChecked(true);
    cmdOK = button("cmdOK", "Copy");
    cmdCancel = button("cmdCancel", "Cancel <Esc>");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(optBitmap);
    layout->addWidget(optVector);
    for (const std::string_view text : {clipboard_remark, inkscape_note}) {
        QLabel* label = hint_label(shown(text));
        label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 56);
        layout->addWidget(label);
    }
    add_end_row(layout, cmdCancel, cmdOK);
    set_tab_order({optBitmap, optVector, cmdCancel, cmdOK});
    connect(cmdOK, &QPushButton::clicked, this, &ClipboardDialog::take);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    (optVector->isChecked() ? optVector : optBitmap)->setFocus();
}

bool ClipboardDialog::vector() const { return optVector->isChecked(); }

void ClipboardDialog::take() {
    memory_.set(VectorKey, vector());
    accept();
}

PictureSizeDialog::PictureSizeDialog(UiMemory& memory, QWidget* parent) : QDialog(parent), memory_(memory) {
    setObjectName(QStringLiteral("PictureSizeDialog"));
    setWindowTitle(QStringLiteral("Save as PNG, SVG, PDF"));
    cmbFormat = named(new QComboBox, "cmbFormat");
    for (const char* format : {"PNG", "SVG", "PDF"}) cmbFormat->addItem(QLatin1String(format));
    cmbFormat->setCurrentText(memory_.value(FormatKey, QStringLiteral("PNG")).toString());
    double* const sides[] = {&size_.width, &size_.height, &size_.dpi};
    for (int i = 0; i < 3; ++i) *sides[i] = memory_.value(SizeKeys[i], *sides[i]).toDouble();

    constexpr const char* names[] = {"txtWidth", "txtHeight", "txtDpi"};
    constexpr const char* captions[] = {"&Width", "&Height", "&Resolution"};
    constexpr const char* units[] = {"mm", "mm", "dpi"};
    const PictureTexts texts = picture_texts(size_);
    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    add_form_row(grid, 0, new QLabel(QStringLiteral("&Format")), cmbFormat);
    for (int i = 0; i < 3; ++i) {
        box[i] = named(new NumberBox(8), names[i]);
        box[i]->setText(QString::fromStdString(texts[static_cast<std::size_t>(i)]));
        add_form_row(grid, 1 + 2 * i, new QLabel(QLatin1String(captions[i])), box[i],
                     QLatin1String(units[i]));
        add_refusal_line(grid, 2 + 2 * i, box[i]);
        connect(box[i], &QLineEdit::textChanged, this, &PictureSizeDialog::show_pixels);
    }
    lblPixels = named(hint_label({}), "lblPixels", QStringLiteral("Size in pixels"));
    lblPixels->setMinimumWidth(lblPixels->fontMetrics().averageCharWidth() * 34);
    layout->addLayout(grid);
    layout->addWidget(lblPixels);
    cmdOK = button("cmdOK", "Save ...");
    cmdCancel = button("cmdCancel", "Cancel <Esc>");
    add_end_row(layout, cmdCancel, cmdOK);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    set_tab_order({cmbFormat, box[0], box[1], box[2], cmdCancel, cmdOK});
    box[picture_dpi]->press_on_enter(cmdOK);
    connect(cmbFormat, &QComboBox::currentIndexChanged, this, &PictureSizeDialog::show_pixels);
    connect(cmdOK, &QPushButton::clicked, this, &PictureSizeDialog::take);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    show_pixels();
    box[picture_width]->setFocus();
    box[picture_width]->selectAll();
}

std::string PictureSizeDialog::format() const { return cmbFormat->currentText().toLower().toStdString(); }

PictureTexts PictureSizeDialog::typed() const { return {box[0]->typed(), box[1]->typed(), box[2]->typed()}; }

// Only pixels have a resolution.
void PictureSizeDialog::show_pixels() {
    const bool pixels = has_pixels(format());
    box[picture_dpi]->setEnabled(pixels);
    const PictureTaken now = take_picture_size(typed(), format(), size_);
    const std::string text = now.refusal ? std::string() : pixels_text(now.size, format());
    lblPixels->setText(pixels ? QString::fromStdString(text)
                              : QStringLiteral("Lines and texts stay sharp at every size."));
}

void PictureSizeDialog::take() {
    const PictureTaken taken = take_picture_size(typed(), format(), size_);
    if (taken.refusal) return box[taken.refusal->box]->refuse(taken.refusal->rule);
    size_ = taken.size;
    memory_.set(FormatKey, cmbFormat->currentText());
    const double sides[] = {size_.width, size_.height, size_.dpi};
    for (int i = 0; i < 3; ++i) memory_.set(SizeKeys[i], sides[i]);
    accept();
}

}  // namespace quom
