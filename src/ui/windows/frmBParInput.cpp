#include "ui/windows/frmBParInput.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "forms/refusal.h"
#include "forms/virial_form.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"

namespace quom {

frmBParInput::frmBParInput(const EosInput& constants, Messages& messages, QWidget* parent)
    : QDialog(parent),
      cmdParameter_OK(named(new QPushButton(QStringLiteral("&Parameters OK"), this), "cmdParameter_OK",
                            QStringLiteral("Parameters OK"))),
      cancel(
          named(new QPushButton(QStringLiteral("Cancel <Esc>"), this), "cancel", QStringLiteral("Cancel"))),
      constants_(constants),
      messages_(messages) {
    setObjectName(QStringLiteral("frmBParInput"));
    setWindowTitle(QString::fromUtf8(virial_caption.data(), static_cast<int>(virial_caption.size())));
    const VirialInput values = virial_input(constants);
    const double shown[] = {values.b0, values.b1, values.b2};
    const char* const labels[] = {"b0 = ", "b1 = ", "b2 = "};
    auto* form = new QGridLayout;
    for (int i = 0; i < 3; ++i) {
        par[i] = named(new NumberBox(16, this), qPrintable(QStringLiteral("par_%1").arg(i)));
        par[i]->set_value(shown[i]);
        add_form_row(form, i, new TrimmedLabel(QLatin1String(labels[i]), this), par[i]);
    }
    par[2]->press_on_enter(cmdParameter_OK);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        head_label(QString::fromUtf8(virial_formula.data(), static_cast<int>(virial_formula.size())), this));
    layout->addLayout(form);
    layout->addWidget(cmdParameter_OK);
    layout->addWidget(rule(this));
    layout->addWidget(cancel);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    cmdParameter_OK->setDefault(true);
    connect(cmdParameter_OK, &QPushButton::clicked, this, [this] { take(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    par[0]->setFocus();
    par[0]->selectAll();
}

void frmBParInput::take() {
    double b[3];
    for (int i = 0; i < 3; ++i) {
        const auto number = box_number(par[i]->text().toStdString());
        if (!number) {
            messages_.ask(no_valid_input());
            par[i]->setFocus();
            par[i]->selectAll();
            return;
        }
        b[i] = *number;
    }
    if (const auto refusal = take_virial_input(constants_, {.b0 = b[0], .b1 = b[1], .b2 = b[2]})) {
        messages_.ask(*refusal);
        return;
    }
    accept();
}

}  // namespace quom
